// The settings of one object, whatever their types, for windows that show and change them. A setting borrows
// its object.
#pragma once

#include "graph/model/setting_rows.h"

#include <functional>
#include <variant>
#include <vector>

namespace lumoplot {

struct TBoundSetting {
    int Key = 0;
    const char* Name = ""; ///< as in files
    std::function<TFieldValue()> Get;
    /// Takes a value of the type that Get gives; the object's setter may adjust or refuse it, and change
    /// other settings with it.
    std::function<void(const TFieldValue&)> Set;
};

/// An object that has settings; borrowed.
using TSettingsOwner = std::variant<TAppearance*, TDimensions*, TAxis*, TLegend*, TGraphMark*>;

/// Those that are filed, in the order of the file.
XYGRAPH_EXPORT std::vector<TBoundSetting> BoundSettings(TSettingsOwner owner);
template <class T>
std::vector<TBoundSetting> SettingsOf(T& owner) {
    return BoundSettings(&owner);
}

} // namespace lumoplot
