#pragma once

#include "mainwindow/EditorProgram.h"
#include "tools/tour/Hands.h"

#include <QDir>
#include <QImage>
#include <QWidget>

#include <functional>
#include <memory>

namespace orvista::tour {

/// Where the tour plays: the folder it leaves behind, its numbered pictures, and the running editor.
class Stage {
public:
    /// Empties what an earlier tour left in `folder`, which is made if it is missing.
    explicit Stage(const QString& folder);

    /// Ends the running editor, if there is one, and starts it again, with an empty memory but for its files.
    /// Script the start-up dialog before. With `project` (a path) it opens that one instead; with a folder
    /// for it, it keeps unsaved work there.
    void startEditor(const QString& project = {}, quint16 modbusPort = ModbusClient::modbusPort,
                     const QString& recoveryFolder = {});
    QWidget& window() { return editor_->window(); }
    Hands hands() { return Hands(window()); }

    /// Saves a picture of the window and prints a line about what it shows.
    void show(QWidget& window, const QString& name, const QString& line);
    void show(const QImage& picture, const QString& name, const QString& line);
    void show(const QString& name, const QString& line) { show(window(), name, line); }

    /// Plays `act` in the modal window of that name once it opens. A failure in it fails the step.
    void inDialog(const QString& name, std::function<void(const Hands&)> act);

    /// Lays the example and a simulated display without a window, on free ports, beside the program.
    void setUpTryOut() const;

    /// Gives the next file dialog a path. As if pasted: the list that opens under a typed one takes the
    /// click.
    void answerWithFile(const QString& path);

    /// A folder for a project, made new.
    QString projectFolder(const QString& name) const;
    /// Copies the plain files of `folder` as they stand now to files/`name`.
    void keep(const QString& folder, const QString& name) const;
    QString path(const QString& name) const { return folder_.filePath(name); }

private:
    QDir folder_;
    int pictures_ = 0;
    std::unique_ptr<EditorProgram> editor_;
};

} // namespace orvista::tour
