#include "widgets/RowsTableModels.h"

#include <QApplication>
#include <QBrush>
#include <QFont>
#include <QPalette>

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvista {

namespace {

QFont boldFont() {
    QFont font = QApplication::font("QTableView");
    font.setBold(true);
    return font;
}

/// Between the table's ground and a selected row's, so that texts stay readable in every palette.
QBrush markedGround() {
    QColor ground = QGuiApplication::palette().color(QPalette::Highlight);
    constexpr int transparency = 80;
    ground.setAlpha(transparency);
    return ground;
}

/// Not the palette's own colour of placeholders: some desktops' dark palettes leave that as it is in light
/// ones.
QBrush faintText() {
    QColor text = QGuiApplication::palette().color(QPalette::Text);
    constexpr int transparency = 128;
    text.setAlpha(transparency);
    return text;
}

} // namespace

void RowsTable::Model::setRows(std::vector<TableRow> rows) {
    ticks_.assign(rows.size(), true);
    if (rows.size() == rows_.size() && !rows.empty()) {
        rows_ = std::move(rows);
        emit dataChanged(index(0, 0), index(rowCount({}) - 1, columnCount({}) - 1));
        return;
    }
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void RowsTable::Model::putRows(std::size_t first, std::vector<TableRow> rows) {
    const std::size_t replaced = std::min(rows.size(), rows_.size() - first);
    const auto added = rows.begin() + static_cast<std::ptrdiff_t>(replaced);
    const int last = static_cast<int>(first + replaced) - 1;
    std::move(rows.begin(), added, rows_.begin() + static_cast<std::ptrdiff_t>(first));
    if (replaced > 0)
        emit dataChanged(index(static_cast<int>(first), 0), index(last, columnCount({}) - 1));
    if (added == rows.end())
        return;
    beginInsertRows({}, last + 1, static_cast<int>(first + rows.size()) - 1);
    std::move(added, rows.end(), std::back_inserter(rows_));
    ticks_.resize(rows_.size(), true);
    endInsertRows();
}

void RowsTable::Model::keepRows(std::size_t count) {
    if (count >= rows_.size())
        return;
    beginRemoveRows({}, static_cast<int>(count), rowCount({}) - 1);
    rows_.resize(count);
    ticks_.resize(count);
    endRemoveRows();
}

QModelIndexList RowsTable::Model::cellsThatLookOtherwiseIn(const std::vector<TableRow>& rows) const {
    QModelIndexList cells;
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t column = 0; rows[row] != rows_[row] && column < rows[row].size(); ++column) {
            const TableCell& before = rows_[row][column];
            const TableCell& now = rows[row][column];
            if (now.text != before.text || now.isMarked != before.isMarked)
                cells << index(static_cast<int>(row), static_cast<int>(column));
        }
    return cells;
}

void RowsTable::Model::setTicks(std::vector<bool> ticks) {
    ticks.resize(rows_.size());
    ticks_ = std::move(ticks);
    if (!rows_.empty())
        emit dataChanged(index(0, 0), index(rowCount({}) - 1, 0), {Qt::CheckStateRole});
}

int RowsTable::Model::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RowsTable::Model::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(heads_.size());
}

QVariant RowsTable::Model::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? heads_.value(section) : QVariant();
}

Qt::ItemFlags RowsTable::Model::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.column() < editableColumns_)
        flags |= Qt::ItemIsEditable;
    return isTickable_ && index.column() == 0 ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant RowsTable::Model::data(const QModelIndex& index, int role) const {
    if (role == Qt::CheckStateRole && isTickable_ && index.column() == 0)
        return ticks_[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
    const TableCell& cell =
        rows_.at(static_cast<std::size_t>(index.row())).at(static_cast<std::size_t>(index.column()));
    if (role == Qt::ToolTipRole && !cell.toolTip.isEmpty())
        return cell.toolTip;
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::ToolTipRole)
        return cell.text;
    if (role == sortRole)
        return cell.sortKey.isValid() ? cell.sortKey : QVariant(cell.text);
    if (role == filterRole)
        return cell.alsoFound.isEmpty() ? cell.text : cell.text + u'\n' + cell.alsoFound;
    if (cell.isMarked && (role == Qt::FontRole || role == Qt::BackgroundRole))
        return role == Qt::FontRole ? QVariant(boldFont()) : QVariant(markedGround());
    if (role == Qt::ForegroundRole && cell.isFaint && !cell.isMarked)
        return faintText();
    return {};
}

bool RowsTable::Model::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role == Qt::EditRole && index.column() < editableColumns_) {
        typed_(index.row(), index.column(), value.toString());
        return true;
    }
    if (!isTickable_ || index.column() != 0 || role != Qt::CheckStateRole)
        return false;
    ticks_[static_cast<std::size_t>(index.row())] = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {role});
    return true;
}

RowsTable::Shown::Shown(Model& rows, QObject* parent) : QSortFilterProxyModel(parent) {
    setSourceModel(&rows);
    setSortRole(Model::sortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setFilterKeyColumn(-1); // all
    setFilterRole(Model::filterRole);
    setFilterCaseSensitivity(Qt::CaseInsensitive);
}

void RowsTable::Shown::setShownRows(std::vector<bool> shown) {
    shown_ = std::move(shown);
    invalidateFilter();
}

bool RowsTable::Shown::filterAcceptsRow(int row, const QModelIndex& parent) const {
    const auto place = static_cast<std::size_t>(row);
    return (place >= shown_.size() || shown_[place]) && QSortFilterProxyModel::filterAcceptsRow(row, parent);
}

} // namespace orvista
