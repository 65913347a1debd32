#include "tests/sheets/NamedProject.h"
#include "tests/sheets/XmlVariables.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::HasSubstr;

TEST(PlcOpenXml, OfAThousandProjectsIsReadBack) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const testing::RandomPlcProject random(seed);
        SCOPED_TRACE(seed);
        const testing::XmlVariables xml(testing::namedProject(random).xml());
        std::size_t count = 4;
        for (const auto& item : random.items) {
            const auto found = xml.variables.find(item.plcName);
            EXPECT_EQ(found != xml.variables.end(), item.isAddressable);
            if (found == xml.variables.end())
                continue;
            ++count;
            EXPECT_EQ(found->second.type, item.kind == Kind::Float ? "REAL" : "BOOL");
            EXPECT_EQ(found->second.value.empty(), !item.holdsValue);
            if (item.holdsValue) {
                EXPECT_EQ(testing::literalValue(found->second.value), item.value);
            }
            EXPECT_THAT(found->second.text, HasSubstr(item.name + "; "));
            EXPECT_THAT(found->second.text, HasSubstr(item.place()));
            EXPECT_THAT(found->second.text, HasSubstr(random.notes.of({item.kind, item.index}).comment));
        }
        EXPECT_EQ(xml.variables.size(), count);
        if (::testing::Test::HasFailure())
            return;
    }
}

} // namespace
} // namespace orvista
