#include "display/forms/CursorPage.h"

#include "script/ScriptInterpreter.h"
#include "widgets/DeviceText.h"

#include <QTextBlock>
#include <QTextDocument>

#include <utility>

namespace orvista {

namespace {

enum class Boundary { None, Begins, Ends };

/// Whether a line begins a page or is the last one of it.
Boundary boundaryOf(const QTextBlock& block) {
    const QString text = block.text();
    const QChar first = text.trimmed().left(1).toUpper().append(u' ').front();
    // Most lines can be told by their first letter not to be CLEAR or OUT.
    if (first != u'C' && first != u'O')
        return Boundary::None;
    const InterpretedScript line = interpretScript(scriptBytes(text));
    if (line.pages.empty())
        return Boundary::None;
    const ScriptPage& page = line.pages.front();
    if (page.steps.empty())
        return page.elements.empty() ? Boundary::Begins : Boundary::None;
    return page.steps.back().kind == StepKind::Leave ? Boundary::Ends : Boundary::None;
}

std::pair<QTextBlock, QTextBlock> pageAround(const QTextBlock& block) {
    QTextBlock first = block;
    while (boundaryOf(first) != Boundary::Begins && first.previous().isValid() &&
           boundaryOf(first.previous()) != Boundary::Ends)
        first = first.previous();
    QTextBlock last = block;
    while (boundaryOf(last) != Boundary::Ends && last.next().isValid() &&
           boundaryOf(last.next()) != Boundary::Begins)
        last = last.next();
    return {first, last};
}

int endOfBlock(const QTextBlock& block) {
    return block.position() + block.length() - 1;
}

} // namespace

CursorPage::CursorPage(QTextDocument& document, QObject* parent) : QObject(parent), document_(document) {
    connect(&document, &QTextDocument::contentsChange, this, &CursorPage::noteEdit);
}

void CursorPage::follow(const QTextCursor& cursor, int pageStart) {
    const auto [first, last] = pageAround(cursor.block());
    begin_ = QTextCursor(first);
    begin_.setKeepPositionOnInsert(true);
    end_ = QTextCursor(&document_);
    end_.setPosition(endOfBlock(last));
    isAlone_ = begin_.position() <= pageStart && pageStart <= end_.position();
}

void CursorPage::noteEdit(int position, int /*removed*/, int added) {
    isAlone_ = isAlone_ && begin_.position() <= position && position + added <= end_.position();
}

std::optional<CursorPage::Script> CursorPage::script(const QTextCursor& cursor) const {
    if (!isAlone_)
        return std::nullopt;
    const auto [first, last] = pageAround(cursor.block());
    if (first.position() != begin_.position() || endOfBlock(last) != end_.position())
        return std::nullopt;
    QString shown = first.text();
    for (QTextBlock block = first; block != last;) {
        block = block.next();
        shown += u'\n' + block.text();
    }
    return Script{scriptBytes(shown),
                  static_cast<std::size_t>(cursor.blockNumber() - first.blockNumber()) + 1};
}

} // namespace orvista
