#include "bench/Pair.h"
#include "items/NotesFile.h"
#include "sheets/NameSheet.h"
#include "tests/support/EditorFixture.h"

#include <stdexcept>
#include <string>
#include <string_view>

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

/// Gives each message a script, 64 KB in all, that shows a variable.
void fillMessages(Project& project) {
    const std::string line = "TEXT 0 0 GREEN BLACK \"Emergency stop pump\"\r\n";
    for (const Item message : allMessages()) {
        std::string& script = scriptOf(project, message);
        script = "CLEAR\r\nDISPVAR 0 0 RED BLACK " + nameOf({Kind::Float, message.index}) + "\r\n";
        while (script.size() < 64 * 1024 / allMessages().size())
            script += line;
        script += "ACT STILL 3000";
    }
}

/// Opening projects in the window with 156 notes each until they are on the screen, beside the same without.
/// They are two and two: opening also clears away what the project before has left. \param state whether the
/// messages hold something
void openNoted(benchmark::State& state) {
    testing::EditorFixture editor;
    editor.start();
    for (const char* const name : {"Plain1", "Plain2", "Noted1", "Noted2"}) {
        editor.newProject(name);
        if (state.range(0) != 0)
            fillMessages(editor.project);
        editor.trigger("miFileSave");
        if (std::string_view(name).starts_with("Noted"))
            changeNotes(notesPath(editor.project), {}, allNoted());
    }
    const auto open = [&](const char* name) {
        editor.openProject(name);
        QCoreApplication::processEvents();
    };
    runBesideFloor(
        state,
        [&] {
            open("Noted1");
            open("Noted2");
        },
        [&] {
            open("Plain1");
            open("Plain2");
        });
}
BENCHMARK(openNoted)->ArgName("used")->Arg(0)->Arg(1)->UseManualTime()->Iterations(100)->Unit(
    benchmark::kMicrosecond);

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
