#include "items/TextSearch.h"

#include "model/Windows1252.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

using Letters = std::array<unsigned char, 256>;

template <typename Letter>
Letters lettersBy(Letter&& letter) {
    Letters letters{};
    for (std::size_t byte = 0; byte < letters.size(); ++byte)
        letters[byte] = letter(static_cast<unsigned char>(byte));
    return letters;
}

const unsigned char* lettersFor(Case letters) {
    static const Letters same = lettersBy([](unsigned char byte) { return byte; });
    static const Letters lower = lettersBy(lowerWindows1252);
    return (letters == Case::Matters ? same : lower).data();
}

} // namespace

TextSearch::TextSearch(std::string wanted, Case letters)
    : wanted_(std::move(wanted)),
      searcher_(wanted_.cbegin(), wanted_.cend(), Fold{lettersFor(letters)}, Same{{lettersFor(letters)}}) {}

std::size_t TextSearch::find(std::string_view text, std::size_t start) const {
    const auto first = text.begin() + static_cast<std::ptrdiff_t>(std::min(start, text.size()));
    const auto found = std::search(first, text.end(), searcher_);
    if (found == text.end() && !wanted_.empty())
        return std::string_view::npos;
    return static_cast<std::size_t>(found - text.begin());
}

} // namespace orvista
