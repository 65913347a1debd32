#pragma once

#include "model/Item.h"

#include <QDateTime>

#include <cstddef>
#include <deque>
#include <string>

namespace orvista {

/// Scripts that were edited, not applied, and thrown away. They are kept in memory only.
class DiscardedScripts {
public:
    static constexpr std::size_t maximumCount = 20;
    /// Of all together; where there are more, the oldest are forgotten.
    static constexpr std::size_t maximumBytes = std::size_t{16} << 20;

    struct Entry {
        Item item;
        std::string script;
        QDateTime time;
    };

    /// A script of the item that is there already moves to the front.
    void add(Item item, const std::string& script, const QDateTime& time);
    /// Newest first.
    const std::deque<Entry>& entries() const { return entries_; }

private:
    void forgetOldest();

    std::deque<Entry> entries_;
    std::size_t bytes_ = 0;
};

} // namespace orvista
