#include "sheets/Csv.h"

#include <gtest/gtest.h>

#include <csv.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {
namespace {

using Records = std::vector<std::vector<std::string>>;

/// What libcsv makes of a table that begins without a mark. It is told to be strict and to keep blanks apart.
Records judged(const std::string& bytes) {
    struct Collected {
        Records records;
        std::vector<std::string> cells;
    } collected;
    csv_parser parser;
    csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
    csv_set_space_func(&parser, [](unsigned char) { return 0; });
    const auto takeCell = [](void* text, std::size_t size, void* to) {
        static_cast<Collected*>(to)->cells.emplace_back(static_cast<const char*>(text), size);
    };
    const auto takeRecord = [](int, void* to) {
        auto* all = static_cast<Collected*>(to);
        all->records.push_back(std::exchange(all->cells, {}));
    };
    const std::size_t taken =
        csv_parse(&parser, bytes.data(), bytes.size(), takeCell, takeRecord, &collected);
    EXPECT_EQ(taken, bytes.size()) << csv_strerror(csv_error(&parser));
    EXPECT_EQ(csv_fini(&parser, takeCell, takeRecord, &collected), 0);
    csv_free(&parser);
    return collected.records;
}

TEST(CsvJudge, LibcsvReadsWhatWasWritten) {
    std::mt19937 random(4180);
    constexpr std::string_view characters = "ab ,;\t\"'\r\n=5.";
    for (int round = 0; round < 2'000; ++round) {
        Records records(1 + random() % 4, std::vector<std::string>(2 + random() % 3));
        std::string bytes;
        for (auto& cells : records) {
            for (std::string& cell : cells) {
                for (auto length = random() % 6; length > 0; --length)
                    cell.push_back(characters[random() % characters.size()]);
                // libcsv skips lines that are empty as a whole.
                if (cell.empty() && &cell == &cells.front())
                    cell = "x";
            }
            appendRecord(bytes, cells);
        }
        Records read;
        CsvReader reader(bytes, ',');
        for (std::vector<std::string> cells; reader.next(cells);) {
            ASSERT_EQ(reader.fault(), CsvFault::None) << bytes;
            read.push_back(cells);
        }
        ASSERT_EQ(read, judged(bytes)) << bytes;
        for (auto& cells : read)
            for (std::string& cell : cells)
                cell = std::string(withoutGuard(cell));
        ASSERT_EQ(read, records) << bytes;
    }
}

} // namespace
} // namespace orvista
