#include "check/FixRun.h"

#include "model/Lines.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvista {

namespace {

constexpr int mostRounds = 100;

/// What both texts begin with, in whole lines.
std::size_t sameLines(std::string_view one, std::string_view other) {
    const auto [end, otherEnd] = std::ranges::mismatch(one, other);
    const auto same = static_cast<std::size_t>(end - one.begin());
    const auto last = one.substr(0, same).rfind(lineEnd);
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

void mendSome(Fixing& fixing, const std::vector<MendedFinding>& all, const std::vector<bool>& ticks) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!ticks[i])
            continue;
        const Findings findings{fixing.findingsOf(all[i].finding.place.item), {}, {}};
        // The line may be another one without those before it.
        if (const Finding* const same = sameFinding(findings, all[i].finding))
            fixing.mend(*same, [&](const Fix& fix) { return fix.caption == all[i].fix.caption; });
    }
}

std::size_t countOf(Fixing& fixing, const FixChoice& choice) {
    std::size_t count = 0;
    for (const Item item : itemsOf(choice))
        for (const Code code : codesOf(choice))
            count += fixing.countOf(item, code);
    return count;
}

} // namespace orvista
