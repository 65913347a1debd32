#pragma once

#include "items/Acceptance.h"
#include "items/AcceptanceCopy.h"
#include "link/forms/AcceptTable.h"

#include <QDialog>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvista {

class AcceptanceRun;
class DisplayAcceptance;
class ExpectedMessage;
class Messages;

/// Has a display show the ticked messages one after the other, and notes what the user says of each. However
/// it ends, what was there before is put back first.
class frmAccept final : public QDialog {
    Q_OBJECT
public:
    struct Work {
        AcceptedProject accepted; ///< what the display holds
        std::string address;      ///< of the display, as typed, UTF-8
        std::uint16_t port;       ///< where it speaks Modbus
        std::string fingerprint;
        Messages& messages;
        /// Asked before anything is written: why nobody else may begin here now; empty where one may.
        std::function<std::string()> claim;
        /// Keeps what was there before among the copies of unsaved work; false where that failed.
        std::function<bool(const CutOffAcceptance&)> keep;
    };
    explicit frmAccept(Work work, QWidget* parent = nullptr);
    ~frmAccept() override;

    /// What could not be put back: it is to be offered.
    std::vector<WrittenItem> NotPutBack;

    /// Puts back first.
    void reject() override;

private:
    void buildLayout();
    QBoxLayout* buildHead();
    QBoxLayout* buildAnswers();
    QBoxLayout* buildEnd();
    QPushButton* button(const char* name, const QString& caption, const QString& toolTip,
                        void (frmAccept::*click)());

    void btnAcceptStart_Click();
    void btnAcceptGood_Click() { say(SeenResult::AsShown); }
    void btnAcceptBad_Click() { say(SeenResult::Wrong); }
    void btnAcceptSkip_Click() { say(SeenResult::Skipped); }
    void btnAcceptBack_Click();
    void btnAcceptWidest_Click();
    void btnAcceptStop_Click();

    void say(SeenResult result);
    std::string faultOfName(const std::string& path) const;
    void beginResult(const std::string& path);
    void write();
    bool mayClose();
    Item firstToShow() const;
    void goTo(std::optional<Item> message);
    std::optional<Item> beside(int step) const;
    void follow();
    void finish();
    void enableButtons();
    bool keep(const AcceptanceRun& run) const;
    bool isRunning() const;
    bool hasVariables(Item message) const;
    QString stateText() const;

    Work work_;
    AcceptTable table_;
    ExpectedMessage* expected_;
    DisplayAcceptance* run_ = nullptr; ///< none before the first start
    Acceptance acceptance_;
    std::string path_;        ///< of the result's file
    QString writeFault_;      ///< why the last result is not in the file; empty where it is
    std::optional<Item> at_;  ///< what is shown, or about to be
    bool isWidest_ = false;   ///< with the widest values
    bool wantsFocus_ = false; ///< at the answers, once one can be given
    bool wantsClose_ = false; ///< once everything is put back

    QLabel* lblAcceptWarning;
    QLabel* lblAcceptState;
    QLineEdit* txtAcceptName;
    QLineEdit* txtAcceptRemark;
    QPushButton* btnAcceptStart = nullptr;
    QPushButton* btnAcceptGood = nullptr;
    QPushButton* btnAcceptBad = nullptr;
    QPushButton* btnAcceptSkip = nullptr;
    QPushButton* btnAcceptBack = nullptr;
    QPushButton* btnAcceptWidest = nullptr;
    QPushButton* btnAcceptStop = nullptr;
    QPushButton* btnCancel = nullptr;
};

} // namespace orvista
