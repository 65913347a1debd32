#pragma once

#include "script/MessagePage.h"

#include <QDialog>

#include <string>

class QButtonGroup;
class QPushButton;

namespace orvista {

class BitmapFrame;
class DeviceLineEdit;
class EffectsFrame;
class MessageColorFrame;
class VariableFrame;

/// The message wizard: composes one page of a message script. It always starts blank; shown modally, hidden
/// by OK and Cancel, and then read and deleted by its caller.
class frmMessageEdit : public QDialog {
    Q_OBJECT
public:
    explicit frmMessageEdit(const QString& projectFolder, QWidget* parent = nullptr);

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

    QButtonGroup* OptMsgType; ///< 0 "Text", 1 "Bitmap"
    DeviceLineEdit* txtText;
    BitmapFrame* bitmapFrame_;
    MessageColorFrame* messageColorFrame_;
    VariableFrame* variableFrame_;
    EffectsFrame* effectsFrame_;
    QPushButton* btnOK;
};

} // namespace orvista
