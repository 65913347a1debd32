#include "mainwindow/DiscardedScripts.h"

#include <algorithm>

namespace orvista {

void DiscardedScripts::add(Item item, const std::string& script, const QDateTime& time) {
    const auto same = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.item == item && entry.script == script;
    });
    if (same != entries_.end()) {
        bytes_ -= same->script.size();
        entries_.erase(same);
    }
    entries_.push_front({item, script, time});
    bytes_ += script.size();
    while (entries_.size() > maximumCount || bytes_ > maximumBytes)
        forgetOldest();
}

void DiscardedScripts::forgetOldest() {
    bytes_ -= entries_.back().script.size();
    entries_.pop_back();
}

} // namespace orvista
