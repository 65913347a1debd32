#pragma once

#include <string>

namespace orvista {

/// Opens a help file with whatever the system has for it.
class HelpOpener {
public:
    virtual ~HelpOpener() = default;
    /// \param path UTF-8. A missing file or viewer gives no message.
    virtual void open(const std::string& path) = 0;
};

/// The system's own way.
class SystemHelpOpener final : public HelpOpener {
public:
    void open(const std::string& path) override;
};

} // namespace orvista
