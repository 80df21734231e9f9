#include "core/ConsoleLog.h"
#include "core/DialogScript.h"
#include "core/Dialogs.h"
#include "core/ListModel.h"
#include "core/MainContext.h"
#include "support/TempHome.h"
#include "ui/FrmMenus.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

#include <gtest/gtest.h>

using FrmMenus::classify;
using FrmMenus::Drive;

TEST(SendToDrive, VolumesAreSortedIntoTheirKinds) {
    Drive d;
    ASSERT_TRUE(classify("/media/ann/STICK", "vfat", &d));
    EXPECT_EQ(d.typeName, "Floppy Disk Drive");
    EXPECT_TRUE(d.removable);
    ASSERT_TRUE(classify("/run/media/ann/DISC", "iso9660", &d));
    EXPECT_EQ(d.typeName, "CD-ROM");
    ASSERT_TRUE(classify("/srv/music", "nfs4", &d));
    EXPECT_EQ(d.typeName, "Network Drive");
    ASSERT_TRUE(classify("/", "ext4", &d));
    EXPECT_EQ(d.typeName, "Primary/Logical Disk Drive");
    EXPECT_FALSE(d.removable);
    EXPECT_EQ(d.caption(), "/  Primary/Logical Disk Drive");
    // Nobody copies songs onto these.
    EXPECT_FALSE(classify("/proc", "proc", &d));
    EXPECT_FALSE(classify("/run/user/1000", "tmpfs", &d));
    EXPECT_FALSE(classify("/boot/efi", "vfat", &d));
    EXPECT_FALSE(classify("/home/ann/.cache/doc", "fuse.portal", &d));
}

TEST(SendToDrive, CopiesSelectedRowsAndWarnsForAGoneFileThenGoesOn) {
    TempHome home;
    ScriptedResponder answers;
    Dialogs::setResponder(&answers);
    MainContext ctx;
    const QString target = home.file("stick");
    QDir().mkpath(target);
    TempHome::writeFile(home.file("a.mp3"), "AAA");
    TempHome::writeFile(home.file("c.mp3"), "CCC");
    ListModel& list = ctx.lstvPlaylist();
    for (const char* name : {"a.mp3", "gone.mp3", "c.mp3", "d.mp3"})
        list.addRow({"", "", "", "", "", "", home.file(QString::fromLatin1(name))});
    for (int row : {0, 1, 2})
        list.setSelected(row, true);
    list.setSelected(3, false);

    // Through the menu entry, as the user reaches it.
    QMenu menu;
    FrmMenus::window_InstallDrives(ctx, &menu, {Drive{target, "Floppy Disk Drive", true}});
    FrmMenus::window_InstallDrives(ctx, &menu, {Drive{target, "Floppy Disk Drive", true}});
    ASSERT_EQ(menu.actions().size(), 1);
    menu.actions()[0]->trigger();

    EXPECT_EQ(TempHome::readFile(target + "/a.mp3"), "AAA");
    EXPECT_EQ(TempHome::readFile(target + "/c.mp3"), "CCC");
    EXPECT_FALSE(QFileInfo::exists(target + "/d.mp3")); // not selected
    ASSERT_EQ(answers.asked().size(), 1);
    EXPECT_EQ(answers.asked()[0].title, "Error Copying Music To Driv");
    EXPECT_TRUE(answers.asked()[0].text.startsWith("One of the selected"));
    EXPECT_TRUE(answers.asked()[0].text.contains("gone.mp3"));
    EXPECT_TRUE(ConsoleLog::instance().text().contains(home.file("c.mp3") + " copy to '" + target +
                                                       "' drive."));
    Dialogs::setResponder(nullptr);
}

TEST(SendToDrive, NoDriveShowsADisabledPlaceholder) {
    MainContext ctx;
    QMenu menu;
    FrmMenus::window_InstallDrives(ctx, &menu, {});
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_FALSE(menu.actions()[0]->isEnabled());
}
