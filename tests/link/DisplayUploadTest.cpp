#include "link/DisplayUpload.h"

#include "tests/support/ScriptedControl.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace orvista {
namespace {

using ::testing::Contains;
using testing::ControlScript;
using ::testing::ElementsAre;
using ::testing::FieldsAre;
using ::testing::Not;
using testing::ScriptedControl;

constexpr auto fetchedBytes = "fetched";

class StageList final : public UploadProgress {
public:
    void enter(UploadStage stage) override { stages.push_back(stage); }
    void showActivity(const std::string&) override {}
    void showFile(const std::string&, std::size_t, std::size_t) override {}

    std::vector<UploadStage> stages;
};

class DisplayUploadTest : public ::testing::Test {
protected:
    DisplayUploadTest() {
        script.download = [](const std::string& folder) {
            for (const char* name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
                testing::writeBytes(folder + "/" + name, fetchedBytes);
        };
    }

    TransferEnd upload() {
        return uploadToDisplay({"127.0.0.1", 7000}, folder.path(), wishes, progress,
                               [this](DocTsfModule::TransferProgress& shown) {
                                   return std::make_unique<ScriptedControl>(script, shown);
                               });
    }
    void wishEqual(bool isEqual) {
        wishes.isEqual = [isEqual](const FetchedFiles&) { return isEqual; };
    }
    void wishVerified(const std::string& fault) {
        wishes.faultOfSent = [fault](const FetchedFiles&) { return fault; };
    }
    /// The second link that is opened is not taken.
    void refuseSecondLink() {
        script.open = [this, links = 0]() mutable { script.openResult = ++links == 2 ? 0 : 1; };
    }

    testing::TemporaryFolder folder;
    ControlScript script;
    UploadWishes wishes;
    StageList progress;
};

TEST_F(DisplayUploadTest, SendsWithoutAskingTheDisplayFirst) {
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Done, "", 5U));
    EXPECT_THAT(progress.stages, ElementsAre(UploadStage::Connecting, UploadStage::Sending));
}

TEST_F(DisplayUploadTest, WhatTheDisplayHasAlreadyIsNotSent) {
    wishEqual(true);
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Equal, "", 0U));
    EXPECT_THAT(script.calls, Not(Contains("PrepareUpload <>")));
    EXPECT_THAT(progress.stages, ElementsAre(UploadStage::Comparing));
}

TEST_F(DisplayUploadTest, WhatDiffersIsSent) {
    wishEqual(false);
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Done, "", 5U));
    EXPECT_THAT(progress.stages,
                ElementsAre(UploadStage::Comparing, UploadStage::Connecting, UploadStage::Sending));
}

TEST_F(DisplayUploadTest, WhoseFilesCannotBeFetchedIsSentEverything) {
    wishEqual(true);
    script.downloadResult = 0;
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Done, "", 5U));
}

TEST_F(DisplayUploadTest, WhoDoesNotAnswerIsNotAskedTwice) {
    wishEqual(true);
    script.openResult = 0;
    script.cause = "connection refused";
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Failed, "connection refused", 0U));
    EXPECT_THAT(script.calls, ElementsAre("RemoteAddress <127.0.0.1>", "RemotePort 7000", "OpenLink"));
}

TEST_F(DisplayUploadTest, WhoDoesNotTakeTheSecondLinkHasFailed) {
    wishEqual(false);
    refuseSecondLink();
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Failed, "cannot be connected to", 0U));
    EXPECT_THAT(script.calls, Not(Contains("PrepareUpload <>")));
}

TEST_F(DisplayUploadTest, StopsAtTheFileThatIsNotTaken) {
    script.uploadResults["stdmsg.ilm"] = 0;
    script.cause = "452 disk full";
    EXPECT_THAT(upload(),
                FieldsAre(FleetOutcome::Half,
                          "stdmsg.ilm was not taken: 452 disk full; arrived: modbus.adr, ilmvar.def", 2U));
    script.uploadResults["modbus.adr"] = 0;
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Failed, "modbus.adr was not taken: 452 disk full", 0U));
}

TEST_F(DisplayUploadTest, AnEndThatIsNotConfirmedStaysDone) {
    script.endCause = "hung up";
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Done, "the end was not confirmed: hung up", 5U));
}

TEST_F(DisplayUploadTest, WhatWasSentIsFetchedOnceMore) {
    wishVerified({});
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Done, "", 5U));
    EXPECT_THAT(progress.stages,
                ElementsAre(UploadStage::Connecting, UploadStage::Sending, UploadStage::Verifying));
}

TEST_F(DisplayUploadTest, WhatDoesNotComeBackAsItWasSentHasFailed) {
    wishVerified("stdmsg.ilm differs");
    EXPECT_THAT(upload(), FieldsAre(FleetOutcome::Failed, "sent, but not verified: stdmsg.ilm differs", 5U));
}

TEST_F(DisplayUploadTest, WhatCannotBeFetchedOnceMoreHasFailed) {
    wishVerified({});
    refuseSecondLink();
    EXPECT_THAT(upload(),
                FieldsAre(FleetOutcome::Failed, "sent, but not verified: cannot be connected to", 5U));
}

} // namespace
} // namespace orvista
