#pragma once

#include "model/Place.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

class Commands;
class ItemPage;

/// Goes to an item of the project, as users would: its page by the Option menu's entry, its node by a click,
/// then the line.
class Navigator final : public QObject {
    Q_OBJECT
public:
    /// How the items of a kind are reached.
    struct Way {
        Kind kind;
        const char* pageEntry;
        ItemPage* page;
    };
    /// \param showNotice shows a line of text, or takes it away when the text is empty
    Navigator(Commands& commands, std::vector<Way> ways, std::function<void(const QString&)> showNotice,
              QObject* parent);

    /// Where an edit that is not applied would be lost, the first call only says so; the next one goes, when
    /// it is about the same place and clear() was not called in between. Does nothing while there is no
    /// project or a modal dialog is open.
    void goTo(const Place& place);
    /// Whether goTo() has only said so.
    bool isWaiting() const { return waiting_.has_value(); }
    /// The user did something else: a place that was asked for is not waiting any more.
    void clear();

    /// The items that are shown with an edit that is not applied.
    std::vector<Item> notAppliedItems() const;

private:
    bool waitsFor(const Place& place, const ItemPage& page);

    Commands& commands_;
    std::vector<Way> ways_;
    std::function<void(const QString&)> showNotice_;
    std::optional<Place> waiting_;
};

} // namespace orvista
