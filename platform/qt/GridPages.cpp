// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/GridPages.h"

#include "platform/qt/QtText.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPrinter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr double kTwipsPerPoint = 20;
constexpr double kPointsPerInch = 72;
constexpr double kPadding = 4;  // on each side of a text
constexpr double kGap = 8;      // under the title, above the footer
constexpr int kTextSize = 10, kTitleSize = 14;

using Kind = PageText::Kind;

// One unit of the font is one point of the paper.
QFont FontOf(Kind kind)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(kind == Kind::Title ? kTitleSize : kTextSize);
    font.setBold(kind == Kind::Title || kind == Kind::Caption);
    return font;
}

double LineHeight(Kind kind)
{
    return QFontMetricsF(FontOf(kind)).height() + 2 * kPadding;
}

double WidthOf(Kind kind, const QString& text)
{
    return QFontMetricsF(FontOf(kind)).horizontalAdvance(text) + 2 * kPadding + 1;
}

// Broken between words; only a word that is wider than its column is broken itself.
QTextOption Wrapping(Qt::Alignment alignment)
{
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

double HeightIn(double width, Kind kind, const QString& text)
{
    QTextLayout layout(text, FontOf(kind));
    layout.setTextOption(Wrapping(Qt::AlignLeft));
    layout.beginLayout();
    double height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width - 2 * kPadding);
        height += line.height();
    }
    layout.endLayout();
    return height + 2 * kPadding;
}

Qt::Alignment AlignmentOf(Alignment alignment)
{
    switch (alignment) {
    case Alignment::Right:
        return Qt::AlignRight | Qt::AlignTop;
    case Alignment::Center:
        return Qt::AlignHCenter | Qt::AlignTop;
    case Alignment::Left:
        break;
    }
    return Qt::AlignLeft | Qt::AlignTop;
}

}  // namespace

GridPages::GridPages(const Grid& grid, const QString& title, const QSizeF& paper)
    : grid_(grid), title_(title), paper_(paper)
{
    ChooseColumns();
    FitColumns();
    BeginPage();
    for (int row = 1; row <= grid_.RowCount(); ++row)
        AddRow(row);
    AddFooters();
}

void GridPages::ChooseColumns()
{
    for (int place = 1; place <= grid_.ColumnCount(); ++place)
        for (int column = 1; column <= grid_.ColumnCount(); ++column)
            if (grid_.ColumnAt(column).visible && grid_.ColumnAt(column).position == place)
                columns_.push_back({column, 0, NeededWidth(column)});
}

double GridPages::NeededWidth(int column) const
{
    const Column& layout = grid_.ColumnAt(column);
    double widest =
        std::max(layout.width / kTwipsPerPoint, WidthOf(Kind::Caption, ToQt(layout.caption)));
    for (int row = 1; row <= grid_.RowCount(); ++row)
        widest = std::max(widest, WidthOf(Kind::Cell, ToQt(grid_.Shown(row, column))));
    return widest;
}

// Where all together are too wide, the widest give up most: narrow columns of numbers and times
// keep what they need.
void GridPages::FitColumns()
{
    double free = paper_.width();
    std::vector<Shown*> byWidth;
    for (Shown& shown : columns_)
        byWidth.push_back(&shown);
    std::sort(byWidth.begin(), byWidth.end(),
              [](const Shown* left, const Shown* right) { return left->width < right->width; });
    for (std::size_t index = 0; index < byWidth.size(); ++index) {
        const double share = free / static_cast<double>(byWidth.size() - index);
        byWidth[index]->width = std::min(byWidth[index]->width, share);
        free -= byWidth[index]->width;
    }
    double left = 0;
    for (Shown& shown : columns_) {
        shown.left = left;
        left += shown.width;
    }
}

double GridPages::RowHeight(int row) const
{
    double height = LineHeight(Kind::Cell);
    for (const Shown& shown : columns_)
        height = std::max(height,
                          HeightIn(shown.width, Kind::Cell, ToQt(grid_.Shown(row, shown.column))));
    return height;
}

void GridPages::BeginPage()
{
    GridPage page;
    below_ = 0;
    if (!title_.isEmpty()) {
        const double height = HeightIn(paper_.width(), Kind::Title, title_);
        page.texts.push_back(
            {Kind::Title, {0, 0, paper_.width(), height}, title_, Qt::AlignLeft | Qt::AlignTop});
        below_ = height + kGap;
    }
    double height = LineHeight(Kind::Caption);
    for (const Shown& shown : columns_)
        height = std::max(height, HeightIn(shown.width, Kind::Caption,
                                           ToQt(grid_.ColumnAt(shown.column).caption)));
    for (const Shown& shown : columns_) {
        const Column& layout = grid_.ColumnAt(shown.column);
        page.texts.push_back({Kind::Caption,
                              {shown.left, below_, shown.width, height},
                              ToQt(layout.caption),
                              AlignmentOf(layout.headerAlignment)});
    }
    below_ += height;
    page.lines.push_back(below_);
    pages_.push_back(std::move(page));
}

void GridPages::AddRow(int row)
{
    const double height = RowHeight(row);
    const double end = paper_.height() - LineHeight(Kind::Footer) - kGap;
    const bool first = pages_.back().lines.size() == 1;
    if (below_ + height > end && !first) BeginPage();
    AddCells(row, height);
}

void GridPages::AddCells(int row, double height)
{
    GridPage& page = pages_.back();
    for (const Shown& shown : columns_)
        page.texts.push_back({Kind::Cell,
                              {shown.left, below_, shown.width, height},
                              ToQt(grid_.Shown(row, shown.column)),
                              AlignmentOf(grid_.ColumnAt(shown.column).textAlignment)});
    below_ += height;
    page.lines.push_back(below_);
}

void GridPages::AddFooters()
{
    const double height = LineHeight(Kind::Footer);
    for (std::size_t page = 0; page < pages_.size(); ++page)
        pages_[page].texts.push_back({Kind::Footer,
                                      {0, paper_.height() - height, paper_.width(), height},
                                      QString("Page %1 of %2").arg(page + 1).arg(pages_.size()),
                                      Qt::AlignHCenter | Qt::AlignTop});
}

void GridPages::Paint(QPainter& painter, std::size_t page) const
{
    // Paper is white, whatever the desktop's colours are.
    painter.setPen(Qt::black);
    for (const PageText& each : pages_.at(page).texts) {
        painter.setFont(FontOf(each.kind));
        // A little higher than measured: printers round the heights of lines.
        painter.drawText(each.box.adjusted(kPadding, kPadding, -kPadding, 0), each.text,
                         Wrapping(each.alignment));
    }
    bool captions = true;
    for (const double height : pages_.at(page).lines) {
        painter.setPen(QPen(captions ? Qt::black : Qt::lightGray, captions ? 1 : 0.5));
        painter.drawLine(QPointF(0, height), QPointF(paper_.width(), height));
        captions = false;
    }
}

void Print(const Grid& grid, const QString& title, QPrinter& printer)
{
    const GridPages pages(grid, title, printer.pageRect(QPrinter::Point).size());
    QPainter painter(&printer);
    painter.scale(printer.logicalDpiX() / kPointsPerInch, printer.logicalDpiY() / kPointsPerInch);
    for (std::size_t page = 0; page < pages.Pages().size(); ++page) {
        if (page > 0) printer.newPage();
        pages.Paint(painter, page);
    }
}

}  // namespace platform::qt
