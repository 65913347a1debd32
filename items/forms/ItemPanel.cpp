#include "items/forms/ItemPanel.h"

#include "widgets/FilterBox.h"
#include "widgets/ModalDialogs.h"
#include "widgets/NotAppliedMark.h"
#include "widgets/SeenDelay.h"

#include <QVBoxLayout>

namespace orvista {

namespace {

constexpr qsizetype longestCell = 200;

} // namespace

QString cellText(const std::string& utf8) {
    QString text = QString::fromStdString(utf8);
    if (text.size() > longestCell)
        text = text.left(longestCell) + u'\u2026';
    return text;
}

ItemPanel::ItemPanel(ItemSources sources, FilterBox* filter, RowsTable* table)
    : sources_(std::move(sources)), filter_(filter), table_(table), moment_(new SeenDelay(*this, [this] {
          readNow();
          readMore();
      })) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, layout->spacing(), 0, 0);
    layout->addWidget(filter_);
    layout->addWidget(table_, 1);
    filter_->passFocusTo(*table_);
    connect(table_, &RowsTable::rowActivated, this,
            [this](int row) { emit placeChosen({item(static_cast<std::size_t>(row))}); });
    connect(table_, &RowsTable::rowLeft, this, &ProjectPanel::rowLeft);
}

void ItemPanel::follow() {
    moment_->start();
    if (isVisible() && !isModalDialogOpen())
        readNow();
}

void ItemPanel::readNow() {
    read();
    fill();
}

void ItemPanel::markNotApplied() {
    if (isVisible())
        fill();
}

void ItemPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    readNow();
}

void ItemPanel::enterFilter() {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

void ItemPanel::fill() {
    const std::vector<Item> notApplied = sources_.notAppliedItems();
    std::vector<TableRow> rows;
    for (std::size_t row = 0; row < count(); ++row) {
        rows.push_back(cells(row));
        rows.back().back().text += notAppliedMark(notApplied, item(row));
    }
    table_->setRows(std::move(rows));
}

std::vector<Item> ItemPanel::items(const std::vector<int>& rows) const {
    std::vector<Item> items;
    items.reserve(rows.size());
    for (const int row : rows)
        items.push_back(item(static_cast<std::size_t>(row)));
    return items;
}

const MessageDigests& ItemPanel::digests() const {
    sources_.messages.update(sources_.project);
    return sources_.messages;
}

std::vector<Item> ItemPanel::selectedItems() const {
    return items(table_->selectedRows());
}

std::vector<Item> ItemPanel::itemsFromSelected() const {
    const std::vector<int> selected = table_->selectedRows();
    return selected.empty() ? std::vector<Item>() : items(table_->rowsFrom(selected.front()));
}

} // namespace orvista
