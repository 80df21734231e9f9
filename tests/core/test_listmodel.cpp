#include "core/ListModel.h"

#include <gtest/gtest.h>

// A tag padded with NULs by another program keeps them in the cell (and in the files written
// from it), while the list shows the text up to the first one, as a list control does.
TEST(ListModelDisplay, ACellShowsItsTextUpToTheFirstNul) {
    ListModel list({QStringLiteral("Artist:"), QStringLiteral("Title:")});
    const QString padded = QStringLiteral("Title") + QString(25, QChar(0));
    list.addRow({QStringLiteral("Band"), padded});
    EXPECT_EQ(list.data(list.index(0, 1), Qt::DisplayRole).toString(), QStringLiteral("Title"));
    EXPECT_EQ(list.text(0, 1), padded);
    EXPECT_EQ(list.data(list.index(0, 0), Qt::DisplayRole).toString(), QStringLiteral("Band"));
}

// Rows are stored packed; whatever goes in must come out the same, character for character.
TEST(ListModelStorage, CellsComeBackExactly) {
    ListModel list({"A", "B", "C", "D", "E"});
    const QString nulPadded = QStringLiteral("Title") + QString(25, QChar(0));
    const QString wide = QStringLiteral("Ünïcødé ✓ 日本 ") + QChar(0xD83C) + QChar(0xDFB5);
    const QString loneSurrogate = QStringLiteral("x") + QChar(0xDC00) + QStringLiteral("y");
    const QString huge(70000, QChar(0x00FF));
    const QStringList row = {nulPadded, wide, loneSurrogate, huge, QString()};
    list.addRow(row);
    list.addRow({"only one"}); // short rows are padded with empty cells
    list.addRow({"1", "2", "3", "4", "5", "6 is dropped"});
    EXPECT_EQ(list.rowTexts(0), row);
    EXPECT_EQ(list.rowTexts(1), QStringList({"only one", "", "", "", ""}));
    EXPECT_EQ(list.rowTexts(2), QStringList({"1", "2", "3", "4", "5"}));
    EXPECT_EQ(list.text(0, 3).size(), 70000);
    EXPECT_EQ(list.text(0, 9), QString());
    EXPECT_EQ(list.text(7, 0), QString());

    // Changing one cell leaves its neighbours as they were, also across a change of width.
    list.setText(0, 1, QStringLiteral("plain"));
    list.setText(0, 0, wide);
    EXPECT_EQ(list.rowTexts(0), QStringList({wide, "plain", loneSurrogate, huge, QString()}));
}

TEST(ListModelStorage, StylesSurviveSortingAndPlainRowsDropThem) {
    ListModel list({"Name", "Status"});
    list.addRow({"b", "Play"});
    list.addRow({"a", "Skip"});
    list.setRowStyle(0, true, 0x00FF0000);
    list.setForeColor(1, 1, 0x8000000F); // a system colour needs all 32 bits
    list.setSorted(true);
    EXPECT_EQ(list.text(0, 0), "a");
    EXPECT_EQ(list.foreColor(0, 1), 0x8000000FLL);
    EXPECT_FALSE(list.isBold(0, 0));
    EXPECT_TRUE(list.isBold(1, 1));
    EXPECT_EQ(list.foreColor(1, 0), 0x00FF0000LL);
    list.setRowStyle(1, false, ListModel::DefaultColor);
    EXPECT_FALSE(list.isBold(1, 0));
    EXPECT_EQ(list.foreColor(1, 1), ListModel::DefaultColor);
}
