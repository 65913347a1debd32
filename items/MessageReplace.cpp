#include "items/MessageReplace.h"

#include "items/ProjectMessages.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr std::string_view lineEnds = "\r\n";
/// Of a long line, on each side of the place.
constexpr std::size_t bytesAround = 60;
constexpr char ellipsis = '\x85';

/// Tells the lines of places that come one after the other. CR LF, LF and CR alone end a line.
class LineCounter {
public:
    explicit LineCounter(std::string_view script) : script_(script) {}

    std::size_t lineOf(std::size_t place) {
        for (; at_ < place; ++at_) {
            const bool isFirstOfTwo = script_[at_] == '\r' && script_.substr(at_ + 1, 1) == "\n";
            if (script_[at_] == '\n' || (script_[at_] == '\r' && !isFirstOfTwo))
                ++line_;
        }
        return line_;
    }

private:
    std::string_view script_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

/// What stands in the line before a place.
std::string headOf(std::string_view script, std::size_t place) {
    const std::size_t end = script.substr(0, place).find_last_of(lineEnds);
    const std::size_t start = end == std::string_view::npos ? 0 : end + 1;
    if (place - start <= bytesAround)
        return std::string(script.substr(start, place - start));
    return ellipsis + std::string(script.substr(place - bytesAround, bytesAround));
}

/// What stands in it after a place.
std::string tailOf(std::string_view script, std::size_t place) {
    const std::string_view rest = script.substr(place, script.find_first_of(lineEnds, place) - place);
    if (rest.size() <= bytesAround)
        return std::string(rest);
    return std::string(rest.substr(0, bytesAround)) + ellipsis;
}

} // namespace

ReplaceHits findToReplace(const Project& project, const std::string& wanted, std::string_view replacement,
                          Case letters) {
    ReplaceHits hits;
    if (wanted.empty())
        return hits;
    const TextSearch search(wanted, letters);
    for (std::size_t message = 0; message < messageCount; ++message) {
        const std::string_view script = messageScript(project, message);
        LineCounter lines(script);
        for (std::size_t at = search.find(script); at != std::string_view::npos;
             at = search.find(script, at + wanted.size())) {
            if (hits.list.size() == maximumReplaceHits) {
                hits.isComplete = false;
                return hits;
            }
            const std::string head = headOf(script, at);
            const std::string tail = tailOf(script, at + wanted.size());
            const std::string found(script.substr(at, wanted.size()));
            hits.list.push_back(
                {message, at, lines.lineOf(at), head + found + tail, head + std::string(replacement) + tail});
        }
    }
    return hits;
}

std::vector<ItemState> replacedScripts(const Project& project, const std::vector<ReplaceHit>& hits,
                                       std::size_t length, std::string_view replacement) {
    std::vector<ItemState> items;
    for (auto hit = hits.begin(); hit != hits.end();) {
        const std::size_t message = hit->message;
        const std::string_view script = messageScript(project, message);
        std::string replaced;
        std::size_t taken = 0;
        for (; hit != hits.end() && hit->message == message; ++hit) {
            replaced.append(script.substr(taken, hit->at - taken)).append(replacement);
            taken = hit->at + length;
        }
        replaced.append(script.substr(taken));
        items.push_back({messageName(message), replaced.empty() ? clearScript : std::move(replaced)});
    }
    return items;
}

} // namespace orvista
