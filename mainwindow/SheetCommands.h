#pragma once

#include "display/forms/PreviewSetting.h"
#include "model/ProjectLifecycle.h"
#include "sheets/Sheet.h"
#include "sheets/SheetImport.h"

#include <QObject>

#include <string>

namespace orvista {

class PanelDock;
class ProjectChanges;

/// The commands of the Tools menu that write the project's addresses, messages and variables as tables, and
/// take such tables in.
class SheetCommands final : public QObject {
    Q_OBJECT
public:
    /// All must outlive the commands.
    SheetCommands(const DocMgrModule::ProjectLifecycle& lifecycle, ProjectChanges& changes, PanelDock& dock,
                  PreviewSettingSource setting, QWidget& window);

    void miToolsExportAddresses_Click();
    void miToolsBook_Click();
    void miToolsExportMessages_Click();
    void miToolsImportMessages_Click();
    void miToolsExportVariables_Click();
    void miToolsImportVariables_Click();
    /// Shows what the table of messages, variables or names would change, and takes what the user chooses.
    /// \param path UTF-8
    void importAny(const std::string& path);

signals:
    /// Messages or variables came from a table in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);
    /// The table holds names instead. \param path UTF-8
    void namesCame(const std::string& path, const std::string& bytes);

private:
    QString proposedName(const QString& subject) const;
    void write(const std::string& path, const std::string& bytes);
    void chooseAndImport(SheetSubject subject);
    void import(const std::string& path, std::optional<SheetSubject> subject);
    void take(const std::string& path, SheetImport sheet);

    const DocMgrModule::ProjectLifecycle& lifecycle_;
    const Project& project_;
    Messages& messages_;
    ProjectChanges& changes_;
    PanelDock& dock_;
    PreviewSettingSource setting_;
    QWidget& window_;
};

} // namespace orvista
