#include "console/Worker.h"

#include "console/CommandFailure.h"
#include "console/Commands.h"
#include "console/WorkerReport.h"
#include "link/DisplayFiles.h"
#include "link/TransferControls.h"

#include <CLI/App.hpp>

#include <cstdio>
#include <exception>
#include <optional>
#include <system_error>
#include <utility>

namespace orvista::console {

namespace {

std::string_view word(UploadStage stage) {
    switch (stage) {
    case UploadStage::Connecting:
        return "connecting";
    case UploadStage::Comparing:
        return "comparing";
    case UploadStage::Sending:
        return sendingState;
    case UploadStage::Verifying:
        return verifyingState;
    }
    return {};
}

constexpr const char* workerCommand = "worker";

constexpr std::string_view skipEqualWish = "--skip-equal";
constexpr std::string_view verifyWish = "--verify";

/// The next words of standard input, each with a NUL after it, up to an empty one. Nothing at the end.
std::optional<std::vector<std::string>> nextWords() {
    std::vector<std::string> words(1);
    for (int c = std::getchar(); c != EOF; c = std::getchar()) {
        if (c != 0)
            words.back() += static_cast<char>(c);
        else if (words.back().empty())
            return words;
        else
            words.emplace_back();
    }
    return std::nullopt;
}

/// At once and as it is. Where nobody reads it, this process is about to end.
void writeReport(const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    std::fflush(stdout);
}

TransferEnd endOf(const WorkerRequest& request, StatePrinter& states, SentContents& sent) {
    try {
        if (request.work == downloadWork)
            return downloadAsWorker(request, states);
        return request.work == compareWork ? compareAsWorker(request, states, sent)
                                           : uploadAsWorker(request, states, sent);
    } catch (const FetchFailure& failure) {
        return failedTransfer(failure.what());
    } catch (const CommandFailure& failure) {
        return failedTransfer(failure.what());
    } catch (const std::system_error& failure) { // of the folder for what is fetched, and of bitmaps
        return failedTransfer(failure.what());
    }
}

ExitStatus work() {
    // Else libcurl would start up again for every display.
    const auto library = keptTransferLibrary();
    SentContents sent;
    while (const auto words = nextWords()) {
        constexpr std::size_t fixedWords = 3;
        if (words->size() <= fixedWords)
            return ExitStatus::Unusable;
        WorkerRequest request{words->at(0), words->at(1), words->at(2)};
        for (const std::string& wish : *words) {
            request.skipEqual = request.skipEqual || wish == skipEqualWish;
            request.verify = request.verify || wish == verifyWish;
        }
        StatePrinter states;
        states.finish(endOf(request, states, sent));
    }
    return ExitStatus::Well;
}

} // namespace

ChildProcess::Work worker() {
    return {workerCommand, [] {
                try {
                    return static_cast<int>(work());
                } catch (const std::exception&) { // the first process sees that this one is gone
                    return static_cast<int>(ExitStatus::Unusable);
                }
            }};
}

const DisplayContents& SentContents::of(const std::string& folder) {
    if (!contents_ || folder_ != folder) {
        contents_ = DisplayContents::ofFolder(folder);
        folder_ = folder;
    }
    return *contents_;
}

std::string requestBytes(const WorkerRequest& request) {
    std::string bytes;
    const auto append = [&bytes](std::string_view text) { bytes.append(text).push_back('\0'); };
    append(request.work);
    append(request.display);
    append(request.project);
    if (request.skipEqual)
        append(skipEqualWish);
    if (request.verify)
        append(verifyWish);
    append({});
    return bytes;
}

std::vector<ChildProcess::Setting> workerEnvironment(const std::string& scratch) {
#ifdef _WIN32
    return {{"TMP", scratch}, {"TEMP", scratch}};
#else
    return {{"TMPDIR", scratch}};
#endif
}

void StatePrinter::enter(UploadStage stage) {
    state_.state = word(stage);
    state_.file.clear();
    state_.files = 0;
    state_.of = 0;
    printState();
}

void StatePrinter::showFile(const std::string& name, std::size_t number, std::size_t count) {
    if (state_.state == word(UploadStage::Connecting))
        state_.state = "fetching"; // an upload sends or compares first
    state_.file = name;
    state_.files = number - 1;
    state_.of = count;
    printState();
}

void StatePrinter::printState() const {
    writeReport(reportBytes(state_));
}

void StatePrinter::finish(const TransferEnd& end) const {
    writeReport(reportBytes(end));
}

void addWorker(CLI::App& program, Run& run) {
    CLI::App* command = program.add_subcommand(workerCommand)->group("");
    command->callback([&run] { run = work; });
}

} // namespace orvista::console
