// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/ShopStyle.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>
#include <cmath>

namespace platform::qt {

namespace {

constexpr double kFontPoints = 12;
constexpr double kReadableContrast = 4.5;

double Luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

QSize AtLeast(const QSize& size, int width, int height)
{
    return {std::max(size.width(), width), std::max(size.height(), height)};
}

}  // namespace

double Contrast(const QColor& left, const QColor& right)
{
    const double one = Luminance(left);
    const double other = Luminance(right);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

void ShopStyle::ApplyTo(QApplication& application)
{
    QFont font = QApplication::font();
    font.setPointSizeF(std::max(font.pointSizeF(), kFontPoints));
    QApplication::setFont(font);
    QApplication::setStyle(new ShopStyle);
    application.setEffectEnabled(Qt::UI_AnimateCombo, false);
}

void ShopStyle::polish(QPalette& palette)
{
    QProxyStyle::polish(palette);
    QColor selection = palette.color(QPalette::Active, QPalette::Highlight);
    const QColor text = palette.color(QPalette::Active, QPalette::HighlightedText);
    const bool lightText = Luminance(text) > 0.5;
    for (int step = 0; step < 20 && Contrast(selection, text) < kReadableContrast; ++step)
        selection = lightText ? selection.darker(108) : selection.lighter(108);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, selection);
        palette.setColor(group, QPalette::HighlightedText, text);
    }
}

QSize ShopStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const
{
    const QSize usual = QProxyStyle::sizeFromContents(type, option, size, widget);
    switch (type) {
    case CT_PushButton:
        return AtLeast(usual + QSize(24, 0), 120, kButtonHeight);
    case CT_ComboBox:
    case CT_LineEdit:
        return AtLeast(usual, 0, kFieldHeight);
    case CT_ItemViewItem:
        return AtLeast(usual, 0, kRowHeight);
    case CT_HeaderSection:
        return AtLeast(usual, 0, kHeaderHeight);
    case CT_ToolButton:
        return AtLeast(usual, kTouchTarget, kTouchTarget);
    case CT_MenuItem:
        return AtLeast(usual + QSize(16, 0), 0, kRowHeight);
    case CT_MenuBarItem:
        return AtLeast(usual + QSize(12, 0), kTouchTarget, kRowHeight);
    default:
        return usual;
    }
}

int ShopStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const
{
    // Two pixels, so that at 150 % no side of the frame is swallowed by rounding.
    if (metric == PM_DefaultFrameWidth && qobject_cast<const QAbstractItemView*>(widget) != nullptr)
        return 2;
    switch (metric) {
    case PM_FocusFrameHMargin:
        return 7;  // room beside the text of a cell or entry
    case PM_HeaderMargin:
        return 8;
    case PM_ScrollBarExtent:
        return 20;
    case PM_ScrollBarSliderMin:
        return 40;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ShopStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const
{
    // A drop-down of hundreds of repair orders is a list with a scroll bar, not a menu.
    if (hint == SH_ComboBox_Popup) return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

// The arrow of a drop-down list is wide enough for a thumb.
QRect ShopStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const
{
    QRect usual = QProxyStyle::subControlRect(control, option, part, widget);
    if (control != CC_ComboBox) return usual;
    const int edge = option->rect.right() - kArrowWidth;
    if (part == SC_ComboBoxArrow) usual.setLeft(edge + 1);
    if (part == SC_ComboBoxEditField) usual.setRight(edge - 1);
    return usual;
}

// The current cell or entry wears an outline; nothing is laid over its text.
void ShopStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const
{
    if (element != PE_FrameFocusRect || qobject_cast<const QAbstractItemView*>(widget) == nullptr)
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool selected = option->state.testFlag(State_Selected);
    painter->save();
    painter->setPen(
        option->palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight));
    painter->drawRect(option->rect.adjusted(2, 2, -3, -3));
    painter->restore();
}

void ShopStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const
{
    QProxyStyle::drawControl(element, option, painter, widget);
    // The table or list that has the keyboard wears a frame in the colour of its selection.
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    if (element != CE_ShapedFrame || view == nullptr || !view->hasFocus()) return;
    painter->save();
    painter->setPen(QPen(option->palette.color(QPalette::Highlight), 2));
    painter->drawRect(option->rect.adjusted(1, 1, -1, -1));
    painter->restore();
}

}  // namespace platform::qt
