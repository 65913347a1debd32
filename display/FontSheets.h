#pragma once

#include <string_view>

namespace orvista {

/// The fonts as they are drawn: small.font and large.font, which say themselves how they are written. The
/// build puts them in here.
extern const std::string_view smallFontSheet;
extern const std::string_view largeFontSheet;

} // namespace orvista
