#include "display/RasterAt.h"
#include "script/MessagePage.h"

#include "tests/support/BitmapFile.h"
#include "tests/support/LedText.h"
#include "tests/support/PageDuration.h"
#include "tests/support/StoredBitmaps.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

/// Whatever page the message wizard composes, the display knows every line of it.
namespace orvista {
namespace {

using testing::ledText;

/// A page with four fields; `round` walks through the positions of all lists.
MessageForm formOf(std::size_t round) {
    MessageForm form;
    form.txtText = "a%7vb%8v\"%9vc%10v";
    form.txtPath = "pump 1.bmp";
    form.bitmap = round % 7 == 6;
    form.cbFont = round % 2;
    form.cbFgClr = round % 4;
    form.cbBgClr = round / 4 % 4;
    for (std::size_t slot = 0; slot < form.fields.size(); ++slot)
        form.fields[slot] = {(round + slot * 30) % 98, (round + slot) % 4, slot};
    form.cbInEffect = round % 6;
    form.cbIFSpeed = round % 3;
    form.cbSpEffect = round / 2 % 2;
    form.cbDelay = round % 10;
    form.cbOutEffect = round / 6 % 6;
    form.cbOFSpeed = round / 3 % 3;
    return form;
}

StoredBitmaps pumpBitmap() {
    StoredBitmaps bitmaps;
    bitmaps.store("PUMP 1.BMP", BitmapFile{1, 1, 24, {}, "\0\0\xFF\0"s}.bytes());
    return bitmaps;
}

TEST(WizardPages, AreKnownLineByLine) {
    const StoredBitmaps bitmaps = pumpBitmap();
    for (std::size_t round = 0; round < 2520; ++round) {
        const std::string page = BuildPartialScript(formOf(round), PathRules::posix());
        Programme programme({128}, fieldFormats(Project()));
        programme.add({}, page, bitmaps);
        ASSERT_TRUE(programme.remarks().empty()) << page << "\n: " << programme.remarks()[0].text;
        ASSERT_EQ(programme.pageCount(), 1U) << page;
        ASSERT_GE(pageDuration(programme, 0), 500) << page;
    }
}

TEST(WizardPages, PutFieldsIntoTheBlanksOfTheText) {
    MessageForm form;
    form.txtText = "Temp:%7vC";
    form.cbInEffect = form.cbOutEffect = 0;
    form.fields[0].cbVar = booleanVariableCount;
    const std::string page = BuildPartialScript(form, PathRules::posix());
    ASSERT_NE(page.find("RegVar1\r\n"), std::string::npos) << page;

    Programme shown({128}, fieldFormats(Project()));
    shown.add({}, page, NoBitmaps());
    DisplayValues values;
    values.floats[0] = 21.5F;
    Programme expected({128}, fieldFormats(Project()));
    expected.add({}, "TEXT 0 0 RED BLACK \"Temp: 21.500C\"", NoBitmaps());
    EXPECT_EQ(ledText(rasterAt(shown, values, 0)), ledText(rasterAt(expected, values, 0)));
}

} // namespace
} // namespace orvista
