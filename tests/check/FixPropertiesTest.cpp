#include "check/FixRun.h"
#include "check/Fixing.h"
#include "check/ProjectCheck.h"
#include "model/Text.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/NamedItem.h"
#include "tests/support/RandomChoices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Whatever stands in a message: a fix that is offered mends its finding and nothing else, and what it
/// changed can be taken back.
namespace orvista {
namespace {

constexpr std::size_t wanted = 1000;
constexpr int columns = 128;

class FolderOfThree final : public BitmapProvider {
public:
    FolderOfThree() {
        for (const std::string& name : names())
            images_.push_back(decodedBitmap(pictureBytes(name.size() == 8 ? 100 : 16, 16)));
    }
    FoundBitmap bitmap(std::string_view name) const override {
        for (std::size_t i = 0; i < images_.size(); ++i)
            if (equalsIgnoringCase(names()[i], name))
                return images_[i];
        return {};
    }
    std::vector<std::string> names() const override { return {"Pump 1.bmp", "plan.bmp", "x.BMP"}; }

private:
    std::vector<FoundBitmap> images_;
};

/// Projects in which much goes wrong.
class WrongProjects : public testing::RandomChoices {
public:
    using RandomChoices::RandomChoices;

    Project project() {
        Project project;
        for (std::size_t i = 0; i < 4; ++i) {
            project.RegVar[i] = {"RegVar" + std::to_string(i + 1), one({"0.0", "1", "12,5", "x", "1e9"}),
                                 one({"7", "5", "3", "2", "9", "y", "8"}), one({"0", "1", "3", "5", "-1"})};
            project.CoilVar[i].defaultValue = one({"0", "1", "1.0", "yes", "7"});
        }
        for (std::size_t i = 0; i < 3; ++i)
            project.STDMSG[i] = script();
        return project;
    }

    /// Several of them, mostly.
    std::string pages() {
        std::string pages;
        for (std::size_t i = 0; i < 4; ++i)
            pages += line() + "\r\n" + line() + "\r\n" + line() + "\r\nCLEAR\r\n";
        return pages + line();
    }

private:
    std::string one(std::initializer_list<std::string_view> texts) {
        return std::string(texts.begin()[below(texts.size())]);
    }

    std::string script() {
        if (below(4) == 0)
            return one({" ", "\r\n", "  \r\n ", "ENDMSG", "[CONFIG]"});
        std::string script = below(8) == 0 ? "\xEF\xBB\xBF" : "";
        const std::string end = one({"\r\n", "\r\n", "\n", "\r"});
        const std::size_t lines = 1 + below(9);
        for (std::size_t i = 0; i < lines; ++i)
            script += (i == 0 ? "" : end) + line();
        return below(4) == 0 ? script : script + end + pageOfTwo(end);
    }

    /// What seldom comes about by chance: values on texts and on one another, bitmaps of wrong names and at
    /// the edge.
    std::string pageOfTwo(const std::string& end) {
        const std::string first = one({"TEXT 0 0 RED BLACK \"Level   m\"", "TEXT 0 0 RED BLACK \"Level m\"",
                                       "DISPVAR 0 0 RED BLACK RegVar2", "DISPVAR 24 0 RED BLACK RegVar3",
                                       "IMG 48 0 RED BLACK plan.bmp", "IMG 0 0 RED BLACK Pump1.bmp"});
        return "CLEAR" + end + first + end + "DISPVAR " + one({"40", "48", "72"}) + " 0 RED BLACK " +
               one({"RegVar1", "RegVar4", "CoilVar2"});
    }

