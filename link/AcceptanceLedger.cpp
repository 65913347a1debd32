#include "link/AcceptanceLedger.h"

#include <algorithm>
#include <utility>

namespace orvista {

AcceptanceLedger::AcceptanceLedger(const std::vector<WrittenItem>& written) {
    for (const WrittenItem& item : written)
        entries_.push_back({item, false});
}

AcceptanceLedger::Entry* AcceptanceLedger::find(std::size_t place) {
    return const_cast<Entry*>(std::as_const(*this).find(place));
}

const AcceptanceLedger::Entry* AcceptanceLedger::find(std::size_t place) const {
    const auto found =
        std::ranges::find_if(entries_, [place](const Entry& entry) { return entry.item.place == place; });
    return found == entries_.end() ? nullptr : &*found;
}

void AcceptanceLedger::forget(std::size_t place) {
    std::erase_if(entries_, [place](const Entry& entry) { return entry.item.place == place; });
}

void AcceptanceLedger::plan(std::size_t place, HeldWords held, HeldWords value) {
    if (find(place) == nullptr)
        entries_.push_back({{place, held, value}});
}

void AcceptanceLedger::forgetPlanned() {
    std::erase_if(entries_, [](const Entry& entry) { return entry.isPlanned; });
}

void AcceptanceLedger::noteSent(std::size_t place, HeldWords value) {
    Entry* const entry = find(place);
    if (entry == nullptr)
        return;
    entry->isPlanned = false;
    entry->pending = value;
    if (value != entry->item.before)
        entry->item.wrote = value;
}

void AcceptanceLedger::noteSettled(std::size_t place, HeldWords held) {
    Entry* const entry = find(place);
    if (entry == nullptr)
        return;
    entry->pending.reset();
    if (held == entry->item.before)
        forget(place);
}

AcceptanceLedger::Origin AcceptanceLedger::noteRead(std::size_t place, HeldWords held, HeldWords read) {
    Entry* const entry = find(place);
    if (entry != nullptr && entry->pending)
        return notePendingRead(*entry, held, read);
    if (read == held && (entry == nullptr || entry->isPlanned || read == entry->item.wrote))
        return Origin::Known;
    forget(place);
    return Origin::Others;
}

AcceptanceLedger::Origin AcceptanceLedger::notePendingRead(Entry& entry, HeldWords held, HeldWords read) {
    if (read != *entry.pending && read != held) {
        forget(entry.item.place);
        return Origin::Others;
    }
    // Was it carried out, or not? What the display did not confirm may also be somebody else's by chance.
    if (read == entry.item.before && read == *entry.pending)
        forget(entry.item.place);
    else if (read == entry.item.before)
        entry.isDoubtful = true;
    else if (read != *entry.pending)
        entry.pending.reset();
    return read == held ? Origin::Known : Origin::Ours;
}

bool AcceptanceLedger::isWritten(std::size_t place) const {
    const Entry* const entry = find(place);
    return entry != nullptr && !entry->isPlanned;
}

bool AcceptanceLedger::isConfirmed(std::size_t place) const {
    const Entry* const entry = find(place);
    return entry != nullptr && !entry->isPlanned && !entry->pending;
}

bool AcceptanceLedger::isDoubtful(std::size_t place) const {
    const Entry* const entry = find(place);
    return entry != nullptr && entry->isDoubtful;
}

std::vector<WrittenItem> AcceptanceLedger::entries() const {
    std::vector<WrittenItem> items;
    for (const Entry& entry : entries_)
        items.push_back(entry.item);
    std::ranges::sort(items, {}, &WrittenItem::place);
    return items;
}

} // namespace orvista
