#pragma once

#include "link/ModbusClient.h"
#include "model/Item.h"
#include "model/People.h"
#include "model/Project.h"

#include <QBoxLayout>
#include <QWidget>

#include <array>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace orvista {

class DropDownList;
class ShownBox;
class TesterActions;

/// Switches messages on and off and writes a coil or a float on the device. The page only gathers what is
/// ticked and typed; TesterActions sends it.
class TcpTesterPage final : public QWidget, public UpdateButtons {
    Q_OBJECT
public:
    explicit TcpTesterPage(Messages& messages, QWidget* parent = nullptr);

    /// Sends the requests; must outlive the page. Without one the buttons do nothing.
    void useActions(TesterActions& actions) { actions_ = &actions; }

    void showDeviceAddress(const std::string& address);
    void showMessageAddresses(const QString& emergencyStart, const QString& regularStart);
    /// Fills the two address lists and selects the first entry of each.
    void fillVariableAddresses(const Project& project);
    void tickMessage(Item message, bool on);

    /// True from the disabling of the Update buttons, before the connection, until they are enabled again.
    bool isSending() const { return isSending_; }

    using QWidget::setEnabled;
    /// The four Update buttons are disabled while a request is under way.
    void setEnabled(UpdateButton button, bool enabled) override;

    QSize minimumSizeHint() const override;

signals:
    void sendingChanged(bool isSending);
    /// Update was pressed for messages of either kind.
    void messagesUpdated();

protected:
    /// Wide pages have the frames side by side, which leaves a low window room for all of them.
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The frame of one kind of messages: start address, numbered boxes, Update.
    struct MessageFrame {
        QString name;
        QString caption;
        QString boxToolTip;
        QLineEdit* address;
        QPushButton* update;
    };

    int leastWidth(QBoxLayout::Direction direction) const;
    QBoxLayout* buildAddressRow();
    template <std::size_t count>
    QGroupBox* buildMessageFrame(const MessageFrame& parts, const QString& boxName,
                                 std::array<QCheckBox*, count>& boxes);
    QGroupBox* buildCoilFrame();
    QGroupBox* buildRegisterFrame();
    void connectHandlers(Messages& messages);
    QPushButton* pushButton(UpdateButton button) const;

    void btnEmgMsgUpdate_Click();
    void btnRegMsgUpdate_Click();
    void cmdUpdateCoil_Click();
    void cmdUpdateReg_Click();

    QBoxLayout* frames_;      ///< those of the messages, then those of the values
    QBoxLayout* valueFrames_; ///< the coil's and the register's

    TesterActions* actions_ = nullptr;
    bool isSending_ = false;
    const QWidget* pressed_ = nullptr;
    const QWidget* focusHandedTo_ = nullptr;

    ShownBox* txtIP;
    QLineEdit* txtEMsgAddr;
    QLineEdit* txtRMsgAddr;
    std::array<QCheckBox*, emergencyMessageCount> chkEmergMsg{};
    std::array<QCheckBox*, regularMessageCount> chkRegMsg{};
    QPushButton* btnEmgMsgUpdate;
    QPushButton* btnRegMsgUpdate;
    DropDownList* cbDIAddr;
    QCheckBox* chkUpdateCoil;
    QPushButton* cmdUpdateCoil;
    DropDownList* cbAIAddr;
    QLineEdit* txtFloat;
    QPushButton* cmdUpdateReg;
};

} // namespace orvista
