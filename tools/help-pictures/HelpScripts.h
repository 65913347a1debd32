#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <vector>

namespace orvista::help {

/// A message script that a page of the help prints, and what its picture shows of it.
struct HelpScript {
    QString name;                      ///< the picture is script-NAME.png
    std::string script;                ///< Windows-1252, as the page prints it
    std::vector<std::int64_t> moments; ///< milliseconds after the start of the message
};

/// The scripts of a page, found by their markup:
///     <!-- shown after 1600 6400 ms -->
///     <pre class="script" id="script-NAME">...</pre>
std::vector<HelpScript> scriptsOfPage(const QString& html);

} // namespace orvista::help
