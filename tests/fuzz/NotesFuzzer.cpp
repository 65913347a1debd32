#include "tests/fuzz/ReaderRun.h"

#include "items/NotesJson.h"

#include <stdexcept>

namespace {

using namespace orvista;

/// What was noted is read again as it was, and the rest of the file does not hinder it.
void checkChange(std::string_view bytes, ProjectNotes notes) {
    const Item first{Kind::Float, 0};
    const Item last{Kind::Emergency, emergencyMessageCount - 1};
    const ItemNote former = notes.of(first);
    notes.set(first, notes.of(last));
    notes.set(last, former);
    notes.columns = notes.columns == 96 ? 97 : 96;
    try {
        const NotesReading again = readNotes(notesBytes(bytes, notes));
        testing::require(again.fault.empty() && again.notes == notes);
    } catch (const std::invalid_argument&) { // it would be longer than it may be
        testing::require(bytes.size() > mostNotesBytes / 32);
    }
}

} // namespace

/// Any bytes are a file of notes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const NotesReading reading = readNotes(bytes);
    testing::require(reading.fault.empty() || (reading.notes == ProjectNotes() && reading.bad.empty()));
    testing::require(noteFaults(reading.notes).empty());
    if (!reading.fault.empty())
        return 0;
    testing::require(notesBytes(bytes, reading.notes) == bytes);
    checkChange(bytes, reading.notes);
    return 0;
}
