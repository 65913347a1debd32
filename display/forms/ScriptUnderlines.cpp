#include "display/forms/ScriptUnderlines.h"

#include "check/MasterMessage.h"
#include "check/ProjectCheck.h"
#include "display/forms/PlaceUnderlines.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/ScriptPositions.h"
#include "widgets/SeenDelay.h"

#include <QHelpEvent>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

/// Readable on light and dark grounds.
constexpr QColor errorColour(225, 45, 45);
constexpr QColor warningColour(225, 130, 0);

/// What is missing after the line is shown at the line's last character.
std::pair<int, int> rangeOf(const Place& place, const ScriptPositions& positions) {
    const int first = positions.positionOf(place.line, place.column);
    if (place.length > 0)
        return {first, positions.positionOf(place.line, place.column + place.length - 1) + 1};
    return {std::max(first - 1, positions.positionOf(place.line, 1)), first};
}

QTextEdit::ExtraSelection selectionOf(const Finding& finding, std::pair<int, int> range,
                                      const QTextCursor& inDocument) {
    QTextEdit::ExtraSelection selection;
    selection.cursor = inDocument;
    selection.cursor.setPosition(range.first);
    selection.cursor.setPosition(range.second, QTextCursor::KeepAnchor);
    selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    selection.format.setUnderlineColor(finding.severity() == Severity::Error ? errorColour : warningColour);
    selection.format.setToolTip(QString::fromStdString(finding.text));
    return selection;
}

} // namespace

ScriptUnderlines::ScriptUnderlines(DeviceTextEdit& box, const Project& project, Subject subject,
                                   QObject* parent)
    : QObject(parent),
      box_(box),
      project_(project),
      subject_(std::move(subject)),
      delay_(new SeenDelay(box, [this] { check(); })) {
    connect(&box, &QPlainTextEdit::textChanged, this, &ScriptUnderlines::checkSoon);
    box.installEventFilter(this);
    box.viewport()->installEventFilter(this);
}

void ScriptUnderlines::checkSoon() {
    delay_->start();
}

bool ScriptUnderlines::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::EnabledChange:
        if (watched == &box_)
            checkSoon();
        break;
    case QEvent::ToolTip:
        if (watched == box_.viewport() && tell(static_cast<const QHelpEvent&>(*event)))
            return true;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void ScriptUnderlines::check() {
    if (!box_.isEnabled())
        return box_.setExtraSelections({});
    if (!bitmaps_ || bitmapFolder_ != project_.ProjPath) {
        bitmapFolder_ = project_.ProjPath;
        bitmaps_.emplace(bitmapFolder_);
    }
    const auto message = subject_.message();
    if (!message)
        return box_.setExtraSelections({});
    const std::string script = box_.bytes();
    underline(master_ != nullptr
                  ? checkShownMessage(*message, script, *master_, *bitmaps_, subject_.columns())
                  : checkMessage(*message, script, project_, *bitmaps_, subject_.columns()),
              script);
}

void ScriptUnderlines::underline(const Findings& findings, const std::string& script) {
    const ScriptPositions positions(*box_.document());
    const QTextCursor cursor(box_.document());
    QList<QTextEdit::ExtraSelection> selections;
    // First: what is found is drawn over them.
    if (master_ != nullptr && master_->isMaster())
        selections = placeUnderlines(script, *master_, positions, cursor);
    for (const Finding& finding : findings.list) {
        if (finding.place.line == 0)
            continue;
        const auto range = rangeOf(finding.place, positions);
        if (range.first < range.second)
            selections << selectionOf(finding, range, cursor);
    }
    box_.setExtraSelections(selections);
}

bool ScriptUnderlines::tell(const QHelpEvent& event) const {
    const int position = box_.cursorForPosition(event.pos()).position();
    QStringList sentences;
    for (const QTextEdit::ExtraSelection& selection : box_.extraSelections()) {
        const QTextCursor& word = selection.cursor;
        // A word that was deleted is empty until the text is looked at again.
        if (word.hasSelection() && word.selectionStart() <= position && position <= word.selectionEnd())
            sentences << selection.format.toolTip().toHtmlEscaped();
    }
    if (sentences.isEmpty())
        return false;
    // As markup, since plain tool-tips are not broken into lines.
    QToolTip::showText(event.globalPos(), "<p>" + sentences.join("</p><p>") + "</p>", box_.viewport());
    return true;
}

} // namespace orvista
