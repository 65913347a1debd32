#include "sheets/BookHtml.h"

#include "display/FieldValues.h"
#include "display/FirstSight.h"
#include "display/PanelDrawing.h"
#include "tests/sheets/PngReader.h"
#include "tests/support/ExampleProject.h"
#include "tests/support/RandomChoices.h"

#include <gmock/gmock.h>

#include <chrono>
#include <regex>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

const AddressHead bookHead{"0123456789ab", "2026-11-22T03:15:07Z", "Line 3 <gate>", "1.03-2"};
constexpr UtcMoment bookMoment = std::chrono::sys_days{std::chrono::year{2026} / 11 / 22};

std::string book(const Project& project, BookWishes wishes, const ProjectNotes& notes = {}) {
    wishes.moment = bookMoment;
    return bookHtml(messageBook(project, notes, NoBitmaps(), wishes), project, bookHead);
}

std::string unpacked(std::string_view letters) {
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char letter : letters) {
        const auto value =
            std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/").find(letter);
        if (value == std::string_view::npos)
            break;
        bits = bits * 64 + static_cast<std::uint32_t>(value);
        count += 6;
        if (count >= 8)
            bytes.push_back(static_cast<char>(bits >> (count -= 8) & 0xFFU));
    }
    return bytes;
}

/// The files in a page, in its order.
std::vector<std::string> picturesIn(const std::string& html) {
    constexpr std::string_view begin = "src=\"data:image/png;base64,";
    std::vector<std::string> pictures;
    for (std::size_t at = html.find(begin); at != std::string::npos; at = html.find(begin, at)) {
        at += begin.size();
        pictures.push_back(unpacked(std::string_view(html).substr(at, html.find('"', at) - at)));
    }
    return pictures;
}

/// Pages at random, and what is seen of each when it is the only one.
class RandomPages {
public:
    explicit RandomPages(unsigned seed)
        : random_(seed), columns(24 + 8 * static_cast<int>(random_.below(5))) {
        for (FloatVariable& variable : project.RegVar)
            variable.defaultValue = std::to_string(random_.below(1000)) + ".5";
        for (std::size_t message = 0; message < 2; ++message) {
            for (std::size_t page = random_.below(3); page <= 2; ++page)
                add(project.STDMSG[message]);
        }
    }

private:
    testing::RandomChoices random_;

