// Walks windows with the keyboard alone and looks at what it can reach.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace lumoplot {

/// Presses Tab, or Shift+Tab, from the control that has the focus until one comes again.
std::vector<QWidget*> TabRound(QWidget& window, Qt::Key key);

/// Every control of the window that can be used now is reached with Tab and with Shift+Tab, in one ring.
void ExpectEveryControlReached(QWidget& window);

/// The letters that Alt finds in the window now, each with the captions that it stands for.
/// Fails where two controls share a letter.
void ExpectKeysAreClear(QWidget& window);

/// Every control has a name for those who do not see it.
void ExpectEveryControlNamed(QWidget& window);

} // namespace lumoplot
