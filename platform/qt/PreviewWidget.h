// SPDX-License-Identifier: Apache-2.0
// PreviewWidget: a GridPreview on the screen: the pages, and buttons to turn and enlarge them.
#pragma once

#include "platform/controls/GridPreview.h"

#include <QPrinter>
#include <QWidget>

#include <functional>

class QBoxLayout;
class QLabel;
class QPrintPreviewWidget;
class QPushButton;

namespace platform::qt {

// Rule: it stands where its control says, inside its window. Where that is narrow, the buttons
//       stand in two rows. No printer is needed.
class PreviewWidget : public QWidget {
public:
    PreviewWidget(GridPreview& preview, QWidget* parent);

    // The user has finished with the preview.
    std::function<void()> closed;

    [[nodiscard]] int PageCount() const;
    [[nodiscard]] int CurrentPage() const;  // from 1

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QBoxLayout* BuildBar();
    [[nodiscard]] QPushButton* MakeButton(const char* name, const QString& caption,
                                          void (PreviewWidget::*act)());
    void Mirror();
    void ShowPage();
    void Previous();
    void Next();
    void Larger();
    void Smaller();
    void WholePage();
    void Close();

    GridPreview* preview_;
    QPrinter printer_;
    QPrintPreviewWidget* pages_;
    QBoxLayout* bar_ = nullptr;
    QLabel* page_ = nullptr;
    QPushButton *previous_ = nullptr, *next_ = nullptr;
    int shown_ = 0;  // filling of the control
};

}  // namespace platform::qt
