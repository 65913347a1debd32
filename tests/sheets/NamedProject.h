#pragma once

#include "sheets/PlcOpenXml.h"
#include "sheets/StructuredText.h"
#include "tests/sheets/RandomPlcProject.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvista::testing {

struct NamedProject {
    Project project;
    ProjectNotes notes;
    std::string prefix;

    std::vector<AddressRow> rows() const {
        auto rows = addressList(project);
        addNotes(rows, notes);
        return rows;
    }
    std::vector<std::string> faults() const { return plcNames(rows(), prefix).faults; }
    PlcVariables variables() const {
        const auto listed = rows();
        return plcVariables(listed, plcNames(listed, prefix), prefix, project);
    }
    AddressHead head() const { return {"0123456789ab", "2026-11-22T03:15:07Z", notes.displayName, "1.03-2"}; }
    std::string st(StructuredTextLetters letters = StructuredTextLetters::Ascii) const {
        return structuredText(variables(), project, head(), letters);
    }
    std::string xml() const { return plcOpenXml(variables(), project, head()); }
    /// The line of the global variables that holds the text.
    std::string line(std::string_view text,
                     StructuredTextLetters letters = StructuredTextLetters::Ascii) const {
        const std::string all = st(letters);
        const std::size_t at = all.find(text, all.find("VAR_GLOBAL"));
        const std::size_t begin = all.rfind('\n', at) + 1;
        return all.substr(begin, all.find("\r\n", begin) - begin);
    }
};

inline NamedProject namedProject(const RandomPlcProject& random) {
    return {random.project, random.notes, random.prefix};
}

} // namespace orvista::testing
