#include "model/FolderLookup.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

const PathRules rules = PathRules::native();

class FolderLookup : public ::testing::Test {
protected:
    std::string put(const std::string& name) {
        testing::writeBytes(folder.file(name), name);
        return folder.file(name);
    }
    testing::TemporaryFolder folder;
};

TEST_F(FolderLookup, ANewDeviceFileGetsTheLowerCaseName) {
    EXPECT_EQ(deviceFileOnDisk(rules, folder.file("StdMsg.ilm")), folder.file("stdmsg.ilm"));
}

TEST_F(FolderLookup, AnExistingVariantOfADeviceFileIsTheFile) {
    const std::string upper = put("MODBUS.ADR");
    EXPECT_EQ(testing::fileBytes(deviceFileOnDisk(rules, folder.file("Modbus.adr"))),
              testing::fileBytes(upper));
}

TEST_F(FolderLookup, ANewProjectFileKeepsItsName) {
    EXPECT_EQ(projectFileOnDisk(rules, folder.file("Plant.orx")), folder.file("Plant.orx"));
}

TEST_F(FolderLookup, APathWithoutFolderIsTakenAsItStands) {
    EXPECT_EQ(deviceFileOnDisk(rules, "MODBUS.ADR"), "MODBUS.ADR");
}

#ifndef _WIN32 // needs a file system that tells cases apart
TEST_F(FolderLookup, TheLowerCaseDeviceFileCounts) {
    put("MODBUS.ADR");
    put("Modbus.adr");
    const std::string lower = put("modbus.adr");
    EXPECT_EQ(deviceFileOnDisk(rules, folder.file("Modbus.adr")), lower);
}

TEST_F(FolderLookup, AmongOtherVariantsTheChoiceIsAlwaysTheSame) {
    put("mODBUS.ADR");
    const std::string first = put("MODBUS.ADR");
    EXPECT_EQ(deviceFileOnDisk(rules, folder.file("modbus.adr")), first);
}

TEST_F(FolderLookup, AProjectFileIsTheOneNamedElseTheLowerCaseOneElseAnyVariant) {
    const std::string upper = put("PLANT.ORX");
    EXPECT_EQ(projectFileOnDisk(rules, folder.file("Plant.orx")), upper);
    const std::string lower = put("plant.orx");
    EXPECT_EQ(projectFileOnDisk(rules, folder.file("Plant.orx")), lower);
    const std::string named = put("Plant.orx");
    EXPECT_EQ(projectFileOnDisk(rules, folder.file("Plant.orx")), named);
}

TEST_F(FolderLookup, AccentsAreNotFolded) {
    put("\u00C4.orx");
    EXPECT_EQ(projectFileOnDisk(rules, folder.file("\u00E4.orx")), folder.file("\u00E4.orx"));
}
#endif

} // namespace
} // namespace orvista
