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
