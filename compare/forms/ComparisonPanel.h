#pragma once

#include "compare/ContentsComparison.h"
#include "compare/DifferenceRows.h"
#include "display/forms/PreviewSetting.h"
#include "items/Master.h"
#include "items/ProjectNotes.h"
#include "model/Item.h"
#include "model/ScratchFolder.h"
#include "widgets/ProjectPanel.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace orvista {

class BeforeAfterPictures;
class RowsTable;

/// The panel "Comparison": what differs between what an upload of the project sends and another project, or
/// what a display holds, and how the current row's page looks on either side. While it is on the screen it
/// follows the project's changes.
class ComparisonPanel final : public ProjectPanel {
    Q_OBJECT
public:
    enum class Question {
        WhatDiffers, ///< in what the display shows
        HoldsAll     ///< every byte that an upload sends
    };
    /// What the project is compared with.
    struct Theirs {
        QString name; ///< of the display or the project, as the user knows it
        DisplayContents contents;
        std::shared_ptr<const ScratchFolder> fetched; ///< where the files of a display lie
        /// Of the project's own file the address on its System page: the project is compared as it is in
        /// memory then. Windows-1252.
        std::optional<std::string> ownFilesAddress = std::nullopt;
        /// Of a master the display whose own project is compared.
        std::optional<FleetDisplay> display = std::nullopt;
    };
    /// What of the project is compared with that.
    static DisplayContents ours(const Project& project, const Theirs& theirs);

    /// \param notAppliedItems the items that are shown with an edit that is not applied
    /// \param setting of the pictures below the list
    ComparisonPanel(const Project& project, std::function<std::vector<Item>()> notAppliedItems,
                    PreviewSettingSource setting);

    /// \throws std::system_error for a file that cannot be read; nothing is compared then
    void compareWith(Theirs theirs, Question question);
    /// Nothing is compared any more.
    void clear();

    /// What is noted about the items; must outlive the panel.
    void useNotes(const ProjectNotes& notes) { notes_ = &notes; }
    /// Compares again, at once or when the panel comes to the screen.
    void follow() override;
    void markNotApplied() override;
    /// The pictures' setting is another one.
    void followSetting();

signals:
    /// The project is to hold what the other side has.
    void takeWanted(const std::vector<orvista::Change>& changes);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void compare();
    QString systemPageText() const;
    void showNothing(const QString& reason);
    void enableTake();
    void showPictures();
    /// Those that the project can take over: of a master, what each display has the same.
    std::vector<DifferenceRow> selectedRows() const;
    void btnTakeTheirs_Click();
    void goToRow(int row);

    const Project& project_;
    std::function<std::vector<Item>()> notAppliedItems_;
    const ProjectNotes* notes_ = &noNotes();
    std::optional<Theirs> theirs_;
    Question question_ = Question::WhatDiffers;
    Project sent_;                    ///< what the files say that an upload sends
    std::vector<DifferenceRow> rows_; ///< what can be taken over; the files follow them
    std::vector<HeldAnswer> files_;

    QLabel* lblComparison;
    QPushButton* btnTakeTheirs;
    RowsTable* tblComparison;
    BeforeAfterPictures* pictures_;
};

} // namespace orvista
