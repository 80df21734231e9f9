#include "core/modMath.h"

#include <QElapsedTimer>
#include <QSet>

#include <gtest/gtest.h>

using namespace modMath;

TEST(ModMath, PlainDrawsStayAboveTheFloorAndWithinTheMaximum) {
    QSet<int> seen;
    for (int i = 0; i < 300; ++i) {
        const int r = math_RandomNumber(6, 2, false, 20);
        EXPECT_GT(r, 2);
        EXPECT_LE(r, 6);
        seen.insert(r);
    }
    EXPECT_EQ(seen, (QSet<int>{3, 4, 5, 6}));
}

TEST(ModMath, UniqueDrawsGiveEveryValueOnceBeforeRepeating) {
    math_ClearRandomTable(10);
    for (int round = 0; round < 3; ++round) {
        QSet<int> seen;
        for (int i = 0; i < 10; ++i)
            seen.insert(math_RandomNumber(10, 0, true, 10));
        EXPECT_EQ(seen.size(), 10) << "round " << round;
        // The table was full and has been cleared.
        EXPECT_EQ(randomTable(), QList<int>(10, 0));
    }
}

TEST(ModMath, TableHalfTheRangeDelaysRepeats) {
    math_ClearRandomTable(5);
    QList<int> drawn;
    for (int i = 0; i < 4; ++i)
        drawn.append(math_RandomNumber(10, 0, true, 5));
    EXPECT_EQ(QSet<int>(drawn.begin(), drawn.end()).size(), 4);
    EXPECT_EQ(randomTable().mid(0, 4), drawn); // stored in the first empty slots, in order
    EXPECT_EQ(randomTable().last(), 0);
    // A bigger table keeps what was drawn.
    math_RandomNumber(10, 0, true, 8);
    EXPECT_EQ(randomTable().size(), 8);
    EXPECT_EQ(randomTable().mid(0, 4), drawn);
}

TEST(ModMath, OneValueTableReturnsOneEveryCall) {
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(math_RandomNumber(1, 0, true, 1), 1);
        EXPECT_EQ(randomTable(), QList<int>{0});
    }
}

TEST(ModMath, DrawsThatCouldNeverEndReturnAtOnce) {
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(math_RandomNumber(0, 0, false, 20), 1);
    EXPECT_EQ(math_RandomNumber(5, 5, true, 3), 6);
    EXPECT_EQ(math_RandomNumber(3, 7, false, 3), 8);
    // A table bigger than the range of values can never fill; it must start afresh instead.
    math_ClearRandomTable(10);
    for (int i = 0; i < 30; ++i) {
        const int r = math_RandomNumber(3, 0, true, 10);
        EXPECT_GE(r, 1);
        EXPECT_LE(r, 3);
    }
    EXPECT_LT(timer.elapsed(), 5000);
}
