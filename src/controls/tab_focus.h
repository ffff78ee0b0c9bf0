// Tabs that can be left for their page right after their key was pressed.
#pragma once

class QTabBar;

namespace lumoplot {

/// From now on the key of a tab (Alt and its letter) also moves the focus to the tabs, so that the Tab key
/// goes on from there instead of from wherever the focus was.
void FocusByItsKeys(QTabBar& tabs);

} // namespace lumoplot
