#include "controls/texts.h"

// Lists whose first item leaves a choice to be found from the text.
#pragma once

#include <QComboBox>
#include <algorithm>
#include <optional>

namespace lumoplot {

/// The place of the value in a combo box whose item 0 is "Auto"; 0 where the list has it not.
template <class TList, class TValue>
int AutoListItem(const TList& list, const TValue& value) {
    const auto found = std::ranges::find(list, value);
    return found == list.end() ? 0 : static_cast<int>(found - list.begin()) + 1;
}

/// Of an item: what stands behind "Auto" where the whole text would not fit.
inline constexpr int kShortCaption = Qt::UserRole;

/// "Decimal comma" inside a text; "UTF-8" stays.
inline QString AsInsideText(QString caption) {
    if (caption.size() > 1 && caption[1].isLower()) caption[0] = caption[0].toLower();
    return caption;
}

/// Shows the wish, or "Auto" with what was found behind it.
template <class TList, class TValue>
void FillAutoList(QComboBox& box, const TList& list, const std::optional<TValue>& wish,
                  const std::optional<TValue>& found) {
    const int item = found ? AutoListItem(list, *found) : 0;
    const QString given = box.itemData(item, kShortCaption).toString();
    const QString caption = given.isEmpty() ? AsInsideText(box.itemText(item)) : given;
    box.setItemText(0, item > 0 ? TTexts::tr("Auto: ") + caption : TTexts::tr("Auto"));
    box.setCurrentIndex(wish ? AutoListItem(list, *wish) : 0);
}

/// Nothing while "Auto" is chosen.
template <class TList>
auto AutoListWish(const QComboBox& box, const TList& list) {
    const int item = box.currentIndex();
    return item <= 0 ? std::nullopt : std::optional(list[static_cast<std::size_t>(item - 1)]);
}

} // namespace lumoplot
