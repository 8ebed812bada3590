// What a person would see of the program's windows, as JSON for a test in another process.
#ifndef NETINFO_TESTS_SYSTEM_WIDGETTREE_H
#define NETINFO_TESTS_SYSTEM_WIDGETTREE_H

#include <QJsonObject>

/// Every visible window with its visible widgets, from the bottom of the stack to the top. Rectangles are
/// [x, y, width, height] in pixels of the screen. A widget has "class", "name", "rect", "needs" (the least width and
/// height at which it shows everything), "enabled", "focus", "children", and where it applies "text", "checked",
/// "columns" and "rows" (tables), "entries" (menus, menu bars, lists of a combo box).
QJsonObject describeWindows();

#endif
