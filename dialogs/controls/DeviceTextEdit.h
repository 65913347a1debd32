#pragma once

#include <QPlainTextEdit>

#include <string>

namespace orvista {

/// The script box: fixed-width, many lines, only characters of the device's encoding, with undo. A text that
/// was set and not edited comes back as the same bytes; edited lines are joined by CR LF. Tab moves on.
class DeviceTextEdit : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit DeviceTextEdit(QWidget* parent = nullptr);

    void setBytes(const std::string& bytes);
    std::string bytes() const;

protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
};

} // namespace orvista
