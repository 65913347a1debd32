#pragma once

#include "compare/forms/ComparisonPanel.h"
#include "mainwindow/Commands.h"
#include "model/ProjectLifecycle.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <string>
#include <vector>

namespace orvista {

class Navigator;
class PanelDock;
class ProjectChanges;
class TransferCommands;

/// The panel "Comparison" of the dock and what fills it: the project beside a display or another project, and
/// the bytes that an upload sends beside those that the display holds. Neither side changes, but for rows
/// that the user takes over.
class ComparisonTools final : public QObject {
    Q_OBJECT
public:
    /// What it asks for the other side.
    struct World {
        const DocMgrModule::ProjectLifecycle& lifecycle;
        ProjectChooser& chooser;
        std::function<TransferCommands*()> transfer; ///< null where the program has none
    };
    /// Adds the panel to the dock.
    ComparisonTools(World world, ProjectChanges& changes, Navigator& navigator, PanelDock& dock,
                    QObject* parent);

    std::vector<CommandRow> toolsEntries();

    /// The project in memory is another, or may be.
    void projectChanged();
    void markNotApplied();
    /// There is no project any more.
    void forget();

signals:
    /// Items of another project were taken over, which lies in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);

private:
    void miToolsCompareDisplay_Click();
    void miToolsCompareProject_Click();
    void miToolsVerify_Click();

    QWidget* makePanel();
    ComparisonPanel& openPanel();
    void takeOver(const std::vector<ItemState>& states);
    const Project& project() const { return world_.lifecycle.project(); }

    World world_;
    ProjectChanges& changes_;
    Navigator& navigator_;
    PanelDock& dock_;
    QPointer<ComparisonPanel> panel_; ///< null until it is opened
    std::string theirFolder_;         ///< of the other project; empty where a display is the other side
};

} // namespace orvista
