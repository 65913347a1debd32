#include "check/FileFindings.h"

#include "model/DeviceFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orvista {
namespace {

using ::testing::StartsWith;
using Met = FileRemarkKind;

FileRemark remark(Met kind, const DeviceFile& file, std::size_t count, std::string name,
                  std::string row = {}) {
    return {kind, {}, file.sectionName, 7, count, std::move(name), std::move(row)};
}

FileRemarks remarksOf(std::vector<FileRemark> list) {
    FileRemarks remarks;
    for (FileRemark& one : list)
        remarks.add(std::move(one));
    return remarks;
}

std::string textOf(FileRemark one) {
    return fileFindings(remarksOf({std::move(one)})).list.at(0).text;
}

TEST(FileFindings, NamesStandAsTheFileHasThem) {
    EXPECT_THAT(textOf(remark(Met::MovedMessage, stdMsgFile, 1, "stdmsg7", "STDMSG3")),
                StartsWith("stdmsg7 was read as STDMSG3"));
    EXPECT_THAT(textOf(remark(Met::OpenBlock, stdMsgFile, 2, "pump")),
                StartsWith("pump and 1 more were not"));
    EXPECT_THAT(textOf(remark(Met::ExtraItems, stdMsgFile, 1, "pump")), StartsWith("pump was not read"));
    EXPECT_THAT(textOf(remark(Met::ExtraItems, stdMsgFile, 1, "")), StartsWith("A block without a name was"));
}

TEST(FileFindings, OneIsNotCounted) {
    EXPECT_EQ(
        textOf(remark(Met::MovedMessage, stdMsgFile, 1, "STDMSG7", "STDMSG3")),
        "STDMSG7 was read as STDMSG3, because messages are numbered by their order: put the blocks into "
        "the order of their names.");
    EXPECT_EQ(
        textOf(remark(Met::MovedMessage, stdMsgFile, 2, "STDMSG7", "STDMSG3")),
        "STDMSG7 was read as STDMSG3 (1 more have another number, too), because messages are numbered by "
        "their order: put the blocks into the order of their names.");
    EXPECT_EQ(textOf(remark(Met::MovedVariable, ilmVarFile, 3, "RegVar7", "RegVar3")),
              "RegVar7 was read as RegVar3 (2 more have another number, too), because a variable is known by "
              "its address: correct its name or its address.");
    EXPECT_EQ(textOf(remark(Met::ExtraItems, stdMsgFile, 1, "STDMSG41")),
              "STDMSG41 was not read, because there are no more rows: delete what is not used, or saving "
              "leaves it out.");
    EXPECT_EQ(textOf(remark(Met::ExtraItems, ilmVarFile, 2, "RegVar7")),
              "RegVar7 and 1 more were not read, because no variable lies at the address: correct it, or "
              "saving leaves them out.");
    EXPECT_EQ(textOf(remark(Met::NotText, stdMsgFile, 1, "")),
              "This line holds a NUL byte, which is not text: take the file from a copy.");
    EXPECT_EQ(textOf(remark(Met::NotText, stdMsgFile, 2, "")),
              "This line and 1 more hold a NUL byte, which is not text: take the file from a copy.");
}

TEST(FileFindings, AFileThatEndsTooEarlyTellsWhatWasRead) {
    EXPECT_EQ(
        textOf(remark(Met::CutOff, stdMsgFile, 1, "")),
        "The file ends inside [STDMSG.ILM]: 39 of 40 regular messages were read. Take it from a copy, or the "
        "section from a device file (orvista mend).");
    EXPECT_EQ(
        textOf(remark(Met::CutOff, stdMsgFile, 0, "")),
        "The file ends inside [STDMSG.ILM]: it ends inside a block. Take it from a copy, or the section from "
        "a device file (orvista mend).");
}

TEST(FileFindings, WhatSavingLeavesOutIsCountedInAllSections) {
    const FileRemarks remarks = remarksOf({remark(Met::ExtraItems, stdMsgFile, 4, "STDMSG41"),
                                           remark(Met::ExtraItems, altMsgFile, 2, "ALTMSG21")});
    EXPECT_EQ(notWholeText("P.orx", remarks),
              "P.orx is not whole: there are more blocks than rows. Saving leaves out STDMSG41 and 5 more.");
}

TEST(FileFindings, TheGravestIsNamedFirst) {
    const FileRemarks remarks = remarksOf(
        {remark(Met::ExtraItems, stdMsgFile, 1, "STDMSG41"), remark(Met::CutOff, ilmVarFile, 58, "")});
    EXPECT_EQ(notWholeText("P.orx", remarks),
              "P.orx is not whole: 38 of 96 variables were read. Saving leaves out STDMSG41.");
    EXPECT_TRUE(isToRefuse(remarks));
    EXPECT_FALSE(isToRefuse(remarksOf({remark(Met::ExtraItems, stdMsgFile, 1, "STDMSG41")})));
}

} // namespace
} // namespace orvista
