#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace orvista {

namespace DocMgrModule {
struct ProgramEnvironment;
}

/// What a newcomer tries the program with.
struct TryOutSettings {
    /// Asks for a folder that is there, UTF-8, under that caption; nothing when the user cancelled.
    std::function<std::optional<std::string>(const std::string& caption)> chooseFolder;
    std::string example; ///< folder of a project, UTF-8
    std::string project; ///< the name of its project, without extension
    QString simulator;   ///< the program
    QStringList options; ///< of the program, before those that the editor gives it

    /// The files as they lie beside the program, the folder by a dialog of its own.
    /// \param parent of the dialog
    static TryOutSettings usual(const DocMgrModule::ProgramEnvironment& environment, QWidget* parent);
};

} // namespace orvista
