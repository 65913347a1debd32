#include "widgets/DeviceText.h"

#include "model/Lines.h"
#include "model/Windows1252.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr char16_t firstPicture = 0x2400;
constexpr char16_t deletePicture = 0x2421;
constexpr unsigned char deleteByte = 0x7F;
constexpr unsigned char controlCount = 0x20;

QChar shownCharacter(unsigned char byte) {
    if (byte < controlCount)
        return {static_cast<char16_t>(firstPicture + byte)};
    if (byte == deleteByte)
        return {deletePicture};
    return {static_cast<char16_t>(windows1252CodePoint(byte))};
}

std::optional<unsigned char> byteOf(QChar shown) {
    const char16_t unit = shown.unicode();
    // Nearly all characters of a script; they are their own code in the encoding.
    if (unit >= controlCount && unit < deleteByte)
        return static_cast<unsigned char>(unit);
    if (unit >= firstPicture && unit < firstPicture + controlCount)
        return static_cast<unsigned char>(unit - firstPicture);
    if (unit == deletePicture)
        return deleteByte;
    return windows1252Byte(unit);
}

} // namespace

QString shownLine(const std::string& bytes) {
    QString shown;
    shown.reserve(static_cast<qsizetype>(bytes.size()));
    for (const char byte : bytes)
        shown += shownCharacter(static_cast<unsigned char>(byte));
    return shown;
}

QString shownScript(const std::string& bytes) {
    QString shown;
    shown.reserve(static_cast<qsizetype>(bytes.size()));
    qsizetype lineStart = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool endsLine = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
        if (!endsLine && shown.size() - lineStart == longestShownLine) {
            shown += continuationMark;
            shown += u'\n';
            lineStart = shown.size();
        }
        if (endsLine) {
            shown += u'\n';
            lineStart = shown.size();
            ++i;
        } else {
            shown += bytes[i] == '\t' ? QChar(u'\t') : shownCharacter(static_cast<unsigned char>(bytes[i]));
        }
    }
    return shown;
}

bool isDeviceCharacter(QChar shown) {
    return byteOf(shown).has_value();
}

std::optional<std::string> deviceBytes(const QString& shown) {
    if (!std::all_of(shown.begin(), shown.end(), isDeviceCharacter))
        return std::nullopt;
    return replacingDeviceBytes(shown);
}

std::string replacingDeviceBytes(const QString& shown) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(shown.size()));
    for (const QChar character : shown)
        bytes.push_back(static_cast<char>(byteOf(character).value_or('?')));
    return bytes;
}

std::string scriptBytes(const QString& shown) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(shown.size()));
    bool continues = false;
    for (const QChar character : shown) {
        if (character == u'\n' && !continues)
            bytes += lineEnd;
        else if (character != u'\n' && character != continuationMark)
            bytes.push_back(static_cast<char>(byteOf(character).value_or('?')));
        continues = character == continuationMark;
    }
    return bytes;
}

void showControls(QString& text) {
    const auto isRaw = [](QChar c) { return c.unicode() < controlCount || c.unicode() == deleteByte; };
    for (QChar& character : text)
        if (isRaw(character))
            character = shownCharacter(static_cast<unsigned char>(character.unicode()));
}

} // namespace orvista
