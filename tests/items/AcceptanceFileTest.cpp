#include "items/AcceptanceFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace orvista {
namespace {

using ::testing::HasSubstr;

const std::string written = R"({
  "version": 1,
  "fingerprint": "0123456789ab",
  "address": "127.0.0.9",
  "time": "2026-11-22T03:15:00Z",
  "name": "J. \"Jo\" Weiß",
  "messages": {
    "STDMSG3": {
      "result": "wrong",
      "remark": "the arrow points left",
      "time": "2026-11-22T03:16:10Z"
    },
    "ALTMSG20": {
      "result": "as shown",
      "remark": "",
      "time": "2026-11-22T03:16:30Z"
    },
    "STDMSG1": {
      "result": "skipped",
      "remark": "",
      "time": "2026-11-22T03:17:00Z"
    }
  }
}
)";

Acceptance seen() {
    return {"0123456789ab",
            "127.0.0.9",
            "2026-11-22T03:15:00Z",
            "J. \"Jo\" Weiß",
            {{{Kind::Regular, 2}, SeenResult::Wrong, "the arrow points left", "2026-11-22T03:16:10Z"},
             {{Kind::Emergency, 19}, SeenResult::AsShown, "", "2026-11-22T03:16:30Z"},
             {{Kind::Regular, 0}, SeenResult::Skipped, "", "2026-11-22T03:17:00Z"}}};
}

/// What is said of the file with this instead of that.
std::string faultOf(const std::string& that, const std::string& instead) {
    std::string bytes = written;
    const std::size_t place = bytes.find(that);
    EXPECT_NE(place, std::string::npos) << that;
    bytes.replace(place, that.size(), instead);
    const AcceptanceReading reading = readAcceptance(bytes);
    EXPECT_EQ(reading.acceptance.has_value(), reading.fault.empty());
    return reading.fault;
}

TEST(AcceptanceFile, HoldsWhatWasSeen) {
    EXPECT_EQ(acceptanceBytes(seen()), written);
    const AcceptanceReading reading = readAcceptance(written);
    EXPECT_EQ(reading.fault, "");
    EXPECT_EQ(reading.acceptance, seen());
}

TEST(AcceptanceFile, HoldsTheLongestRemarksOfAllMessages) {
    Acceptance acceptance = seen();
    for (const Item message : allMessages())
        acceptance.set({message, SeenResult::Wrong, std::string(longestRemark, '"'), "2026-11-22T03:15:00Z"});
    const std::string bytes = acceptanceBytes(acceptance);
    EXPECT_LT(bytes.size(), mostAcceptanceBytes);
    EXPECT_EQ(readAcceptance(bytes).acceptance, acceptance);
}

TEST(AcceptanceFile, AMessageStandsThereOnce) {
    Acceptance acceptance = seen();
    acceptance.set({{Kind::Regular, 2}, SeenResult::AsShown, "", "2026-11-22T03:18:00Z"});
    EXPECT_EQ(acceptance.messages.size(), 3u);
    EXPECT_EQ(acceptance.of({Kind::Regular, 2})->result, SeenResult::AsShown);
    EXPECT_EQ(acceptance.of({Kind::Regular, 1}), nullptr);
}

TEST(AcceptanceFile, OfOthersIsReadWithTheirKeys) {
    EXPECT_EQ(faultOf("\"version\": 1,", "\"version\": 1, \"plant\": [1, {\"a\": null}],"), "");
    EXPECT_EQ(faultOf("\"remark\": \"\",\n", "\n"), "");
    EXPECT_EQ(faultOf("STDMSG3", "stdmsg03"), "");
}

TEST(AcceptanceFile, SaysWhyItIsNotTaken) {
    EXPECT_EQ(faultOf("\"version\": 1", "\"version\": 2"), "its \"version\" is not 1");
    EXPECT_EQ(faultOf("  \"version\": 1,\n", ""), "its \"version\" is not 1");
    EXPECT_EQ(faultOf("\"0123456789ab\"", "12"), "\"fingerprint\" is not a text");
    EXPECT_EQ(faultOf("J. ", "J.\\t"), "\"name\" holds a tab, a line end or another control character");
    EXPECT_EQ(faultOf("the arrow", std::string(1000, 'a')), "\"remark\" is longer than 1000 characters");
    EXPECT_EQ(faultOf("2026-11-22T03:15:00Z", "yesterday"),
              "\"yesterday\" is not a time such as 2026-11-22T03:15:00Z");
    EXPECT_EQ(faultOf("\"wrong\"", "\"right\""), "\"right\" is not a result");
    EXPECT_EQ(faultOf("STDMSG3", "STDMSG41"), "\"STDMSG41\" is not a message");
    EXPECT_EQ(faultOf("STDMSG3", "RegVar3"), "\"RegVar3\" is not a message");
    EXPECT_EQ(faultOf("STDMSG3", "stdmsg1"), "STDMSG1 stands there twice");
    EXPECT_EQ(faultOf("STDMSG3", "STDMSG1"), "\"STDMSG1\" stands there twice in \"messages\"");
    EXPECT_THAT(faultOf("{\n  \"version\"", "\n  \"version\""), HasSubstr("is not JSON"));
    const std::string longest = written + std::string(mostAcceptanceBytes - written.size(), ' ');
    EXPECT_EQ(readAcceptance(longest).fault, "");
    EXPECT_EQ(readAcceptance(longest + " ").fault, "it is longer than 1 MB");
    EXPECT_EQ(readAcceptance("[]").fault, "its \"version\" is not 1");
}

TEST(AcceptanceFile, IsReadFromTheDisk) {
    const testing::TemporaryFolder folder;
    testing::writeBytes(folder.file("Plant-accepted.json"), written);
    EXPECT_EQ(readAcceptanceFile(folder.file(acceptanceFileName("Plant"))).acceptance, seen());
    EXPECT_NE(readAcceptanceFile(folder.file("none.json")).fault, "");
    EXPECT_NE(readAcceptanceFile(folder.path()).fault, "");
}

} // namespace
} // namespace orvista
