#include "model/BlockRemarks.h"

#include "model/ReservedLines.h"
#include "model/Text.h"

#include <algorithm>

namespace orvista {

namespace {

/// Our own writers name blocks by a word and a number. Other names are somebody's own.
bool isOurName(std::string_view name, Kind one, Kind other) {
    return isNumbered(name, one) || isNumbered(name, other);
}

/// Keys of a variable's block.
constexpr std::array<std::string_view, 9> variableKeys{"DEFVAR", "TYPE",      "ADDRESS", "DEFAULT", "WIDTH",
                                                       "ON",     "PRECISION", "OFF",     "ENDVAR"};

template <std::size_t count>
void addUnfilled(Kind kind, const std::bitset<count>& filled, std::vector<std::string>& names) {
    for (std::size_t i = 0; i < count; ++i)
        if (!filled[i])
            names.push_back(nameOf({kind, i}));
}

} // namespace

void Block::begin(std::string_view name, std::size_t line) {
    if (begun_ && !stored_)
        remarkOpen(name_, line_);
    name_ = name;
    line_ = line;
    begun_ = true;
    inside_ = true;
    stored_ = false;
}

void Block::finish() {
    if (begun_ && !stored_)
        remarkOpen(name_, line_);
    reading_.endsInBlock = inside_;
}

void Block::remarkOpen(std::string_view name, std::size_t line) {
    reading_.remarks.add({FileRemarkKind::OpenBlock, {}, {}, line, 1, std::string(name)});
}

void MessageRemarks::store(std::size_t row, std::size_t line) {
    const std::string& name = block_.name();
    const Item item(kind_, row);
    if (block_.hasStored())
        reading_.remarks.add({FileRemarkKind::DoubleItem, {}, {}, line, 1, name, nameOf(item)});
    else if (isOurName(name, Kind::Regular, Kind::Emergency) && itemNamed(name) != item)
        reading_.remarks.add({FileRemarkKind::MovedMessage, {}, {}, block_.line(), 1, name, nameOf(item)});
    block_.store();
    block_.close();
}

void MessageRemarks::pass(std::string_view line, std::size_t number) {
    if (startsWithIgnoringCase(line, messageEnd))
        block_.close(); // of a block without a line, which stores nothing
    else if (!block_.isInside())
        remarkStray(line, number);
}

void MessageRemarks::passBehind(std::string_view line, std::size_t number) {
    if (startsWithIgnoringCase(line, messageStart)) {
        inExtra_ = true;
        const std::string_view name = trimBlanks(line.substr(std::min(messageStart.size() + 1, line.size())));
        reading_.remarks.add({FileRemarkKind::ExtraItems, {}, {}, number, 1, std::string(name)});
    } else if (startsWithIgnoringCase(line, messageEnd)) {
        inExtra_ = false;
    } else if (!inExtra_) {
        remarkStray(line, number);
    }
}

void MessageRemarks::finish(std::size_t filled) {
    block_.finish();
    reading_.endsInBlock = reading_.endsInBlock || inExtra_;
    for (std::size_t row = filled; row < rowOf(kind_).count; ++row)
        reading_.unfilled.push_back(nameOf({kind_, row}));
}

void MessageRemarks::remarkStray(std::string_view line, std::size_t number) {
    if (!line.empty())
        reading_.remarks.add({FileRemarkKind::StrayLine, {}, {}, number});
}

void VariableRemarks::store(Item item, bool isAtItsAddress) {
    reading_.hasOddAddress |= !isAtItsAddress;
    const std::string& name = block_.name();
    const bool isFloat = item.kind == Kind::Float;
    if (isFloat ? floats_[item.index] : booleans_[item.index])
        reading_.remarks.add({FileRemarkKind::DoubleItem, {}, {}, block_.line(), 1, name, nameOf(item)});
    if (isFloat)
        floats_.set(item.index);
    else
        booleans_.set(item.index);
    if (isOurName(name, Kind::Float, Kind::Boolean) && itemNamed(name) != item)
        reading_.remarks.add({FileRemarkKind::MovedVariable, {}, {}, block_.line(), 1, name, nameOf(item)});
    block_.store();
    block_.close();
}

void VariableRemarks::endWithoutRow() {
    reading_.remarks.add({FileRemarkKind::ExtraItems, {}, {}, block_.line(), 1, block_.name()});
    block_.store(); // told already
    block_.close();
}

void VariableRemarks::takeField(std::size_t number) {
    // The next block forgets what was set before it.
    if (!block_.isInside())
        reading_.remarks.add({FileRemarkKind::StrayLine, {}, {}, number});
}

void VariableRemarks::pass(std::string_view line, std::size_t number) {
    const std::string key = upperAscii(line.substr(0, line.find(' ')));
    if (line.empty())
        return;
    if (key == "DEFVAR")
        block_.remarkOpen({}, number); // only its name makes it begin
    else if (std::ranges::find(variableKeys, key) == variableKeys.end())
        reading_.remarks.add({FileRemarkKind::StrayLine, {}, {}, number});
}

void VariableRemarks::finish() {
    block_.finish();
    addUnfilled(Kind::Float, floats_, reading_.unfilled);
    addUnfilled(Kind::Boolean, booleans_, reading_.unfilled);
}

void AddressRemarks::pass(std::string_view line, std::size_t number) {
    if (!line.empty())
        reading_.remarks.add({FileRemarkKind::StrayLine, {}, {}, number});
}

void AddressRemarks::finish() {
    for (std::size_t which = 0; which < names.size(); ++which)
        if (!taken_[which])
            reading_.unfilled.emplace_back(names[which]);
}

} // namespace orvista
