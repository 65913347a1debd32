#include "check/PageFitText.h"
#include "display/Programme.h"
#include "tests/check/ScriptFindings.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

class PageFitText : public ::testing::Test {
protected:
    PageFitText() {
        bitmaps.store("plan.bmp", pictureBytes(200, 16));
        bitmaps.store("tower.bmp", pictureBytes(16, 24));
        bitmaps.store("broken.bmp", "BM");
    }
    std::string of(const std::string& script) const {
        Programme programme({128}, fieldFormats(Project()));
        programme.add({}, script, bitmaps);
        return pageFitText(programme.pages().at(0), {128}, programme.formats(), bitmaps);
    }
    std::size_t findings(const std::string& script) const {
        return checkMessage({Kind::Regular, 0}, script, Project(), bitmaps, 128).list.size();
    }
    StoredBitmaps bitmaps;
};

TEST_F(PageFitText, IsEmptyWhereAllIsSeen) {
    EXPECT_EQ(of("TEXT 0 0 RED BLACK \"Level\"\nACT STILL 10"), "");
}

TEST_F(PageFitText, CountsWhatIsNeverSeen) {
    EXPECT_EQ(of("TEXT 0 0 RED BLACK \"Emergency stop pu\"\nACT STILL 10"), "1 character does not fit");
    EXPECT_EQ(of("TEXT 0 0 RED BLACK \"Emergency stop pump\"\nACT STILL 10"), "3 characters do not fit");
}

TEST_F(PageFitText, TellsWhatPassesWholeAndIsNoFinding) {
    const std::string page = "TEXT 0 0 RED BLACK \"Emergency stop pum\"\nACT STILL 10\nOUT GO-LEFT 1 10";
    EXPECT_EQ(findings(page), 0U);
    EXPECT_EQ(of(page), "passes whole, 2 characters at a time beyond the edge");
}

TEST_F(PageFitText, NamesBitmapsThatCannotBeShown) {
    EXPECT_EQ(of("IMG 0 0 RED BLACK later.bmp\nIMG 9 0 RED BLACK LATER.BMP\nACT STILL 10"),
              "later.bmp is missing");
    EXPECT_EQ(of("IMG 0 0 RED BLACK broken.bmp\nIMG 0 0 RED BLACK plan.png\nACT STILL 10"),
              "broken.bmp is cut short; plan.png does not end in .bmp");
}

TEST_F(PageFitText, TellsHowMuchABitmapIsTooLarge) {
    EXPECT_EQ(of("IMG 0 0 RED BLACK plan.bmp\nACT STILL 10"), "the bitmap is 72 dots too wide");
    EXPECT_EQ(of("IMG 113 -1 RED BLACK tower.bmp\nACT STILL 10"),
              "the bitmap is 1 dot too wide and 8 dots too high");
    EXPECT_EQ(of("IMG 0 0 RED BLACK plan.bmp\nIMG 0 0 RED BLACK tower.bmp\nACT STILL 10"),
              "plan.bmp is 72 dots too wide; tower.bmp is 8 dots too high");
    EXPECT_EQ(of("IMG 0 0 RED BLACK plan.bmp\nACT STILL 10\nOUT GO-LEFT 1 10"), "");
}

} // namespace
} // namespace orvista
