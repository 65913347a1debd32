#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Texts with places to fill: {{name}}, {{#section}} ... {{/section}}, {{^none}} ... {{/none}} and
/// {{! a remark }}, in mustache's manner without escaping, partials and lambdas. Of three braces the last two
/// count: {{{name}}} is a text in braces.
namespace orvista {

inline constexpr std::size_t mostTemplateBytes = std::size_t{64} << 10;
inline constexpr std::size_t mostFilledBytes = std::size_t{16} << 20;

using TemplateTexts = std::map<std::string, std::string, std::less<>>;

/// What tags may name.
struct TemplateValues {
    TemplateTexts texts;
    /// A section with the name of a list is written once for each of its rows. Of other sections each is
    /// written where its text is not empty.
    std::map<std::string, std::vector<TemplateTexts>, std::less<>> lists;
    /// The texts that every row has. They come before the others of the same name.
    std::vector<std::string> rowNames;
};

/// What is wrong with a template. `what()` is "line 3: ...".
class TemplateFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A section's tags that stand alone on their lines take the lines with them.
/// \throws TemplateFault, also for a name that nothing has and for a list within a list
std::string filledTemplate(std::string_view source, const TemplateValues& values);

} // namespace orvista
