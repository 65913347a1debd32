#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orvista {

enum class Case { Matters, Folded };

/// Looks for a text in others, all of them device bytes.
class TextSearch {
public:
    TextSearch(std::string wanted, Case letters);
    // The searcher points into the wanted text.
    TextSearch(const TextSearch&) = delete;
    TextSearch& operator=(const TextSearch&) = delete;

    /// Where the text stands next in `text`, from `start` on; npos when it does not. An empty one stands
    /// everywhere.
    std::size_t find(std::string_view text, std::size_t start = 0) const;
    bool isIn(std::string_view text) const { return find(text) != std::string_view::npos; }

private:
    struct Fold {
        const unsigned char* letters; ///< what each byte counts as
        std::size_t operator()(char byte) const { return letters[static_cast<unsigned char>(byte)]; }
    };
    struct Same {
        Fold fold;
        bool operator()(char one, char other) const { return fold(one) == fold(other); }
    };
    using Searcher = std::boyer_moore_horspool_searcher<std::string::const_iterator, Fold, Same>;

    std::string wanted_;
    Searcher searcher_;
};

} // namespace orvista
