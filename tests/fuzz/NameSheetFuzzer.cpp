#include "tests/fuzz/ReaderRun.h"

#include "sheets/NameSheet.h"

/// Any bytes are a table of names.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    ProjectNotes notes;
    notes.set({Kind::Float, 1}, {"Level", "m", ""});
    const NameImport import = importNames(testing::inputBytes(data, size), notes);
    testing::require(import.errors.none() || import.notes == notes);
    testing::require(noteFaults(import.notes).empty());
    const NameImport again = importNames(nameSheet(import.notes), {});
    // A table knows no blanks around a text.
    for (const NoteChange& change : noteChanges(import.notes, again.notes))
        testing::require(change.before.front() == ' ' || change.before.back() == ' ');
    testing::require(again.errors.none());
    return 0;
}
