#pragma once

#include "model/Project.h"
#include "script/MessagePage.h"

#include <QDialog>

#include <functional>
#include <string>

class QButtonGroup;
class QPushButton;

namespace orvista {

class BitmapFrame;
class DeviceLineEdit;
class EffectsFrame;
class MasterView;
class MessageColorFrame;
class VariableFrame;
class WizardPreview;
struct DisplayValues;

/// The message wizard: composes one page of a message script. It always starts blank; shown modally, hidden
/// by OK and Cancel, and then read and deleted by its caller.
class frmMessageEdit : public QDialog {
    Q_OBJECT
public:
    explicit frmMessageEdit(const QString& projectFolder, QWidget* parent = nullptr);

    /// Shows under the controls what the page looks like on a panel. `project` must outlive the form.
    /// \param values that its fields show
    /// \param master how the project is looked at; null where it is shown as it is
    void showPreview(const Project& project, int columns, const DisplayValues& values,
                     const MasterView* master = nullptr);

    /// \param toolTipOf the tool-tip of a variable in the lists, as markup; empty for none
    void explainVariables(std::function<QString(const QString&)> toolTipOf);

    /// The composed page in device bytes; empty until OK is pressed, hence after Cancel.
    std::string PartialScript;

private:
    QWidget* createTextFrame();
    QLayout* createButtons();
    void EnableBitmapControls(bool enable);
    void EnableTextControls(bool enable);
    void OptMsgType_Click(int index);
    void txtText_Change();
    void btnOK_Click();
    MessageForm form() const;
    void followControls();

    QButtonGroup* OptMsgType; ///< 0 "Text", 1 "Bitmap"
    DeviceLineEdit* txtText;
    BitmapFrame* bitmapFrame_;
    MessageColorFrame* messageColorFrame_;
    VariableFrame* variableFrame_;
    EffectsFrame* effectsFrame_;
    QPushButton* btnOK;
    WizardPreview* preview_ = nullptr;
    bool isOfMaster_ = false;
};

} // namespace orvista
