#include "sheets/AsciiText.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

TEST(AsciiText, ControlCharactersAndWhatIsNoneAreMarked) {
    for (const char* marked : {"\x01", "\x1F", "\x7F", "\xC2\x80", "\xC2\x9F", "\u2028", "\u2029", "\uFFFE",
                               "\uFFFF", "\U0001FFFE", "\U0010FFFF"})
        EXPECT_EQ(withoutControls(marked), "?") << marked;
    for (const char* kept : {" ", "~", "\u00A0", "\u2027", "\u202A", "\uFFFD", "\U00010000", "\U0001FFFD"})
        EXPECT_EQ(withoutControls(kept), kept);
    EXPECT_EQ(withoutControls("a\xFF\xE2\x82z"), "a???z");
}

TEST(AsciiText, LettersLoseTheirAccents) {
    EXPECT_EQ(asciiText("~\u00BF\u00C0\u00DF\u00FF\u0100\u017E\u017F\u0180"), "~?AssyAz??");
    EXPECT_EQ(asciiText("e\u02FF\u0300\u036F\u0370"), "e??");
}

} // namespace
} // namespace orvista
