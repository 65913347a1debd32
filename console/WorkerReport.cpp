#include "console/WorkerReport.h"

#include "model/Numbers.h"

#include <array>
#include <charconv>

namespace orvista::console {

namespace {

constexpr std::string_view stateReport = "state";
constexpr std::string_view endReport = "end";
using ReportWords = std::array<std::string_view, 5>;

std::string joinedWords(const ReportWords& words) {
    std::string bytes;
    for (const std::string_view word : words)
        bytes.append(word).push_back('\0');
    return bytes;
}

std::size_t countOf(std::string_view word) {
    std::size_t count = 0;
    std::from_chars(word.data(), word.data() + word.size(), count);
    return count;
}

} // namespace

std::string reportBytes(const DisplayState& state) {
    return joinedWords(
        {stateReport, state.state, state.file, decimalText(state.files), decimalText(state.of)});
}

std::string reportBytes(const TransferEnd& end) {
    return joinedWords({endReport, outcomeWord(end.outcome), end.reason, decimalText(end.files), {}});
}

std::optional<WorkerReport> takeReport(std::string_view& bytes) {
    ReportWords words;
    std::string_view rest = bytes;
    for (std::string_view& word : words) {
        const auto end = rest.find('\0');
        if (end == std::string_view::npos)
            return std::nullopt;
        word = rest.substr(0, end);
        rest.remove_prefix(end + 1);
    }
    bytes = rest;
    WorkerReport report;
    if (words[0] == stateReport)
        report.state = DisplayState{
            {}, {}, std::string(words[1]), std::string(words[2]), countOf(words[3]), countOf(words[4]),
            {}, 0};
    else if (const auto outcome = outcomeOfWord(words[1]); outcome && words[0] == endReport)
        report.end = TransferEnd{*outcome, std::string(words[2]), countOf(words[3])};
    return report;
}

} // namespace orvista::console
