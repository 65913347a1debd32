#include "mainwindow/DownloadNotice.h"

#include "compare/HeldSentences.h"
#include "link/TransferCommands.h"

#include <QCoreApplication>

#include <system_error>

namespace orvista {

namespace {

QString noticeAbout(const std::string& name, const DisplayContents& contents) {
    if (const auto missing = contents.missingFiles(); !missing.empty())
        return QString::fromStdString(notThereText(missing));
    if (!contents.holdsProject())
        return QCoreApplication::translate("DownloadNotice", "%1 holds no project: its files say nothing")
            .arg(QString::fromStdString(name));
    return {};
}

} // namespace

QString downloadNotice(const FetchedDisplay& display, const std::string& folder) {
    if (!display.missing.empty())
        return QString::fromStdString(notThereText(display.missing));
    if (display.end != FetchedDisplay::End::Fetched)
        return {};
    try {
        return noticeAbout(display.name, DisplayContents::ofFolder(folder));
    } catch (const std::system_error&) { // the readers told of it
        return {};
    }
}

} // namespace orvista
