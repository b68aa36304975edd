// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/GridWidget.h"

#include "base/Format.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ShopStyle.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QScroller>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr double kDesignFontHeight = 13;  // pixels of the 8-point font the widths were made for
const base::Date kWideTime{20.0 / 24 + 48.0 / 1440};  // 08:48 PM
constexpr int kCellMargin = 20;                       // both sides together

bool LeavesRow(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

class WhileMirroring {
public:
    explicit WhileMirroring(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~WhileMirroring() { flag_ = before_; }
    WhileMirroring(const WhileMirroring&) = delete;
    WhileMirroring& operator=(const WhileMirroring&) = delete;

private:
    bool& flag_;
    bool before_;
};

}  // namespace

GridWidget::GridWidget(Grid& grid, std::vector<int> stretching, QWidget* parent)
    : QTableView(parent), grid_(&grid), model_(new GridModel(grid, this)),
      editor_(new CellEditor(
          [this](const QModelIndex& cell, const QString& text) {
              return typed && typed(cell.row() + 1, cell.column() + 1, FromQt(text));
          },
          this)),
      stretching_(std::move(stretching))
{
    LookAndFeel();
    setModel(model_);
    setItemDelegate(editor_);
    connect(this, &QAbstractItemView::clicked, this, [this] {
        if (clickedRow) clickedRow();
    });
    Follow(grid, this, [this] { Mirror(); });
}

void GridWidget::TellRows(std::function<std::string(int row)> inWords)
{
    model_->inWords = std::move(inWords);
}

void GridWidget::LookAndFeel()
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    AllowTyping();
    horizontalHeader()->setSectionsMovable(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setMinimumSectionSize(1);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
}

void GridWidget::Mirror()
{
    const WhileMirroring mirroring(mirroring_);
    const bool reshaped = model_->Sync();
    std::vector<Column> layout;
    for (int column = 1; column <= grid_->ColumnCount(); ++column)
        layout.push_back(grid_->ColumnAt(column));
    if (reshaped || layout != layout_) {
        layout_ = std::move(layout);
        ApplyLayout();
    }
    ShowCurrentRow();
}

// A view without a current row would choose the first one by itself when it gets the focus; a
// current row, or none set on purpose, keeps it from that.
void GridWidget::ShowCurrentRow()
{
    // The row that is being stored stays where the user is about to leave it.
    if (editor_->Storing()) return;
    const QModelIndex shown = currentIndex();
    const int row = grid_->Row() - 1;
    if (row < 0 || model_->columnCount() == 0)
        setCurrentIndex({});
    else if (shown.row() != row || isColumnHidden(shown.column()))
        setCurrentIndex(model_->index(row, shown.isValid() && !isColumnHidden(shown.column())
                                               ? shown.column()
                                               : FirstColumn()));
}

int GridWidget::FirstColumn() const
{
    if (TypedColumn() >= 0) return TypedColumn();
    for (int place = 0; place < horizontalHeader()->count(); ++place)
        if (const int column = horizontalHeader()->logicalIndex(place); !isColumnHidden(column))
            return column;
    return 0;
}

// The column that is typed into; -1 when there is none.
int GridWidget::TypedColumn() const
{
    for (int column = 1; grid_->allowEdit && column <= grid_->ColumnCount(); ++column)
        if (grid_->ColumnAt(column).editable && grid_->ColumnAt(column).visible) return column - 1;
    return -1;
}

void GridWidget::AllowTyping()
{
    const bool allowed = TypedColumn() >= 0;
    setEditTriggers(allowed ? DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed
                            : EditTriggers(NoEditTriggers));
    const int height = std::max(kRowHeight, fontMetrics().height() * 9 / 5);
    verticalHeader()->setDefaultSectionSize(allowed ? std::max(kButtonHeight, height) : height);
}

void GridWidget::ApplyLayout()
{
    const int count = static_cast<int>(layout_.size());
    for (int column = 0; column < count; ++column)
        setColumnHidden(column, !layout_[static_cast<std::size_t>(column)].visible);
    for (int position = 1; position <= count; ++position)
        for (int column = 0; column < count; ++column)
            if (layout_[static_cast<std::size_t>(column)].position == position)
                horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column),
                                                position - 1);
    AllowTyping();
    wishes_.clear();
    for (int column = 1; column <= count; ++column)
        wishes_.push_back(WishOf(column));
    FitWidths();
}

// The width of the layout in the size of the present font; more when the caption, a time or a name
// would not fit. At the least the layout's own pixels and its texts; an elastic column can be cut
// down further.
ColumnWish GridWidget::WishOf(int column) const
{
    const Column& layout = layout_[static_cast<std::size_t>(column - 1)];
    if (!layout.visible) return {};
    const double scale = fontMetrics().height() / kDesignFontHeight;
    const int designed = qRound(layout.width * scale / kTwipsPerPixel);
    const int caption =
        kCellMargin + horizontalHeader()->fontMetrics().horizontalAdvance(ToQt(layout.caption));
    const int wished = std::max(designed, caption);
    if (std::find(stretching_.begin(), stretching_.end(), column) != stretching_.end())
        return {wished, std::max(caption, wished * 2 / 5), true};
    const int needed = std::min(WidestText(column), wished + designed / 2);
    return {std::max(wished, needed), std::max({caption, needed, layout.width / kTwipsPerPixel}),
            false};
}

