#include "dialogs/controls/DeviceText.h"

#include "model/Files.h"
#include "model/Windows1252.h"

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
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\t') {
            shown += u'\t';
        } else if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') {
            shown += u'\n';
            ++i;
        } else {
            shown += shownCharacter(static_cast<unsigned char>(bytes[i]));
        }
    }
    return shown;
}

std::optional<std::string> deviceBytes(const QString& shown) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(shown.size()));
    for (const QChar character : shown) {
        if (character == u'\n') {
            bytes += lineEnd;
            continue;
        }
        const auto byte = byteOf(character);
        if (!byte)
            return std::nullopt;
        bytes.push_back(static_cast<char>(*byte));
    }
    return bytes;
}

} // namespace orvista
