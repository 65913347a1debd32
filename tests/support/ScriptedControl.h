#pragma once

#include "link/TransferControl.h"
#include "link/TransferSteps.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace orvista::testing {

inline std::string lastPart(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

/// What the control is to answer, and what it was asked.
struct ControlScript {
    std::int64_t openResult = 1;
    std::int64_t downloadResult = 1;
    std::map<std::string, std::int64_t> uploadResults; ///< by bare name; others give 1
    std::vector<std::string> missing;                  ///< which a failed download names
    std::string cause;                                 ///< of a failure
    std::string endCause;                              ///< why the end is not confirmed
    std::function<void()> open;
    std::function<void(const std::string& folder)> download;
    std::function<void(const std::string& path)> upload;
    std::vector<std::string> calls;
};

/// A control without a display.
class ScriptedControl final : public TransferControl {
public:
    ScriptedControl(ControlScript& script, DocTsfModule::TransferProgress& progress)
        : script_(script), progress_(progress) {}

    void RemoteAddress(const std::string& address) override { note("RemoteAddress <" + address + ">"); }
    void RemotePort(std::int16_t port) override { note("RemotePort " + std::to_string(port)); }
    std::int64_t OpenLink() override {
        note("OpenLink");
        if (script_.open)
            script_.open();
        return script_.openResult;
    }
    void CloseLink() override { note("CloseLink"); }
    void PrepareUpload(const std::string& argument) override { note("PrepareUpload <" + argument + ">"); }
    void FinishUpload() override {
        note("FinishUpload");
        cause_ = script_.endCause;
    }
    std::string cause() const override { return cause_; }
    std::int64_t UploadFile(const std::string& path) override {
        note("UploadFile " + path);
        if (script_.upload)
            script_.upload(path);
        const auto result = script_.uploadResults.find(lastPart(path));
        return result == script_.uploadResults.end() ? 1 : result->second;
    }
    std::int64_t DownloadFiles(const std::string& argument, const std::string& folder) override {
        note("DownloadFiles <" + argument + "> " + folder);
        if (script_.download)
            script_.download(folder);
        if (!script_.missing.empty())
            progress_.noteMissing(script_.missing);
        return script_.downloadResult;
    }

private:
    void note(const std::string& line) { script_.calls.push_back(line); }

    ControlScript& script_;
    DocTsfModule::TransferProgress& progress_;
    std::string cause_ = script_.cause;
};

} // namespace orvista::testing
