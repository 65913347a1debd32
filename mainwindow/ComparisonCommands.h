#pragma once

#include "compare/forms/ComparisonPanel.h"
#include "link/TransferCommands.h"
#include "model/ProjectLifecycle.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

class MasterView;
class PanelDock;
class ProjectChanges;

/// A display that shows the same as what an upload sends.
struct EqualDisplay {
    std::string address;             ///< as typed, UTF-8
    std::string fingerprint;         ///< of what it holds
    std::optional<FleetDisplay> row; ///< of a master, whose project is held
};

/// What fills the panel "Comparison" of the dock: the project beside a display or another project, and
/// the bytes that an upload sends beside those that the display holds. Neither side changes, but for rows
/// that the user takes over.
class ComparisonCommands final : public QObject {
    Q_OBJECT
public:
    /// What it asks for the other side.
    struct World {
        const DocMgrModule::ProjectLifecycle& lifecycle;
        ProjectChooser& chooser;
        std::function<TransferCommands*()> transfer; ///< null where the program has none
        const MasterView& master;                    ///< how the project is looked at
    };
    ComparisonCommands(World world, ProjectChanges& changes, PanelDock& dock, QObject* parent);

    void miToolsCompareDisplay_Click();
    void miToolsCompareProject_Click();
    void miToolsVerify_Click();
    /// Shows what differs from that project on the disk.
    void compareWithProject(const ChosenProject& other);
    /// Asks for a display and fetches what it holds. Where something that counts differs from what an upload
    /// sends, the panel lists it, a line says so, and there is nothing.
    /// \param title of the question
    std::optional<EqualDisplay> fetchEqual(const std::string& title);

signals:
    /// Items of another project were taken over, which lies in that folder (UTF-8).
    void itemsCameFrom(const std::string& folder);

private:
    ComparisonPanel& openPanel();
    /// An earlier answer goes where a new one fails: it would be taken for that.
    /// \param work false when it failed, which it told
    void compare(const std::function<bool()>& work);
    void forgetComparison();
    bool isComparedWithDisplay(const std::string& title, ComparisonPanel::Question question);
    /// Of a master the row of the display at that address; the user is told where there is not one, or where
    /// its values do not fit.
    std::optional<FleetDisplay> rowAt(const std::string& address);
    bool isComparedWith(const ChosenProject& other);
    /// What a display holds, and where its files lie.
    struct Fetched {
        FetchedDisplay display;
        std::shared_ptr<const ScratchFolder> folder;
    };
    Fetched fetch(const std::string& title);
    /// Nothing for a display that is none of the master's, which the user is told.
    std::optional<ComparisonPanel::Theirs> sideOf(const Fetched& fetched);
    /// Reads what was fetched as opening does, for what the readers have to say of it.
    bool isReadable(const DisplayContents& contents, const std::string& folder);
    void sayWhatIsMissing(const std::vector<std::string>& names);
    void takeOver(const std::vector<Change>& changes);
    const Project& project() const { return world_.lifecycle.project(); }

    World world_;
    ProjectChanges& changes_;
    PanelDock& dock_;
    std::string theirFolder_; ///< of the other project; empty where a display is the other side
};

} // namespace orvista
