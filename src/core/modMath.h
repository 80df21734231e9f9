#pragma once
#include <QList>

namespace modMath {

int math_RandomNumber(int maximum, int floor, bool unique, int tableSize);
void math_ClearRandomTable(int tableSize);
// The table of drawn values, for tests.
const QList<int>& randomTable();

} // namespace modMath
