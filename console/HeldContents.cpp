#include "console/HeldContents.h"

#include "console/Displays.h"
#include "console/Projects.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

namespace orvista::console {

HeldContents::HeldContents(const std::string& argument, bool notWhole) {
    if (endsWithIgnoringCase(argument, DocMgrModule::projectExtension)) {
        contents_ = DisplayContents::ofProject(readWholeProject(argument, notWhole));
        return;
    }
    const DisplayAddress display = transferAddress(argument);
    fetched_.emplace();
    fetchDisplay(display, fetched_->path());
    readFetchedProject(fetched_->path(), argument); // says what cannot be read
    contents_ = DisplayContents::ofFolder(fetched_->path());
}

} // namespace orvista::console
