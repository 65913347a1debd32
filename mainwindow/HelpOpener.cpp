#include "mainwindow/HelpOpener.h"

#include "model/Files.h"

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#else
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>
#endif

#include <filesystem>

namespace orvista {

namespace {

bool isThere(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(systemPath(path), error);
}

} // namespace

std::string helpAsHtml(const std::string& path) {
    return utf8Path(systemPath(path).parent_path() / "help" / "index.html");
}

std::optional<std::string> helpToOpen(const std::string& path, const std::function<bool()>& hasViewer) {
    if (isThere(path) && hasViewer())
        return path;
    std::string html = helpAsHtml(path);
    return isThere(html) ? std::optional(std::move(html)) : std::nullopt;
}

#ifdef _WIN32

void SystemHelpOpener::open(const std::string& path) {
    const auto hasViewer = [&path] {
        wchar_t program[MAX_PATH];
        return reinterpret_cast<INT_PTR>(FindExecutableW(systemPath(path).c_str(), nullptr, program)) > 32;
    };
    // Parameters and working folder are the text "0", as they always were.
    if (const auto help = helpToOpen(path, hasViewer))
        ShellExecuteW(GetActiveWindow(), L"open", systemPath(*help).c_str(), L"0", L"0", SW_SHOWNORMAL);
}

#else

bool hasCompiledHelpViewer() {
    constexpr int patience = 3000; // milliseconds; desktops answer within a tenth of that
    // The type's registered name, and the one that viewers of the time before it know.
    for (const auto* const type : {"application/vnd.ms-htmlhelp", "application/x-chm"}) {
        QProcess query;
        query.setStandardErrorFile(QProcess::nullDevice());
        query.start(QStringLiteral("xdg-mime"),
                    {QStringLiteral("query"), QStringLiteral("default"), QLatin1String(type)});
        if (query.waitForFinished(patience) && !query.readAllStandardOutput().trimmed().isEmpty())
            return true;
    }
    return false;
}

void SystemHelpOpener::open(const std::string& path) {
    // Handed a missing file, or one without a viewer, some desktops show a message of their own.
    if (const auto help = helpToOpen(path, hasCompiledHelpViewer))
        QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(*help)));
}

#endif

} // namespace orvista
