#include "tests/fuzz/ReaderRun.h"

#include "sheets/Csv.h"

namespace {

using namespace orvista;
using Records = std::vector<std::vector<std::string>>;

struct Read {
    Records records;
    bool isClean = true;
};

Read recordsOf(std::string_view bytes, char separator) {
    Read read;
    CsvReader reader(bytes, separator);
    for (std::vector<std::string> cells; reader.next(cells);) {
        read.records.push_back(cells);
        read.isClean = read.isClean && reader.fault() == CsvFault::None;
        testing::require(!cells.empty() && cells.size() <= maximumCells);
        testing::require(reader.row() == read.records.size());
    }
    return read;
}

} // namespace

/// Any bytes are a table: it is read to its end, and what was read comes back when it is written.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = testing::inputBytes(data, size);
    const char separator = separatorOf(bytes);
    const Read first = recordsOf(bytes, separator);
    std::string written;
    for (const auto& cells : first.records)
        appendRecord(written, cells, separator);
    Read again = recordsOf(written, separator);
    testing::require(again.isClean && again.records.size() == first.records.size());
    for (auto& cells : again.records)
        for (std::string& cell : cells)
            cell = std::string(withoutGuard(cell));
    testing::require(again.records == first.records);
    return 0;
}
