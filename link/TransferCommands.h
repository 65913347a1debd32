#pragma once

namespace orvista {

/// The two ways between the project and the device, as menu and toolbar call them.
class TransferCommands {
public:
    virtual ~TransferCommands() = default;
    virtual void upload() = 0;
    virtual void download() = 0;
};

} // namespace orvista
