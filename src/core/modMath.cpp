#include "core/modMath.h"

#include <QDateTime>
#include <QRandomGenerator>

#include <random>

namespace modMath {
namespace {

QList<int>& table() {
    static QList<int> t;
    return t;
}

std::mt19937& generator() {
    // Seeded once from the clock and the system's entropy; reseeding at every call from a clock
    // that ticks slower than the calls would repeat draws.
    static std::mt19937 gen = [] {
        std::seed_seq seed{quint32(QDateTime::currentMSecsSinceEpoch()),
                           QRandomGenerator::system()->generate()};
        return std::mt19937(seed);
    }();
    return gen;
}

// Integer part of a uniform value in [0, 1) times `range`, plus 1.
int draw(int range) {
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    return int(uniform(generator()) * range) + 1;
}

int drawRounds() {
    const int a = draw(3);
    const int b = draw(2);
    // The wall clock's seconds and minutes; a cheap reading, since shuffles ask for it per row.
    const qint64 t = QDateTime::currentSecsSinceEpoch();
    return int(t % 60) * a + int((t / 60) % 60) * b;
}

// Every value a draw above `floor` can give already stands in the table.
bool allTaken(const QList<int>& t, int maximum, int floor) {
    floor = qMax(floor, 0); // draws start at 1
    const int range = maximum - floor;
    if (range > t.size()) return false;
    QList<bool> seen(range, false);
    int count = 0;
    for (int v : t) {
        if (v > floor && v <= maximum && !seen[v - floor - 1]) {
            seen[v - floor - 1] = true;
            ++count;
        }
    }
    return count >= range;
}

} // namespace

const QList<int>& randomTable() {
    return table();
}

void math_ClearRandomTable(int tableSize) {
    table().clear();
    table().resize(qMax(0, tableSize), 0);
}

int math_RandomNumber(int maximum, int floor, bool unique, int tableSize) {
    // No value lies above the floor: the draw could never end, so the one value it would
    // accept first is given.
    if (floor >= maximum) return floor + 1;
    QList<int>& t = table();
    if (unique) t.resize(qMax(0, tableSize), 0);

    for (;;) {
        int rounds = drawRounds();
        // At second and minute zero no draw is made and the result is 0, which a unique draw
        // would take for a used slot until the clock moves on.
        if (unique && rounds == 0) rounds = 1;
        // Only the last of the rounds counts; the earlier ones merely stirred a weak generator,
        // which this one does not need, so one draw stands for them all.
        int result = 0;
        if (rounds > 0) {
            while (result <= floor)
                result = draw(maximum);
        }
        if (!unique) return result;
        if (t.contains(result)) {
            // With a table larger than the range of values it cannot fill; start it afresh.
            if (allTaken(t, maximum, floor)) math_ClearRandomTable(tableSize);
            continue;
        }
        const qsizetype slot = t.indexOf(floor);
        if (slot >= 0) t[slot] = result;
        if (!t.isEmpty() && t.last() > floor) math_ClearRandomTable(tableSize);
        return result;
    }
}

} // namespace modMath
