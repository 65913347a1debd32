#include "bench/Pair.h"
#include "mainwindow/ProjectChanges.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/NamedItem.h"

#include <memory>
#include <string>
#include <vector>

/// Steps of the undo stack in the real window, with a project of 60 scripts of 64 KB, beside copying one such
/// script.
namespace orvista::bench {
namespace {

constexpr std::size_t scriptBytes = 64 * 1024;

std::string longScript() {
    std::string script;
    while (script.size() < scriptBytes)
        script += "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level        m\"\r\nACT STILL 3000\r\n";
    return script;
}

std::unique_ptr<testing::EditorFixture> editorOfLongScripts() {
    auto editor = std::make_unique<testing::EditorFixture>();
    editor->startWithNewProject();
    editor->project.STDMSG.fill(longScript());
    editor->project.ALTMSG.fill(longScript());
    return editor;
}

/// Copies the script anew each time.
class CopyOfAScript {
public:
    void operator()() {
        std::string copy = script_;
        benchmark::DoNotOptimize(copy.data());
    }

private:
    std::string script_ = longScript();
};

/// A change of one word in the middle of one script, which is not shown.
void makeStep(benchmark::State& state) {
    const auto editor = editorOfLongScripts();
    std::string script = longScript();
    runBesideFloor(
        state,
        [&] {
            script[scriptBytes / 2] ^= 1;
            editor->window->changes().change(QStringLiteral("Paste"),
                                             std::vector{scriptChange(editor->project, "STDMSG3", script)});
        },
        CopyOfAScript());
}
BENCHMARK(makeStep)->UseManualTime()->Iterations(2000)->Unit(benchmark::kMicrosecond);

/// The argument is how many of the 60 scripts the step changes, a word of each.
void undoAndRedo(benchmark::State& state) {
    const auto editor = editorOfLongScripts();
    std::vector<Change> wanted;
    std::string script = longScript();
    script[scriptBytes / 2] ^= 1;
    const auto count = static_cast<std::size_t>(state.range(0));
    for (const Item message : allMessages().first(count))
        wanted.push_back(scriptChange(editor->project, nameOf(message), script));
    editor->window->changes().change(QStringLiteral("Replace"), wanted);
    runBesideFloor(
        state,
        [&] {
            editor->window->changes().undo();
            editor->window->changes().redo();
        },
        CopyOfAScript());
    if (editor->project.STDMSG.front() != script || editor->window->changes().steps().canRedo())
        state.SkipWithError("the step was not made again");
}
BENCHMARK(undoAndRedo)->Arg(1)->Arg(60)->UseManualTime()->Iterations(500)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orvista::bench
