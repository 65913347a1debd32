#include "mainwindow/OpenNotes.h"

#include "display/forms/DisplayPreview.h"
#include "display/forms/PreviewBar.h"
#include "items/NotesFile.h"
#include "mainwindow/PanelDock.h"
#include "model/SystemPath.h"
#include "widgets/PathText.h"

#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

/// The lines in the dock.
QString notTakenLine() {
    return QStringLiteral("NotesNotTaken");
}
QString notesOffer() {
    return QStringLiteral("CopyNotes");
}

bool isThere(const std::string& path) {
    std::error_code unknown;
    return !path.empty() && std::filesystem::exists(systemPath(path), unknown);
}

QString badText(const QString& file, const NotesReading& reading) {
    if (reading.bad.empty())
        return {};
    const QString first = OpenNotes::tr("%1: %2").arg(file, QString::fromStdString(reading.bad.front()));
    const std::size_t more = reading.bad.size() - 1 + reading.badNotListed;
    return more == 0 ? first : OpenNotes::tr("%1; and %2 more").arg(first).arg(more);
}

} // namespace

OpenNotes::OpenNotes(const Project& project, DisplayPreview& preview, PanelDock& dock, QObject* parent)
    : QObject(parent),
      project_(project),
      preview_(preview),
      dock_(dock),
      usualColumns_(PreviewBar::usualColumns) {}

void OpenNotes::follow(ProjectTransition transition) {
    switch (transition) {
    case ProjectTransition::Reset:
        isOpening_ = true;
        take({});
        fault_.clear();
        mayHideMaster_ = false;
        for (const QString& line : {notTakenLine(), notesOffer()})
            dock_.withdraw(line);
        break;
    case ProjectTransition::Opened:
    case ProjectTransition::ProjectCommands:
        readAgain();
        if (isOpening_)
            preview_.setColumns(notes_.columns.value_or(usualColumns_));
        isOpening_ = false;
        break;
    case ProjectTransition::Modified:
    case ProjectTransition::Saved:
        break;
    }
}

void OpenNotes::readAgain() {
    const std::string path = notesPath(project_);
    NotesReading reading = path.empty() ? NotesReading() : readNotesFile(path);
    const QString file = QFileInfo(shownPath(path)).fileName();
    fault_ = notesFaultText(file.toStdString(), reading);
    mayHideMaster_ = reading.mayHideMaster;
    showFaults(fault_.empty() ? badText(file, reading) : QString::fromStdString(fault_));
    take(std::move(reading.notes));
}

void OpenNotes::take(ProjectNotes notes) {
    if (notes == notes_)
        return;
    notes_ = std::move(notes);
    emit changed();
}

void OpenNotes::takeWritten() {
    const std::optional<int> before = notes_.columns;
    readAgain();
    if (notes_.columns && notes_.columns != before)
        preview_.setColumns(*notes_.columns);
}

void OpenNotes::showFaults(const QString& text) {
    if (text.isEmpty())
        dock_.withdraw(notTakenLine());
    else
        dock_.offer({notTakenLine(), text, {}, nullptr});
}

void OpenNotes::offerFrom(const std::string& path) {
    const std::string own = notesPath(project_);
    if (own.empty() || own == path || !isThere(path) || isThere(own))
        return;
    dock_.offer({notesOffer(), tr("There are names and notes in %1").arg(shownPath(path)), tr("Copy Notes"),
                 [this, path] { copyFrom(path); }});
}

void OpenNotes::copyFrom(const std::string& path) {
    try {
        copyNotesFile(path, notesPath(project_));
    } catch (const NotesFailure& failure) {
        dock_.showNotice(QString::fromStdString(failure.what()));
    }
    readAgain();
}

} // namespace orvista
