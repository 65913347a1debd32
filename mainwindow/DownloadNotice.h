#pragma once

#include <QString>

#include <string>

namespace orvista {

struct FetchedDisplay;

/// What a download leaves to be said in the line below the pages: what the display does not have, or that
/// what came is no project. Empty where all is well.
/// \param folder that it was fetched into, UTF-8
QString downloadNotice(const FetchedDisplay& display, const std::string& folder);

} // namespace orvista
