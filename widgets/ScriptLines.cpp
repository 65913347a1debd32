#include "widgets/ScriptLines.h"

#include "widgets/DeviceText.h"

namespace orvista {

namespace {

constexpr QChar pictureOfLf = u'\u240A';
constexpr QChar pictureOfCr = u'\u240D';

bool endsLine(const QString& shown, qsizetype at) {
    const QChar character = shown[at];
    if (character == u'\n')
        return at == 0 || shown[at - 1] != continuationMark;
    return character == pictureOfLf || character == pictureOfCr;
}

} // namespace

std::optional<ShownRange> shownScriptLine(const QString& shown, std::size_t number) {
    std::size_t line = 1;
    qsizetype start = 0;
    for (qsizetype at = 0; at < shown.size(); ++at) {
        if (!endsLine(shown, at))
            continue;
        if (line == number)
            return ShownRange{start, at - start};
        ++line;
        start = at + 1;
    }
    if (line != number)
        return std::nullopt;
    return ShownRange{start, shown.size() - start};
}

} // namespace orvista
