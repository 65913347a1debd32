#include "model/JsonReader.h"
#include "model/JsonText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

JsonValue jsonOf(std::string_view bytes) {
    const JsonReading reading = readJson(bytes);
    EXPECT_EQ(reading.fault, "") << bytes;
    EXPECT_THAT(reading.doubledKeys, IsEmpty()) << bytes;
    return reading.value;
}

std::string textOf(std::string_view bytes) {
    const JsonValue value = jsonOf(bytes);
    return value.text() == nullptr ? "no text" : *value.text();
}

std::string jsonFaultOf(std::string_view bytes) {
    const JsonReading reading = readJson(bytes);
    EXPECT_TRUE(reading.value.isNull());
    return reading.fault;
}

TEST(Json, HasValuesOfEveryKind) {
    EXPECT_TRUE(jsonOf("null").isNull());
    EXPECT_TRUE(*jsonOf(" true\r\n").boolean());
    EXPECT_FALSE(*jsonOf("\xEF\xBB\xBF\tfalse").boolean());
    EXPECT_EQ(textOf("\"\""), "");
    EXPECT_THAT(*jsonOf("[]").array(), IsEmpty());
    EXPECT_THAT(*jsonOf("{ }").object(), IsEmpty());
    const JsonValue value = jsonOf(R"({"b": [1, [ ], "x"], "a": {"": null}})");
    EXPECT_EQ(value.object()->front().key, "b");
    EXPECT_EQ(value.member("b")->array()->size(), 3U);
    EXPECT_TRUE(value.member("a")->member("")->isNull());
    EXPECT_EQ(value.member("c"), nullptr);
    EXPECT_EQ(jsonOf("[1]").member("c"), nullptr);
    EXPECT_EQ(jsonOf("1").text(), nullptr);
    EXPECT_EQ(jsonOf("\"1\"").number(), std::nullopt);
}

TEST(Json, NumbersKeepTheirSpelling) {
    for (const char* const spelling :
         {"0", "-0", "12", "-1.50", "1e2", "1E+02", "0.5e-3", "123456789012345678901234567890"})
        EXPECT_EQ(jsonText(jsonOf(spelling)), std::string(spelling) + "\n");
    EXPECT_EQ(jsonOf("-1.50").number(), -1.5);
    EXPECT_EQ(jsonOf("1E+02").number(), 100.0);
    EXPECT_EQ(jsonOf("1e999").number(), HUGE_VAL);
    EXPECT_EQ(jsonOf("-1e999").number(), -HUGE_VAL);
    EXPECT_EQ(jsonOf("1e-999").number(), 0.0);
}

TEST(Json, WholeNumbersAreSpeltWithoutPointAndExponent) {
    EXPECT_EQ(jsonOf("-3").whole(-3, 3), -3);
    EXPECT_EQ(jsonOf("3").whole(-3, 3), 3);
    for (const char* const other : {"4", "-4", "1.0", "1e0", "99999999999999999999", "\"1\"", "true"})
        EXPECT_EQ(jsonOf(other).whole(-3, 3), std::nullopt) << other;
}

TEST(Json, TextsMayHoldAnyCharacter) {
    EXPECT_EQ(textOf(R"("\" \\ \/ \b \f \n \r \t")"), "\" \\ / \b \f \n \r \t");
    EXPECT_EQ(textOf(R"("\u0041\u00e9\u20AC\ud83d\uDE00")"), "A\u00E9\u20AC\U0001F600");
    EXPECT_EQ(textOf(R"("\ud7ff\ue000")"), "\uD7FF\uE000");
    EXPECT_EQ(textOf(R"("\ud800\udc00\udbff\udfff")"), "\U00010000\U0010FFFF");
    EXPECT_EQ(textOf("\"\u00E9\u20AC\U0001F600 \x7F\""), "\u00E9\u20AC\U0001F600 \x7F");
    EXPECT_EQ(textOf(R"("\u0000")"), std::string(1, '\0'));
}

