#include "widgets/MessageBox.h"

#include "model/ProjectLifecycle.h"
#include "widgets/PathText.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>

#include <algorithm>

namespace orvista {

namespace {

/// Longer words would be cut off at the edge of the box.
constexpr qsizetype longestWord = 80;
constexpr int brokenLineCharacters = 70;
constexpr int mostLines = 16;

bool hasLongWord(const QString& text) {
    const auto words = text.split(u' ');
    return std::any_of(words.begin(), words.end(),
                       [](const QString& word) { return word.size() > longestWord; });
}

/// A read-only text that looks like a label and breaks lines anywhere.
QPlainTextEdit* brokenText(const QString& text) {
    auto* view = new QPlainTextEdit(text);
    view->setObjectName("messageText");
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setFrameShape(QFrame::NoFrame);
    view->viewport()->setAutoFillBackground(false);
    view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const QFontMetrics metrics = view->fontMetrics();
    const int width = metrics.averageCharWidth() * brokenLineCharacters;
    // A break before a long word leaves most of a line empty.
    const int spareHeight = 3 * metrics.lineSpacing();
    const int textHeight = metrics.boundingRect(0, 0, width, 0, Qt::TextWrapAnywhere, text).height();
    const int margins = 2 * static_cast<int>(view->document()->documentMargin());
    view->setFixedSize(width + margins + view->style()->pixelMetric(QStyle::PM_ScrollBarExtent),
                       std::min(textHeight + spareHeight, metrics.lineSpacing() * mostLines) + margins);
    return view;
}

} // namespace

MessageBox::MessageBox(Icon icon, const std::string& text, StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, QString::fromUtf8(DocMgrModule::programTitle), shownPath(text), buttons, parent) {
    setObjectName("messageBox");
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (hasLongWord(this->text()))
        breakLongWords();
}

/// Puts a text that breaks anywhere where the label stands; the box's text() stays as it is.
void MessageBox::breakLongWords() {
    auto* const label = findChild<QLabel*>("qt_msgbox_label");
    auto* const grid = qobject_cast<QGridLayout*>(layout());
    if (!label || !grid || grid->indexOf(label) < 0)
        return;
    int row = 0;
    int column = 0;
    int rows = 0;
    int columns = 0;
    grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
    label->hide();
    grid->addWidget(brokenText(text()), row, column, rows, columns);
}

void MessageBox::setAnswerRequired() {
    answerRequired_ = true;
    setWindowFlag(Qt::WindowCloseButtonHint, false);
}

void MessageBox::reject() {
    if (!answerRequired_)
        QMessageBox::reject();
}

void MessageBox::closeEvent(QCloseEvent* event) {
    if (answerRequired_)
        event->ignore();
    else
        QMessageBox::closeEvent(event);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
    if (answerRequired_ && event->matches(QKeySequence::Cancel))
        event->accept();
    else
        QMessageBox::keyPressEvent(event);
}

} // namespace orvista
