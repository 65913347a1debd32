#pragma once

#include "check/AllDisplaysCheck.h"
#include "check/FixRun.h"
#include "check/FolderCheck.h"
#include "display/forms/PreviewSetting.h"
#include "items/MasterView.h"
#include "items/ProjectNotes.h"
#include "model/FileRemarks.h"
#include "widgets/ProjectPanel.h"
#include "widgets/RowsTable.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;

namespace orvista {

class FilterBox;
class SeenDelay;

/// The panel "Findings": what the check finds in the project in memory. While it is on the screen it follows
/// the project's changes. A master is checked as it is looked at, or for all its displays, bit by bit.
class FindingsPanel final : public ProjectPanel {
    Q_OBJECT
public:
    /// \param check may be shared with others
    /// \param columns of the display, 1 to PanelSize::maximumColumns
    /// \param fileRemarks what was met in the files that the project was read from
    /// \param notAppliedItems the items that are shown with an edit that is not applied
    /// \param setting of the pictures beside fixes
    FindingsPanel(const Project& project, const FileRemarks& fileRemarks, FolderCheck& check, int columns,
                  std::function<std::vector<Item>()> notAppliedItems, PreviewSettingSource setting);

    /// Checks again for a display of another width, in the range above.
    void setColumns(int columns);
    /// What is noted about the items; must outlive the panel.
    void useNotes(const ProjectNotes& notes) { notes_ = &notes; }
    /// How the project is looked at; must outlive the panel. Without it it is checked as it is.
    void useMaster(const MasterView& view);
    /// Checks at once; for all displays as soon as that can be without keeping the user waiting.
    void check();
    /// Whether displays are still to be checked, or what was found of them is still to be shown.
    bool isChecking() const { return next_ != nullptr || isFilling(); }
    /// Checks a moment after the last call, while the panel is on the screen and no modal dialog is open.
    void follow() override;
    void markNotApplied() override;

    /// Gives the rows the keyboard.
    void enter();
    /// Goes to the finding after the chosen one, or before it with -1; from the last to the first. One that
    /// has taken the place of a finding that is gone is the next.
    /// \returns what to say in one line
    QString goOn(int step);
    /// The way that goOn() took is barred: the same step shall take it again.
    void goAgain(int step) { ahead_ = step; }
    /// Mends the finding of the current row by its first fix.
    void fixCurrent();

signals:
    /// A fix was chosen.
    /// \param step as it stands after "Undo"
    void changesWanted(const QString& step, const std::vector<orvista::Change>& changes);
    /// Something to say in one line; an empty text takes it away.
    void noticeAsked(const QString& text);

private:
    /// What is chosen in the table.
    struct Chosen {
        std::vector<Finding> selected;
        std::optional<Finding> current;
        int row = -1;
        int ahead = 0;
    };
    void buildLayout();
    bool isOfMaster() const { return master_ != nullptr && master_->isMaster(); }
    /// What is checked: of a master its places filled.
    const Project& shown() const { return master_ != nullptr ? master_->shown() : project_; }
    Findings checkShown();
    void checkOn();
    void checkNext();
    void take(Findings findings);
    bool isFilling() const { return filled_ < findings_.list.size(); }
    void beginFilling(Findings findings);
    void fillOn();
    TableRow rowOf(const Finding& finding, const std::vector<Item>& notApplied) const;
    QString textOf(const Finding& finding, const std::vector<Item>& notApplied) const;
    /// What no fix changes: of a master what has places.
    std::vector<Item> keptItems() const;
    std::vector<Fix> fixesOf(const Finding& finding) const;
    /// Those of the selected rows, that of the current row first.
    std::vector<Finding> selectedFindings() const;
    void select(const std::vector<Finding>& earlier);
    Chosen chosen() const;
    void choose(const Chosen& before);
    void showSummary();
    void goToFinding(int row);
    /// Of the table; null for none, and for one that is about to be another.
    const Finding* findingAt(int row) const;
    const Finding* currentFinding() const;
    Fixing fixing() const;
    void make(const Fix& fix);
    void showMenu(const QPoint& place);
    void fixAll(const FixChoice& choice);

    const Project& project_;
    const FileRemarks& fileRemarks_;
    FolderCheck& check_;
    std::function<std::vector<Item>()> notAppliedItems_;
    PreviewSettingSource setting_;
    int columns_;
    const ProjectNotes* notes_ = &noNotes();
    const MasterView* master_ = nullptr;
    std::unique_ptr<AllDisplaysCheck> allDisplays_; ///< what is shown of all displays; null for none
    std::unique_ptr<AllDisplaysCheck> next_;        ///< under way
    QTimer slices_;
    Findings findings_;
    std::size_t filled_ = 0; ///< how many of them are in the table
    Chosen before_;          ///< to be chosen again once all are
    /// Where from what was gone to last the current row lies: 1 for after it, -1 for before it, 0 for there.
    int ahead_ = 0;
    std::vector<QString> explanations_; ///< as markup, by code
    SeenDelay* delay_;

    FilterBox* txtFindingsFilter;
    QCheckBox* chkFindingsAllDisplays;
    QCheckBox* chkFindingsNotes;
    QLabel* lblFindings;
    QLabel* lblFindingsColumns;
    RowsTable* tblFindings;
};

} // namespace orvista
