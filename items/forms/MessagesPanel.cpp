#include "items/forms/MessagesPanel.h"

#include "items/forms/LabelCell.h"
#include "items/forms/StillPictures.h"
#include "widgets/DeviceText.h"
#include "widgets/FilterBox.h"
#include "widgets/FormParts.h"
#include "widgets/ModalDialogs.h"

#include <QHeaderView>

#include <optional>
#include <tuple>

namespace orvista {

namespace {

/// How many bytes of scripts are read at once, which nobody notices; the rest is read in between.
constexpr std::size_t bytesReadAtOnce = std::size_t{256} * 1024;
/// In milliseconds.
constexpr int restUnderDialogs = 300;

} // namespace

MessagesPanel::MessagesPanel(ItemSources given, int columns, std::function<LocalTime()> localTime)
    : ItemPanel(std::move(given), named<FilterBox>(QStringLiteral("txtMessagesFilter")),
                named<RowsTable>(QStringLiteral("tblMessages"),
                                 QStringList{tr("Name"), tr("Label"), tr("Address"), tr("Reference"),
                                             tr("Pages"), tr("Display"), tr("Text"), tr("Variables"),
                                             tr("Bitmaps"), tr("Findings")})),
      columns_(columns),
      pictures_(new StillPictures(table(), sources().project, sources().check, std::move(localTime),
                                  sources().master)) {
    filter().setPlaceholderText(tr("Filter (Ctrl+F)"));
    filter().setAccessibleName(tr("Filter the messages"));
    filter().setToolTip(tr("Show only messages with this in their name, script or notes"));
    table().setAccessibleName(tr("Messages"));
    table().setItemDelegateForColumn(Picture, pictures_);
    takePictureSize();
    connect(&filter(), &QLineEdit::textChanged, this, &MessagesPanel::showMatches);
    connect(&reading_, &QTimer::timeout, this, &MessagesPanel::readOn);
}

void MessagesPanel::setColumns(int columns) {
    columns_ = columns;
    takePictureSize();
    follow();
}

void MessagesPanel::takePictureSize() {
    pictures_->setPanel({columns_});
    table().setRowHeight(pictures_->rowHeight());
    table().setColumnWidth(Picture, pictures_->width());
}

void MessagesPanel::read() {
    const ItemSources& from = sources();
    const bool isComplete = from.messages.update(from.shown(), bytesReadAtOnce);
    rows_ = messageRows(from.shown(), from.messages);
    pictures_->clear();
    if (!isComplete)
        reading_.start(0);
    showMatches();
}

void MessagesPanel::readOn() {
    const ItemSources& from = sources();
    if (!isVisible()) // what is left is read when the panel is shown again
        return reading_.stop();
    if (isModalDialogOpen())
        return reading_.start(restUnderDialogs);
    if (!from.messages.update(from.shown(), bytesReadAtOnce))
        return reading_.start(0);
    reading_.stop();
    rows_ = messageRows(from.shown(), from.messages);
    showMatches();
    fill();
}

void MessagesPanel::readMore() {
    const ItemSources& from = sources();
    findings_ = countsByItem(from.master != nullptr ? from.check.check(*from.master, columns_)
                                                    : from.check.check(from.project, columns_));
    fill();
}

void MessagesPanel::showMatches() {
    std::vector<bool> shown;
    if (!filter().text().isEmpty()) {
        // No script holds a character that the device does not have, but notes may.
        const auto wanted = deviceBytes(filter().text());
        const std::optional<TextSearch> search =
            wanted ? std::make_optional<TextSearch>(*wanted, Case::Folded) : std::nullopt;
        const Project& project = sources().shown();
        for (const MessageRow& row : rows_)
            shown.push_back(isNoted(noteOf(row.item), filter().text()) ||
                            (search && messageHas(*search, row, scriptOf(project, row.item))));
    }
    table().setShownRows(std::move(shown));
}

TableRow MessagesPanel::cells(std::size_t row) const {
    const MessageRow& message = rows_.at(row);
    const auto found = findings_.find(message.item);
    const FindingCounts counts = found == findings_.end() ? FindingCounts() : found->second;
    TableRow cells(FindingsMark + 1);
    cells[Name] = {cellText(nameOf(message.item)), static_cast<int>(row)};
    cells[Label] = labelCell(noteOf(message.item));
    cells[Address] = {QString::number(message.address), static_cast<qlonglong>(message.address)};
    cells[Reference] = {cellText(message.reference)};
    if (message.isRead)
        cells[Pages] = {QString::number(message.pages), static_cast<qulonglong>(message.pages)};
    cells[Text] = {cellText(message.text)};
    cells[Variables] = {cellText(message.variables)};
    cells[Bitmaps] = {cellText(message.bitmaps)};
    cells[FindingsMark] = {cellText(countsText(counts)),
                           static_cast<qulonglong>(counts.errors * maximumFindings + counts.warnings)};
    for (TableCell& cell : cells)
        cell.isFaint = message.isRead && !message.drawsSomething;
    return cells;
}

} // namespace orvista
