#include "mainwindow/HelpOpener.h"

#ifdef _WIN32
#include "model/Files.h"

#include <windows.h>

#include <shellapi.h>
#else
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>
#endif

namespace orvista {

#ifdef _WIN32

void SystemHelpOpener::open(const std::string& path) {
    // Parameters and working folder are the text "0", as they always were.
    ShellExecuteW(GetActiveWindow(), L"open", systemPath(path).c_str(), L"0", L"0", SW_SHOWNORMAL);
}

#else

void SystemHelpOpener::open(const std::string& path) {
    const QString file = QString::fromStdString(path);
    // Handed a missing file, some desktops show a message of their own.
    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

#endif

} // namespace orvista
