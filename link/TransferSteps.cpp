#include "link/TransferSteps.h"

#include "link/TransferCause.h"
#include "link/TransferredFiles.h"
#include "model/Numbers.h"

#include <algorithm>
#include <utility>

namespace orvista::DocTsfModule {

namespace {

SentFiles sendFiles(TransferControl& control, const std::string& folder, const PathRules& paths,
                    TransferProgress& progress) {
    SentFiles sent;
    const std::size_t count = transferredDeviceFiles.size() + bitmapsOfFolder(folder).size();
    const auto send = [&](std::string name) {
        const std::size_t number = sent.arrived.size() + 1;
        progress.showFile(name, number, std::max(number, count));
        std::string path = paths.join(folder, name);
        if (transferSucceeded(control.UploadFile(path))) {
            sent.arrived.push_back(std::move(name));
        } else {
            sent.failedPath = std::move(path);
            sent.cause = control.cause();
        }
        return !sent.failedPath;
    };
    for (const std::string_view name : transferredDeviceFiles) {
        if (!send(std::string(name)))
            return sent;
    }
    // Listed once more: bitmaps may come and go while the device files are sent.
    for (std::string& name : bitmapsOfFolder(folder)) {
        if (!send(std::move(name)))
            return sent;
    }
    return sent;
}

} // namespace

bool connect(TransferControl& control, const DeviceConnection& connection) {
    control.RemoteAddress(connection.txtIP);
    control.RemotePort(toWhole<std::int16_t>(leadingNumber(connection.txtPort)));
    return transferSucceeded(control.OpenLink());
}

std::string faultOf(const SentFiles& sent, const PathRules& paths) {
    if (sent.failedPath)
        return withCause(paths.split(*sent.failedPath)->name + " was not taken", sent.cause);
    return sent.cause.empty() ? std::string() : withCause("the end was not confirmed", sent.cause);
}

SentFiles sendFolder(TransferControl& control, const std::string& folder, const PathRules& paths,
                     TransferProgress& progress) {
    control.PrepareUpload({});
    SentFiles sent = sendFiles(control, folder, paths, progress);
    if (!sent.failedPath) {
        control.FinishUpload();
        sent.cause = control.cause();
    }
    control.CloseLink();
    return sent;
}

} // namespace orvista::DocTsfModule
