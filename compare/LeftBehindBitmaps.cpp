#include "compare/LeftBehindBitmaps.h"

#include "model/BitmapFiles.h"
#include "model/FileCopy.h"
#include "model/Item.h"
#include "model/PathRules.h"
#include "model/Text.h"
#include "model/Windows1252.h"
#include "script/BitmapNames.h"
#include "script/ScriptInterpreter.h"

#include <set>
#include <system_error>

namespace orvista {

namespace {

/// Lower case, UTF-8: the display knows bitmaps in any ASCII case.
std::set<std::string> namedBitmaps(const Project& project) {
    std::set<std::string> names;
    for (const Item message : allMessages())
        for (const std::string& name : bitmapNames(interpretScript(scriptOf(project, message)).pages))
            names.insert(lowerAscii(utf8FromWindows1252(name)));
    return names;
}

bool copyMissingFile(const std::string& from, const std::string& to) {
    try {
        copyFile(from, to);
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace

std::vector<std::string> leftBehindBitmaps(const Project& project, const std::string& otherFolder) {
    std::vector<std::string> found = bitmapsOfFolder(otherFolder);
    if (found.empty())
        return found;
    std::set<std::string> wanted = namedBitmaps(project);
    for (const std::string& name : bitmapsOfFolder(project.ProjPath))
        wanted.erase(lowerAscii(name));
    // Of names that differ in case only one is copied: the display would know only one.
    std::erase_if(found, [&wanted](const std::string& name) { return wanted.erase(lowerAscii(name)) == 0; });
    return found;
}

std::vector<std::string> copyMissingFiles(const std::vector<std::string>& names, const std::string& from,
                                          const std::string& to) {
    const PathRules paths = PathRules::native();
    std::vector<std::string> failed;
    for (const std::string& name : names)
        if (!copyMissingFile(paths.join(from, name), paths.join(to, name)))
            failed.push_back(name);
    return failed;
}

} // namespace orvista
