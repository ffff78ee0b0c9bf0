// The settings of one object, whatever their types, for windows that show and change them. A setting borrows
// its object.
#pragma once

#include "graph/model/setting_rows.h"

#include <functional>
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

// Those that are filed, in the order of the file.
XYGRAPH_EXPORT std::vector<TBoundSetting> SettingsOf(TAppearance& object);
XYGRAPH_EXPORT std::vector<TBoundSetting> SettingsOf(TDimensions& object);
XYGRAPH_EXPORT std::vector<TBoundSetting> SettingsOf(TAxis& object);
XYGRAPH_EXPORT std::vector<TBoundSetting> SettingsOf(TLegend& object);
XYGRAPH_EXPORT std::vector<TBoundSetting> SettingsOf(TGraphMark& object);

} // namespace lumoplot
