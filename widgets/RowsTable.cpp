#include "widgets/RowsTable.h"

#include "widgets/RowsTableModels.h"

#include <QAbstractItemDelegate>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

/// Room for a column before the last one, unless the user makes more.
constexpr int mostCharacters = 60;

QString oneLine(QString text) {
    for (QChar& character : text)
        if (character == u'\t' || character == u'\n' || character == u'\r')
            character = u' ';
    return text;
}

} // namespace

RowsTable::RowsTable(const QStringList& heads, QWidget* parent)
    : QTableView(parent), rows_(new Model(heads, this)), shown_(new Shown(*rows_, this)) {
    setModel(shown_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(true);
    setContextMenuPolicy(Qt::PreventContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    // In the order of the rows until the user sorts them.
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    const auto clearWidths = [this] { contentWidths_.clear(); };
    connect(shown_, &QAbstractItemModel::rowsInserted, this, clearWidths);
    connect(shown_, &QAbstractItemModel::rowsRemoved, this, clearWidths);
    connect(shown_, &QAbstractItemModel::modelReset, this, clearWidths);
    fitColumns();
}

RowsTable::~RowsTable() = default;

void RowsTable::setRows(std::vector<TableRow> rows) {
    if (rows == rows_->rows())
        return;
    const int current = currentIndex().row();
    const int column = currentIndex().column();
    const bool selected = selectionModel()->hasSelection();
    const bool staysInPlace = rows.size() == rows_->rows().size();
    const QModelIndexList changed = staysInPlace ? rows_->cellsThatLookOtherwiseIn(rows) : QModelIndexList();
    const std::vector<int> before = widthsOf(changed);
    rows_->setRows(std::move(rows));
    if (contentWidths_.empty())
        fitColumns();
    else
        fitColumnsTo(changed, before);
    fitRowsInView();
    if (staysInPlace)
        return;
    const int last = shown_->rowCount() - 1;
    if (current < 0 || last < 0)
        return;
    const QModelIndex index = shown_->index(std::min(current, last), column);
    selectionModel()->setCurrentIndex(index, selected ? QItemSelectionModel::SelectCurrent |
                                                            QItemSelectionModel::Rows
                                                      : QItemSelectionModel::NoUpdate);
}

void RowsTable::putRows(std::size_t first, std::vector<TableRow> rows) {
    const std::vector<int> widths = contentWidths_; // which rows that come clear
    const auto count = static_cast<int>(rows.size());
    rows_->putRows(first, std::move(rows));
    if (widths.empty()) {
        fitColumns();
    } else {
        contentWidths_ = widths;
        widenFor(static_cast<int>(first), count);
    }
    fitRowsInView();
}

void RowsTable::keepRows(std::size_t count) {
    const std::vector<int> widths = contentWidths_;
    rows_->keepRows(count);
    contentWidths_ = widths;
}

void RowsTable::setFilter(const QString& text) {
    shown_->setFilterFixedString(text);
}

void RowsTable::setShownRows(std::vector<bool> shown) {
    shown_->setShownRows(std::move(shown));
}

void RowsTable::setRowHeight(int pixels) {
    rowsAreEqual_ = true;
    verticalHeader()->setDefaultSectionSize(pixels);
}

void RowsTable::makeTickable() {
    rows_->makeTickable();
    connect(rows_, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex&, const QModelIndex&, const QList<int>& roles) {
                if (roles.contains(Qt::CheckStateRole))
                    emit ticksChanged();
            });
}

void RowsTable::makeEditable(int columns) {
    isEditable_ = true;
    // The rows may change for it only when the box that was typed into is gone.
    rows_->makeEditable(columns, [this](int row, int column, const QString& text) {
        QMetaObject::invokeMethod(
            this, [this, row, column, text] { emit cellTyped(row, column, text); }, Qt::QueuedConnection);
    });
    setTyping(true);
}

void RowsTable::setTyping(bool allowed) {
    setEditTriggers(allowed ? DoubleClicked | EditKeyPressed | AnyKeyPressed : EditTriggers(NoEditTriggers));
}

const std::vector<bool>& RowsTable::ticks() const {
    return rows_->ticks();
}

void RowsTable::setTicks(std::vector<bool> ticks) {
    rows_->setTicks(std::move(ticks));
}

void RowsTable::tickSelected() {
    std::vector<bool> ticks = rows_->ticks();
    const std::vector<int> selected = selectedRows();
    const auto isTicked = [&ticks](int row) { return ticks[static_cast<std::size_t>(row)]; };
    const bool tick = !std::all_of(selected.begin(), selected.end(), isTicked);
    for (const int row : selected)
        ticks[static_cast<std::size_t>(row)] = tick;
    setTicks(std::move(ticks));
}

int RowsTable::rowOf(const QModelIndex& shown) const {
    return shown_->mapToSource(shown).row();
}

std::vector<int> RowsTable::selectedRows() const {
    QModelIndexList selected = selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    std::vector<int> rows;
    for (const QModelIndex& index : selected)
        rows.push_back(rowOf(index));
    return rows;
}

void RowsTable::selectRows(const std::vector<int>& rows) {
    QItemSelection selection;
    for (const int row : rows)
        if (const QModelIndex index = shown_->mapFromSource(rows_->index(row, 0)); index.isValid())
            selection.select(index, index);
    if (selection.isEmpty())
        return;
    selectionModel()->setCurrentIndex(selection.indexes().first(), QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

std::vector<int> RowsTable::rowsFrom(int row) const {
    std::vector<int> rows;
    const int first = shown_->mapFromSource(rows_->index(row, 0)).row();
    for (int shown = first; shown >= 0 && shown < shown_->rowCount(); ++shown)
        rows.push_back(rowOf(shown_->index(shown, 0)));
    return rows;
}

QString RowsTable::copiedText() const {
    QString text;
    const int columns = shown_->columnCount();
    const auto addRow = [&text, columns](const auto& cellText) {
        for (int column = 0; column < columns; ++column)
            text += oneLine(cellText(column)) + (column + 1 < columns ? u'\t' : u'\n');
    };
    addRow([this](int column) { return shown_->headerData(column, Qt::Horizontal).toString(); });
    QModelIndexList selected = selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    for (const QModelIndex& row : selected)
        addRow([&row](int column) { return row.siblingAtColumn(column).data().toString(); });
    return text;
}

int RowsTable::sizeHintForRow(int row) const {
    // The columns before the last one are as wide as their texts: lines are broken in the last one only.
    // Asking for all cells takes twice as long.
    ensurePolished();
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const QModelIndex last = shown_->index(row, shown_->columnCount() - 1);
    option.rect = QRect(0, 0, columnWidth(last.column()), 1); // an empty one would not be filled
    option.features |= QStyleOptionViewItem::WrapText;
    return itemDelegateForIndex(last)->sizeHint(option, last).height();
}

void RowsTable::fitRows(int first, int step, int room) {
    for (int row = first; row >= 0 && row < shown_->rowCount() && room > 0; row += step) {
        const int height = sizeHintForRow(row);
        verticalHeader()->resizeSection(row, height);
        room -= height;
    }
}

void RowsTable::fitRowsInView() {
    if (rowsAreEqual_)
        return;
    // To measure a thousand rows at each change of the table's width would take too long. What a page up or
    // down leads to is measured, too, and the last page, which tells how far the table can be scrolled.
    const int page = viewport()->height();
    const int first = std::max(0, rowAt(0));
    fitRows(first, 1, 2 * page);
    fitRows(first - 1, -1, page);
    fitRows(shown_->rowCount() - 1, -1, page);
}

void RowsTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        contentWidths_.clear();
}

void RowsTable::updateGeometries() {
    fitRowsInView();
    QTableView::updateGeometries();
    // The first row is another one, or has another height.
    if (const int least = minimumSizeHint().height(); std::exchange(leastHeight_, least) != least)
        updateGeometry();
}

void RowsTable::verticalScrollbarValueChanged(int value) {
    QTableView::verticalScrollbarValueChanged(value);
    fitRowsInView();
}

QSize RowsTable::minimumSizeHint() const {
    const int line = fontMetrics().lineSpacing();
    int row = line * 3 / 2;
    if (!rowsAreEqual_ && shown_->rowCount() > 0)
        row = std::clamp(rowHeight(0), row, line * 5 / 2);
    return {QTableView::minimumSizeHint().width(),
            horizontalHeader()->sizeHint().height() + row + 2 * frameWidth()};
}

void RowsTable::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!rowsAreEqual_)
        fitRows(index.row(), -1, viewport()->height());
    QTableView::scrollTo(index, hint);
}

void RowsTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        if (selectionModel()->hasSelection())
            QGuiApplication::clipboard()->setText(copiedText());
    } else if (isEditable_ && event->key() == Qt::Key_Delete) {
        emit removalWanted();
    } else if (isEditable_ && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        // The Enter that ends typing comes by here, too.
        if (state() != EditingState && editTriggers() != NoEditTriggers &&
            currentIndex().flags() & Qt::ItemIsEditable)
            edit(currentIndex());
    } else if (rows_->isTickable() && event->key() == Qt::Key_Space) {
        tickSelected();
    } else if (!rows_->isTickable() && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        activateCurrent();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void RowsTable::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && !isEditable_)
        activate(indexAt(event->position().toPoint()));
}

void RowsTable::activate(const QModelIndex& index) {
    if (index.isValid())
        emit rowActivated(rowOf(index));
}

void RowsTable::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    emit rowLeft();
}

void RowsTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    emit rowLeft();
}

void RowsTable::fitColumns() {
    contentWidths_.assign(static_cast<std::size_t>(shown_->columnCount()), 0);
    for (int column = 0; column + 1 < shown_->columnCount(); ++column)
        fitColumn(column);
}

void RowsTable::fitColumn(int column) {
    setContentWidth(column, std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)));
}

void RowsTable::setContentWidth(int column, int width) {
    contentWidths_[static_cast<std::size_t>(column)] = width;
    const bool isDrawn = itemDelegateForColumn(column); // and may not be cut
    const int widest = mostCharacters * fontMetrics().averageCharWidth();
    setColumnWidth(column, isDrawn ? width : std::min(width, widest));
}

