#pragma once

#include <QStringList>

#include <optional>
#include <string>

class QWidget;

/// Asking for a file that is not a project.
namespace orvista {

/// Keeps Qt's file dialogs from writing a file of their own into the user's settings. Once, before the first
/// dialog.
void keepNoDialogSettings();

struct FileQuestion {
    QString title;
    QStringList filters; ///< "Picture (*.png)"; a name without an ending gets that of the chosen filter
    std::string folder;  ///< in which the choice begins, UTF-8; the user's own where it is empty
    QString name = {};   ///< proposed for a new file, with its ending
};

struct ChosenFile {
    std::string path; ///< UTF-8
    int filter = 0;   ///< the chosen one, from 0
};

/// After any question about replacing it; nothing when the user cancelled.
std::optional<ChosenFile> chooseFileToWrite(const FileQuestion& question, QWidget* parent);
std::optional<ChosenFile> chooseFileToRead(const FileQuestion& question, QWidget* parent);

} // namespace orvista
