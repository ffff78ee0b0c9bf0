// What the settings of a graph are called in the window that edits them, how they are edited and on which
// page.
#pragma once

#include <span>

namespace lumoplot {

/// How a value is edited beyond what its type says.
enum class TSettingEdit { ByType, Lines, SignedNumber, Color, Choice, File, Folder, Range };

struct TSettingWords {
    int Key; ///< of the setting in its section
    const char* Label;
    TSettingEdit Edit = TSettingEdit::ByType;
    std::span<const char* const> Choices = {}; ///< names of the values 0, 1, 2, …
    bool IsForAllAxes = false;                 ///< other axes can take it over
};

// Settings of the appearance, by subject.
std::span<const TSettingWords> TitleWords();
std::span<const TSettingWords> AxesInCommonWords();
std::span<const TSettingWords> DataAndPaperWords();
std::span<const TSettingWords> MarksInCommonWords();
// All settings of an axis, the legend and a mark.
std::span<const TSettingWords> AxisWords();
std::span<const TSettingWords> LegendWords();
std::span<const TSettingWords> MarkWords();
// Of the dimensions.
std::span<const TSettingWords> MarginWords();
std::span<const TSettingWords> PaperWords();

} // namespace lumoplot
