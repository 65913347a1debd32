#include "check/Fixing.h"

#include "check/FixFamilies.h"
#include "check/PartFixing.h"
#include "check/VariableCheck.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

std::vector<Fix> fixesByCode(const FixGround& ground, const Finding& finding) {
    switch (finding.code) {
    case Code::TextCut:
    case Code::FieldCut:
    case Code::BitmapCut:
        return cutFixes(ground, finding);
    case Code::FieldGap:
        return gapFixes(ground, finding);
    case Code::FieldOverlap:
        return overlapFixes(ground, finding);
    case Code::UnknownCommand:
        return commandFixes(ground, finding);
    case Code::BadArgument:
        return argumentFixes(ground, finding);
    case Code::MissingBitmap:
        return bitmapNameFixes(ground, finding);
    case Code::ReservedLine:
        return reservedLineFixes(ground, finding);
    case Code::LostMessage:
        return lostMessageFixes(ground, finding);
    case Code::BadDefault:
        return defaultFixes(ground, finding);
    case Code::BadFormat:
        return formatFixes(ground, finding);
    default:
        return {};
    }
}

bool shows(const VariableUse& used, Item variable) {
    return variable.kind == Kind::Float ? used.floats[variable.index] : used.booleans[variable.index];
}

bool changeVariables(const std::vector<Change>& changes) {
    return std::ranges::any_of(changes, [](const Change& change) { return isVariable(change.item); });
}

bool hasNoMore(const Findings& after, const Findings& before) {
    return std::ranges::equal(after.byCode, before.byCode, std::ranges::less_equal());
}

} // namespace

Fixing::Fixing(const Project& project, const BitmapProvider& bitmaps, int columns, std::vector<Item> kept)
    : project_(project),
      bitmaps_(bitmaps),
      columns_(columns),
      panel_(LedRaster({columns}).size()),
      kept_(std::move(kept)),
      formats_(fieldFormats(project)) {}

Fixing::~Fixing() = default;

CheckedMessage Fixing::checked(Item item) const {
    if (isMessage(item))
        return checkScript(item, scriptOf(project_, item), panel_, formats_, bitmaps_);
    CheckedMessage variable;
    if (item.kind == Kind::Float)
        variable.findings = checkVariable(item, project_.RegVar[item.index]);
    else if (item.kind == Kind::Boolean)
        variable.findings = checkVariable(item, project_.CoilVar[item.index]);
    return variable;
}

CheckedMessage& Fixing::checkedOf(Item item) {
    const auto known = found_.find(item);
    return (known == found_.end() ? found_.emplace(item, checked(item)).first : known)->second;
}

/// The items of which other things may be found: the item itself, those that change, and messages that show
/// a variable that does.
std::vector<Item> Fixing::concernedBy(const std::vector<Change>& changes, Item item) {
    std::vector<Item> concerned = itemsOf(changes);
    const auto add = [&](Item also) {
        if (std::ranges::find(concerned, also) == concerned.end())
            concerned.push_back(also);
    };
    add(item);
    for (const Change& change : changes)
        if (isVariable(change.item))
            for (const Item message : allMessages())
                if (shows(checkedOf(message).variables, change.item))
                    add(message);
    return concerned;
}

bool Fixing::mayBeMade(const Fix& fix) const {
    return !fix.edits.empty() && std::ranges::none_of(fix.edits, [this](const FixEdit& edit) {
        return std::ranges::find(kept_, edit.item) != kept_.end();
    });
}

std::vector<Fix> Fixing::proposedFor(const Finding& finding) const {
    if (!finding.place.file.empty())
        return {};
    std::vector<Fix> fixes = fixesByCode({project_, formats_, panel_, bitmaps_}, finding);
    std::erase_if(fixes, [this](const Fix& fix) { return !mayBeMade(fix); });
    if (finding.rule().fixes == Fixes::Offered)
        for (Fix& fix : fixes)
            fix.isSure = true;
    return fixes;
}

