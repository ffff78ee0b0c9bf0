// A button where there is little room.
#pragma once

#include <QPushButton>

namespace lumoplot {

/// It may be narrower than the style would have it, down to what its caption and picture need. To be called
/// when it has both.
inline void AllowNarrow(QPushButton& button) {
    constexpr int kFrame = 12;
    const int icon = button.icon().isNull() ? 0 : button.iconSize().width() + 4;
    button.setMinimumWidth(button.fontMetrics().horizontalAdvance(button.text().remove(u'&')) + icon +
                           kFrame);
}

} // namespace lumoplot
