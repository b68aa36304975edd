// SPDX-License-Identifier: Apache-2.0
// GridPages: a grid on paper: its shown columns and all its rows, page by page.
#pragma once

#include "platform/controls/Grid.h"

#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class QPainter;
class QPrinter;

namespace platform::qt {

// A text on a page. Units: points, from the left top of the printable part.
struct PageText {
    enum class Kind { Title, Caption, Cell, Footer };
    Kind kind = Kind::Cell;
    QRectF box;
    QString text;
    Qt::Alignment alignment;
};

struct GridPage {
    std::vector<PageText> texts;
    std::vector<double> lines;  // heights of the lines across the page
};

// Rule: each page carries the title, the captions and "Page 1 of 3". A row is never divided between
//       pages. Columns keep the grid's widths, and more where a cell needs it; columns that are too
//       wide together share the page, and their texts are broken into lines: no text is cut off.
//       A grid without rows is one page.
class GridPages {
public:
    // Units: points.
    GridPages(const Grid& grid, const QString& title, const QSizeF& paper);

    [[nodiscard]] const std::vector<GridPage>& Pages() const { return pages_; }
    void Paint(QPainter& painter, std::size_t page) const;

private:
    struct Shown {
        int column = 0;
        double left = 0, width = 0;
    };
    void ChooseColumns();
    void FitColumns();
    [[nodiscard]] double NeededWidth(int column) const;
    [[nodiscard]] double RowHeight(int row) const;
    void BeginPage();
    void AddRow(int row);
    void AddFooters();
    void AddCells(int row, double height);

    const Grid& grid_;
    QString title_;
    QSizeF paper_;
    std::vector<Shown> columns_;
    std::vector<GridPage> pages_;
    double below_ = 0;  // where the next row begins
};

// All pages, on a printer or on what shows a preview of one.
void Print(const Grid& grid, const QString& title, QPrinter& printer);

}  // namespace platform::qt
