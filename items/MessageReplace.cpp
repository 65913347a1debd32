#include "items/MessageReplace.h"

#include "script/ScriptCommands.h"

#include <algorithm>
#include <array>

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

/// A stretch of a script's bytes and what it is.
struct Stretch {
    std::size_t first = 0;
    std::size_t end = 0;
    ReplaceWhere where = ReplaceWhere::Other;
};

/// The text or the bitmap's name of the line from `first` to `end`.
Stretch shownStretch(std::string_view script, std::size_t first, std::size_t end) {
    const std::string_view line = script.substr(first, end - first);
    if (line.find_first_not_of(' ') == std::string_view::npos)
        return {};
    ScriptWords words(line);
    const ScriptCommand command = scriptCommand(1, words);
    const auto* const element = std::get_if<ScriptElement>(&command);
    if (element && std::holds_alternative<TextElement>(*element))
        return {first + line.find('"') + 1, first + line.rfind('"'), ReplaceWhere::Text};
    const auto* const image = element ? std::get_if<ImageElement>(element) : nullptr;
    if (!image)
        return {};
    const std::size_t name = first + line.rfind(image->name);
    return {name, name + image->name.size(), ReplaceWhere::Bitmap};
}

/// Tells what places belong to that come one after the other; each line is read once.
class WhereInScript {
public:
    explicit WhereInScript(std::string_view script) : script_(script) {}

    ReplaceWhere of(std::size_t place, std::size_t length) {
        if (place >= lineEnd_) {
            const std::size_t before = place == 0 ? place : script_.find_last_of(lineEnds, place - 1) + 1;
            const std::size_t after = script_.find_first_of(lineEnds, place);
            lineEnd_ = after == std::string_view::npos ? script_.size() : after;
            shown_ = shownStretch(script_, before, lineEnd_);
        }
        const bool isWithin = place >= shown_.first && place + length <= shown_.end;
        return isWithin ? shown_.where : ReplaceWhere::Other;
    }

private:
    std::string_view script_;
    std::size_t lineEnd_ = 0; ///< of the line that was read last
    Stretch shown_;
};

} // namespace

ReplaceHits findToReplace(const Project& project, const std::string& wanted, std::string_view replacement,
                          Case letters) {
    ReplaceHits hits;
    if (wanted.empty())
        return hits;
    const TextSearch search(wanted, letters);
    for (const Item message : allMessages()) {
        const std::string_view script = scriptOf(project, message);
        LineCounter lines(script);
        WhereInScript where(script);
        for (std::size_t at = search.find(script); at != std::string_view::npos;
             at = search.find(script, at + wanted.size())) {
            if (hits.list.size() == maximumReplaceHits) {
                hits.isComplete = false;
                return hits;
            }
            const std::string head = headOf(script, at);
            const std::string tail = tailOf(script, at + wanted.size());
            const std::string found(script.substr(at, wanted.size()));
            hits.list.push_back({message, at, lines.lineOf(at), where.of(at, wanted.size()),
                                 head + found + tail, head + std::string(replacement) + tail});
        }
    }
    return hits;
}

std::vector<Change> replacedScripts(const Project& project, const std::vector<ReplaceHit>& hits,
                                    std::size_t length, std::string_view replacement) {
    std::vector<Change> changes;
    for (auto hit = hits.begin(); hit != hits.end();) {
        const Item message = hit->message;
        const std::string_view script = scriptOf(project, message);
        std::string replaced;
        std::size_t taken = 0;
        for (; hit != hits.end() && hit->message == message; ++hit) {
            replaced.append(script.substr(taken, hit->at - taken)).append(replacement);
            taken = hit->at + length;
        }
        replaced.append(script.substr(taken));
        addChanges(changes, project, message,
                   std::array{replaced.empty() ? clearScript : std::move(replaced)});
    }
    return changes;
}

} // namespace orvista
