#pragma once

#include "widgets/RowsTable.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

#include <functional>

namespace orvista {

/// The rows that a table got, and their ticks.
class RowsTable::Model final : public QAbstractTableModel {
public:
    /// What a column is sorted by.
    static constexpr int sortRole = Qt::UserRole;
    /// What is looked in for the filter.
    static constexpr int filterRole = Qt::UserRole + 1;

    Model(QStringList heads, QObject* parent) : QAbstractTableModel(parent), heads_(std::move(heads)) {}

    const std::vector<TableRow>& rows() const { return rows_; }
    /// As many rows as before keep their places.
    void setRows(std::vector<TableRow> rows);
    /// Other rows from there on, of which the last may go beyond those that are there.
    void putRows(std::size_t first, std::vector<TableRow> rows);
    /// Takes away those after the first `count`.
    void keepRows(std::size_t count);
    /// The cells that may need another width in as many other rows.
    QModelIndexList cellsThatLookOtherwiseIn(const std::vector<TableRow>& rows) const;

    /// \param typed is told of what was typed into one of the first columns, and does not change the rows
    void makeEditable(int columns, std::function<void(int row, int column, const QString& text)> typed) {
        editableColumns_ = columns;
        typed_ = std::move(typed);
    }

    void makeTickable() { isTickable_ = true; }
    bool isTickable() const { return isTickable_; }
    const std::vector<bool>& ticks() const { return ticks_; }
    void setTicks(std::vector<bool> ticks);

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    QStringList heads_;
    std::vector<TableRow> rows_;
    bool isTickable_ = false;
    int editableColumns_ = 0;
    std::function<void(int, int, const QString&)> typed_;
    std::vector<bool> ticks_; ///< by row
};

/// Those of the rows that are shown, as they are sorted.
class RowsTable::Shown final : public QSortFilterProxyModel {
public:
    Shown(Model& rows, QObject* parent);

    void setShownRows(std::vector<bool> shown);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    std::vector<bool> shown_; ///< by source row
};

} // namespace orvista
