#include "display/PlayList.h"

#include "model/Item.h"
#include "model/Lines.h"
#include "model/Text.h"
#include "script/ScriptInterpreter.h"

#include <numeric>
#include <optional>

namespace orvista {

namespace {

constexpr std::size_t maximumPlayListLength = 1000;
constexpr std::string_view command = "DISPMSG ";

/// The number of a line "DISPMSG STDMSG7", from 0.
std::optional<std::size_t> messageIndex(std::string_view line) {
    if (!startsWithIgnoringCase(line, command))
        return std::nullopt;
    const auto message = itemNamed(trimBlanks(line.substr(command.size())));
    return message && message->kind == Kind::Regular ? std::optional<std::size_t>(message->index)
                                                     : std::nullopt;
}

} // namespace

PlayList PlayList::inOrder() {
    PlayList list;
    list.messages.resize(regularMessageCount);
    std::iota(list.messages.begin(), list.messages.end(), std::size_t{0});
    return list;
}

PlayList readPlayList(std::string_view bytes) {
    MemorySource source(bytes);
    LineReader lines(source);
    PlayList list;
    std::string line;
    for (std::size_t number = 1; lines.next(line); ++number) {
        const std::string_view text = trimBlanks(line);
        const auto index = messageIndex(text);
        if (index && list.messages.size() < maximumPlayListLength)
            list.messages.push_back(*index);
        else if (!text.empty() && list.remarks.size() < maximumRemarks)
            list.remarks.push_back({number, line.substr(0, maximumRemarkLength)});
    }
    return list;
}

} // namespace orvista
