#include "link/forms/AcceptSentences.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>

namespace orvista {

namespace {

/// How many names fit into a line.
constexpr qsizetype acceptedNamesTold = 12;

QString saying(const char* text) {
    return QCoreApplication::translate("AcceptSentences", text);
}

QString shortened(const QStringList& names) {
    const QString text = names.mid(0, acceptedNamesTold).join(QStringLiteral(", "));
    return names.size() > acceptedNamesTold
               ? saying("%1 and %2 more").arg(text).arg(names.size() - acceptedNamesTold)
               : text;
}

QString othersText(const AcceptanceRun& run) {
    QStringList names;
    for (const Item item : run.changedByOthers())
        names << QString::fromStdString(nameOf(item));
    return names.empty() ? QString()
                         : saying("Changed by others, and left to them: %1.").arg(shortened(names));
}

QString notPutBackText(const AcceptanceRun& run) {
    QStringList names;
    for (const WrittenItem& item : run.written())
        names << QString::fromStdString(run.items().at(item.place).name());
    return names.empty() ? saying("Everything else is as it was before.")
                         : saying("Not put back: %1.").arg(shortened(names));
}

QString doingText(const AcceptanceRun& run, const QString& display) {
    const QString shown = run.shown() ? QString::fromStdString(nameOf(*run.shown())) : QString();
    switch (run.state()) {
    case AcceptanceRun::State::Reading:
        return saying("Reading %1 …").arg(display);
    case AcceptanceRun::State::Waiting:
        return shown.isEmpty() ? QString() : saying("%1 is on.").arg(shown);
    case AcceptanceRun::State::Working:
        return saying("Switching at %1 …").arg(display);
    case AcceptanceRun::State::PuttingBack:
        return saying("Putting back what was there before …");
    case AcceptanceRun::State::Over:
        break;
    }
    return {};
}

} // namespace

QString acceptanceState(const AcceptanceRun& run, const QString& display) {
    QStringList parts{doingText(run, display)};
    if (!run.reason().empty())
        parts.prepend(saying("Ended: %1.").arg(QString::fromStdString(run.reason())));
    parts << othersText(run);
    if (run.isOver())
        parts << notPutBackText(run);
    parts.removeAll(QString());
    return parts.join(u' ');
}

QString countsText(const Acceptance& acceptance) {
    QStringList parts;
    for (const auto& [result, text] : {std::pair(SeenResult::AsShown, saying("%1 as shown")),
                                       std::pair(SeenResult::Wrong, saying("%1 wrong")),
                                       std::pair(SeenResult::Skipped, saying("%1 skipped"))}) {
        const auto count = std::ranges::count(acceptance.messages, result, &SeenMessage::result);
        if (count > 0)
            parts << text.arg(count);
    }
    return parts.empty() ? QString() : parts.join(QStringLiteral(", ")) + u'.';
}

QString emergencyCaution(const AcceptanceRun& run) {
    QStringList names;
    for (const WrittenItem& written : run.written()) {
        const DisplayItem& now = run.items().at(written.place);
        if (now.item.kind == Kind::Emergency && now.isOn())
            names << QString::fromStdString(now.name());
    }
    return names.empty() ? QString()
                         : saying("Others may need %1 by now: see first that there is no emergency.")
                               .arg(shortened(names));
}

QString putBackText(const AcceptanceRun& run) {
    QStringList lines;
    for (const WrittenItem& written : run.written()) {
        const DisplayItem& now = run.items().at(written.place);
        DisplayItem before = now;
        before.raw = written.before;
        lines << saying("%1: %2 now, %3 before")
                     .arg(QString::fromStdString(now.name()), QString::fromStdString(valueText(now)),
                          QString::fromStdString(valueText(before)));
    }
    return lines.join(u'\n');
}

} // namespace orvista
