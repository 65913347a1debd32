#pragma once

#include "items/AcceptanceCopy.h"

#include <QDialog>

#include <cstdint>
#include <functional>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace orvista {

class DisplayAcceptance;

/// What an acceptance that was cut off has left behind: reads the display, lists what would change, and puts
/// it back when the user wants that.
class frmPutBack final : public QDialog {
    Q_OBJECT
public:
    /// \param port where the display speaks Modbus
    frmPutBack(const CutOffAcceptance& cutOff, std::uint16_t port, QWidget* parent = nullptr);
    ~frmPutBack() override;

    /// True once nothing is left to be put back.
    bool IsDone = false;

    /// Waits for what is being put back.
    void reject() override;

private:
    void buildLayout();
    void follow();
    void btnPutBack_Click();

    QString display_;
    DisplayAcceptance* run_;
    bool wantsClose_ = false;
    QLabel* lblPutBack;
    QPlainTextEdit* txtPutBack;
    QPushButton* btnPutBack;
    QPushButton* btnCancel;
};

} // namespace orvista
