#include "items/forms/LabelCell.h"

#include <QStringList>

namespace orvista {

namespace {

QStringList notedTexts(const ItemNote& note) {
    QStringList texts;
    for (const NoteField& field : noteFields)
        if (const std::string& text = note.*field.text; !text.empty())
            texts << QString::fromStdString(text);
    return texts;
}

} // namespace

TableCell labelCell(const ItemNote& note) {
    TableCell cell{.text = QString::fromStdString(note.label)};
    cell.toolTip = noteToolTip(note);
    cell.alsoFound = notedTexts(note).join(u'\n');
    return cell;
}

QString noteToolTip(const ItemNote& note) {
    const QStringList texts = notedTexts(note);
    if (texts.isEmpty())
        return {};
    return "<p>" + texts.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")) + "</p>";
}

bool isNoted(const ItemNote& note, const QString& text) {
    return notedTexts(note).join(u'\n').contains(text, Qt::CaseInsensitive);
}

} // namespace orvista
