#include "console/Sheets.h"

#include "console/CommandFailure.h"
#include "console/Output.h"
#include "model/Files.h"
#include "model/Numbers.h"
#include "model/PathRules.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "model/Text.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace orvista::console {

namespace {

class StandardInput final : public ByteSource {
public:
    StandardInput() {
#ifdef _WIN32
        _setmode(_fileno(stdin), _O_BINARY);
#endif
    }
    std::size_t read(char* buffer, std::size_t size) override {
        const std::size_t count = std::fread(buffer, 1, size, stdin);
        if (count == 0 && std::ferror(stdin) != 0)
            throw ReadFailure(errno, std::generic_category());
        return count;
    }
};

} // namespace

std::string sheetBytes(const std::string& path) {
    try {
        if (path == standardInput) {
            StandardInput input;
            return orvista::sheetBytes(input);
        }
        FileSource file(path, Pipes::AreRead);
        return orvista::sheetBytes(file);
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, sheetName(path) + ": " + failure.code().message());
    }
}

std::string sheetName(const std::string& path) {
    return path == standardInput ? "standard input" : path;
}

const std::string& expectedTable(const std::string& path) {
    if (endsWithIgnoringCase(path, DocMgrModule::projectExtension))
        throw CommandFailure(ExitStatus::Unusable, path + " is a project's name; a table ends in .csv");
    return path;
}

std::string folderOfSheet(const std::string& path) {
    std::error_code unknown;
    const auto parts = PathRules::native().split(path);
    const bool isFile = std::filesystem::is_regular_file(systemPath(path), unknown);
    return parts && isFile ? parts->folder + PathRules::native().separator : "";
}

void reportErrors(const std::string& path, const SheetErrors& errors) {
    const std::string name = sheetName(path);
    for (const SheetError& error : errors.sorted())
        complain(name + (error.row > 0 ? ": " : " ") + errorText(error));
    if (errors.notListed() > 0)
        complain(name + ": and " + decimalText(errors.notListed()) + " more");
}

} // namespace orvista::console
