#pragma once

#include "link/forms/FleetProcess.h"
#include "link/forms/FleetRows.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QLayout;
class QPushButton;

namespace orvista {

class Messages;
class ScratchFolder;
struct Project;

/// Sends the project to the displays of a list, many at once, or compares it with what they hold. The list is
/// loaded, pasted or typed in place. `orvista` beside the program does the work, on
/// a copy of what was saved; this shows what it tells.
class frmSeveralDisplays final : public QDialog {
    Q_OBJECT
public:
    /// What is sent and who sends it. All must outlast the dialog.
    struct Work {
        const Project& project;  ///< saved
        std::string projectFile; ///< its path
        std::string program;     ///< path of orvista
        Messages& messages;
        bool isMaster = false;                   ///< each display gets its own project of it
        std::vector<FleetDisplay> displays = {}; ///< the master's; shown at once
        std::optional<int> columns = {};         ///< of the display, as they are noted
    };
    explicit frmSeveralDisplays(Work work, QWidget* parent = nullptr);
    ~frmSeveralDisplays() override;

    /// Ends what runs.
    void reject() override;

private:
    void buildLayout();
    QPushButton* button(const char* name, const QString& caption, const QString& toolTip,
                        void (frmSeveralDisplays::*click)());
    void btnLoad_Click();
    void btnPaste_Click();
    void tblDisplays_CellTyped(int row, int column, const QString& text);
    void tblDisplays_RemovalWanted();
    void btnStart_Click();
    void btnCompare_Click();
    void btnStop_Click();
    void btnAgain_Click();
    void btnReport_Click();
    void takeList(const std::string& bytes, const std::string& folder, const QString& source);
    /// What orvista is to do.
    enum class Task { Upload, Compare };
    void start(const std::vector<FleetDisplay>& displays, Task task);
    QStringList argumentsFor(Task task, const std::string& list) const;
    QLayout* buildUpperRow();
    QLayout* buildLowerRow();
    /// The list as orvista is to read it, with copies of the projects' files. \throws std::system_error
    std::string writeList(const std::vector<FleetDisplay>& displays);
    /// What orvista says, with the project's own path for that of the copy, which goes.
    QString withoutCopy(QString text) const;
    void processEnded(std::vector<FleetResult> results, const QString& complaint);
    void showRows();
    void enableButtons();

    Work work_;
    FleetRows rows_;
    Task task_ = Task::Upload;               ///< what was done last
    std::unique_ptr<ScratchFolder> scratch_; ///< of what is being sent
    QString copy_;                           ///< of the project there; set before orvista runs
    FleetProcess process_{this};
    QTimer refresh_;

    RowsTable* tblDisplays;
    QCheckBox* chkCheckFirst;
    QCheckBox* chkSkipEqual;
    QCheckBox* chkVerify;
    QLabel* lblDisplays = nullptr;
    QPushButton* btnLoad = nullptr;
    QPushButton* btnPaste = nullptr;
    QPushButton* btnStart = nullptr;
    QPushButton* btnCompare = nullptr;
    QPushButton* btnStop = nullptr;
    QPushButton* btnAgain = nullptr;
    QPushButton* btnReport = nullptr;
    QPushButton* btnCancel = nullptr;
};

} // namespace orvista
