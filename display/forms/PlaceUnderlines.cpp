#include "display/forms/PlaceUnderlines.h"

#include <QCoreApplication>

#include <algorithm>

namespace orvista {

namespace {

/// Beside the waves of findings: neither of them, and readable on light and dark grounds.
constexpr QColor placeColour(70, 130, 210);
/// How many displays' values a tool-tip lists; nobody reads more there.
constexpr std::size_t mostValuesTold = 5;

QString ofPlaces(const char* text) {
    return QCoreApplication::translate("PlaceUnderlines", text);
}

QString valueTold(const FleetDisplay& display, const std::string& name) {
    const std::string* const value = display.values.find(name);
    return QString::fromStdString(display.name) + QStringLiteral(": ") +
           (value != nullptr ? QString::fromStdString(*value) : ofPlaces("no value"));
}

/// "line: Line 1: 1, Line 2: 2 and 12 more"
QString valuesText(const std::string& name, const MasterView& view) {
    const std::vector<FleetDisplay>& displays = view.displays();
    QStringList values;
    for (std::size_t i = 0; i < std::min(displays.size(), mostValuesTold); ++i)
        values << valueTold(displays[i], name);
    QString text = ofPlaces("{%1}: ").arg(QString::fromStdString(name)) +
                   (values.isEmpty() ? ofPlaces("the list has no displays") : values.join(", "));
    if (displays.size() > mostValuesTold)
        text += ofPlaces(" and %1 more").arg(displays.size() - mostValuesTold);
    return text;
}

} // namespace

QList<QTextEdit::ExtraSelection> placeUnderlines(std::string_view script, const MasterView& view,
                                                 const ScriptPositions& positions,
                                                 const QTextCursor& inDocument) {
    QList<QTextEdit::ExtraSelection> selections;
    for (const TextPlace& place : placesInScript(script)) {
        if (place.kind == TextPlace::Kind::Brace)
            continue;
        QTextEdit::ExtraSelection selection;
        selection.cursor = inDocument;
        selection.cursor.setPosition(positions.positionOf(place.line, place.column));
        selection.cursor.setPosition(positions.positionOf(place.line, place.column + place.length),
                                     QTextCursor::KeepAnchor);
        selection.format.setUnderlineStyle(QTextCharFormat::DotLine);
        selection.format.setUnderlineColor(placeColour);
        selection.format.setToolTip(valuesText(place.name, view));
        selections << selection;
    }
    return selections;
}

} // namespace orvista
