#include "sheets/MasterList.h"

#include "model/SystemPath.h"
#include "sheets/FleetSheet.h"

#include <filesystem>
#include <map>
#include <system_error>

namespace orvista {

namespace {

namespace fs = std::filesystem;

bool isSameProject(const std::string& one, const std::string& other) {
    std::error_code unknown;
    return one == other || fs::equivalent(systemPath(one), systemPath(other), unknown);
}

} // namespace

std::string masterListPath(const std::string& project, const std::string& list) {
    return utf8Path(systemPath(project).parent_path() / systemPath(list));
}

std::string notedListPath(const std::string& project, const std::string& list) {
    std::error_code unknown;
    const fs::path folder = fs::weakly_canonical(fs::absolute(systemPath(project)), unknown).parent_path();
    const fs::path file = fs::absolute(systemPath(list), unknown);
    const fs::path real = fs::weakly_canonical(file.parent_path(), unknown) / file.filename();
    const fs::path relative = real.lexically_relative(folder);
    // With the separators that every system knows: the project travels.
    const std::u8string text = (relative.empty() ? real : relative).generic_u8string();
    return {text.begin(), text.end()};
}

std::vector<FleetDisplay> masterDisplays(std::string_view bytes, const std::string& path,
                                         const std::string& project, SheetErrors& errors) {
    const std::string folder = utf8Path(systemPath(path).parent_path() / "");
    std::vector<FleetDisplay> displays =
        readFleetSheet(bytes, {.folder = folder, .project = project}, errors);
    std::map<std::string, bool> known; // lists name few projects in many rows
    std::erase_if(displays, [&](const FleetDisplay& display) {
        const auto [answer, isNew] = known.try_emplace(display.project);
        if (isNew)
            answer->second = isSameProject(display.project, project);
        return !answer->second;
    });
    return displays;
}

} // namespace orvista
