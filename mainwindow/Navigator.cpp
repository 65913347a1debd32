#include "mainwindow/Navigator.h"

#include "mainwindow/Commands.h"
#include "mainwindow/ItemPage.h"
#include "widgets/ModalDialogs.h"

#include <QAction>

namespace orvista {

Navigator::Navigator(Commands& commands, std::vector<Way> ways,
                     std::function<void(const QString&)> showNotice, QObject* parent)
    : QObject(parent), commands_(commands), ways_(std::move(ways)), showNotice_(std::move(showNotice)) {}

void Navigator::goTo(const Place& place) {
    if (isModalDialogOpen())
        return;
    for (const Way& way : ways_) {
        if (way.kind != place.item.kind || !commands_.action(way.pageEntry).isEnabled())
            continue;
        const bool isShown = way.page->shownItem() == place.item;
        if (!isShown && waitsFor(place, *way.page))
            return;
        clear();
        commands_.run(way.pageEntry);
        if (!isShown)
            way.page->showItem(place.item);
        way.page->enter(place.line);
    }
}

bool Navigator::waitsFor(const Place& place, const ItemPage& page) {
    if (!page.isNotApplied() || waiting_ == place)
        return false;
    waiting_ = place;
    showNotice_(tr("%1 has an edit that is not applied. Go there again to discard it.")
                    .arg(QString::fromStdString(nameOf(*page.shownItem()))));
    return true;
}

void Navigator::clear() {
    if (!waiting_)
        return;
    waiting_.reset();
    showNotice_({});
}

std::vector<Item> Navigator::notAppliedItems() const {
    std::vector<Item> items;
    for (const Way& way : ways_) {
        // Two kinds share a page.
        const auto item = way.page->shownItem();
        if (item && item->kind == way.kind && way.page->isNotApplied())
            items.push_back(*item);
    }
    return items;
}

} // namespace orvista
