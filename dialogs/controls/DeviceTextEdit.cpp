#include "dialogs/controls/DeviceTextEdit.h"

#include "dialogs/controls/DeviceText.h"
#include "model/Files.h"

#include <QFontDatabase>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

namespace orvista {

DeviceTextEdit::DeviceTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setTabChangesFocus(true);
}

void DeviceTextEdit::setBytes(const std::string& bytes) { setPlainText(shownScript(bytes)); }

std::string DeviceTextEdit::bytes() const {
    // toPlainText() would turn no-break spaces into blanks; the blocks keep them.
    std::string bytes;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0)
            bytes += lineEnd;
        bytes += deviceBytes(block.text()).value_or(std::string{});
    }
    return bytes;
}

bool DeviceTextEdit::canInsertFromMimeData(const QMimeData* source) const { return source->hasText(); }

void DeviceTextEdit::insertFromMimeData(const QMimeData* source) {
    QString text = source->text();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    if (deviceBytes(text))
        textCursor().insertText(text);
}

void DeviceTextEdit::keyPressEvent(QKeyEvent* event) {
    if (deviceBytes(event->text()))
        QPlainTextEdit::keyPressEvent(event);
    else
        event->accept();
}

void DeviceTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (!deviceBytes(event->commitString()))
        event->setCommitString({});
    QPlainTextEdit::inputMethodEvent(event);
}

} // namespace orvista
