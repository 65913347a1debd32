#include "console/HeldContents.h"

#include "console/Displays.h"
#include "console/Projects.h"
#include "model/ProjectFile.h"
#include "model/Text.h"

namespace orvista::console {

HeldContents::HeldContents(const std::string& argument, bool notWhole) {
    if (endsWithIgnoringCase(argument, DocMgrModule::projectExtension)) {
        given_.emplace(argument, readWholeProject(argument, notWhole));
        contents_ = contentsOf(given_->itself());
        return;
    }
    const DisplayAddress display = transferAddress(argument);
    fetched_.emplace();
    fetchDisplay(display, fetched_->path());
    readFetchedProject(fetched_->path(), argument); // says what cannot be read
    contents_ = DisplayContents::ofFolder(fetched_->path());
}

DisplayContents contentsOf(const ProjectView& view) {
    expectFilled(view);
    return DisplayContents::ofProject(view.project);
}

} // namespace orvista::console