    std::string colour() { return std::array{"RED", "GREEN", "ORANGE", "BLACK"}[random_.below(4)]; }
    std::string place() {
        return std::to_string(random_.below(40)) + " " + std::to_string(random_.below(10)) + " " + colour() +
               " " + colour() + " ";
    }
    void add(std::string& script) {
        std::string page = "CLEAR\r\nTEXT" + std::string(random_.below(2) == 0 ? "S " : " ") + place() +
                           "\"" + std::to_string(random_.below(100'000)) + "\"\r\n";
        const bool hasField = random_.below(2) == 0;
        if (hasField)
            page += "DISPVARS " + place() + "RegVar" + std::to_string(1 + random_.below(64)) + "\r\n";
        page += std::array{
            "IN GO-LEFT 1 25\r\nACT STILL 500\r\n", "ACT BLINK 2 100\r\n", "IN FADE 25\r\nOUT GO-UP 1 25\r\n",
            "ACT STILL 100\r\nTEXT 0 0 RED BLACK \"later\"\r\nACT STILL 10\r\n"}[random_.below(4)];
        script += page;
        pages.push_back({page, hasField});
    }

public:
    struct Page {
        std::string script;
        bool hasField;
    };
    Project project;
    std::vector<Page> pages;
    int columns;
};

PixelImage shownAlone(const RandomPages& random, const std::string& page, ValueChoice values) {
    return drawPanel(firstSight(page, {random.columns}, fieldFormats(random.project),
                                chosenValues(values, random.project).at({2026, 11, 22}), NoBitmaps()),
                     bookScale);
}

TEST(BookHtml, HundredBooksShowWhatTheDisplayShowsDotByDot) {
    std::size_t palettes = 0;
    for (unsigned seed = 0; seed < 100; ++seed) {
        const RandomPages random(seed);
        const auto pictures = picturesIn(book(random.project, {.columns = random.columns, .widest = true}));
        auto picture = pictures.begin();
        const auto expectNext = [&](const RandomPages::Page& page, ValueChoice values) {
            ASSERT_NE(picture, pictures.end()) << seed;
            const testing::PngReader png(*picture++);
            palettes += png.hasPalette() ? 1 : 0;
            EXPECT_EQ(png.picture().pixels, shownAlone(random, page.script, values).pixels)
                << seed << page.script;
        };
        for (const RandomPages::Page& page : random.pages) {
            expectNext(page, ValueChoice::Defaults);
            if (page.hasField)
                expectNext(page, ValueChoice::Widest);
        }
        EXPECT_EQ(picture, pictures.end()) << seed;
    }
    EXPECT_GT(palettes, 100U);
}

TEST(BookHtml, OfASmallProjectIsAsWrittenByHand) {
    Project project;
    project.ProjName = "A&B";
    project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"H      m\"\r\nDISPVAR 8 0 RED BLACK RegVar2\r\n"
                        "IN GO-LEFT 2 20\r\nACT STILL 1500\r\nOUT GO-UP 1 50\r\n"
                        "CLEAR\r\nTEXTS 0 5 GREEN BLACK \"<ok>\"\r\nACT BLINK 1 250\r\n";
    project.RegVar[1] = {.name = "RegVar2", .defaultValue = "1.5", .width = "5", .precision = "1"};
    ProjectNotes notes;
    notes.set({Kind::Regular, 2}, {.label = "TankFull", .unit = {}, .comment = "Height > 2 m"});
    notes.set({Kind::Float, 1}, {.label = "Height", .unit = "m", .comment = {}});
    const std::string html =
        book(project, {.columns = 96, .addresses = AddressRows::UsedOnly, .widest = true}, notes);
    const std::string withoutPictures =
        std::regex_replace(html, std::regex("base64,[A-Za-z0-9+/=]*"), "base64,");
    const std::string body = withoutPictures.substr(withoutPictures.find("</style>"));
    EXPECT_EQ(body, testing::golden("book.html"));
    EXPECT_THAT(html, ::testing::StartsWith(
                          "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"));
    EXPECT_THAT(html, Not(HasSubstr("<script")));
    EXPECT_EQ(picturesIn(html).size(), 3U);
}

/// 60 messages of four pages, as the wizard writes them.
Project bigProject() {
    Project project;
    for (const Item message : allMessages()) {
        std::string script;
        for (int page = 0; page < 4; ++page)
            script += std::string("CLEAR\r\nTEXT 0 0 ") + (page % 2 == 0 ? "RED" : "ORANGE") +
                      " BLACK \"Tank " + std::to_string(messagePosition(message) + 1) +
                      ":        m\"\r\nDISPVAR 64 0 GREEN BLACK RegVar" + std::to_string(page + 1) +
                      "\r\nIN GO-LEFT 2 25\r\nACT STILL 2000\r\nOUT GO-LEFT 2 25\r\n";
        scriptOf(project, message) = script;
    }
    return project;
}

TEST(BookHtml, OfSixtyMessagesOfFourPagesIsSmall) {
    const std::string html = book(bigProject(), {.widest = true});
    const auto pictures = picturesIn(html);
    ASSERT_EQ(pictures.size(), 480U);
    std::size_t ofWidest = 0;
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        EXPECT_LE(pictures[i].size(), 4096U);
        ofWidest += i % 2 == 1 ? (pictures[i].size() + 2) / 3 * 4 : 0;
    }
    EXPECT_LE(html.size(), 3'000'000U);
    EXPECT_LE(html.size() - ofWidest, 1'500'000U);
}

TEST(MessageBook, HasTheMessagesThatDrawSomethingAndWhatIsFoundInThem) {
    Project project;
    project.STDMSG[3] =
        "CLEAR\r\nTEXT 0 0 RED BLACK \"x\"\r\nACT STILL 100\r\nTEXT 500 0 RED BLACK \"y\"\r\nACT STILL 1\r\n";
    project.STDMSG[4] = "NONSENSE\r\n";
    project.ALTMSG[1] = "CLEAR\r\nDATE 0 0 RED BLACK\r\n";
    const MessageBook made = messageBook(project, {}, NoBitmaps(), {.widest = true, .moment = bookMoment});
    ASSERT_EQ(made.messages.size(), 2U);
    EXPECT_EQ(made.messages[0].place.name, "ALTMSG2");
    EXPECT_EQ(made.messages[0].pages.at(0).reads, "22.11.2026");
    EXPECT_TRUE(made.messages[0].pages.at(0).widest);
    EXPECT_THAT(made.messages[0].pages.at(0).acts, ElementsAre("stands still: 1 s"));
    EXPECT_EQ(made.messages[1].place.name, "STDMSG4");
    EXPECT_FALSE(made.messages[1].pages.at(0).widest);
    EXPECT_THAT(made.messages[1].findings, Not(::testing::IsEmpty()));
    ASSERT_FALSE(made.otherFindings.empty());
    EXPECT_EQ(made.otherFindings[0].place.item, (Item{Kind::Regular, 4}));
    EXPECT_EQ(made.addresses.size(), 156U);
}

TEST(MessageBook, CountsThePagesBeyondAHundred) {
    Project project;
    for (int page = 0; page < 300; ++page)
        project.STDMSG[0] += "CLEAR\r\nTEXT 0 0 RED BLACK \"x\"\r\nACT STILL 10\r\n";
    const MessageBook made = messageBook(project, {}, NoBitmaps(), {});
    EXPECT_EQ(made.messages.at(0).pages.size(), 100U);
    EXPECT_EQ(made.messages.at(0).pagesLeftOut, 200U);
    EXPECT_EQ(made.messages.at(0).milliseconds, 3000);
    EXPECT_EQ(mostPagesOfBook(128), 100U);
    EXPECT_EQ(mostPagesOfBook(512), 25U);
    EXPECT_EQ(mostPagesOfBook(PanelSize::maximumColumns), 4U);
    project.STDMSG[0].resize(project.STDMSG[0].size() / 100);
    EXPECT_THAT(book(project, {}), Not(HasSubstr("more page")));
}

} // namespace
} // namespace orvista