std::vector<int> RowsTable::widthsOf(const QModelIndexList& cells) const {
    std::vector<int> widths(static_cast<std::size_t>(shown_->columnCount()));
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    for (const QModelIndex& cell : cells) {
        const QModelIndex shown = shown_->mapFromSource(cell);
        int& width = widths[static_cast<std::size_t>(cell.column())];
        if (shown.isValid() && shown.column() + 1 < shown_->columnCount())
            width = std::max(width, itemDelegateForIndex(shown)->sizeHint(option, shown).width());
    }
    return widths;
}

void RowsTable::widenFor(int first, int count) {
    QModelIndexList cells;
    for (int row = first; row < first + count; ++row)
        for (int column = 0; column + 1 < rows_->columnCount({}); ++column)
            cells << rows_->index(row, column);
    const std::vector<int> needed = widthsOf(cells);
    for (int column = 0; column + 1 < shown_->columnCount(); ++column)
        if (needed[static_cast<std::size_t>(column)] > contentWidths_[static_cast<std::size_t>(column)])
            setContentWidth(column, needed[static_cast<std::size_t>(column)]);
}

void RowsTable::fitColumnsTo(const QModelIndexList& changed, const std::vector<int>& before) {
    const std::vector<int> now = widthsOf(changed);
    for (int column = 0; column + 1 < shown_->columnCount(); ++column) {
        const auto place = static_cast<std::size_t>(column);
        const int width = contentWidths_[place];
        if (now[place] > width)
            setContentWidth(column, now[place]);
        else if (itemDelegateForColumn(column) || (before[place] == width && now[place] < width))
            fitColumn(column);
    }
}

} // namespace orvista
