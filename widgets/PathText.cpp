#include "widgets/PathText.h"

#include <QStringDecoder>

#include <algorithm>
#include <optional>

namespace orvista {

namespace {

constexpr char16_t strayBase = 0xDC00;
constexpr char16_t firstStray = strayBase + 0x80;
constexpr char16_t lastStray = strayBase + 0xFF;
constexpr qsizetype longestSequence = 4;

std::optional<QString> decoded(QByteArrayView bytes) {
    // A byte-order mark is part of the name.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

QString shownPath(const std::string& path) {
    QByteArrayView rest(path.data(), static_cast<qsizetype>(path.size()));
    if (auto whole = decoded(rest))
        return *whole;
    QString shown;
    while (!rest.isEmpty()) {
        qsizetype taken = 1;
        std::optional<QString> character = decoded(rest.first(taken));
        while (!character && taken < std::min(longestSequence, rest.size()))
            character = decoded(rest.first(++taken));
        if (!character) {
            taken = 1;
            character = QChar(static_cast<char16_t>(strayBase + static_cast<unsigned char>(rest.front())));
        }
        shown += *character;
        rest = rest.sliced(taken);
    }
    return shown;
}

std::string pathFromShown(const QString& shown) {
    std::string path;
    qsizetype textStart = 0;
    for (qsizetype i = 0; i <= shown.size(); ++i) {
        const bool atEnd = i == shown.size();
        const bool inPair = !atEnd && i > textStart && shown[i - 1].isHighSurrogate();
        const bool stray = !atEnd && !inPair && shown[i] >= firstStray && shown[i] <= lastStray;
        if (!atEnd && !stray)
            continue;
        path += shown.sliced(textStart, i - textStart).toStdString();
        if (stray)
            path.push_back(static_cast<char>(shown[i].unicode() - strayBase));
        textStart = i + 1;
    }
    return path;
}

} // namespace orvista
