#pragma once

#include "link/forms/FleetProcess.h"
#include "link/forms/FleetRows.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;

namespace orvista {

class Messages;
class ScratchFolder;
struct Project;

/// Sends the project to the displays of a list, many at once. `orvista` beside the program does the work, on
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
    void btnStart_Click();
    void btnStop_Click();
    void btnAgain_Click();
    void btnReport_Click();
    void takeList(const std::string& bytes, const std::string& folder, const QString& source);
    void start(const std::vector<FleetDisplay>& displays);
    /// The list as orvista is to read it, with copies of the projects' files. \throws std::system_error
    std::string writeList(const std::vector<FleetDisplay>& displays);
    void processEnded(const std::vector<FleetResult>& results, const QString& complaint);
    void showRows();
    void enableButtons();

    Work work_;
    FleetRows rows_;
    std::unique_ptr<ScratchFolder> scratch_; ///< of what is being sent
    FleetProcess process_;
    QTimer refresh_;

    RowsTable* tblDisplays;
    QCheckBox* chkSkipEqual;
    QLabel* lblDisplays = nullptr;
    QPushButton* btnLoad = nullptr;
    QPushButton* btnPaste = nullptr;
    QPushButton* btnStart = nullptr;
    QPushButton* btnStop = nullptr;
    QPushButton* btnAgain = nullptr;
    QPushButton* btnReport = nullptr;
    QPushButton* btnCancel = nullptr;
};

} // namespace orvista
