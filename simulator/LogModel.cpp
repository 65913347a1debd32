#include "simulator/LogModel.h"

#include "simulator/Announcement.h"
#include "simulator/ModbusRequests.h"

namespace orvista {

namespace {

constexpr int mostRecords = 10'000;

QString hexText(const QByteArray& bytes) {
    return QString::fromStdString(hexBytes({bytes.constData(), static_cast<std::size_t>(bytes.size())}));
}

} // namespace

void LogModel::append(const RequestRecord& record) {
    if (rowCount() == mostRecords) {
        beginRemoveRows({}, 0, 0);
        records_.pop_front();
        endRemoveRows();
    }
    beginInsertRows({}, rowCount(), rowCount());
    records_.push_back(record);
    endInsertRows();
}

void LogModel::clear() {
    beginResetModel();
    records_.clear();
    endResetModel();
}

QByteArray LogModel::text() const {
    QByteArray lines;
    for (const RequestRecord& record : records_)
        lines += record.time.toString("yyyy-MM-dd ").toUtf8() + logLine(record).toUtf8() + '\n';
    return lines;
}

int LogModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(records_.size());
}

int LogModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LogModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const RequestRecord& record = records_[static_cast<std::size_t>(index.row())];
    switch (index.column()) {
    case Time:
        return record.time.toString("HH:mm:ss.zzz");
    case Sender:
        return record.peer.isEmpty() ? tr("Device") : record.peer;
    case Words:
        return record.words;
    case Bytes:
        return hexText(record.bytes);
    default:
        return {};
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Time:
        return tr("Time");
    case Sender:
        return tr("From");
    case Words:
        return tr("Request");
    case Bytes:
        return tr("Bytes");
    default:
        return {};
    }
}

} // namespace orvista
