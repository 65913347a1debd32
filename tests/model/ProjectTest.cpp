#include "model/Project.h"

#include <gtest/gtest.h>

namespace orvista {
namespace {

TEST(Project, StartsWithTheDefaults) {
    const Project project;
    EXPECT_EQ(project.SerialPort, "COM1");
    EXPECT_FALSE(project.IP.empty());
    EXPECT_EQ(project.ProjName, "");
    EXPECT_FALSE(project.modified);
    EXPECT_EQ(project.AnalogInput, 100);
    EXPECT_EQ(project.DigitalInput, 100);
    EXPECT_EQ(project.AlertMessage, 300);
    EXPECT_EQ(project.RegularMessage, 320);
    for (std::size_t i = 0; i < 64; ++i)
        EXPECT_EQ(project.RegVar[i], (FloatVariable{"RegVar" + std::to_string(i + 1), "0.0", "7", "3"}));
    for (std::size_t i = 0; i < 32; ++i)
        EXPECT_EQ(project.CoilVar[i], (BooleanVariable{"CoilVar" + std::to_string(i + 1), "0", "ON", "OFF"}));
    for (const std::string& message : project.STDMSG)
        EXPECT_EQ(message, "CLEAR");
    for (const std::string& message : project.ALTMSG)
        EXPECT_EQ(message, "CLEAR");
}

TEST(Project, ResetsEveryTable) {
    Project project;
    project.AnalogInput = project.DigitalInput = project.AlertMessage = project.RegularMessage = -1;
    project.RegVar.fill({"x", "x", "x", "x"});
    project.CoilVar.fill({"x", "x", "x", "x"});
    project.STDMSG.fill("x");
    project.ALTMSG.fill("x");
    project.SerialPort = project.IP = "x";
    project.ResetAddressMap();
    project.ResetVariables();
    project.ClearMessages();
    project.resetSystemSettings();

    const Project defaults;
    EXPECT_EQ(project.RegVar, defaults.RegVar);
    EXPECT_EQ(project.CoilVar, defaults.CoilVar);
    EXPECT_EQ(project.STDMSG, defaults.STDMSG);
    EXPECT_EQ(project.ALTMSG, defaults.ALTMSG);
    EXPECT_EQ(project.RegularMessage, 320);
    EXPECT_EQ(project.SerialPort, "COM1");
    EXPECT_EQ(project.IP, defaults.IP);
}

} // namespace
} // namespace orvista
