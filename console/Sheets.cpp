#include "console/Sheets.h"

#include "console/CommandFailure.h"
#include "console/Output.h"
#include "model/Numbers.h"

#include <system_error>

namespace orvista::console {

std::string sheetBytes(const std::string& path) {
    try {
        return orvista::sheetBytes(path);
    } catch (const std::system_error& failure) {
        throw CommandFailure(ExitStatus::Unusable, path + ": " + failure.code().message());
    }
}

void reportErrors(const std::string& path, const SheetErrors& errors) {
    for (const SheetError& error : errors.sorted())
        complain(path + (error.row > 0 ? ": " : " ") + errorText(error));
    if (errors.notListed() > 0)
        complain(path + ": and " + decimalText(errors.notListed()) + " more");
}

} // namespace orvista::console
