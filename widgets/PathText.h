#pragma once

#include <QString>

#include <string>

/// Between paths and what boxes and lists show. Paths are UTF-8, but a file system may hold names that are
/// not: their stray bytes are shown as lone surrogates, which stand in no real text, and come back as
/// themselves.
namespace orvista {

QString shownPath(const std::string& path);
std::string pathFromShown(const QString& shown);

} // namespace orvista
