#include "sheets/AddressSheet.h"
#include "tests/sheets/NamedProject.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace orvista {
namespace {

using Cells = std::vector<std::string>;
using Rows = std::vector<std::map<std::string, std::string>>;

Rows byColumns(const std::vector<Cells>& records) {
    Rows rows;
    for (std::size_t i = 1; i < records.size(); ++i) {
        EXPECT_EQ(records[i].size(), records[0].size());
        for (std::size_t column = 0; column < records[0].size(); ++column)
            rows.resize(i), rows.back()[records[0][column]] = records[i][column];
    }
    return rows;
}

/// CSV by the letters of RFC 4180, and the apostrophe before what a spreadsheet would take for a formula.
Rows csvRows(std::string_view csv) {
    std::vector<Cells> records(1, Cells(1));
    bool isQuoted = false;
    for (std::size_t at = 3; at < csv.size(); ++at) {
        std::string& cell = records.back().back();
        if (isQuoted && csv[at] == '"' && csv.substr(at + 1).starts_with('"'))
            cell += csv[at++];
        else if (csv[at] == '"')
            isQuoted = !isQuoted;
        else if (isQuoted || (csv[at] != ',' && csv[at] != '\r' && csv[at] != '\n'))
            cell += csv[at];
        else if (csv[at] == ',')
            records.back().emplace_back();
        else if (csv[at] == '\n')
            records.emplace_back(1);
    }
    records.pop_back();
    for (Cells& cells : records)
        for (std::string& cell : cells)
            if (cell.size() > 1 && cell[0] == '\'' &&
                std::string_view("'=+-@\t").find(cell[1]) != std::string::npos)
                cell.erase(0, 1);
    return byColumns(records);
}

std::string withoutEntities(std::string text) {
    for (const auto& [entity, character] : std::vector<std::pair<std::string, char>>{
             {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&amp;", '&'}})
        for (std::size_t at = 0; (at = text.find(entity, at)) != std::string::npos; ++at)
            text.replace(at, entity.size(), 1, character);
    return text;
}

/// The rows of all tables of a page.
Rows htmlRows(std::string_view html) {
    Rows all;
    while (html.find("<thead>") != std::string_view::npos) {
        html.remove_prefix(html.find("<thead>"));
        std::string_view table = html.substr(0, html.find("</table>"));
        html.remove_prefix(table.size());
        std::vector<Cells> records;
        for (std::size_t at = 0; (at = table.find_first_of('<', at)) != std::string_view::npos; ++at) {
            if (table.substr(at).starts_with("<tr>"))
                records.emplace_back();
            else if (table.substr(at).starts_with("<td>") || table.substr(at).starts_with("<th>"))
                records.back().push_back(
                    withoutEntities(std::string(table.substr(at + 4, table.find('<', at + 1) - at - 4))));
        }
        for (auto& row : byColumns(records))
            all.push_back(std::move(row));
    }
    return all;
}

/// The flat objects of a document in JSON: members of texts and whole numbers, the rows' and the document's
/// own.
class JsonRows {
public:
    explicit JsonRows(std::string_view json) : rest_(json) {
        take('{');
        readMembers(head);
        EXPECT_EQ(rest_, "\n");
    }

    std::map<std::string, std::string> head;
    Rows rows;

private:
    /// Of an object that has begun, to its end.
    void readMembers(std::map<std::string, std::string>& members) {
        char next = ',';
        for (; next == ',' && !::testing::Test::HasFailure(); next = takeOne()) {
            const std::string key = readText();
            take(':');
            EXPECT_FALSE(members.contains(key)) << key;
            members[key] = readValue();
        }
        EXPECT_EQ(next, '}');
    }

    std::string readValue() {
        skipBlanks();
        if (rest_.starts_with('"'))
            return readText();
        if (rest_.starts_with('['))
            return readRows(), "rows";
        const std::size_t length = rest_.find_first_not_of("-0123456789");
        std::string digits(rest_.substr(0, length));
        rest_.remove_prefix(length);
        return digits + " as a number";
    }

    void readRows() {
        take('[');
        char next = ',';
        for (; next == ',' && !::testing::Test::HasFailure(); next = takeOne()) {
            take('{');
            readMembers(rows.emplace_back());
        }
        EXPECT_EQ(next, ']');
    }

    std::string readText() {
        std::string text;
        take('"');
        while (!rest_.starts_with('"') && !rest_.empty()) {
            EXPECT_GE(static_cast<unsigned char>(rest_.front()), 0x20);
            if (rest_.starts_with('\\'))
                rest_.remove_prefix(1);
            text += rest_.front(); // no text of these projects has a character that is spelt with a letter
            rest_.remove_prefix(1);
        }
        take('"');
        return text;
    }

    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \n"), rest_.size())); }

    char takeOne() {
        skipBlanks();
        if (rest_.empty())
            return '\0';
        const char one = rest_.front();
        rest_.remove_prefix(1);
        return one;
    }

    void take(char expected) { EXPECT_EQ(takeOne(), expected) << rest_.substr(0, 40); }

    std::string_view rest_;
};

void expectHead(const testing::NamedProject& named, const std::map<std::string, std::string>& head) {
    EXPECT_THAT(head,
                ::testing::UnorderedElementsAre(::testing::Pair("version", "1.03-2"),
                                                ::testing::Pair("file", named.project.ProjName + ".orx"),
                                                ::testing::Pair("display", named.notes.displayName),
                                                ::testing::Pair("fingerprint", "0123456789ab"),
                                                ::testing::Pair("time", "2026-11-22T03:15:07Z"),
                                                ::testing::Pair("addresses", "rows")));
}

/// What must be told of an item; columns that a table leaves out count as empty.
void expectItem(const testing::RandomPlcProject& random, const testing::RandomPlcProject::Listed& item,
                std::map<std::string, std::string> row) {
    const ItemNote& note = random.notes.of({item.kind, item.index});
    const std::map<Kind, std::string> kinds{{Kind::Float, "float"},
                                            {Kind::Boolean, "boolean"},
                                            {Kind::Regular, "regular"},
                                            {Kind::Emergency, "emergency"}};
    if (row.contains("kind")) {
        EXPECT_EQ(row["kind"], kinds.at(item.kind));
    }
    EXPECT_EQ(row["name"], item.name);
    EXPECT_EQ(row["address"], std::to_string(item.address));
    EXPECT_EQ(row["table"], item.kind == Kind::Float ? "holding register" : "coil");
    EXPECT_EQ(row["reference"].empty(), !item.isAddressable);
    EXPECT_EQ(row["label"], note.label);
    EXPECT_EQ(row["unit"], note.unit);
    EXPECT_EQ(row["comment"], note.comment);
    if (item.kind == Kind::Float) {
        EXPECT_EQ(row["default"], random.project.RegVar[item.index].defaultValue);
    }
    if (item.kind == Kind::Boolean) {
        EXPECT_EQ(row["default"], random.project.CoilVar[item.index].defaultValue);
    }
}

/// JSON has numbers, and a column more.
void expectJsonItem(const testing::RandomPlcProject& random, const testing::RandomPlcProject::Listed& item,
                    std::map<std::string, std::string> row) {
    EXPECT_EQ(row["address"], std::to_string(item.address) + " as a number");
    EXPECT_EQ(row["number"], std::to_string(item.index + 1) + " as a number");
    EXPECT_EQ(row["count"], item.kind == Kind::Float ? "2 as a number" : "1 as a number");
    EXPECT_EQ(row["byte_order"], item.kind == Kind::Float ? "CDAB" : "");
    row["address"] = std::to_string(item.address);
    expectItem(random, item, row);
}

TEST(AddressLists, OfAThousandProjectsAreReadBack) {
    for (unsigned seed = 0; seed < 1000 && !::testing::Test::HasFailure(); ++seed) {
        const testing::RandomPlcProject random(seed);
        const testing::NamedProject named = testing::namedProject(random);
        // Some rows of each: all of them would take a minute under the sanitizers.
        const auto all = named.rows();
        const std::size_t first = seed * 12 % (all.size() - 11);
        const std::span<const AddressRow> some = std::span(all).subspan(first, 12);
        const Rows csv = csvRows(addressCsv(some));
        const Rows html = htmlRows(addressHtml(some, named.project, named.head()));
        const JsonRows json(addressJson(some, named.project, named.head()));
        expectHead(named, json.head);
        ASSERT_EQ(csv.size(), some.size());
        ASSERT_EQ(html.size(), some.size());
        ASSERT_EQ(json.rows.size(), some.size());
        for (std::size_t i = 0; i < some.size(); ++i) {
            SCOPED_TRACE(std::to_string(seed) + " " + random.items[first + i].name);
            expectItem(random, random.items[first + i], csv[i]);
            expectItem(random, random.items[first + i], html[i]);
            expectJsonItem(random, random.items[first + i], json.rows[i]);
        }
    }
}

} // namespace
} // namespace orvista
