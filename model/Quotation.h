#pragma once

#include <string>
#include <string_view>

namespace orvista {

/// A UTF-8 text as a sentence shows it: in double quotes, on one line, at most 40 characters. A tab is said
/// to be "<a tab>", others that cannot be printed "<a control character>".
std::string quotation(std::string_view utf8);
/// The same of device bytes (Windows-1252).
std::string deviceQuotation(std::string_view bytes);

/// Device bytes (Windows-1252) as a line shows them: UTF-8 with a "?" for what cannot be printed.
std::string printable(std::string_view bytes);

} // namespace orvista
