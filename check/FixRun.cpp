#include "check/FixRun.h"

#include "display/FieldFormats.h"
#include "model/Lines.h"
#include "model/Text.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace orvista {

namespace {

constexpr int mostRounds = 100;

/// What both texts begin with, in whole lines.
std::size_t sameLines(std::string_view one, std::string_view other) {
    const auto last = one.substr(0, sameAtStart(one, other)).rfind(lineEnd);
    return last == std::string_view::npos ? 0 : last + lineEnd.size();
}

/// Of a text all of whose lines end.
void dropSameLines(std::string& before, std::string& after) {
    const std::size_t head = sameLines(before, after);
    before.erase(0, head);
    after.erase(0, head);
    while (true) {
        const auto lastLine = [](const std::string& text) {
            const auto end = text.size() < lineEnd.size() + 1
                                 ? std::string::npos
                                 : text.rfind(lineEnd, text.size() - lineEnd.size() - 1);
            return text.substr(end == std::string::npos ? 0 : end + lineEnd.size());
        };
        const std::string last = lastLine(before);
        if (last.empty() || last != lastLine(after))
            return;
        before.resize(before.size() - last.size());
        after.resize(after.size() - last.size());
    }
}

bool isWanted(const Finding& finding, const FixChoice& choice) {
    return choice.codes.empty() ? finding.rule().fixes != Fixes::None
                                : std::ranges::find(choice.codes, finding.code) != choice.codes.end();
}

std::vector<Item> itemsOf(const FixChoice& choice) {
    if (choice.items.empty())
        return {allItems().begin(), allItems().end()};
    return choice.items;
}

std::vector<Item> itemsOf(const MendedFinding& mended) {
    std::vector<Item> items = itemsOf(mended.changes);
    items.push_back(mended.finding.place.item);
    return items;
}

/// Whether messages may have other findings after it, too.
bool changesFormats(const MendedFinding& mended) {
    const auto formatsWith = [](const Change& change, const std::string& text) {
        Project project;
        replaceText(project, change.item, *change.field, 0, textOf(project, change.item, *change.field),
                    text);
        return fieldFormats(project);
    };
    return std::ranges::any_of(mended.changes, [&](const Change& change) {
        return isVariable(change.item) &&
               formatsWith(change, change.before) != formatsWith(change, change.after);
    });
}

/// The fixes that no item of a fix that is left out has to do with.
std::vector<bool> independent(const SomeMended& some) {
    std::set<Item> doubtful;
    std::vector<bool> known(some.all.size(), some.isOfThisProject);
    for (bool isAnyNew = true; std::exchange(isAnyNew, false);) {
        for (std::size_t i = 0; i < some.all.size(); ++i) {
            const std::vector<Item> items = itemsOf(some.all[i]);
            if (!known[i] || (some.ticks[i] && std::ranges::none_of(items, [&](Item item) {
                                  return doubtful.contains(item);
                              })))
                continue;
            known[i] = false;
            isAnyNew = true;
            doubtful.insert(items.begin(), items.end());
            if (changesFormats(some.all[i]))
                return std::vector<bool>(some.all.size());
        }
    }
    return known;
}

MendedFinding recorded(const Fixing& fixing, const Finding& finding, Fixing::Done done) {
    MendedFinding mended{finding, std::move(done.fix), std::move(done.changes), {}};
    std::ranges::transform(mended.changes, std::back_inserter(mended.lines),
                           [&](const Change& change) { return linesOf(fixing.project(), change); });
    return mended;
}

} // namespace

OldAndNew linesOf(const Project& project, const Change& change) {
    if (change.field != &scriptField())
        return {change.before, change.after};
    const std::string_view script = scriptOf(project, change.item);
    const std::size_t first =
        change.at == 0 ? 0 : script.find_last_of(lineEnd, change.at - 1) + 1; // none is the largest
    const std::size_t changed = change.at + change.after.size();
    const std::size_t end = std::min(script.find_first_of(lineEnd, changed), script.size());
    const std::string head(script.substr(first, change.at - first));
    const std::string tail = std::string(script.substr(changed, end - changed)) + std::string(lineEnd);
    OldAndNew lines{withWholeLineEnds(head + change.before + tail),
                    withWholeLineEnds(head + change.after + tail)};
    dropSameLines(lines.before, lines.after);
    for (std::string* const text : {&lines.before, &lines.after})
        if (text->ends_with(lineEnd))
            text->resize(text->size() - lineEnd.size());
    return lines;
}

std::vector<Code> codesOf(const FixChoice& choice) {
    if (!choice.codes.empty())
        return choice.codes;
    std::vector<Code> codes;
    for (const Rule& rule : rules())
        if (rule.fixes == Fixes::Offered)
            codes.push_back(rule.code);
    return codes;
}

std::vector<MendedFinding> mendAll(Fixing& fixing, const FixChoice& choice,
                                   const std::function<bool(std::size_t)>& goesOn) {
    std::vector<MendedFinding> all;
    const auto mayBe = [&](const Fix& fix) { return fix.isSure || !choice.codes.empty(); };
    bool mendedAny = true;
    for (int round = 0; round < mostRounds && std::exchange(mendedAny, false); ++round) {
        for (const Item item : itemsOf(choice)) {
            for (std::size_t i = 0; i < fixing.findingsOf(item).size();) {
                const Finding finding = fixing.findingsOf(item)[i];
                if (!goesOn(all.size()))
                    return all;
                auto done = isWanted(finding, choice) ? fixing.mend(finding, mayBe) : std::nullopt;
                if (!done) {
                    ++i; // what was mended is gone, and the next one stands in its place
                    continue;
                }
                all.push_back(recorded(fixing, finding, std::move(*done)));
                mendedAny = true;
            }
        }
    }
    return all;
}

std::vector<MendedFinding> mendEverything(Fixing& fixing, const std::function<bool(std::size_t)>& goesOn) {
    FixChoice onDemand;
    FixChoice any;
    for (const Rule& rule : rules())
        if (rule.fixes != Fixes::None) {
            any.codes.push_back(rule.code);
            if (rule.fixes == Fixes::OnDemand)
                onDemand.codes.push_back(rule.code);
        }
    std::vector<MendedFinding> all;
    // The last looks again at what the others left, where anything has become another.
    for (const FixChoice& choice : {FixChoice(), onDemand, any}) {
        std::vector<MendedFinding> mended = mendAll(fixing, choice, goesOn);
        if (mended.empty() && !choice.codes.empty())
            break;
        std::ranges::move(mended, std::back_inserter(all));
    }
    return all;
}

bool mendSome(Fixing& fixing, const SomeMended& some, const std::function<bool(std::size_t)>& goesOn) {
    const std::vector<bool> known = independent(some);
    std::size_t made = 0;
    for (std::size_t i = 0; i < some.all.size(); ++i) {
        if (!some.ticks[i])
            continue;
        const MendedFinding& mended = some.all[i];
        if (known[i])
            fixing.take(mended.changes);
        else if (!goesOn(made))
            return false;
        // The line may be another one without those before it.
        else if (const Finding* const same =
                     sameFinding(fixing.findingsOf(mended.finding.place.item), mended.finding))
            fixing.mend(Finding(*same), [&](const Fix& fix) { return fix.caption == mended.fix.caption; });
        ++made;
    }
    return true;
}

std::size_t countOf(Fixing& fixing, const FixChoice& choice) {
    std::size_t count = 0;
    for (const Item item : itemsOf(choice))
        for (const Code code : codesOf(choice))
            count += fixing.countOf(item, code);
    return count;
}

} // namespace orvista
