#include "mainwindow/HelpOpener.h"

#include "model/SystemPath.h"

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

std::string helpAsHtml(const std::string& path, const std::string& page) {
    return utf8Path(systemPath(path).parent_path() / "help" / systemPath(page));
}

std::optional<std::string> helpToOpen(const std::string& path, const std::function<bool()>& hasViewer) {
    if (isThere(path) && hasViewer())
        return path;
    std::string html = helpAsHtml(path);
    return isThere(html) ? std::optional(std::move(html)) : std::nullopt;
}

#ifdef _WIN32

namespace {

void openFile(const std::string& path) {
    // Parameters and working folder are the text "0", as they always were.
    ShellExecuteW(GetActiveWindow(), L"open", systemPath(path).c_str(), L"0", L"0", SW_SHOWNORMAL);
}

} // namespace

void SystemHelpOpener::open(const std::string& path) {
    const auto hasViewer = [&path] {
        wchar_t program[MAX_PATH];
        return reinterpret_cast<INT_PTR>(FindExecutableW(systemPath(path).c_str(), nullptr, program)) > 32;
    };
    if (const auto help = helpToOpen(path, hasViewer))
        openFile(*help);
}

#else

bool hasCompiledHelpViewer() {
    constexpr int timeout = 3000; // milliseconds; desktops answer within a tenth of that
    // The type's registered name, and the one that viewers of the time before it know.
    for (const auto* const type : {"application/vnd.ms-htmlhelp", "application/x-chm"}) {
        QProcess query;
        query.setStandardErrorFile(QProcess::nullDevice());
        query.start(QStringLiteral("xdg-mime"),
                    {QStringLiteral("query"), QStringLiteral("default"), QLatin1String(type)});
        if (query.waitForFinished(timeout) && !query.readAllStandardOutput().trimmed().isEmpty())
            return true;
    }
    return false;
}

namespace {

void openFile(const std::string& path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

} // namespace

void SystemHelpOpener::open(const std::string& path) {
    // Handed a missing file, or one without a viewer, some desktops show a message of their own.
    if (const auto help = helpToOpen(path, hasCompiledHelpViewer))
        openFile(*help);
}

#endif

void SystemHelpOpener::openPage(const std::string& path, const std::string& page) {
    const std::string html = helpAsHtml(path, page);
    if (isThere(html))
        openFile(html);
    else
        open(path);
}

} // namespace orvista
