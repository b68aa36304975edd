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

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int kWideEnough = 800;  // for all buttons in one row
constexpr int kButtonWidth = 104;

}  // namespace

PreviewWidget::PreviewWidget(GridPreview& preview, QWidget* parent)
    : QWidget(parent), preview_(&preview), printer_(QPrinter::ScreenResolution),
      pages_(new QPrintPreviewWidget(&printer_, this))
{
    NameControl(this, "GEXPreview1", "Print preview");
    pages_->setObjectName("pages");
    pages_->setAccessibleName("Pages");
    // The paper itself has the keyboard.
    for (auto* paper : pages_->findChildren<QWidget*>())
        if (paper->focusPolicy() != Qt::NoFocus) paper->setAccessibleName("Pages");
    connect(pages_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
        if (preview_->Filled() != nullptr)
            Print(*preview_->Filled(), ToQt(preview_->Title()), *printer);
    });
    connect(pages_, &QPrintPreviewWidget::previewChanged, this, &PreviewWidget::ShowPage);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    bar_ = BuildBar();
    column->addLayout(bar_);
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
    previous_ = MakeButton("cmdPrevious", "&Previous", &PreviewWidget::Previous);
    next_ = MakeButton("cmdNext", "&Next", &PreviewWidget::Next);
    page_ = new QLabel(this);
    page_->setObjectName("lblPage");
    page_->setAlignment(Qt::AlignCenter);
    auto* turning = new QHBoxLayout;
    turning->setSpacing(kSpacing);
    turning->addWidget(previous_);
    turning->addWidget(page_);
    turning->addWidget(next_);
    auto* others = new QHBoxLayout;
    others->setSpacing(kSpacing);
    others->addWidget(MakeButton("cmdLarger", "&Larger", &PreviewWidget::Larger));
    others->addWidget(MakeButton("cmdSmaller", "&Smaller", &PreviewWidget::Smaller));
    others->addWidget(MakeButton("cmdWholePage", "&Whole Page", &PreviewWidget::WholePage));
    others->addStretch(1);
    others->addWidget(MakeButton("cmdClose", "&Close", &PreviewWidget::Close));
    auto* bar = new QBoxLayout(QBoxLayout::LeftToRight);
    bar->setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
    bar->setSpacing(kSpacing);
    bar->addLayout(turning);
    bar->addLayout(others, 1);
    return bar;
}

void PreviewWidget::resizeEvent(QResizeEvent* event)
{
    bar_->setDirection(width() < kWideEnough ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    QWidget::resizeEvent(event);
}

QPushButton* PreviewWidget::MakeButton(const char* name, const QString& caption,
                                       void (PreviewWidget::*act)())
{
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    const int text = button->fontMetrics().horizontalAdvance(QString(caption).remove('&'));
    button->setFixedWidth(std::max(kButtonWidth, text + 2 * kSpacing));
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