    std::string line() {
        switch (below(10)) {
        case 0:
            return one({"CLEAR", "CLEAR", "clear", "CLAER", ""});
        case 1:
            return one({"DEFMSG", " ENDMSG ", "[STDMSG.ILM]", "HELLO", "TXT 1"});
        case 2:
            return one({"ACT STILL 3000", "ACT STIL 500", "ACT BLINK 4 75", "IN GO-LEFT 1 50",
                        "OUT GO-UP 1 50", "OUT FADE 25", "OUT GO-LEFTT 1 50", "ACT STILL 0"});
        case 3:
        case 4:
            return one({"IMG", "IMG", "IGM"}) + place() +
                   one({"plan.bmp", "plan.png", "Pump1.bmp", "pump 1.BMP", "none.bmp", "x"});
        case 5:
        case 6:
        case 7:
            return one({"TEXT", "TEXT", "TEXTS", "TXET"}) + place() + "\"" +
                   one({"Level   m", "Emergency stop pump", "a", "a  b  c  d", "Level        m", "", "   "}) +
                   "\"";
        default:
            return one({"DISPVAR", "DISPVAR", "DISPVARS", "DSPVAR"}) + place() +
                   one({"RegVar1", "RegVar2", "RegVar3", "CoilVar1", "RegVar99"});
        }
    }

    std::string place() {
        return " " + one({"0", "0", "8", "48", "72", "100", "-8", "130", "- 1"}) + " " +
               one({"0", "0", "5", "12", "-9"}) + " " + one({"RED", "GREEN", "GREN"}) + " " +
               one({"BLACK", "BLACK", "BLAC", "RED"}) + " ";
    }
};

std::vector<std::string> codesIn(const Findings& findings, Item item) {
    std::vector<std::string> codes;
    for (const Finding& finding : findings.list)
        if (finding.place.item == item)
            codes.emplace_back(finding.rule().name);
    std::ranges::sort(codes);
    return codes;
}

std::vector<Finding> ofOthers(const Findings& findings, Item item) {
    std::vector<Finding> others = findings.list;
    std::erase_if(others, [item](const Finding& finding) { return finding.place.item == item; });
    return others;
}

void expectSame(const Project& one, const Project& other) {
    EXPECT_EQ(one.STDMSG, other.STDMSG);
    EXPECT_EQ(one.ALTMSG, other.ALTMSG);
    EXPECT_EQ(one.RegVar, other.RegVar);
    EXPECT_EQ(one.CoilVar, other.CoilVar);
}

/// Held against a check of the whole project, which knows nothing of fixes.
class Judge {
public:
    Judge(const Project& project, const BitmapProvider& bitmaps)
        : project_(project), bitmaps_(bitmaps), before_(check_.check(project, bitmaps, columns)) {}

    const Findings& before() const { return before_; }

