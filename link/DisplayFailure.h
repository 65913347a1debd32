#pragma once

#include <stdexcept>

namespace orvista {

/// A display that cannot be reached, or does not do what it was asked to; `what()` says why in words.
class DisplayFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace orvista
