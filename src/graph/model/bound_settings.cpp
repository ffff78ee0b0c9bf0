#include "graph/model/bound_settings.h"

#include "graph/model/graph.h"
#include "graph/model/setting_value.h"

namespace lumoplot {
namespace {

template <class T>
std::vector<TBoundSetting> Bound(std::span<const TSectionRow<T>> rows, T& object) {
    std::vector<TBoundSetting> settings;
    for (const TSectionRow<T>& row : rows)
        if (row.get && row.write)
            settings.push_back(
                {row.key, row.name, [&row, &object] { return row.get(object); },
                 [&row, &object](const TFieldValue& value) { SetSetting(row, object, value); }});
    return settings;
}

} // namespace

std::vector<TBoundSetting> SettingsOf(TAppearance& object) {
    return Bound(AppearanceRows(), object);
}

std::vector<TBoundSetting> SettingsOf(TDimensions& object) {
    return Bound(DimensionsRows(), object);
}

std::vector<TBoundSetting> SettingsOf(TAxis& object) {
    return Bound(AxisRows(), object);
}

std::vector<TBoundSetting> SettingsOf(TLegend& object) {
    return Bound(LegendRows(), object);
}

std::vector<TBoundSetting> SettingsOf(TGraphMark& object) {
    return Bound(MarkRows(), object);
}

} // namespace lumoplot
