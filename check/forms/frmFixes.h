#pragma once

#include "check/FixRun.h"
#include "display/forms/PreviewSetting.h"
#include "model/Change.h"
#include "model/Item.h"
#include "model/Project.h"

#include <QDialog>

#include <vector>

class QLabel;
class QPushButton;

namespace orvista {

class BeforeAfterPictures;
class BitmapProvider;
class DeviceTextEdit;
class RowsTable;

/// Shows what would mend several findings, old and new and how the page looks, to be ticked off. It never
/// writes the project: the caller reads the public values after the dialog has been hidden.
class frmFixes final : public QDialog {
    Q_OBJECT
public:
    /// What the dialog is about; all must outlive it.
    struct Subject {
        const Project& project;
        const BitmapProvider& bitmaps;
        int columns;
        PreviewSettingSource setting;
        std::vector<Item> kept = {}; ///< as of Fixing
    };
    /// \param all of the project, in the order in which they were made on a copy of it
    /// \param notApplied the items that are shown with an edit that is not applied; their rows are not ticked
    frmFixes(const Subject& subject, std::vector<MendedFinding> all, std::vector<Item> notApplied,
             QWidget* parent = nullptr);

    bool IsCanceled = true;    ///< true unless something is to be mended
    std::vector<Change> Fixed; ///< what mends the ticked rows

    void reject() override;

private:
    void buildLayout();
    void fillRows();
    std::vector<bool> sure() const;
    std::vector<bool> tickable() const;
    void showCount();
    void showCurrent();
    void showPictures(std::size_t row);
    /// Lets the shown project be as it was before that row's fix.
    void goTo(std::size_t row);
    void btnOK_Click();
    /// False where the reader stopped it.
    bool mend(Fixing& fixing);

    Subject subject_;
    std::vector<MendedFinding> all_;
    std::vector<Item> notApplied_;
    Project shown_;              ///< with the fixes before a row
    std::size_t shownFixes_ = 0; ///< how many of them

    RowsTable* tblFixes;
    DeviceTextEdit* txtFixesOld;
    DeviceTextEdit* txtFixesNew;
    BeforeAfterPictures* pictures_;
    QLabel* lblFixes;
    QPushButton* btnFixesTickAll;
    QPushButton* btnFixesTickNone;
    QPushButton* btnOK = nullptr;
};

} // namespace orvista