TEST(Json, IsStrict) {
    for (const char* const bytes : {"",
                                    " ",
                                    "nul",
                                    "True",
                                    "+1",
                                    "01",
                                    "-",
                                    "1.",
                                    ".5",
                                    "1e",
                                    "1e+",
                                    "0x10",
                                    "NaN",
                                    "Infinity",
                                    "-Infinity",
                                    "1 2",
                                    "[1,]",
                                    "[,1]",
                                    "[1 2]",
                                    "[",
                                    "]",
                                    "{",
                                    "{\"a\"}",
                                    "{\"a\":}",
                                    "{\"a\":1,}",
                                    "{a:1}",
                                    "{1:1}",
                                    "{\"a\" 1}",
                                    "{\"a\":1 \"b\":2}",
                                    "[1}",
                                    "{\"a\":1]",
                                    "'a'",
                                    "\"a",
                                    "\"\\\"",
                                    "\"\\x41\"",
                                    "\"\\u12G4\"",
                                    "\"\\u12\"",
                                    "\"\\u+123\"",
                                    "\"\\ud800\"",
                                    "\"\\ud800\\n\"",
                                    "\"\\ud800\\u0041\"",
                                    "\"\\ud800\\udbff\"",
                                    "\"\\ud800\\ue000\"",
                                    "\"\\udc00\\udc00\"",
                                    "\"\\udfff\"",
                                    "\"\\udc00\"",
                                    "\"a\tb\"",
                                    "\"a\nb\"",
                                    "// a\n1",
                                    "/* a */1",
                                    "1 // a",
                                    "\xFF",
                                    "\"\xFF\"",
                                    "\"\xC0\xAF\"",
                                    "\"\xED\xA0\x80\"",
                                    "\"\xE2\x82\"",
                                    "\xEF\xBB",
                                    "\xEF\xBB\xBF",
                                    "\xC2\xA0"
                                    "1"})
        EXPECT_THAT(jsonFaultOf(bytes), ::testing::EndsWith(" is not JSON")) << bytes;
    EXPECT_NE(jsonFaultOf(std::string_view("1\0", 2)), "");
    EXPECT_NE(jsonFaultOf(std::string_view("\"a\0\"", 4)), "");
    EXPECT_NE(jsonFaultOf(std::string_view("\0", 1)), "");
}

TEST(Json, MistakesHaveAPlace) {
    EXPECT_EQ(jsonFaultOf(""), "line 1, column 1 is not JSON");
    EXPECT_EQ(jsonFaultOf("{\n  \"a\": tru}"), "line 2, column 11 is not JSON");
    EXPECT_EQ(jsonFaultOf("[1,\n"), "line 2, column 1 is not JSON");
    EXPECT_EQ(jsonFaultOf("[1] ]"), "line 1, column 5 is not JSON");
    EXPECT_EQ(jsonFaultOf("\"\\ud800x\""), "line 1, column 8 is not JSON");
}

