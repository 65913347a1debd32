#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orvista {

/// What an item of a display holds, as DisplayItem::raw.
using HeldWords = std::array<std::uint16_t, 2>;

/// An item that was written and is to be as it was before. Items are known by their place in a list.
struct WrittenItem {
    std::size_t place = 0;
    HeldWords before{};
    HeldWords wrote{}; ///< something else
    bool operator==(const WrittenItem&) const = default;
};

/// What an acceptance has written to a display and not put back: only that is its own. Whatever somebody else
/// wrote over it is theirs.
class AcceptanceLedger {
public:
    AcceptanceLedger() = default;
    /// \param written what was written by a run that was cut off
    explicit AcceptanceLedger(const std::vector<WrittenItem>& written);

    /// A value will be written; it counts as written once it was sent. \param held now
    void plan(std::size_t place, HeldWords held, HeldWords value);
    void forgetPlanned();
    /// A value that was planned, or the one from before, is on its way.
    void noteSent(std::size_t place, HeldWords value);
    /// The display has written what was sent, or says that it did not. \param held now
    void noteSettled(std::size_t place, HeldWords held);

    /// How what was read comes about.
    enum class Origin { Known, Ours, Others };
    /// \param held until now, as far as was known
    Origin noteRead(std::size_t place, HeldWords held, HeldWords read);

    /// Something of ours stands there, or may: it was sent.
    bool isWritten(std::size_t place) const;
    /// The same, and the display has said so.
    bool isConfirmed(std::size_t place) const;
    /// What was sent was not there when the display was read, and may still come: whoever switches it then.
    bool isDoubtful(std::size_t place) const;
    /// With what is planned, in the order of places.
    std::vector<WrittenItem> entries() const;
    bool isEmpty() const { return entries_.empty(); }

private:
    struct Entry {
        WrittenItem item;
        bool isPlanned = true;
        std::optional<HeldWords> pending = {}; ///< sent, and not confirmed
        bool isDoubtful = false;
    };
    Entry* find(std::size_t place);
    const Entry* find(std::size_t place) const;
    void forget(std::size_t place);
    Origin notePendingRead(Entry& entry, HeldWords held, HeldWords read);

    std::vector<Entry> entries_;
};

} // namespace orvista
