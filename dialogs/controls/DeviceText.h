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
/// included, are pictures.
QString shownScript(const std::string& bytes);

/// The bytes of a shown text, or nothing when a character has none. A line feed gives CR LF.
std::optional<std::string> deviceBytes(const QString& shown);

} // namespace orvista
