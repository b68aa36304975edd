// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/PreviewWidget.h"

#include "platform/qt/GridPages.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ShopStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform::qt {

PreviewWidget::PreviewWidget(GridPreview& preview, QWidget* parent)
    : QWidget(parent), preview_(&preview), printer_(QPrinter::ScreenResolution),
      pages_(new QPrintPreviewWidget(&printer_, this))
{
    NameControl(this, "GEXPreview1", "Print preview");
    pages_->setObjectName("pages");
    pages_->setAccessibleName("Pages");
    connect(pages_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
        if (preview_->Filled() != nullptr)
            Print(*preview_->Filled(), ToQt(preview_->Title()), *printer);
    });
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, &PreviewWidget::ShowPage);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(BuildBar());
    column->addWidget(pages_, 1);
    Follow(preview, this, [this] { Mirror(); });
}

int PreviewWidget::PageCount() const
{
    return pages_->pageCount();
}

int PreviewWidget::CurrentPage() const
{
    return pages_->currentPage();
}

QBoxLayout* PreviewWidget::BuildBar()
{
    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    bar->setSpacing(kSpacing);
    previous_ = MakeButton("cmdPrevious", "&Previous", &PreviewWidget::Previous);
    next_ = MakeButton("cmdNext", "&Next", &PreviewWidget::Next);
    page_ = new QLabel(this);
    page_->setObjectName("lblPage");
    page_->setAlignment(Qt::AlignCenter);
    bar->addWidget(previous_);
    bar->addWidget(page_);
    bar->addWidget(next_);
    bar->addSpacing(kSpacing);
    bar->addWidget(MakeButton("cmdLarger", "&Larger", &PreviewWidget::Larger));
    bar->addWidget(MakeButton("cmdSmaller", "&Smaller", &PreviewWidget::Smaller));
    bar->addWidget(MakeButton("cmdWholePage", "&Whole Page", &PreviewWidget::WholePage));
    bar->addStretch(1);
    bar->addWidget(MakeButton("cmdClose", "&Close", &PreviewWidget::Close));
    return bar;
}

QPushButton* PreviewWidget::MakeButton(const char* name, const QString& caption,
                                       void (PreviewWidget::*act)())
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void PreviewWidget::Mirror()
{
    const Place& where = preview_->Where();
    if (where.width > 0) setGeometry(where.left, where.top, where.width, where.height);
    if (shown_ == preview_->Fillings()) return;
    shown_ = preview_->Fillings();
    pages_->updatePreview();
}

void PreviewWidget::ShowPage()
{
    const int count = PageCount();
    const int page = CurrentPage();
    page_->setText(QString("Page %1 of %2").arg(page).arg(count));
    previous_->setEnabled(page > 1);
    next_->setEnabled(page < count);
}

void PreviewWidget::Previous()
{
    pages_->setCurrentPage(CurrentPage() - 1);
    ShowPage();
}

void PreviewWidget::Next()
{
    pages_->setCurrentPage(CurrentPage() + 1);
    ShowPage();
}

void PreviewWidget::Larger()
{
    pages_->zoomIn(1.25);
}

void PreviewWidget::Smaller()
{
    pages_->zoomOut(1.25);
}

void PreviewWidget::WholePage()
{
    pages_->fitInView();
}

void PreviewWidget::Close()
{
    if (closed) closed();
}

}  // namespace platform::qt
