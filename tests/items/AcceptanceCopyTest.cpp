#include "items/AcceptanceCopy.h"

#include <gtest/gtest.h>

#include <string>

namespace orvista {
namespace {

CutOffAcceptance cutOff() {
    std::vector<DisplayItem> before = displayItems(Project());
    before[3].raw = {1, 0};
    before[70].raw = {0xFFFF, 0x4000};
    return {"127.0.0.9", before, {{3, {1, 0}, {0, 0}}, {70, {0xFFFF, 0x4000}, {1, 2}}}};
}

TEST(AcceptanceCopy, HoldsWhatWasThere) {
    const auto read = readAcceptanceCopy(acceptanceCopy(cutOff()));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->address, "127.0.0.9");
    EXPECT_EQ(read->before, cutOff().before);
    EXPECT_EQ(read->written, cutOff().written);
}

TEST(AcceptanceCopy, HasItsForm) {
    DisplayItem item;
    item.item = {Kind::Regular, 2};
    item.address = 322;
    item.isAddressable = true;
    // The checksum was computed apart from the program.
    EXPECT_EQ(acceptanceCopy({"d", {item}, {{0, {0, 0}, {1, 0}}}}),
              "orvista-acceptance 1\n6751abb45b69a986\n1:d1:17:STDMSG33:3221:01:01:11:01:01:01:11:0");
}

TEST(AcceptanceCopy, ThatIsNotWholeIsNotRead) {
    const std::string bytes = acceptanceCopy(cutOff());
    for (std::size_t size = 0; size < bytes.size(); size += 7)
        EXPECT_FALSE(readAcceptanceCopy(bytes.substr(0, size)));
    for (std::size_t place = 0; place < bytes.size(); place += 5) {
        std::string changed = bytes;
        changed[place] = static_cast<char>(changed[place] ^ 1);
        EXPECT_FALSE(readAcceptanceCopy(changed)) << place;
    }
}

TEST(AcceptanceCopy, ThatNamesWhatThereIsNotIsNotRead) {
    CutOffAcceptance beyond = cutOff();
    beyond.written[0].place = beyond.before.size();
    EXPECT_FALSE(readAcceptanceCopy(acceptanceCopy(beyond)));
    CutOffAcceptance nowhere = cutOff();
    nowhere.before[3].address = 70'000;
    EXPECT_FALSE(readAcceptanceCopy(acceptanceCopy(nowhere)));
    CutOffAcceptance map = cutOff();
    map.before[3].item = Item();
    EXPECT_FALSE(readAcceptanceCopy(acceptanceCopy(map)));
}

} // namespace
} // namespace orvista
