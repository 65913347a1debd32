#include "script/ScriptText.h"

#include "model/Lines.h"

namespace orvista {

ScriptText::ScriptText(std::string_view script) : script_(script), starts_{0} {
    for (std::size_t at = script.find_first_of(lineEnd); at != std::string_view::npos;
         at = script.find_first_of(lineEnd, at)) {
        at += script.substr(at).starts_with(lineEnd) ? lineEnd.size() : 1;
        starts_.push_back(at);
    }
    if (starts_.back() < script.size())
        starts_.push_back(script.size());
}

std::string_view ScriptText::line(std::size_t number) const {
    const std::string_view from = script_.substr(start(number), start(number + 1) - start(number));
    return from.substr(0, from.find_first_of(lineEnd));
}

std::size_t ScriptText::skipped(std::size_t number) const {
    return number == 1 && script_.starts_with(utf8ByteOrderMark) ? utf8ByteOrderMark.size() : 0;
}

} // namespace orvista