int GridWidget::WidestText(int column) const
{
    const Column& layout = layout_[static_cast<std::size_t>(column - 1)];
    // Times come and go; there is always room for one.
    int widest = layout.format.find("AM/PM") != std::string::npos
                     ? WidthOf(base::Format(kWideTime, layout.format))
                     : 0;
    for (int row = 1; row <= grid_->RowCount(); ++row)
        widest = std::max(widest, WidthOf(grid_->Shown(row, column)));
    return widest;
}

int GridWidget::WidthOf(const std::string& text) const
{
    return kCellMargin + fontMetrics().horizontalAdvance(ToQt(text));
}

void GridWidget::FitWidths()
{
    const std::vector<int> widths = ShareRoom(wishes_, viewport()->width());
    for (std::size_t column = 0; column < widths.size(); ++column)
        if (layout_[column].visible) setColumnWidth(static_cast<int>(column), widths[column]);
}

void GridWidget::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    if (mirroring_ || !current.isValid() || !moved) return;
    moved(current.row() + 1, previous.row() + 1, previous.column() + 1);
    if (grid_->Row() != current.row() + 1) QTimer::singleShot(0, this, [this] { Mirror(); });
}

bool GridWidget::FinishTyping()
{
    return editor_->Finish();
}

// Whichever cell of the row was touched, the one that is typed into opens.
bool GridWidget::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const int column = TypedColumn();
    return QTableView::edit(column < 0 ? index : index.siblingAtColumn(column), trigger, event);
}

// Tab goes on to the next row's cell; behind the last row it leaves the grid.
void GridWidget::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    using Hint = QAbstractItemDelegate;
    const int row = editor_->Cell().row();
    const bool along = hint == Hint::EditNextItem || hint == Hint::EditPreviousItem;
    QTableView::closeEditor(editor, along ? Hint::NoHint : hint);
    if (!along) return;
    const int next = hint == Hint::EditNextItem ? row + 1 : row - 1;
    if (next >= 0 && next < model_->rowCount())
        TypeInto(next);
    else
        focusNextPrevChild(hint == Hint::EditNextItem);
}

void GridWidget::TypeInto(int row)
{
    const QModelIndex cell = model_->index(row, TypedColumn());
    setCurrentIndex(cell);
    if (currentIndex() == cell) QTableView::edit(cell);
}

void GridWidget::mousePressEvent(QMouseEvent* event)
{
    if (FinishTyping())
        QTableView::mousePressEvent(event);
    else
        event->accept();
}

void GridWidget::keyPressEvent(QKeyEvent* event)
{
    // What the open cell has no use for, but Up and Down, which go on from it.
    if (editor_->Line() != nullptr && (!LeavesRow(event->key()) || !FinishTyping()))
        return event->accept();
    const bool choose = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                        event->key() == Qt::Key_Space;
    if (!choose) return QTableView::keyPressEvent(event);
    event->accept();
    if (event->isAutoRepeat() || !currentIndex().isValid()) return;
    if (TypedColumn() >= 0) return TypeInto(currentIndex().row());
    if (clickedRow) clickedRow();
}

// Letters look for a name. Where no row is current Qt would look in the first column, hidden or
// not; it remembers the letters all the same, so that the next one goes on from them.
void GridWidget::keyboardSearch(const QString& letters)
{
    if (currentIndex().isValid()) return QTableView::keyboardSearch(letters);
    {
        const WhileMirroring mirroring(mirroring_);
        QTableView::keyboardSearch(letters);
        setCurrentIndex({});
    }
    const QModelIndexList found = model_->match(model_->index(0, FirstColumn()), Qt::DisplayRole,
                                                letters, 1, Qt::MatchStartsWith | Qt::MatchWrap);
    if (!found.isEmpty()) setCurrentIndex(found.front());
}

void GridWidget::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    if (!wishes_.empty()) FitWidths();
}

void GridWidget::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange && !layout_.empty()) ApplyLayout();
}

void GridWidget::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    update();
}

void GridWidget::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    update();
}

bool GridWidget::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) return QTableView::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    ShowWholeText(help->pos(), help->globalPos());
    return true;
}

// A text that is cut off on the screen can be read whole in its tip.
void GridWidget::ShowWholeText(const QPoint& place, const QPoint& onScreen)
{
    const QModelIndex cell = indexAt(place);
    const QString text = model_->data(cell, Qt::DisplayRole).toString();
    const bool cut =
        fontMetrics().horizontalAdvance(text) + kCellMargin > columnWidth(cell.column());
    QToolTip::showText(onScreen, cell.isValid() && cut ? PlainTip(text) : QString(), viewport());
}

}  // namespace platform::qt
