#include "compare/ContentsComparison.h"

#include "compare/FileComparison.h"
#include "model/Text.h"

#include <algorithm>
#include <cstddef>
#include <variant>

namespace orvista {

namespace {

std::optional<std::uint64_t> sizeOf(const std::optional<std::string>& bytes) {
    return bytes ? std::optional<std::uint64_t>(bytes->size()) : std::nullopt;
}

HeldState stateOf(const HeldFile& before, const HeldFile& after) {
    if (before.bytes == after.bytes)
        return HeldState::Same;
    if (!after.bytes)
        return HeldState::Missing;
    if (!before.bytes)
        return HeldState::Extra;
    return before.meaning && before.meaning == after.meaning ? HeldState::Equal : HeldState::Different;
}

HeldAnswer answerOf(const HeldFile& before, const HeldFile& after) {
    HeldAnswer answer{
        std::string(before.file->name), stateOf(before, after), before.file->readSection != nullptr,
        sizeOf(before.bytes),           sizeOf(after.bytes),    {}};
    if (answer.state == HeldState::Equal || answer.state == HeldState::Different)
        answer.firstOffset = sameAtStart(*before.bytes, *after.bytes);
    return answer;
}

ComparedFile comparedFile(const HeldBitmap& bitmap) {
    return {bitmap.path, bitmap.bytes};
}

HeldAnswer answerOf(const HeldBitmap& before, const HeldBitmap& after) {
    const bool counts = before.counts || after.counts;
    const auto difference = compareFiles(comparedFile(before), comparedFile(after));
    if (!difference)
        return {before.name, HeldState::Same, counts, {}, {}, {}};
    return {before.name,           HeldState::Different,   counts, difference->sizeBefore,
            difference->sizeAfter, difference->firstOffset};
}

const HeldBitmap* partnerOf(const HeldBitmap& bitmap, const std::vector<HeldBitmap>& others) {
    auto found = std::ranges::find(others, bitmap.name, &HeldBitmap::name);
    if (found == others.end())
        found = std::ranges::find(others, bitmap.key, &HeldBitmap::key);
    return found == others.end() ? nullptr : &*found;
}

std::vector<HeldAnswer> compareBitmaps(const std::vector<HeldBitmap>& before,
                                       const std::vector<HeldBitmap>& after) {
    std::vector<HeldAnswer> answers;
    std::vector<const HeldBitmap*> paired;
    for (const HeldBitmap& bitmap : before) {
        const HeldBitmap* const partner = partnerOf(bitmap, after);
        paired.push_back(partner);
        answers.push_back(partner != nullptr ? answerOf(bitmap, *partner)
                                             : HeldAnswer{bitmap.name,
                                                          HeldState::Missing,
                                                          bitmap.counts,
                                                          sizeOfFile(comparedFile(bitmap)),
                                                          {},
                                                          {}});
    }
    for (const HeldBitmap& bitmap : after)
        if (std::ranges::find(paired, &bitmap) == paired.end())
            answers.push_back(
                {bitmap.name, HeldState::Extra, bitmap.counts, {}, sizeOfFile(comparedFile(bitmap)), {}});
    std::ranges::stable_sort(answers, {}, [](const HeldAnswer& answer) { return lowerAscii(answer.name); });
    return answers;
}

const DeviceFile& fileOf(Kind kind) {
    switch (kind) {
    case Kind::AddressMap:
        break;
    case Kind::Float:
    case Kind::Boolean:
        return ilmVarFile;
    case Kind::Regular:
        return stdMsgFile;
    case Kind::Emergency:
        return altMsgFile;
    }
    return modbusAdrFile;
}

/// The start addresses of the variables stand in ilmvar.def, too.
bool concerns(const ItemDifference& difference, const HeldAnswer& file) {
    const auto movesVariables = [](const Change& change) {
        const auto* const start = std::get_if<std::int32_t Project::*>(&change.field->member);
        return start != nullptr &&
               (*start == rowOf(Kind::Float).start || *start == rowOf(Kind::Boolean).start);
    };
    return fileOf(difference.item.kind).name == file.name ||
           (file.name == ilmVarFile.name && std::ranges::any_of(difference.fields, movesVariables));
}

} // namespace

bool ContentsComparison::isEqual() const {
    const auto isNoDifference = [](const HeldAnswer& answer) { return !answer.counts || answer.isWell(); };
    return std::ranges::all_of(files, isNoDifference) && std::ranges::all_of(bitmaps, isNoDifference);
}

bool ContentsComparison::sendingChangesNothing() const {
    const auto stays = [](const HeldAnswer& answer) {
        return !answer.counts || answer.isWell() || answer.state == HeldState::Extra;
    };
    return std::ranges::all_of(files, stays) && std::ranges::all_of(bitmaps, stays);
}

bool ContentsComparison::holdsEveryByte() const {
    const auto isThere = [](const HeldAnswer& answer) {
        return answer.state == HeldState::Same || answer.state == HeldState::Extra;
    };
    return std::ranges::all_of(files, isThere) && std::ranges::all_of(bitmaps, isThere);
}

std::vector<Item> ContentsComparison::itemsIn(const HeldAnswer& file) const {
    std::vector<Item> inFile;
    for (const ItemDifference& difference : items)
        if (concerns(difference, file))
            inFile.push_back(difference.item);
    return inFile;
}

std::vector<HeldAnswer> ContentsComparison::unexplainedFiles() const {
    std::vector<HeldAnswer> unexplained;
    for (const HeldAnswer& file : files)
        if (file.counts && !file.isWell() && (file.state != HeldState::Different || itemsIn(file).empty()))
            unexplained.push_back(file);
    return unexplained;
}

ContentsComparison compareContents(const DisplayContents& before, const DisplayContents& after) {
    ContentsComparison comparison;
    for (std::size_t i = 0; i < before.files().size(); ++i)
        comparison.files.push_back(answerOf(before.files()[i], after.files()[i]));
    comparison.bitmaps = compareBitmaps(before.bitmaps(), after.bitmaps());
    comparison.items = compareItems(before.project(), after.project());
    return comparison;
}

} // namespace orvista
