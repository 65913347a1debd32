#include "link/TransferControls.h"

#ifdef _WIN32
#include "link/dispatch/DispatchTransferControl.h"
#endif
#ifdef ORVISTA_HAS_LIBCURL
#include "link/ftp/CurlLibrary.h"
#include "link/ftp/FtpTransferControl.h"
#endif

namespace orvista {

std::unique_ptr<TransferControl>
makeTransferControl([[maybe_unused]] DocTsfModule::TransferProgress& progress) {
#ifdef _WIN32
    if (auto control = DispatchTransferControl::create())
        return control;
#endif
#ifdef ORVISTA_HAS_LIBCURL
    if (!CurlLibrary::open())
        return nullptr;
    auto control = std::make_unique<FtpTransferControl>(
        [&progress](const std::string& name, std::size_t number, std::size_t count) {
            progress.showFile(name, number, count);
        });
    control->onMissing([&progress](const std::vector<std::string>& names) { progress.noteMissing(names); });
    control->endWhen([&progress] { return progress.isToEnd(); });
    return control;
#else
    return nullptr;
#endif
}

std::shared_ptr<const void> keptTransferLibrary() {
#ifdef ORVISTA_HAS_LIBCURL
    return CurlLibrary::open();
#else
    return nullptr;
#endif
}

} // namespace orvista
