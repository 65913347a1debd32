#pragma once

#include "model/Item.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

/// A page that shows one item of the project at a time.
class ItemPage {
public:
    virtual ~ItemPage() = default;
    /// Nothing when none is shown.
    virtual std::optional<Item> shownItem() const = 0;
    /// True when the page shows something of the item that is not in the project. Found by comparing, so that
    /// it can differ from whether Apply is enabled.
    virtual bool isNotApplied() const = 0;
    /// What stands in the boxes that Apply stores: device bytes, those of the address map UTF-8.
    virtual std::vector<std::string> editedTexts() const = 0;
    /// Puts texts of the same item back into these boxes, as if they had been edited, and enables Apply.
    /// Another number of texts changes nothing.
    virtual void putBack(const std::vector<std::string>& texts) = 0;
    /// Shows another item as a click on its node does: what is not applied is lost.
    virtual void showItem(Item item) = 0;
    /// Shows what the project holds now of the shown item: it was changed from outside the page. Apply is
    /// disabled as after a click on its node.
    virtual void showAnew() = 0;
    /// Brings the keyboard to the shown item and selects a line of it, from 1; 0 is the item as a whole.
    virtual void enter(std::size_t line) = 0;
};

} // namespace orvista