TEST(Json, IsNotNestedDeep) {
    const auto nested = [](std::size_t depth, const std::string& start, const std::string& end) {
        std::string bytes;
        for (std::size_t i = 0; i < depth; ++i)
            bytes += start;
        bytes += "0";
        for (std::size_t i = 0; i < depth; ++i)
            bytes += end;
        return bytes;
    };
    for (const auto& [start, end] : {std::pair{"[", "]"}, {"{\"a\":", "}"}}) {
        jsonOf(nested(16, start, end));
        EXPECT_EQ(jsonFaultOf(nested(17, start, end)), "it is nested deeper than 16");
        EXPECT_EQ(jsonFaultOf(nested(100'000, start, "")), "it is nested deeper than 16");
    }
}

TEST(Json, OfADoubledKeyTheLastValueCounts) {
    const JsonReading reading = readJson(R"({"a": 1, "b": {"x": 1, "y": 2, "\u0078": 3}, "a": 2, "a": [4]})");
    EXPECT_THAT(reading.doubledKeys, ElementsAre("\"x\" stands there twice in \"b\"",
                                                 "\"a\" stands there twice", "\"a\" stands there twice"));
    EXPECT_EQ(reading.value, jsonOf(R"({"a": [4], "b": {"x": 3, "y": 2}})"));
}

TEST(Json, FindsOneDoubledKeyAmongMany) {
    std::string bytes = "{";
    for (int i = 0; i < 10'000; ++i)
        bytes += "\"" + std::to_string(i) + "\":0,";
    const JsonReading reading = readJson(bytes + "\"77\":1}");
    EXPECT_THAT(reading.doubledKeys, ElementsAre("\"77\" stands there twice"));
    EXPECT_EQ(reading.value.object()->size(), 10'000U);
    EXPECT_EQ(reading.value.object()->at(77).value.number(), 1);
}

TEST(Json, IsWrittenALineForEachMember) {
    const JsonValue value =
        jsonOf(R"({"a":[1,{"b":"\u0001\u001F \"\\\/\n€"}],"c":{},"d":[],"e":[true,null]})");
    const std::string bytes = "{\n"
                              "  \"a\": [\n"
                              "    1,\n"
                              "    {\n"
                              "      \"b\": \"\\u0001\\u001f \\\"\\\\/\\n€\"\n"
                              "    }\n"
                              "  ],\n"
                              "  \"c\": {},\n"
                              "  \"d\": [],\n"
                              "  \"e\": [\n"
                              "    true,\n"
                              "    null\n"
                              "  ]\n"
                              "}\n";
    EXPECT_EQ(jsonText(value), bytes);
    EXPECT_EQ(jsonOf(bytes), value);
}

TEST(Json, IsWrittenOnOneLine) {
    EXPECT_EQ(jsonLine(jsonOf(R"( { "a" : [ 1 , { "b" : "x\ny" } ] , "c" : { } , "d" : [ ] } )")),
              "{\"a\":[1,{\"b\":\"x\\ny\"}],\"c\":{},\"d\":[]}\n");
}

TEST(Json, TextsAreWrittenAlone) {
    EXPECT_EQ(jsonString(""), "\"\"");
    EXPECT_EQ(jsonString("a \"b\" \\ \t\x1F \x7F €\xFF"), "\"a \\\"b\\\" \\\\ \\t\\u001f \x7F €\uFFFD\"");
}

TEST(Json, IsMadeOfValues) {
    const std::string text = "text";
    const JsonValue value = JsonValue::Array{nullptr,
                                             true,
                                             -7,
                                             std::uint64_t(18'446'744'073'709'551'615U),
                                             "words",
                                             text,
                                             std::string_view("view"),
                                             0.5,
                                             JsonValue::Object{{"key", false}}};
    EXPECT_EQ(jsonLine(value),
              "[null,true,-7,18446744073709551615,\"words\",\"text\",\"view\",0.5,{\"key\":false}]\n");
}

TEST(Json, ADoubleHasAPointOrAnExponent) {
    const auto spelling = [](double number) { return jsonLine(number); };
    EXPECT_EQ(spelling(0.0), "0.0\n");
    EXPECT_EQ(spelling(-0.0), "-0.0\n");
    EXPECT_EQ(spelling(-12.0), "-12.0\n");
    EXPECT_EQ(spelling(1.1), "1.1\n");
    EXPECT_EQ(spelling(0.0001), "0.0001\n");
    EXPECT_EQ(spelling(0.000015), "1.5e-05\n");
    EXPECT_EQ(spelling(999'999'999'999'999.0), "999999999999999.0\n");
    EXPECT_EQ(spelling(1e15), "1e+15\n");
    EXPECT_EQ(spelling(-1.25e300), "-1.25e+300\n");
    EXPECT_EQ(spelling(std::numeric_limits<double>::denorm_min()), "5e-324\n");
    EXPECT_EQ(spelling(HUGE_VAL), "null\n");
    EXPECT_EQ(spelling(std::nan("")), "null\n");
}

TEST(Json, BytesThatAreNoCharacterAreReplacedWhenTheyAreWritten) {
    const auto written = [](std::string_view bytes) { return jsonLine(bytes); };
    EXPECT_EQ(written("a\xFF"
                      "b"),
              "\"a\uFFFDb\"\n");
    EXPECT_EQ(written("\xE2\x82"), "\"\uFFFD\"\n");              // the beginning of a character
    EXPECT_EQ(written("\xE2\x82\xE2\x82\xAC"), "\"\uFFFD€\"\n"); // and then a whole one
    EXPECT_EQ(written("\xE0\x80"), "\"\uFFFD\uFFFD\"\n");        // no form is as long
    EXPECT_EQ(written("\xF0\x9F\x98\"\x80"), "\"\uFFFD\\\"\uFFFD\"\n");
}

TEST(Json, MembersAreSetInPlaceOrBehindTheOthers) {
    JsonValue value = jsonOf(R"({"b": 1, "a": 2})");
    value.memberToSet("b") = "x";
    value.memberToSet("c") = true;
    value.memberToSet("d") = -7;
    value.memberToSet("e");
    EXPECT_EQ(value, jsonOf(R"({"b": "x", "a": 2, "c": true, "d": -7, "e": null})"));
}

} // namespace
} // namespace orvista
