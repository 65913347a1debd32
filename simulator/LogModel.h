#pragma once

#include "simulator/RequestRecord.h"

#include <QAbstractTableModel>
#include <deque>

namespace orvista {

/// The device's log as a table: time, sender, words, bytes. The oldest of 10,000 lines makes room.
class LogModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Time, Sender, Words, Bytes, ColumnCount };

    explicit LogModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    void append(const RequestRecord& record);
    void clear();
    /// One line a record, UTF-8 with LF.
    QByteArray text() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::deque<RequestRecord> records_;
};

} // namespace orvista
