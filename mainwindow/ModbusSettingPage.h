#pragma once

#include "mainwindow/ItemPage.h"
#include "model/Change.h"
#include "model/People.h"

#include <QWidget>

class QBoxLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace orvista {

class NotAppliedLabel;
class ShownBox;
class TcpTesterPage;

/// Edits the Modbus address map: the start addresses of the four blocks.
class ModbusSettingPage final : public QWidget, public ItemPage {
    Q_OBJECT
public:
    ModbusSettingPage(Project& project, ModifiedMark& modifiedMark, Messages& messages,
                      TcpTesterPage& testerPage, QWidget* parent = nullptr);

    /// Puts the default addresses into the model and on this page, without marking the project modified.
    void setUp();
    /// Current boxes from the model, new boxes empty.
    void refresh();
    /// Passes the shown message addresses and the variables' addresses on to the test page.
    void fillTestPage();

    /// The address map is always the one.
    std::optional<Item> shownItem() const override;
    /// True while one of the new boxes is not empty.
    bool isNotApplied() const override;
    /// Of the new boxes: emergency, regular, float, Boolean.
    std::vector<std::string> editedTexts() const override;
    /// Enables Apply where typing the texts does: half a number more would store a zero.
    void putBack(const std::vector<std::string>& texts) override;
    void showItem(Item item) override;
    /// Leaves the new boxes and Apply alone, as Restore Default leaves Apply.
    void showAnew() override;
    void enter(std::size_t line) override;

    /// True when Apply is enabled, which it stays when the new boxes are emptied.
    bool hasUnappliedEdits() const;
    /// True when the new boxes hold addresses to apply.
    bool holdsNewAddresses() const;
    /// \throws Overflow when an address does not fit; then nothing is stored
    void btnModBusApply_Click();

signals:
    void notAppliedChanged();
    /// The project's addresses were set: these changes were made.
    void stored(const std::vector<orvista::Change>& changes);
    /// One of the new boxes is another.
    void edited();

private:
    /// The boxes of one address block.
    struct AddressBoxes {
        ShownBox* current;
        QLineEdit* next;
    };

    static AddressBoxes makeBoxes(const QString& currentName, const QString& newName);
    static QGroupBox* buildFrame(const QString& caption, const QString& items, const AddressBoxes& block);
    QBoxLayout* buildButtons();
    void connectHandlers(Messages& messages);

    void btnRestoreDefault_Click();
    void txtNewAltAddr_Change();
    void txtNewAIAddr_Change();
    void txtNewDIAddr_Change();
    void enableApplyForDigits();
    void compare();
    void showCurrentAddresses();

    Project& project_;
    ModifiedMark& modifiedMark_;
    TcpTesterPage& testerPage_;

    AddressBoxes emergency_;
    AddressBoxes regular_;
    AddressBoxes float_;
    AddressBoxes boolean_;
    QPushButton* btnModBusApply;
    QPushButton* btnRestoreDefault;
    NotAppliedLabel* lblNotApplied;
};

} // namespace orvista
