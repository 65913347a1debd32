#pragma once

#include <QString>

#include <cstddef>
#include <string>

/// What tables show of device texts that may be long.
namespace orvista {

/// On one line, from that byte on; cut where it is long.
QString shortened(const std::string& text, std::size_t from);
/// Where to begin showing two texts, so that what differs is seen.
std::size_t shownFrom(const std::string& one, const std::string& other);

} // namespace orvista
