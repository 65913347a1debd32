#include "link/TransferControls.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace {

/// Uploads ask for no progress of single files.
struct NoProgress final : orvista::DocTsfModule::TransferProgress {
    void showActivity(const std::string&) override {}
    void showFile(const std::string&, std::size_t, std::size_t) override {}
};

/// What went wrong, or null.
const char* upload(std::int16_t port, char** first, char** last) {
    NoProgress progress;
    const auto control = orvista::makeTransferControl(progress);
    if (!control)
        return "there is no transfer control";
    control->RemoteAddress("127.0.0.1");
    control->RemotePort(port);
    if (!orvista::transferSucceeded(control->OpenLink()))
        return "the device is not reached";
    control->PrepareUpload("");
    const char* failed = nullptr;
    for (char** path = first; path != last && !failed; ++path)
        if (!orvista::transferSucceeded(control->UploadFile(*path)))
            failed = *path;
    if (!failed)
        control->FinishUpload();
    control->CloseLink();
    return failed;
}

} // namespace

/// orvista-upload PORT FILE...: sends files to the simulated device of this machine through the control that
/// the editor would use. It lies beside a packed editor to find out whether all that an upload opens is
/// there.
int main(int argc, char** argv) {
    const std::string_view text = argc > 2 ? argv[1] : "";
    std::int16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port <= 0) {
        std::fputs("usage: orvista-upload PORT FILE...\n", stderr);
        return 2;
    }
    if (const char* const failed = upload(port, argv + 2, argv + argc)) {
        std::fprintf(stderr, "orvista-upload: %s\n", failed);
        return 1;
    }
    return 0;
}
