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

auto SettingRows(const TAppearance*) {
    return AppearanceRows();
}
auto SettingRows(const TDimensions*) {
    return DimensionsRows();
}
auto SettingRows(const TAxis*) {
    return AxisRows();
}
auto SettingRows(const TLegend*) {
    return LegendRows();
}
auto SettingRows(const TGraphMark*) {
    return MarkRows();
}

} // namespace

std::vector<TBoundSetting> BoundSettings(TSettingsOwner owner) {
    return std::visit([](auto* object) { return Bound(SettingRows(object), *object); }, owner);
}

} // namespace lumoplot
