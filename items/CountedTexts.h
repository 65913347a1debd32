#pragma once

#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

/// Texts of any bytes one after the other, each as its length in decimal, a colon and its bytes.
namespace orvista {

class CountedTextWriter {
public:
    void add(std::string_view text);
    /// In decimal.
    void add(std::size_t number);
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Takes the texts back. After the first that is not whole there are only empty ones.
class CountedTextReader {
public:
    explicit CountedTextReader(std::string_view bytes) : rest_(bytes) {}

    std::string_view text();
    /// 0 where it is no number of that type, or above the limit.
    template <typename Number>
    Number number(Number limit = std::numeric_limits<Number>::max()) {
        Number value = 0;
        if (isWhole(text(), value) && value <= limit)
            return value;
        fail();
        return 0;
    }
    /// Whether all was whole, and nothing is left.
    bool isDone() const { return !failed_ && rest_.empty(); }
    bool hasFailed() const { return failed_; }

private:
    template <typename Number>
    static bool isWhole(std::string_view text, Number& value) {
        const char* const end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, value);
        return read.ec == std::errc() && read.ptr == end;
    }
    std::string_view fail();

    std::string_view rest_;
    bool failed_ = false;
};

} // namespace orvista
