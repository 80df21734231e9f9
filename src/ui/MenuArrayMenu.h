#pragma once
#include <functional>

class MenuArray;
class QAction;
class QMenu;

// Shows the entries of `array` in `menu`, before `before` (or at the end), as actions named as
// the array. A click runs `onClick(index)`. The actions are rebuilt once per burst of changes,
// and at the latest when the menu is about to show.
void menuArray_Bind(MenuArray& array, QMenu* menu, std::function<void(int)> onClick,
                    QAction* before = nullptr);