    void expectMended(const Finding& finding, const Fix& fix) {
        const auto changes = changesOf(project_, fix);
        Project after = project_;
        applyChanges(after, changes);
        const Item item = finding.place.item;
        const Findings left = check_.check(after, bitmaps_, columns);
        const auto codes = codesIn(before_, item);
        const auto codesLeft = codesIn(left, item);
        EXPECT_LT(std::ranges::count(codesLeft, finding.rule().name),
                  std::ranges::count(codes, finding.rule().name))
            << fix.caption;
        EXPECT_TRUE(std::ranges::includes(codes, codesLeft)) << fix.caption;
        EXPECT_EQ(ofOthers(before_, item), ofOthers(left, item)) << fix.caption;
        EXPECT_LE(changes.size(), 2U);
        revertChanges(after, changes);
        expectSame(after, project_);
    }

private:
    const Project& project_;
    const BitmapProvider& bitmaps_;
    ProjectCheck check_;
    Findings before_;
};

/// Makes the first fix of each finding of the message, each time in a project of which nothing is known.
/// \returns their captions
std::vector<std::string> mendOneByOne(Project& project, const BitmapProvider& bitmaps, Item message) {
    std::vector<std::string> captions;
    for (bool isAnyMended = true; std::exchange(isAnyMended, false);) {
        for (std::size_t i = 0;;) {
            Fixing anew(project, bitmaps, columns);
            if (i == anew.findingsOf(message).size())
                break;
            const std::vector<Fix> fixes = anew.fixesOf(Finding(anew.findingsOf(message)[i]));
            if (fixes.empty()) {
                ++i;
                continue;
            }
            applyChanges(project, changesOf(project, fixes.front()));
            captions.push_back(fixes.front().caption);
            isAnyMended = true;
        }
    }
    return captions;
}

/// All codes that have fixes.
std::vector<Code> fixedCodes() {
    std::vector<Code> codes;
    for (const Rule& rule : rules())
        if (rule.fixes != Fixes::None)
            codes.push_back(rule.code);
    return codes;
}

/// The items of which the projects above have something.
std::vector<Item> wrongItems() {
    std::vector<Item> items;
    for (std::size_t i = 0; i < 4; ++i) {
        items.emplace_back(Kind::Float, i);
        items.emplace_back(Kind::Boolean, i);
    }
    for (std::size_t i = 0; i < 3; ++i)
        items.emplace_back(Kind::Regular, i);
    return items;
}

TEST(FixProperties, EachFixMendsItsFindingAndNothingElse) {
    const FolderOfThree bitmaps;
    WrongProjects random(21);
    CodeCounts tried{};
    const auto lacks = [&](const Rule& rule) {
        return rule.fixes != Fixes::None && tried[static_cast<std::size_t>(rule.code)] < wanted;
    };
    while (std::ranges::any_of(rules(), lacks)) {
        const Project project = random.project();
        Fixing fixing(project, bitmaps, columns);
        std::optional<Judge> judge;
        for (const Item item : wrongItems()) {
            for (const Finding& finding : std::vector(fixing.findingsOf(item))) {
                if (!lacks(finding.rule()))
                    continue;
                for (const Fix& fix : fixing.fixesOf(finding)) {
                    ++tried[static_cast<std::size_t>(finding.code)];
                    if (!judge)
                        judge.emplace(project, bitmaps);
                    judge->expectMended(finding, fix);
                }
            }
        }
    }
}

TEST(FixProperties, FixAfterFixChangesNothing) {
    const FolderOfThree bitmaps;
    WrongProjects random(22);
    const auto goesOn = [](std::size_t) { return true; };
    for (std::size_t i = 0; i < wanted / 3; ++i) { // of three messages each
        const Project project = random.project();
        for (const FixChoice& choice : {FixChoice{}, FixChoice{fixedCodes(), {}}}) {
            Fixing fixing(project, bitmaps, columns);
            const auto mended = mendAll(fixing, choice, goesOn);
            Fixing again(fixing.project(), bitmaps, columns);
            EXPECT_TRUE(mendAll(again, choice, goesOn).empty());
            Project back = fixing.project();
            for (auto step = mended.rbegin(); step != mended.rend(); ++step)
                revertChanges(back, step->changes);
            expectSame(back, project);
        }
    }
}

/// Mending goes by the pages of a message where it can: the same fixes, in the same order.
TEST(FixProperties, MendingAllGoesAsOneByOne) {
    const FolderOfThree bitmaps;
    WrongProjects random(24);
    const Item message{Kind::Regular, 0};
    for (std::size_t i = 0; i < wanted / 10; ++i) {
        Project project = random.project();
        project.STDMSG[0] = random.pages();
        Fixing fixing(project, bitmaps, columns);
        std::vector<std::string> captions;
        for (const MendedFinding& mended :
             mendAll(fixing, {fixedCodes(), {message}}, [](std::size_t) { return true; }))
            captions.push_back(mended.fix.caption);
        EXPECT_EQ(captions, mendOneByOne(project, bitmaps, message));
        expectSame(fixing.project(), project);
    }
}

/// What is remembered between two fixes is what a check from anew finds.
TEST(FixProperties, FindingsAreKeptUpToDate) {
    const FolderOfThree bitmaps;
    WrongProjects random(23);
    for (std::size_t i = 0; i < wanted / 10; ++i) {
        Fixing fixing(random.project(), bitmaps, columns);
        mendAll(fixing, {}, [](std::size_t count) { return count < 3; });
        Fixing anew(fixing.project(), bitmaps, columns);
        for (const Item item : allItems())
            EXPECT_EQ(fixing.findingsOf(item), anew.findingsOf(item));
    }
}

} // namespace
} // namespace orvista
