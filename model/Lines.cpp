#include "model/Lines.h"

#include <algorithm>

namespace orvista {

namespace {

constexpr std::size_t lineBufferSize = std::size_t{1} << 16;

} // namespace

LineReader::LineReader(ByteSource& source) : source_(source) {
    const std::string_view whole = source.takeWhole();
    if (whole.empty())
        buffer_.resize(lineBufferSize);
    bytes_ = whole.empty() ? buffer_.data() : whole.data();
    size_ = whole.size();
}

bool LineReader::fill() {
    if (atStart_)
        skipByteOrderMark();
    if (position_ == size_ && !buffer_.empty()) {
        position_ = 0;
        size_ = source_.read(buffer_.data(), buffer_.size());
        carriageReturn_.reset();
        lineFeed_.reset();
    }
    return position_ < size_;
}

std::size_t LineReader::endOfLine() {
    // The library searches far faster than a look at every byte. What it found is kept: a file that ends its
    // lines in one way only is not searched for the other end line by line.
    const auto next = [this](char end, std::optional<std::size_t>& known) {
        if (!known || *known < position_)
            known = std::min(std::string_view(bytes_, size_).find(end, position_), size_);
        return *known;
    };
    return std::min(next('\r', carriageReturn_), next('\n', lineFeed_));
}

void LineReader::skipByteOrderMark() {
    atStart_ = false;
    // A source may hand out its first bytes one by one.
    while (size_ < utf8ByteOrderMark.size() && !buffer_.empty()) {
        const std::size_t more = source_.read(buffer_.data() + size_, buffer_.size() - size_);
        if (more == 0)
            break;
        size_ += more;
    }
    if (std::string_view(bytes_, size_).starts_with(utf8ByteOrderMark))
        position_ = utf8ByteOrderMark.size();
    skippedMark_ = position_ > 0;
}

bool LineReader::next(std::string& line) {
    std::string_view view;
    const bool found = next(view);
    line = view;
    return found;
}

bool LineReader::next(std::string_view& line) {
    joined_.clear();
    line = {};
    bool found = false;
    while (fill()) {
        if (lastWasCarriageReturn_) {
            lastWasCarriageReturn_ = false;
            if (bytes_[position_] == '\n') {
                ++position_;
                continue;
            }
        }
        number_ += found ? 0 : 1;
        found = true;
        const std::size_t end = endOfLine();
        line = {bytes_ + position_, end - position_};
        position_ = end;
        if (end == size_ || !joined_.empty())
            line = joined_.append(line);
        if (end == size_)
            continue;
        lastWasCarriageReturn_ = bytes_[end] == '\r';
        ++position_;
        return true;
    }
    return found;
}

bool hasLoneLineEnd(std::string_view text) {
    for (auto end = text.find_first_of(lineEnd); end != std::string_view::npos;
         end = text.find_first_of(lineEnd, end)) {
        if (!text.substr(end).starts_with(lineEnd))
            return true;
        end += lineEnd.size();
    }
    return false;
}

std::size_t firstDifferentLine(std::string_view one, std::string_view other) {
    MemorySource oneSource(one);
    MemorySource otherSource(other);
    LineReader oneLines(oneSource);
    LineReader otherLines(otherSource);
    std::string_view line;
    std::string_view otherLine;
    std::size_t number = 1;
    while (oneLines.next(line) && otherLines.next(otherLine) && line == otherLine)
        ++number;
    return number;
}

std::string withWholeLineEnds(std::string_view text) {
    std::string whole;
    whole.reserve(text.size());
    while (!text.empty()) {
        const auto end = std::min(text.find_first_of(lineEnd), text.size());
        whole.append(text, 0, end);
        text.remove_prefix(end);
        if (text.empty())
            break;
        whole.append(lineEnd);
        text.remove_prefix(text.starts_with(lineEnd) ? lineEnd.size() : 1);
    }
    return whole;
}

} // namespace orvista
