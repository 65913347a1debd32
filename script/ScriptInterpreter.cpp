#include "script/ScriptInterpreter.h"

#include "model/Lines.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace orvista {

namespace {

class Interpreter {
public:
    /// \param skipped bytes that stand before the line and were taken off it
    void take(std::size_t number, std::string_view line, std::size_t skipped) {
        if (line.find_first_not_of(' ') == std::string_view::npos)
            return;
        number_ = number;
        ScriptWords words(line, skipped);
        const std::size_t start = words.column();
        ScriptCommand command = scriptCommand(number, words);
        const auto reason = std::visit([&](auto& part) { return perform(std::move(part)); }, command);
        if (!reason)
            return;
        if (result_.remarks.size() >= maximumRemarks)
            ++result_.moreRemarks[static_cast<std::size_t>(*reason)];
        else if (words.wrong())
            remark(line, *words.wrong(), *reason, words.wrong()->argument);
        else
            remark(line, {{}, start, ScriptWords(line).word()}, *reason, std::nullopt);
    }

    std::vector<ScriptPage>& pages() { return result_.pages; }

    InterpretedScript finish() {
        endPage();
        return std::move(result_);
    }

private:
    using Reason = std::optional<RemarkReason>;

    Reason perform(RemarkReason reason) { return reason; }

    Reason perform(ClearPage) {
        endPage();
        page();
        return std::nullopt;
    }

    Reason perform(ScriptStep step) {
        addStep(step);
        return std::nullopt;
    }

    Reason perform(ScriptElement element) {
        if (page().elements.size() >= maximumElementsOfAPage)
            return RemarkReason::PageFull;
        page().elements.push_back(std::move(element));
        return std::nullopt;
    }

    void addStep(ScriptStep step) {
        step.elementCount = page().elements.size();
        page().steps.push_back(step);
        if (step.kind == StepKind::Leave)
            endPage();
    }

    /// The page being written; a script need not begin with CLEAR.
    ScriptPage& page() {
        if (!page_)
            page_.emplace().firstLine = number_;
        return *page_;
    }

    void endPage() {
        if (!page_)
            return;
        const std::size_t shown = page_->steps.empty() ? 0 : page_->steps.back().elementCount;
        if (shown < page_->elements.size())
            page_->steps.push_back({.kind = StepKind::Still,
                                    .milliseconds = defaultHold,
                                    .elementCount = page_->elements.size()});
        result_.pages.push_back(std::move(*page_));
        page_.reset();
    }

    void remark(std::string_view line, const ScriptWords::Wrong& wrong, RemarkReason reason,
                std::optional<ScriptArgument> argument) {
        result_.remarks.push_back({number_, std::string(line.substr(0, maximumRemarkLength)), wrong.column,
                                   reason, argument, std::string(wrong.word.substr(0, maximumRemarkLength)),
                                   wrong.word.size()});
    }

    InterpretedScript result_;
    std::optional<ScriptPage> page_;
    std::size_t number_ = 0; ///< of the present line
};

/// \param goesOn asked after each line, about the pages that are over by then
template <typename GoesOn>
InterpretedScript interpret(std::string_view script, GoesOn&& goesOn) {
    MemorySource source(script);
    LineReader lines(source);
    Interpreter interpreter;
    std::string_view line;
    // The reader leaves out a mark at the start; columns count it.
    std::size_t skipped = script.starts_with(utf8ByteOrderMark) ? utf8ByteOrderMark.size() : 0;
    for (std::size_t number = 1; goesOn(interpreter.pages()) && lines.next(line); ++number, skipped = 0)
        interpreter.take(number, line, skipped);
    return interpreter.finish();
}

} // namespace

InterpretedScript interpretScript(std::string_view script) {
    return interpret(script, [](const auto&) { return true; });
}

InterpretedScript interpretPageByPage(std::string_view script, const std::function<void(ScriptPage&)>& take) {
    const auto handOver = [&](std::vector<ScriptPage>& pages) {
        for (ScriptPage& page : pages)
            take(page);
        pages.clear();
        return true;
    };
    InterpretedScript read = interpret(script, handOver);
    handOver(read.pages);
    return read;
}

InterpretedScript interpretUntil(std::string_view script,
                                 const std::function<bool(const ScriptPage&)>& isEnough) {
    std::size_t asked = 0;
    InterpretedScript read = interpret(script, [&](const std::vector<ScriptPage>& pages) {
        for (; asked < pages.size(); ++asked)
            if (isEnough(pages[asked]))
                return false;
        return true;
    });
    // The line that ended the page may have begun another.
    read.pages.resize(std::min(asked + 1, read.pages.size()));
    return read;
}

} // namespace orvista