void Fixing::make(const std::vector<Change>& changes, bool backwards) {
    if (backwards)
        revertChanges(project_, changes);
    else
        applyChanges(project_, changes);
    if (changeVariables(changes))
        formats_ = fieldFormats(project_);
}

bool Fixing::isMended(const Finding& finding, std::optional<std::size_t> line, const Findings& after) {
    const Findings& before = foundIn(finding.place.item);
    const auto code = static_cast<std::size_t>(finding.code);
    const auto count = [&](const Findings& findings, std::size_t on) {
        return std::ranges::count_if(findings.list, [&](const Finding& one) {
            return one.code == finding.code && one.place.line == on;
        });
    };
    const bool isGone = !line || count(after, *line) < count(before, finding.place.line);
    return isGone && after.byCode[code] < before.byCode[code] && hasNoMore(after, before);
}

std::optional<Fixing::Found> Fixing::tried(const Finding& finding, const Fix& fix,
                                           const std::vector<Change>& changes) {
    const Item item = finding.place.item;
    const std::vector<Item> concerned = concernedBy(changes, item);
    for (const Item other : concerned)
        foundIn(other); // as it is before
    const auto line =
        isMessage(item) ? lineAfter(project_, fix, item, finding.place.line) : std::optional<std::size_t>(0);
    make(changes, false);
    Found after;
    const bool holds = std::ranges::all_of(concerned, [&](Item one) {
        const Findings& found = after.emplace(one, checked(one)).first->second.findings;
        return one == item ? isMended(finding, line, found) : found == found_.at(one).findings;
    });
    if (holds)
        return after;
    make(changes, true);
    return std::nullopt;
}

std::vector<Fix> Fixing::fixesOf(const Finding& finding) {
    std::vector<Fix> fixes = proposedFor(finding);
    std::erase_if(fixes, [&](const Fix& fix) {
        const std::vector<Change> changes = changesOf(project_, fix);
        const bool holds = tried(finding, fix, changes).has_value();
        if (holds)
            make(changes, true);
        return !holds;
    });
    return fixes;
}

std::optional<Fixing::Done> Fixing::mendInWhole(const Finding& finding,
                                                const std::function<bool(const Fix&)>& mayBe) {
    for (Fix& fix : proposedFor(finding)) {
        if (!mayBe(fix))
            continue;
        std::vector<Change> changes = changesOf(project_, fix);
        auto after = tried(finding, fix, changes);
        if (!after)
            continue;
        for (auto& [item, found] : *after)
            found_[item] = std::move(found);
        forgetParts(changes);
        return Done{std::move(fix), std::move(changes)};
    }
    return std::nullopt;
}

std::optional<Fixing::Done> Fixing::mend(const Finding& finding,
                                         const std::function<bool(const Fix&)>& mayBe) {
    const Item item = finding.place.item;
    if (!goesByParts_ || !isMessage(item))
        return mendInWhole(finding, mayBe);
    if (!parts_)
        parts_ = std::make_unique<PartFixing>(project_, bitmaps_, columns_);
    auto tried = parts_->mend(finding, scriptOf(project_, item), checkedOf(item), mayBe);
    if (!tried.isDecided)
        return mendInWhole(finding, mayBe);
    if (tried.done)
        make(tried.done->changes, false);
    return std::move(tried.done);
}

void Fixing::forgetParts(const std::vector<Change>& changes) {
    if (!parts_)
        return;
    if (changeVariables(changes))
        return parts_.reset();
    for (const Item message : itemsOf(changes))
        parts_->forget(message);
}

void Fixing::take(const std::vector<Change>& changes) {
    make(changes, false);
    forgetParts(changes);
    if (changeVariables(changes))
        return found_.clear();
    for (const Item message : itemsOf(changes))
        found_.erase(message);
}

void Fixing::take(Item message, std::string_view script, std::optional<CheckedMessage> checked) {
    scriptOf(project_, message) = script;
    found_.erase(message);
    if (checked)
        found_.emplace(message, std::move(*checked));
}

} // namespace orvista
