#include "sheets/AddressTemplate.h"
#include "tests/sheets/NamedProject.h"
#include "tests/support/NamedItem.h"

#include <gmock/gmock.h>

#include <span>

namespace orvista {
namespace {

using ::testing::StartsWith;

const TemplateValues values{{{"a", "text"}, {"none", ""}},
                            {{"rows", {{{"x", "1"}, {"y", ""}}, {{"x", "2"}, {"y", "z"}}}}, {"empty", {}}},
                            {"x", "y"}};

std::string filled(std::string_view source) {
    return filledTemplate(source, values);
}

std::string fault(std::string_view source) {
    try {
        return "filled: " + filled(source);
    } catch (const TemplateFault& failure) {
        return failure.what();
    }
}

TEST(Template, FillsNamesAndSections) {
    EXPECT_EQ(filled(""), "");
    EXPECT_EQ(filled("{{a}} {{ a }}\r\n{}"), "text text\r\n{}");
    EXPECT_EQ(filled("{{#rows}}{{x}}{{#y}}+{{y}}{{/y}}{{^y}}-{{/y}} {{a}};{{/rows}}"), "1- text;2+z text;");
    EXPECT_EQ(filled("{{#none}}no{{/none}}{{^none}}yes{{/none}}{{#a}}yes{{/a}}{{^a}}no{{/a}}"), "yesyes");
    EXPECT_EQ(filled("{{#empty}}no{{/empty}}{{^empty}}none{{/empty}}{{^rows}}no{{/rows}}"), "none");
    EXPECT_EQ(filled("${{{a}}: f32b} {{{a}}}"), "${text: f32b} {text}");
}

TEST(Template, TakesLinesOfSectionsAlone) {
    EXPECT_EQ(filled("head\n  {{#rows}}\n- {{x}}\n  {{/rows}}\ntail"), "head\n- 1\n- 2\ntail");
    EXPECT_EQ(filled("{{! a remark }}\r\n{{#rows}}\r\n{{x}}\r\n{{/rows}}\r\n"), "1\r\n2\r\n");
    EXPECT_EQ(filled("a {{! within }} b\n{{#a}} {{/a}}\n{{#a}}\nlast\n{{/a}}"), "a  b\n \nlast\n");
}

TEST(Template, NamesTheLineOfWhatIsWrong) {
    EXPECT_EQ(fault("a\n{{b}}"), "line 2: \"b\" is not a name known here");
    EXPECT_EQ(fault("{{#empty}}\n\n{{b}}{{/empty}}"), "line 3: \"b\" is not a name known here");
    EXPECT_EQ(fault("{{x}}"), "line 1: \"x\" stands in a list's rows only");
    EXPECT_EQ(fault("\n{{rows}}"), "line 2: \"rows\" is a list: {{#rows}}");
    EXPECT_EQ(fault("{{#rows}}{{#rows}}{{/rows}}{{/rows}}"), "line 1: \"rows\" is a list within a list");
    EXPECT_EQ(fault("\n{{#a}}\n\n"), "line 2: {{#a}} without {{/a}}");
    EXPECT_EQ(fault("{{#a}}\n{{/none}}"), "line 2: {{/none}} ends no section that began last");
    EXPECT_EQ(fault("{{/a}}"), "line 1: {{/a}} ends no section that began last");
    EXPECT_EQ(fault("\n\n{{a"), "line 3: {{ without }}");
    EXPECT_THAT(fault("{{>part}}"), StartsWith("line 1: \">part\" is not a name"));
    EXPECT_THAT(fault("{{=<% %>=}}"), StartsWith("line 1: \"=<% %>=\" is not a name"));
    EXPECT_THAT(fault("{{}}"), StartsWith("line 1: \"\" is not a name"));
}

TEST(Template, IsBounded) {
    std::string deep;
    for (int i = 0; i < 17; ++i)
        deep += "{{#a}}";
    EXPECT_EQ(fault(deep), "line 1: sections nested deeper than 16");
    EXPECT_EQ(fault(std::string(mostTemplateBytes + 1, ' ')), "longer than 64 KB");
    TemplateValues many = values;
    many.lists["rows"].assign(300, many.lists["rows"].front());
    EXPECT_THROW(filledTemplate("{{#rows}}" + std::string(60000, ' ') + "{{/rows}}", many), TemplateFault);
}

TEST(AddressTemplate, OfAThousandProjectsHasEachItem) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        const testing::RandomPlcProject random(seed);
        const testing::NamedProject named = testing::namedProject(random);
        // Some rows of each: all of them would take half a minute under the sanitizers.
        const auto all = named.rows();
        PlcVariables variables = named.variables();
        constexpr std::size_t some = 24;
        const std::size_t first = seed * some % (all.size() - some + 1);
        const auto begin = variables.items.begin() + static_cast<std::ptrdiff_t>(first);
        variables.items = {begin, begin + some};
        std::string expected;
        for (const auto& item : std::span(random.items).subspan(first, some))
            if (item.isAddressable)
                expected += item.name + " " + item.plcName + " " + std::to_string(item.address) + " " +
                            (item.kind == Kind::Float ? "f" : "") + "\n" +
                            random.notes.of({item.kind, item.index}).comment + "\n";
        EXPECT_EQ(filledTemplate("{{#items}}\n{{name}} {{variable}} {{address}} "
                                 "{{#float}}f{{/float}}\n{{comment}}\n{{/items}}\n",
                                 addressTemplateValues(std::span(all).subspan(first, some), variables,
                                                       named.project, named.head())),
                  expected);
    }
}

} // namespace
} // namespace orvista
