#include "model/Quotation.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(Quotation, StaysOnOneLine) {
    EXPECT_EQ(quotation(""), "\"\"");
    EXPECT_EQ(quotation("a\r\nb\xC3\xA9"), "\"a  b\xC3\xA9\"");
}

TEST(Quotation, IsCutAfterFortyCharacters) {
    const std::string forty(40, 'x');
    EXPECT_EQ(quotation(forty), '"' + forty + '"');
    EXPECT_EQ(quotation(forty + "y"), '"' + forty + "…\"");
    EXPECT_EQ(deviceQuotation(std::string(40, '\xC9')).size(), 2 + 2 * forty.size());
}

TEST(Quotation, SaysWhatCannotBePrinted) {
    EXPECT_EQ(quotation("a\tb"), "\"a<a tab>b\"");
    for (const char* control : {"\x01", "\x1F", "\x7F", "\xC2\x80", "\xC2\x9F"})
        EXPECT_EQ(quotation(control), "\"<a control character>\"");
    for (const char* printed : {" ", "~", "\xC2\xA0", "\xC3\x9F"})
        EXPECT_EQ(quotation(printed), '"' + std::string(printed) + '"');
    EXPECT_EQ(deviceQuotation("\x80\x81\xE9"), "\"\xE2\x82\xAC<a control character>\xC3\xA9\"");
}

TEST(Printable, HasAQuestionMarkForWhatCannotBePrinted) {
    EXPECT_EQ(printable("a\t\x81\x7F\xE9"), "a???\xC3\xA9");
    EXPECT_EQ(printable("\x1F ~\x80\xA0\xA1"), "? ~\u20AC\u00A0\u00A1");
}

} // namespace
} // namespace orvista
