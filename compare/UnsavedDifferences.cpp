#include "compare/UnsavedDifferences.h"

#include "compare/ProjectComparison.h"
#include "model/NoMessages.h"
#include "model/ProjectFile.h"

namespace orvista {

UnsavedDifferences unsavedDifferences(const UnsavedWork& work, const PathRules& paths) {
    NoMessages messages; // a project file that cannot be read is an answer, too
    Project saved;
    UnsavedDifferences differences;
    differences.isSaved = DocMgrModule::readProjectWithoutWriting(
        DocMgrModule::projectFilePath(paths, work.project.ProjPath, work.project.ProjName), saved,
        {paths, messages});
    if (!differences.isSaved)
        saved = Project();
    differences.hasSystemPage = saved.IP != work.project.IP;
    for (const ItemDifference& item : compareItems(saved, work.project))
        differences.items.push_back(item.item);
    for (const NotAppliedTexts& item : work.notApplied)
        differences.notApplied.push_back(item.item);
    return differences;
}

} // namespace orvista
