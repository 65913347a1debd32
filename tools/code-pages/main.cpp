#include "check/Rules.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using orvista::Rule;

std::string replacedAll(std::string text, std::string_view what, std::string_view with) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

std::string html(std::string_view text) {
    std::string escaped = replacedAll(std::string(text), "&", "&amp;");
    return replacedAll(replacedAll(escaped, "<", "&lt;"), ">", "&gt;");
}

std::string manual(std::string_view text) {
    return replacedAll(replacedAll(std::string(text), "\\", "\\e"), "-", "\\-");
}

std::string htmlRow(const Rule& rule) {
    std::string row = "<tr><td><a href=\"#NAME\">NAME</a></td><td>";
    row.append(severityName(rule.severity))
        .append("</td><td>")
        .append(html(rule.title))
        .append("</td></tr>\n");
    return replacedAll(row, "NAME", rule.name);
}

std::string htmlSection(const Rule& rule) {
    const std::string head = replacedAll("<h2><a name=\"NAME\"></a>NAME</h2>\n", "NAME", rule.name);
    const std::string mending = mendingText(rule);
    return "\n" + head + "<p><b>" + html(rule.title) + "</b> (" + std::string(severityName(rule.severity)) +
           ")</p>\n<p>" + html(rule.explanation) + "</p>\n<p>It is found here:</p>\n<pre>" +
           html(rule.example) + "</pre>\n<p>and not here:</p>\n<pre>" + html(rule.clean) + "</pre>\n" +
           (mending.empty() ? mending : "<p>" + html(mending) + "</p>\n");
}

std::string htmlOfRules() {
    std::string text = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\">\n"
                       "<tr><th>Code</th><th>Severity</th><th>What is found</th></tr>\n";
    for (const Rule& rule : orvista::rules())
        text += htmlRow(rule);
    text += "</table>\n";
    for (const Rule& rule : orvista::rules())
        text += htmlSection(rule);
    return text;
}

std::string lineOf(const std::string& text) {
    return text.empty() ? text : text + "\n";
}

std::string manualOfRules() {
    std::string text;
    for (const Rule& rule : orvista::rules())
        text.append(".TP\n.BR ")
            .append(manual(rule.name))
            .append(" \" (")
            .append(severityName(rule.severity))
            .append(")\"\n")
            .append(manual(rule.title))
            .append(rule.fixes == orvista::Fixes::None ? "\n" : ".\n")
            .append(lineOf(manual(mendingText(rule))));
    return text;
}

std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    if (!(bytes << file.rdbuf()))
        throw std::runtime_error(path + " cannot be read");
    return bytes.str();
}

/// Puts a text between the two lines of a file that hold it, or compares what is there.
/// \returns whether it was written, or is the same
bool renew(const std::string& path, std::string_view first, std::string_view last, const std::string& text,
           bool check) {
    std::string bytes = bytesOf(path);
    const auto start = bytes.find(first);
    const auto end = bytes.find(last);
    if (start == std::string::npos || end == std::string::npos)
        throw std::runtime_error(path + " has no place for the codes");
    const auto inner = start + first.size();
    if (check) {
        if (bytes.compare(inner, end - inner, text) == 0)
            return true;
        std::fprintf(stderr, "%s does not tell of the rules as they are: build the target code-pages\n",
                     path.c_str());
        return false;
    }
    std::ofstream(path, std::ios::binary) << bytes.replace(inner, end - inner, text);
    return true;
}

} // namespace

/// orvista-code-pages SOURCE [--check]: writes what help and manual tell of the check's rules into the source
/// folder, or checks that it is there.
int main(int argc, char** argv) {
    const bool check = argc == 3 && std::string_view(argv[2]) == "--check";
    if (argc != 2 && !check) {
        std::fputs("usage: orvista-code-pages SOURCE [--check]\n", stderr);
        return 2;
    }
    try {
        const std::string source = argv[1];
        const bool page = renew(source + "/docs/help/codes.html", "<!-- codes -->\n", "<!-- end of codes -->",
                                htmlOfRules(), check);
        const bool section = renew(source + "/packaging/linux/man/orvista.1", ".\\\" codes\n",
                                   ".\\\" end of codes", manualOfRules(), check);
        return page && section ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 2;
    }
}
