#pragma once

#include <QString>

#include <optional>
#include <string>

/// Between the model's Windows-1252 bytes and what the text boxes show. Control characters (C0 and DEL) are
/// shown as the pictures of the Unicode block U+2400, which the encoding does not have, so that every byte is
/// visible, survives the text widgets, and comes back as itself.
namespace orvista {

/// For boxes of one line: every control character is a picture.
QString shownLine(const std::string& bytes);
/// For the script box: CR LF is a line end and a tab is a tab; all other controls, a CR or LF alone
/// included, are pictures. A line that no layout could take in one piece is broken for showing, with a
/// continuation mark before each such break.
QString shownScript(const std::string& bytes);
/// Ends a shown line that goes on in the next one. It is not one of the device's characters and stands for no
/// byte.
inline constexpr QChar continuationMark = u'\u21B5';
/// The longest stretch of a line shown without a break, in characters.
inline constexpr qsizetype longestShownLine = 10'000;

/// True when the device's encoding has the character.
bool isDeviceCharacter(QChar shown);
/// The bytes of a shown line, or nothing when a character has none.
std::optional<std::string> deviceBytes(const QString& shown);
/// As deviceBytes, with "?" for a character without a byte: the rest of a text is never lost over one.
std::string replacingDeviceBytes(const QString& shown);
/// The bytes of a shown script: a line feed gives CR LF, except after a continuation mark, and "?" stands
/// for a character without a byte.
std::string scriptBytes(const QString& shown);

/// Turns raw control characters, as the clipboard may bring them, into their pictures.
void showControls(QString& text);

} // namespace orvista
