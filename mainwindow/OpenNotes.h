#pragma once

#include "items/ProjectNotes.h"
#include "model/CommandEnabling.h"
#include "model/Project.h"

#include <QObject>

#include <string>

namespace orvista {

class DisplayPreview;
class PanelDock;

/// What is noted beside the open project. A line in the dock names what was not taken.
class OpenNotes final : public QObject {
    Q_OBJECT
public:
    /// \param preview gets the display's columns when a project is opened
    OpenNotes(const Project& project, DisplayPreview& preview, PanelDock& dock, QObject* parent);

    /// Dots across the display of projects that have none noted.
    void useColumns(int columns) { usualColumns_ = columns; }
    void follow(ProjectTransition transition);
    /// What the file holds now.
    void readAgain();
    /// The same after the user wrote it: the preview gets columns that were changed.
    void takeWritten();

    const ProjectNotes& notes() const { return notes_; }
    /// Why nothing was taken of the file, as a sentence; empty where it was.
    const std::string& fault() const { return fault_; }

    /// What was not taken of the file may say that the project is a master.
    bool mayHideMaster() const { return mayHideMaster_; }

    /// Offers to copy the notes of another project, once per call; not where this one has notes already.
    /// \param path of the other one's notes; may be empty
    void offerFrom(const std::string& path);

signals:
    void changed();

private:
    void take(ProjectNotes notes);
    void copyFrom(const std::string& path);
    void showFaults(const QString& text);

    const Project& project_;
    DisplayPreview& preview_;
    PanelDock& dock_;
    ProjectNotes notes_;
    std::string fault_;
    bool mayHideMaster_ = false;
    int usualColumns_;
    bool isOpening_ = true; ///< between a reset and what comes of it
};

} // namespace orvista
