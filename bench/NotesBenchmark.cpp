#include "bench/Pair.h"
#include "items/NotesFile.h"
#include "sheets/NameSheet.h"
#include "tests/support/EditorFixture.h"

#include <stdexcept>
#include <string>

/// What is noted beside a project.
namespace orvista::bench {
namespace {

/// Label, unit and comment of every variable and message.
ProjectNotes allNoted() {
    ProjectNotes notes;
    notes.displayName = "Line 3, gate";
    for (const Item item : allItems())
        if (item.kind != Kind::AddressMap)
            notes.set(item,
                      {"Noted_" + nameOf(item), "m3/h", "What " + nameOf(item) + " means on the plant"});
    return notes;
}

/// Opening a project in the window with 156 notes, beside the same without.
void openNoted(benchmark::State& state) {
    testing::EditorFixture editor;
    editor.startWithNewProject("Plain");
    editor.trigger("miFileSave");
    editor.newProject("Noted");
    editor.trigger("miFileSave");
    changeNotes(notesPath(editor.project), {}, allNoted());
    runBesideFloor(
        state, [&] { editor.openProject("Noted"); }, [&] { editor.openProject("Plain"); });
}
BENCHMARK(openNoted)->UseManualTime()->Iterations(100)->Unit(benchmark::kMicrosecond);

/// 156 names to a table and back, beside taking the table's cells apart.
void namesOutAndIn(benchmark::State& state) {
    const ProjectNotes notes = allNoted();
    const std::string sheet = nameSheet(notes);
    runBesideFloor(
        state,
        [&] {
            const NameImport import = importNames(nameSheet(notes), {});
            if (!import.errors.none() || import.notes.items().size() != notes.items().size())
                throw std::logic_error("the names did not come back");
        },
        [&] {
            CsvReader reader(sheet, ',');
            std::vector<std::string> cells;
            while (reader.next(cells))
                benchmark::DoNotOptimize(cells.data());
        });
}
BENCHMARK(namesOutAndIn)->UseManualTime()->Iterations(100)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench
