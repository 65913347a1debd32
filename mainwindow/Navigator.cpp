#include "mainwindow/Navigator.h"

#include "mainwindow/Commands.h"
#include "mainwindow/ItemPage.h"
#include "model/ItemKind.h"
#include "widgets/ModalDialogs.h"

#include <QAction>

namespace orvista {

namespace {

/// The key of the item's node; empty for the address map, which has none.
std::optional<std::string> keyOf(const Navigator::Way& way, const std::string& item) {
    if (!way.kind)
        return item == addressMapName ? std::optional(std::string()) : std::nullopt;
    const auto index = way.kind->indexOfName(item);
    return index ? std::optional(way.kind->key(*index)) : std::nullopt;
}

} // namespace

Navigator::Navigator(Commands& commands, std::vector<Way> ways,
                     std::function<void(const QString&)> showNotice, QObject* parent)
    : QObject(parent), commands_(commands), ways_(std::move(ways)), showNotice_(std::move(showNotice)) {}

void Navigator::goTo(const ItemPlace& place) {
    if (isModalDialogOpen())
        return;
    for (const Way& way : ways_) {
        const auto key = keyOf(way, place.item);
        if (!key || !commands_.action(way.pageEntry).isEnabled())
            continue;
        const bool isShown = way.page->shownItem() == place.item;
        if (!isShown && waitsFor(place, *way.page))
            return;
        forget();
        commands_.run(way.pageEntry);
        if (!isShown)
            way.page->showItem(QString::fromStdString(*key));
        way.page->enter(place.line);
    }
}

bool Navigator::waitsFor(const ItemPlace& place, const ItemPage& page) {
    if (!page.isNotApplied() || waiting_ == place)
        return false;
    waiting_ = place;
    showNotice_(tr("%1 is not applied; once more discards it").arg(QString::fromStdString(page.shownItem())));
    return true;
}

void Navigator::forget() {
    if (!waiting_)
        return;
    waiting_.reset();
    showNotice_({});
}

std::vector<std::string> Navigator::notAppliedItems() const {
    std::vector<std::string> names;
    for (const Way& way : ways_) {
        // Two kinds share a page.
        const std::string item = way.page->shownItem();
        if (keyOf(way, item) && way.page->isNotApplied())
            names.push_back(item);
    }
    return names;
}

} // namespace orvista
