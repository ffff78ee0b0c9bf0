// The order in which Tab goes through a window: that in which its layouts are read.
#pragma once

class QWidget;

namespace lumoplot {

/// Orders the keys of everything in the window from left to right and from top to bottom, group by group, the
/// pages of a page control behind its tabs.
void OrderKeysAsRead(QWidget& window);

} // namespace lumoplot
