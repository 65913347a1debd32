#include "link/forms/AcceptTable.h"

#include "items/MessageDigest.h"
#include "items/forms/LabelCell.h"
#include "items/forms/StillPictures.h"
#include "link/ModbusReader.h"
#include "widgets/FormParts.h"

#include <utility>

namespace orvista {

namespace {

enum AcceptColumn { Message, Label, Picture, Result, Remark, columnCount };

QString resultText(SeenResult result) {
    switch (result) {
    case SeenResult::AsShown:
        return QObject::tr("as shown");
    case SeenResult::Wrong:
        return QObject::tr("wrong");
    case SeenResult::Skipped:
        break;
    }
    return QObject::tr("skipped");
}

} // namespace

AcceptTable::AcceptTable(const AcceptedProject& from)
    : from_(from),
      table_(
          named<RowsTable>(QStringLiteral("tblAccept"),
                           QStringList{QObject::tr("Message"), QObject::tr("Label"), QObject::tr("Display"),
                                       QObject::tr("Result"), QObject::tr("Remark")})) {
    table_->setAccessibleName(QObject::tr("Messages to be seen"));
    table_->makeTickable();
    table_->setWordWrap(false);
    auto* const pictures = new StillPictures(*table_, from_.project, from_.folder, from_.localTime);
    pictures->setPanel({from_.columns});
    table_->setItemDelegateForColumn(Picture, pictures);
    table_->setRowHeight(pictures->rowHeight());
    const MessageDigests digests(from_.project);
    for (const Item message : allMessages()) {
        draws_.push_back(digests.of(message)->drawsSomething);
        reachable_.push_back(isAddressable(message.kind, addressOf(from_.project, message)));
    }
    show({}, std::nullopt);
    table_->setColumnWidth(Picture, pictures->width());
    std::vector<bool> used = draws_;
    for (std::size_t row = 0; row < used.size(); ++row)
        used[row] = used[row] && reachable_[row];
    table_->setTicks(std::move(used));
}

void AcceptTable::show(const Acceptance& acceptance, std::optional<Item> current) {
    const std::vector<bool> ticks = table_->ticks();
    std::vector<TableRow> rows;
    for (const Item message : allMessages())
        rows.push_back(cells(message, acceptance));
    table_->setRows(std::move(rows));
    if (!ticks.empty())
        table_->setTicks(ticks);
    if (!current)
        return;
    const int row = static_cast<int>(messagePosition(*current));
    table_->selectRows({row});
    table_->scrollTo(table_->currentIndex());
}

TableRow AcceptTable::cells(Item message, const Acceptance& acceptance) const {
    const std::size_t row = messagePosition(message);
    TableRow cells(columnCount);
    cells[Message] = {QString::fromStdString(nameOf(message)), static_cast<int>(row)};
    cells[Label] = labelCell(from_.notes.of(message));
    if (!reachable_[row])
        cells[Result] = {QObject::tr("no address")};
    if (const SeenMessage* const seen = acceptance.of(message)) {
        cells[Result] = {resultText(seen->result)};
        cells[Result].isMarked = seen->result == SeenResult::Wrong;
        cells[Remark] = {QString::fromStdString(seen->remark)};
    }
    for (TableCell& cell : cells)
        cell.isFaint = !draws_[row];
    return cells;
}

std::vector<Item> AcceptTable::ticked() const {
    std::vector<Item> messages;
    for (const Item message : allMessages()) {
        const std::size_t row = messagePosition(message);
        if (table_->ticks().at(row) && reachable_[row])
            messages.push_back(message);
    }
    return messages;
}

} // namespace orvista
