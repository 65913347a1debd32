#include "compare/UnsavedDifferences.h"
#include "model/ProjectFile.h"
#include "tests/support/NamedItem.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const PathRules paths = PathRules::native();

UnsavedWork workIn(const testing::TemporaryFolder& folder) {
    UnsavedWork work;
    work.project.ProjPath = folder.path();
    work.project.ProjName = "Line3";
    return work;
}

TEST(UnsavedDifferences, OfWorkThatIsAsItsFileAreNone) {
    const testing::TemporaryFolder folder;
    UnsavedWork work = workIn(folder);
    work.project.STDMSG[2] = "CLEAR\r\nACT STILL 500";
    work.project.IP = "127.0.0.1";
    testing::ScriptedMessages messages;
    ASSERT_EQ(DocMgrModule::SaveProject(folder.path(), "Line3", work.project, {paths, messages}),
              DocMgrModule::SaveOutcome::Saved);
    const UnsavedDifferences differences = unsavedDifferences(work, paths);
    EXPECT_TRUE(differences.isSaved);
    EXPECT_FALSE(differences.hasSystemPage);
    EXPECT_THAT(differences.items, IsEmpty());
    EXPECT_THAT(differences.notApplied, IsEmpty());
}

TEST(UnsavedDifferences, NameEverythingInTheOrderOfTheProject) {
    const testing::TemporaryFolder folder;
    UnsavedWork work = workIn(folder);
    testing::ScriptedMessages messages;
    DocMgrModule::SaveProject(folder.path(), "Line3", work.project, {paths, messages});
    const std::string saved = testing::fileBytes(folder.file("stdmsg.ilm"));
    work.project.ALTMSG[19] = "CLEAR\r\n";
    work.project.STDMSG[4] = "CLEAR\r\nACT STILL 500";
    work.project.CoilVar[0].onText = "RUN";
    work.project.RegVar[63].width = "5";
    work.project.AlertMessage = 500;
    work.project.IP = "127.0.0.1";
    work.notApplied = {{named("STDMSG9"), {"ACT"}}};
    const UnsavedDifferences differences = unsavedDifferences(work, paths);
    EXPECT_TRUE(differences.isSaved);
    EXPECT_TRUE(differences.hasSystemPage);
    EXPECT_THAT(differences.items,
                ElementsAre(named("address map"), named("RegVar64"), named("CoilVar1"), named("STDMSG5")));
    EXPECT_THAT(differences.notApplied, ElementsAre(named("STDMSG9")));
    EXPECT_EQ(testing::fileBytes(folder.file("stdmsg.ilm")), saved);
}

TEST(UnsavedDifferences, OfWorkThatWasNeverSavedAreThoseFromANewProject) {
    const testing::TemporaryFolder folder;
    UnsavedWork work = workIn(folder);
    work.project.ALTMSG[0] = "CLEAR\r\nACT STILL 500";
    const UnsavedDifferences differences = unsavedDifferences(work, paths);
    EXPECT_FALSE(differences.isSaved);
    EXPECT_FALSE(differences.hasSystemPage);
    EXPECT_THAT(differences.items, ElementsAre(named("ALTMSG1")));
}

} // namespace
} // namespace orvista
