#include "dialogs/settings/setting_words.h"

namespace lumoplot {
namespace {

using enum TSettingEdit;

constexpr const char* kLineStyles[] = {"Solid", "Dashes", "Dots", "Dashes and dots", "Dashes and two dots"};
constexpr const char* kLabelFormats[] = {"Fixed decimals", "Exponent", "Automatic"};
constexpr const char* kDateTicks[] = {"Minutes", "5 minutes", "Half hours", "Hours",    "Days",
                                      "Weeks",   "Months",    "2 months",   "Quarters", "Years",
                                      "Decades", "Centuries", "By the step"};
constexpr const char* kOffsetTypes[] = {"At the minimum", "At the maximum", "At a percentage", "At a value"};
constexpr const char* kFitBands[] = {"None", "Of the curve (95 %)", "Of new points (95 %)", "Both"};
constexpr const char* kBorders[] = {"None", "Line"};
constexpr const char* kLayouts[] = {"Across", "Down"};
constexpr const char* kMarkTypes[] = {"Vertical line", "Horizontal line", "Point", "Line"};
constexpr const char* kMarkAxes[] = {"With X and Y", "With X and second Y", "Not drawn"};

} // namespace

std::span<const TSettingWords> TitleWords() {
    static constexpr TSettingWords kWords[] = {
        {13, "Title of the graph", Lines}, {17, "Font of the title"},
        {3, "Colour of the plot", Color},  {4, "Colour of the margins", Color},
        {38, "Background picture", File},  {39, "Stretch the picture over the graph"},
    };
    return kWords;
}

std::span<const TSettingWords> AxesInCommonWords() {
    static constexpr TSettingWords kWords[] = {
        {2, "Colour of axes and frame", Color},
        {60, "Frame on all four sides"},
        {12, "Show ticks"},
        {61, "Ticks point inwards"},
        {9, "Show labels and titles"},
        {18, "Font of the labels"},
        {16, "Font of the axis titles"},
        {7, "Colour of the grid", Color},
        {8, "Line style of the grid", Choice, kLineStyles},
        {14, "Fewest steps of an automatic axis"},
        {15, "Most steps of an automatic axis"},
        {19, "Cross at zero"},
        {20, "Colour of the cross", Color},
        {21, "Length of the cross"},
    };
    return kWords;
}

std::span<const TSettingWords> DataAndPaperWords() {
    static constexpr TSettingWords kWords[] = {
        {10, "Draw points beyond the axes, too"}, {1, "Keep points with equal X"},
        {40, "Folder of the data files", Folder}, {5, "Print the background colours"},
        {22, "Print lines in their styles"},      {62, "Bands about fitted curves", Choice, kFitBands},
        {63, "Residuals above the plot"},
    };
    return kWords;
}

std::span<const TSettingWords> MarksInCommonWords() {
    static constexpr TSettingWords kWords[] = {{11, "Show marks"}};
    return kWords;
}

std::span<const TSettingWords> AxisWords() {
    static constexpr TSettingWords kWords[] = {
        {1, "Title", Lines},
        {20, "Title from the data set's name"},
        {13, "Show the axis"},
        {18, "Range follows the data"},
        {6, "Range, from and to", Range},
        {60, "Range ends at the data", ByType, {}, true},
        {19, "Automatic step", ByType, {}, true},
        {8, "Step"},
        {9, "Shortest range"},
        {5, "Logarithmic"},
        {4, "Divisions of a decade", ByType, {}, true},
        {17, "Grid lines", ByType, {}, true},
        {21, "Format of the labels", Choice, kLabelFormats, true},
        {3, "Decimals follow the step", ByType, {}, true},
        {2, "Decimals", ByType, {}, true},
        {10, "Dates and times"},
        {12, "Ticks of dates", Choice, kDateTicks},
        {11, "Format of dates"},
        {14, "Reversed"},
        {15, "Crosses the other axis", Choice, kOffsetTypes},
        {16, "Percentage or value of the crossing"},
    };
    return kWords;
}

std::span<const TSettingWords> LegendWords() {
    static constexpr TSettingWords kWords[] = {
        {1, "Show the legend"},
        {60, "In the corner with the fewest points"},
        {6, "Left", SignedNumber},
        {5, "Top", SignedNumber},
        {7, "Width, 0 to fit", SignedNumber},
        {8, "Height, 0 to fit", SignedNumber},
        {4, "Order of the entries", Choice, kLayouts},
        {9, "Font of the names"},
        {2, "Colour of the background", Color},
        {3, "Border", Choice, kBorders},
        {10, "Room for symbols", SignedNumber},
        {11, "Margin left and right", SignedNumber},
        {12, "Margin above and below", SignedNumber},
    };
    return kWords;
}

std::span<const TSettingWords> MarkWords() {
    static constexpr TSettingWords kWords[] = {
        {7, "Caption", Lines},
        {8, "Kind of mark", Choice, kMarkTypes},
        {2, "X"},
        {3, "Y"},
        {4, "X of the end, or width of the point"},
        {5, "Y of the end"},
        {6, "Colour of the mark", Color},
        {9, "Drawn", Choice, kMarkAxes},
    };
    return kWords;
}

std::span<const TSettingWords> MarginWords() {
    static constexpr TSettingWords kWords[] = {
        {2, "Left margin"},
        {3, "Right margin"},
        {4, "Top margin"},
        {1, "Bottom margin"},
        {5, "Length of the ticks"},
        {10, "Distance of the graph's title", SignedNumber},
        {6, "Distance of the X axis title", SignedNumber},
        {7, "Distance of the X axis labels", SignedNumber},
        {8, "Distance of the Y axis titles", SignedNumber},
        {9, "Distance of the Y axis labels", SignedNumber},
    };
    return kWords;
}

std::span<const TSettingWords> PaperWords() {
    static constexpr TSettingWords kWords[] = {
        {11, "Place across the page, in percent"},
        {12, "Place down the page, in percent"},
        {13, "Width on the page, in percent"},
    };
    return kWords;
}

} // namespace lumoplot
