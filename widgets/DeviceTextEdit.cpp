#include "widgets/DeviceTextEdit.h"

#include "widgets/DeviceText.h"

#include <QFontDatabase>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QToolTip>

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

/// The character itself where it can be seen, otherwise its number.
QString nameOf(char32_t character) {
    if (QChar::isMark(character))
        return u'\u25CC' + QString::fromUcs4(&character, 1);
    if (QChar::isPrint(character) && !QChar::isSpace(character))
        return QString::fromUcs4(&character, 1);
    return QStringLiteral("U+%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0')).toUpper();
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

void DeviceTextEdit::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

void DeviceTextEdit::setLeastLines(int lines) {
    leastLines_ = lines;
    updateGeometry();
}

QSize DeviceTextEdit::minimumSizeHint() const {
    const int text = leastLines_ * fontMetrics().lineSpacing();
    const auto margins = static_cast<int>(2 * document()->documentMargin());
    const QSize usual = QPlainTextEdit::minimumSizeHint();
    return {usual.width(), std::max(usual.height(), text + margins + 2 * frameWidth())};
}

void DeviceTextEdit::setBytes(const std::string& bytes) {
    const QScopedValueRollback setting(setting_, true);
    setPlainText(shownScript(bytes));
}

std::string DeviceTextEdit::bytes() const {
    // toPlainText() would turn no-break spaces into blanks.
    return scriptBytes(document()->toRawText().replace(QChar::ParagraphSeparator, u'\n'));
}

bool DeviceTextEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText();
}

void DeviceTextEdit::insertFromMimeData(const QMimeData* source) {
    const auto text = insertable(source->text());
    if (!text)
        return nameRefused(source->text());
    const QScopedValueRollback vetted(setting_, true);
    textCursor().insertText(*text);
    ensureCursorVisible();
}

QMimeData* DeviceTextEdit::createMimeDataFromSelection() const {
    // The widget's own copy turns no-break spaces into blanks, and has the breaks that are only shown.
    const QTextCursor selected = textCursor();
    QString text = selected.selectedText().replace(QChar::ParagraphSeparator, u'\n');
    const int start = selected.selectionStart();
    if (start > 0 && document()->characterAt(start - 1) == continuationMark)
        text.prepend(continuationMark);
    text.remove(QString(continuationMark) + u'\n').remove(continuationMark);
    auto* data = new QMimeData;
    data->setText(text);
    return data;
}

void DeviceTextEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly()) {
        // Shift+Enter would put a character into the text that the device does not have.
        textCursor().insertBlock();
        ensureCursorVisible();
        return;
    }
    QToolTip::hideText();
    if (deviceBytes(event->text()))
        return QPlainTextEdit::keyPressEvent(event);
    event->accept();
    nameRefused(event->text());
}

void DeviceTextEdit::inputMethodEvent(QInputMethodEvent* event) {
    const QString committed = event->commitString();
    const auto text = insertable(committed);
    if (!text)
        event->setCommitString({});
    else if (*text != committed)
        event->setCommitString(*text, event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
    if (!text)
        nameRefused(committed);
}

void DeviceTextEdit::noteInsertion(int position, int /*removed*/, int added) {
    if (!setting_)
        insertion_ = {position, position + added};
}

/// Some insertions pass by the handlers above (the context menu's direction marks, assistive programs).
void DeviceTextEdit::removeForeignCharacters() {
    const Range inserted = std::exchange(insertion_, {});
    if (inserted.first == inserted.end)
        return;
    QTextBlock block = document()->findBlock(std::min(inserted.end, document()->characterCount() - 1));
    for (; block.isValid() && block.position() + block.length() > inserted.first; block = block.previous())
        cleanLine(block, inserted);
}

void DeviceTextEdit::cleanLine(const QTextBlock& block, Range range) {
    // The whole line at once: asking the document for each character takes a hundred times as long.
    const QString line = block.text();
    const auto first = std::max(0, range.first - block.position());
    const auto end = std::min(static_cast<int>(line.size()), range.end - block.position());
    for (int at = end - 1; at >= first; --at) {
        if (isScriptCharacter(line[at]))
            continue;
        setUndoRedoEnabled(false); // an undo would bring the character back
        QTextCursor cursor(document());
        cursor.setPosition(block.position() + at);
        cursor.deleteChar();
        setUndoRedoEnabled(true);
        nameRefused(line.sliced(at));
    }
}

void DeviceTextEdit::nameRefused(const QString& text) {
    const QList<uint> characters = text.toUcs4();
    const auto refused = std::find_if_not(characters.begin(), characters.end(), [](uint character) {
        return character <= 0xFFFF && isScriptCharacter(QChar(character));
    });
    if (refused != characters.end())
        QToolTip::showText(viewport()->mapToGlobal(cursorRect().bottomLeft()),
                           tr("%1 cannot be shown by the display").arg(nameOf(*refused)), viewport());
}

} // namespace orvista
