#pragma once

#include "model/ItemState.h"

#include <cstddef>
#include <string>

namespace orvista {

/// How one item goes from one value to another, and back. Of a script only the part that differs is kept, so
/// that a change of one word in a long script is small.
class ItemChange {
public:
    /// \param after of the same kind as what the item holds; a variable keeps its name
    /// \throws std::bad_variant_access when it is of another kind
    ItemChange(ItemState before, ItemValue after);

    const std::string& item() const { return item_; }
    /// True when both values are the same.
    bool changesNothing() const { return before_ == after_; }

    /// The item must hold what it held before the change.
    void apply(Project& project) const { replace(project, before_, after_); }
    /// The item must hold what it held after the change.
    void revert(Project& project) const { replace(project, after_, before_); }

    /// What the change takes of memory, about.
    std::size_t bytes() const;

private:
    void trim(std::string& before, std::string& after);
    void replace(Project& project, const ItemValue& old, const ItemValue& value) const;

    std::string item_;
    std::size_t at_ = 0; ///< where the differing part of a script begins
    ItemValue before_;   ///< of a script the differing part
    ItemValue after_;
};

} // namespace orvista
