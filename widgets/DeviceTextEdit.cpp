#include "widgets/DeviceTextEdit.h"

#include "widgets/DeviceText.h"

#include <QFontDatabase>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

bool isScriptCharacter(QChar shown) {
    return shown == continuationMark || shown == u'\n' || isDeviceCharacter(shown);
}

/// The form in which a text from outside goes into the box, or nothing when the device cannot show it.
std::optional<QString> insertable(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    if (!std::all_of(text.begin(), text.end(), isScriptCharacter))
        return std::nullopt;
    return shownScript(scriptBytes(text));
}

} // namespace

DeviceTextEdit::DeviceTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChange, this, &DeviceTextEdit::noteInsertion);
    connect(document(), &QTextDocument::contentsChanged, this, &DeviceTextEdit::removeForeignCharacters);
}

bool DeviceTextEdit::event(QEvent* event) {
    // A second font takes time to load: not before the box comes on the screen.
    if (event->type() == QEvent::Polish)
        setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return QPlainTextEdit::event(event);
}

void DeviceTextEdit::setBytes(const std::string& bytes) {
    const QScopedValueRollback setting(setting_, true);
    setPlainText(shownScript(bytes));
}

std::string DeviceTextEdit::bytes() const {
    // toPlainText() would turn no-break spaces into blanks; the blocks keep them.
    QString shown;
    shown.reserve(document()->characterCount());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0)
            shown += u'\n';
        shown += block.text();
    }
    return scriptBytes(shown);
}

bool DeviceTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

void DeviceTextEdit::insertFromMimeData(const QMimeData* source) {
    if (const auto text = insertable(source->text())) {
        textCursor().insertText(*text);
        ensureCursorVisible();
    }
}

QMimeData* DeviceTextEdit::createMimeDataFromSelection() const {
    // The widget's own copy turns no-break spaces into blanks.
    auto* data = new QMimeData;
    data->setText(textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n'));
    return data;
}

void DeviceTextEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly()) {
        // Shift+Enter would put a character into the text that the device does not have.
        textCursor().insertBlock();
        ensureCursorVisible();
        return;
    }
    if (deviceBytes(event->text()))
        QPlainTextEdit::keyPressEvent(event);
    else
        event->accept();
}

void DeviceTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (const auto text = insertable(event->commitString()); !text)
        event->setCommitString({});
    else if (*text != event->commitString())
        event->setCommitString(*text, event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
}

void DeviceTextEdit::noteInsertion(int position, int /*removed*/, int added) {
    if (!setting_)
        insertion_ = {position, position + added};
}

/// Some insertions pass by the handlers above (the context menu's direction marks, assistive programs).
void DeviceTextEdit::removeForeignCharacters() {
    const auto [first, end] = std::exchange(insertion_, {});
    for (int at = std::min(end, document()->characterCount() - 1) - 1; at >= first; --at) {
        const QChar character = document()->characterAt(at);
        if (character == QChar::ParagraphSeparator || isScriptCharacter(character))
            continue;
        setUndoRedoEnabled(false); // an undo would bring the character back
        QTextCursor cursor(document());
        cursor.setPosition(at);
        cursor.deleteChar();
        setUndoRedoEnabled(true);
    }
}

} // namespace orvista
