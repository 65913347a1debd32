#include "bench/Pair.h"
#include "tests/support/EditorFixture.h"
#include "widgets/RowsTable.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <memory>
#include <string>

/// The tables of messages and variables in the real window.
namespace orvista::bench {
namespace {

std::string messageOf(std::size_t length) {
    std::string script;
    do
        script += "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level        m\"\r\nDISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
                  "IN GO-LEFT 1 50\r\nACT STILL 3000\r\n";
    while (script.size() < length);
    return script;
}

std::unique_ptr<testing::EditorFixture> editorWith(std::size_t length) {
    auto editor = std::make_unique<testing::EditorFixture>();
    editor->startWithNewProject();
    editor->project.STDMSG.fill(messageOf(length));
    editor->project.ALTMSG.fill(messageOf(length));
    return editor;
}

/// From the entry of the menu View to the painted tab, which is built by then; beside painting the table once
/// more. The length of each of the 60 messages is the argument.
void openTable(benchmark::State& state, const char* entry, const char* name) {
    const auto length = static_cast<std::size_t>(state.range(0));
    std::unique_ptr<testing::EditorFixture> editor;
    Costs openings;
    Costs paintings;
    for ([[maybe_unused]] auto turn : state) {
        editor = editorWith(length);
        QCoreApplication::processEvents();
        const Cost opening = costOf([&] {
            editor->trigger(entry);
            editor->window->repaint();
        });
        auto* const table = editor->find<RowsTable>(name);
        openings.add(opening);
        paintings.add(costOf([&] { table->viewport()->repaint(); }));
        state.SetIterationTime(opening.wall.count());
    }
    state.counters["ms"] = openings.wall().count() * 1e3;
    state.counters["paint_ms"] = paintings.wall().count() * 1e3;
}
BENCHMARK_CAPTURE(openTable, messages, "miViewMessages", "tblMessages")
    ->Arg(100)
    ->Arg(64 * 1024)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(openTable, variables, "miViewVariables", "tblVariables")
    ->Arg(100)
    ->UseManualTime()
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

/// A key in the filter of the messages, until the rows that are left are painted; beside looking for the same
/// letters in all scripts by the library's own search, which minds the case.
void filterMessages(benchmark::State& state) {
    const auto editor = editorWith(static_cast<std::size_t>(state.range(0)));
    editor->trigger("miViewMessages");
    auto* const filter = editor->find<QLineEdit>("txtMessagesFilter");
    filter->setFocus();
    QTest::qWait(1000);                           // all messages are read
    const QString word = QStringLiteral("lever"); // looked for to the end of each script
    int typed = 0;
    runBesideFloor(
        state,
        [&] {
            if (typed == word.size()) {
                filter->clear();
                typed = 0;
            }
            QTest::keyClick(filter, word.at(typed++).toLatin1());
            editor->window->repaint();
        },
        [&] {
            const std::string wanted = word.toStdString();
            for (const std::string& script : editor->project.STDMSG)
                benchmark::DoNotOptimize(script.find(wanted));
            for (const std::string& script : editor->project.ALTMSG)
                benchmark::DoNotOptimize(script.find(wanted));
        });
}
BENCHMARK(filterMessages)->Arg(100)->Arg(64 * 1024)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
