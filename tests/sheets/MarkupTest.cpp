#include "sheets/Markup.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(Markup, HasNoSignsOfItsOwn) {
    EXPECT_EQ(escapedForMarkup("<a href=\"x\">&'"), "&lt;a href=&quot;x&quot;&gt;&amp;'");
}

TEST(Markup, OfControlCharactersOnlyWhiteOnesStay) {
    EXPECT_EQ(escapedForMarkup("a\tb\nc\rd e~\u00E9"), "a\tb\nc\rd e~\u00E9");
    EXPECT_EQ(escapedForMarkup("\x01\x08\x0B\x0C\x0E\x1F\x7F"), "???????");
}

} // namespace
} // namespace orvista
