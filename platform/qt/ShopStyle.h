// SPDX-License-Identifier: Apache-2.0
// ShopStyle: sizes and colours for a screen that is read at arm's length and touched with a thumb.
#pragma once

#include <QProxyStyle>

class QApplication;

namespace platform::qt {

// Units: logical pixels (96 to the inch).
inline constexpr int kTwipsPerPixel = 15;  // the program's windows are laid out in twips
inline constexpr int kTouchTarget = 48;    // the least a thumb hits
inline constexpr int kRowHeight = kTouchTarget;
inline constexpr int kButtonHeight = kTouchTarget;
inline constexpr int kFieldHeight = kTouchTarget;
inline constexpr int kArrowWidth = kTouchTarget;
inline constexpr int kHeaderHeight = 36;  // of a column: it is only read
inline constexpr int kSpacing = 12;
inline constexpr int kDialogMargin = 20;

// Rule: colours are the desktop's own; only a selection whose text would be hard to read is
//       darkened, and a selection looks the same whether or not its control has the focus.
class ShopStyle : public QProxyStyle {
public:
    ShopStyle() : QProxyStyle("Fusion") {}

    // Gives the whole program this style, its font and its palette.
    static void ApplyTo(QApplication& application);

    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& size, const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* result) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
};

// How far apart two colours are for the eye, 1 (none) to 21 (black on white).
[[nodiscard]] double Contrast(const QColor& left, const QColor& right);

}  // namespace platform::qt
