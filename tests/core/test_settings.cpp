#include "core/IniFile.h"
#include "core/Settings.h"
#include "support/TempHome.h"

#include <gtest/gtest.h>

TEST(Settings, placeholder) {
    TempHome home;
    settings_Write("Settings", "A", "1");
    EXPECT_EQ(settings_Read("settings", "a", "0"), "1");
}
