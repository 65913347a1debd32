#pragma once

#include "link/TransferControl.h"
#include "link/dispatch/Com.h"

#include <span>

namespace orvista {

/// The maker's transfer control, called by the numbers of its operations through IDispatch. It has no window
/// of its own here, and whatever it is asked it is asked on the thread that created it.
class DispatchTransferControl final : public TransferControl {
public:
    /// Nothing where the control is not registered, or cannot be brought to life.
    static std::unique_ptr<DispatchTransferControl> create();

    void RemoteAddress(const std::string& address) override;
    void RemotePort(std::int16_t port) override;
    std::int64_t OpenLink() override;
    void CloseLink() override;
    void PrepareUpload(const std::string& argument) override;
    void FinishUpload() override;
    std::int64_t UploadFile(const std::string& path) override;
    std::int64_t DownloadFiles(const std::string& argument, const std::string& folder) override;

private:
    struct Instance {
        ComApartment apartment; // outlives the control
        ComPointer<IDispatch> control;
    };

    explicit DispatchTransferControl(std::unique_ptr<Instance> instance) : instance_(std::move(instance)) {}
    HRESULT invoke(DISPID operation, WORD kind, std::span<VARIANT> arguments, VARIANT* result);
    bool set(DISPID property, VARIANT value);
    std::int64_t ask(DISPID operation, std::span<VARIANT> arguments);

    std::unique_ptr<Instance> instance_;
    // A control that refused the address or the port would connect to where it last was.
    bool addressTaken_ = true;
    bool portTaken_ = true;
};

} // namespace orvista
