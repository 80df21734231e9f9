#include "core/CommandLine.h"

#include <gtest/gtest.h>

TEST(CommandLine, SwitchesAndPathsBecomeTheClassicText) {
    EXPECT_EQ(CommandLine::buildCommand({"/PLAY"}, "/home/u"), "/play");
    EXPECT_EQ(CommandLine::buildCommand({"--systray", "/winload"}, "/home/u"), "/systray /winload");
    // Paths are made absolute and quoted, blanks, commas and letters beyond ASCII kept.
    EXPECT_EQ(CommandLine::buildCommand({"a b, c.mp3"}, "/home/ü"), "\"/home/ü/a b, c.mp3\"");
    EXPECT_EQ(CommandLine::buildCommand({"/m/x.mp3", "../y.mp3"}, "/home/u"),
              "\"/m/x.mp3\" \"/home/y.mp3\"");
    // An absolute path that is not a switch stays a path.
    EXPECT_EQ(CommandLine::buildCommand({"/cdrom"}, "/"), "\"/cdrom\"");
    // The longest spelling is still a switch; one letter more is a path.
    EXPECT_EQ(CommandLine::buildCommand({"--MINIMIZE"}, "/"), "/minimize");
    EXPECT_EQ(CommandLine::buildCommand({"--minimizee", "-"}, "/m"), "\"/m/--minimizee\" \"/m/-\"");
    EXPECT_EQ(CommandLine::buildCommand({}, "/"), "");
}

TEST(CommandLine, HelpAndVersionAreAnsweredBeforeStarting) {
    EXPECT_TRUE(CommandLine::informationRequest({"--version"}).startsWith("VELDOR "));
    EXPECT_TRUE(CommandLine::informationRequest({"x.mp3", "--help"}).contains("/systray /winload"));
    EXPECT_TRUE(CommandLine::informationRequest({"x.mp3", "/play"}).isEmpty());
}
