#pragma once

#include <functional>
#include <optional>
#include <string>

namespace orvista {

/// Opens a help file with whatever the system has for it.
class HelpOpener {
public:
    virtual ~HelpOpener() = default;
    /// \param path UTF-8. A missing file or viewer gives no message.
    virtual void open(const std::string& path) = 0;
    /// Opens one page of that help file, such as "system.html", in the browser; the help file where there is
    /// no such page.
    virtual void openPage(const std::string& path, const std::string& page) = 0;
};

/// The system's own way. Where no viewer for compiled help is installed it is the same help as HTML, in
/// help/ beside the file, that opens in the browser.
class SystemHelpOpener final : public HelpOpener {
public:
    void open(const std::string& path) override;
    void openPage(const std::string& path, const std::string& page) override;
};

/// A page of the help as HTML that belongs to a compiled help file.
std::string helpAsHtml(const std::string& path, const std::string& page = "index.html");

/// Which of the two to open: the compiled file where it is there and there is a viewer for it, otherwise the
/// HTML; nothing where there is neither.
std::optional<std::string> helpToOpen(const std::string& path, const std::function<bool()>& hasViewer);

#ifndef _WIN32
/// Whether the desktop opens compiled help files with a program of its own. Asks xdg-mime, as what opens the
/// file does; without it no viewer is known.
bool hasCompiledHelpViewer();
#endif

} // namespace orvista
