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

// A cell read in place is the same text as its copy, whatever mix of widths the row holds: a wide
// cell after a narrow one of odd length must still be read as whole characters.
TEST(ListModelStorage, CellsReadInPlaceMatchTheirCopies) {
    ListModel list({"A", "B", "C", "D"});
    const QString wide = QStringLiteral("日本 ") + QChar(0xD83C) + QChar(0xDFB5);
    list.addRow({"odd", wide, QStringLiteral("é"), QString()});
    list.addRow({wide, "x", wide, "yz"});
    for (int r = 0; r < list.count(); ++r)
        for (int c = 0; c < list.columns(); ++c)
            EXPECT_EQ(list.textView(r, c).toString(), list.text(r, c)) << r << ' ' << c;
    EXPECT_TRUE(list.textView(5, 0).isEmpty());
    EXPECT_TRUE(list.textView(0, 7).isEmpty());

    // Rows given as views of any encoding come back as the same texts.
    const QByteArray utf8 = QStringLiteral("Motörhead ✓").toUtf8();
    list.appendRows(2, [&](int row, int column) -> QAnyStringView {
        if (row == 1) return QLatin1StringView("plain");
        return column == 0   ? QAnyStringView(QUtf8StringView(utf8))
               : column == 1 ? QAnyStringView(QLatin1StringView("caf\xe9"))
                             : QAnyStringView(wide);
    });
    EXPECT_EQ(list.rowTexts(2),
              QStringList({QStringLiteral("Motörhead ✓"), QStringLiteral("café"), wide, wide}));
    EXPECT_EQ(list.rowTexts(3), QStringList({"plain", "plain", "plain", "plain"}));
}

// Rows added in bulk share blocks; every way a row can go or change must leave the others whole
// (the sanitizer build reads freed blocks as errors).
TEST(ListModelStorage, BulkRowsSurviveEveryChange) {
    ListModel list({"No.", "Title"});
    const auto expected = [](int i) {
        return QStringList{QString::number(i), i % 7 ? QStringLiteral("Song %1").arg(i)
                                                     : QStringLiteral("Sång ✓ %1").arg(i)};
    };
    std::vector<QStringList> rows;
    for (int i = 0; i < 1000; ++i)
        rows.push_back(expected(i));
    list.appendRows(std::move(rows));
    list.setText(3, 1, QStringLiteral("changed"));
    list.setRowTexts(4, {"4", "whole row"});
    list.removeRow(0);
    std::vector<bool> mask(size_t(list.count()), false);
    for (size_t i = 0; i < mask.size(); ++i)
        mask[i] = i % 10 != 0; // nine rows in ten go: the rest move out of the blocks
    list.removeRows(mask);
    ASSERT_EQ(list.count(), 100);
    EXPECT_EQ(list.rowTexts(0), QStringList({"1", "Song 1"}));
    for (int r = 1; r < list.count(); ++r)
        EXPECT_EQ(list.rowTexts(r), expected(r * 10 + 1)) << r;
    list.setSortOrder(1);
    list.setSorted(true);
    EXPECT_EQ(list.text(0, 0), QStringLiteral("991"));
    list.appendRows(100, [](int row, int) { return QLatin1StringView(row % 2 ? "odd" : "even"); });
    EXPECT_EQ(list.count(), 200);
    list.clear();
    list.appendRows(70, [](int, int c) { return QLatin1StringView(c ? "t" : "n"); });
    EXPECT_EQ(list.rowTexts(69), QStringList({"n", "t"}));
}
