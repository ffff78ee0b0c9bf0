#include "dialogs/settings/setting_words.h"

#include <QCoreApplication>

namespace lumoplot {
namespace {

using enum TSettingEdit;

constexpr const char* kLineStyles[] = {
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Solid"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Dashes"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Dots"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Dashes and dots"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Dashes and two dots")};
constexpr const char* kLabelFormats[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Fixed decimals"),
                                         QT_TRANSLATE_NOOP("lumoplot::TTexts", "Exponent"),
                                         QT_TRANSLATE_NOOP("lumoplot::TTexts", "Automatic")};
constexpr const char* kDateTicks[] = {
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Minutes"),    QT_TRANSLATE_NOOP("lumoplot::TTexts", "5 minutes"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Half hours"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Hours"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Days"),       QT_TRANSLATE_NOOP("lumoplot::TTexts", "Weeks"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Months"),     QT_TRANSLATE_NOOP("lumoplot::TTexts", "2 months"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Quarters"),   QT_TRANSLATE_NOOP("lumoplot::TTexts", "Years"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Decades"),    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Centuries"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "By the step")};
constexpr const char* kOffsetTypes[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "At the minimum"),
                                        QT_TRANSLATE_NOOP("lumoplot::TTexts", "At the maximum"),
                                        QT_TRANSLATE_NOOP("lumoplot::TTexts", "At a percentage"),
                                        QT_TRANSLATE_NOOP("lumoplot::TTexts", "At a value")};
constexpr const char* kFitBands[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "None"),
                                     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Of the curve (95 %)"),
                                     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Of new points (95 %)"),
                                     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Both")};
constexpr const char* kBorders[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "None"),
                                    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Line")};
constexpr const char* kLayouts[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Across"),
                                    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Down")};
constexpr const char* kMarkTypes[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Vertical line"),
                                      QT_TRANSLATE_NOOP("lumoplot::TTexts", "Horizontal line"),
                                      QT_TRANSLATE_NOOP("lumoplot::TTexts", "Point"),
                                      QT_TRANSLATE_NOOP("lumoplot::TTexts", "Line")};
constexpr const char* kMarkAxes[] = {QT_TRANSLATE_NOOP("lumoplot::TTexts", "With X and Y"),
                                     QT_TRANSLATE_NOOP("lumoplot::TTexts", "With X and second Y"),
                                     QT_TRANSLATE_NOOP("lumoplot::TTexts", "Not drawn")};

} // namespace

std::span<const TSettingWords> TitleWords() {
    static constexpr TSettingWords kWords[] = {
        {13, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Title of the graph"), Lines},
        {17, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Font of the title")},
        {3, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the plot"), Color},
        {4, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the margins"), Color},
        {38, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Background picture"), File},
        {39, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Stretch the picture over the graph")},
    };
    return kWords;
}

std::span<const TSettingWords> AxesInCommonWords() {
    static constexpr TSettingWords kWords[] = {
        {2, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of axes and frame"), Color},
        {60, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Frame on all four sides")},
        {12, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Show ticks")},
        {61, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Ticks point inwards")},
        {9, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Show labels and titles")},
        {18, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Font of the labels")},
        {16, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Font of the axis titles")},
        {7, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the grid"), Color},
        {8, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Line style of the grid"), Choice, kLineStyles},
        {14, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Fewest steps of an automatic axis")},
        {15, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Most steps of an automatic axis")},
        {19, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Cross at zero")},
        {20, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the cross"), Color},
        {21, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Length of the cross")},
    };
    return kWords;
}

std::span<const TSettingWords> DataAndPaperWords() {
    static constexpr TSettingWords kWords[] = {
        {10, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Draw points beyond the axes, too")},
        {1, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Keep points with equal X")},
        {40, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Folder of the data files"), Folder},
        {5, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Print the background colours")},
        {22, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Print lines in their styles")},
        {62, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Bands about fitted curves"), Choice, kFitBands},
        {63, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Residuals above the plot")},
    };
    return kWords;
}

std::span<const TSettingWords> MarksInCommonWords() {
    static constexpr TSettingWords kWords[] = {{11, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Show marks")}};
    return kWords;
}

std::span<const TSettingWords> AxisWords() {
    static constexpr TSettingWords kWords[] = {
        {1, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Title"), Lines},
        {20, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Title from the data set's name")},
        {13, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Show the axis")},
        {18, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Range follows the data")},
        {6, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Range, from and to"), Range},
        {60, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Range ends at the data"), ByType, {}, true},
        {19, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Automatic step"), ByType, {}, true},
        {8, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Step")},
        {9, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Shortest range")},
        {5, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Logarithmic")},
        {4, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Divisions of a decade"), ByType, {}, true},
        {17, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Grid lines"), ByType, {}, true},
        {21, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Format of the labels"), Choice, kLabelFormats, true},
        {3, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Decimals follow the step"), ByType, {}, true},
        {2, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Decimals"), ByType, {}, true},
        {10, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Dates and times")},
        {12, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Ticks of dates"), Choice, kDateTicks},
        {11, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Format of dates")},
        {14, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Reversed")},
        {15, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Crosses the other axis"), Choice, kOffsetTypes},
        {16, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Percentage or value of the crossing")},
    };
    return kWords;
}

std::span<const TSettingWords> LegendWords() {
    static constexpr TSettingWords kWords[] = {
        {1, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Show the legend")},
        {60, QT_TRANSLATE_NOOP("lumoplot::TTexts", "In the corner with the fewest points")},
        {6, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Left"), SignedNumber},
        {5, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Top"), SignedNumber},
        {7, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Width, 0 to fit"), SignedNumber},
        {8, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Height, 0 to fit"), SignedNumber},
        {4, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Order of the entries"), Choice, kLayouts},
        {9, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Font of the names")},
        {2, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the background"), Color},
        {3, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Border"), Choice, kBorders},
        {10, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Room for symbols"), SignedNumber},
        {11, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Margin left and right"), SignedNumber},
        {12, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Margin above and below"), SignedNumber},
    };
    return kWords;
}

std::span<const TSettingWords> MarkWords() {
    static constexpr TSettingWords kWords[] = {
        {7, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Caption"), Lines},
        {8, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Kind of mark"), Choice, kMarkTypes},
        {2, QT_TRANSLATE_NOOP("lumoplot::TTexts", "X")},
        {3, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Y")},
        {4, QT_TRANSLATE_NOOP("lumoplot::TTexts", "X of the end, or width of the point")},
        {5, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Y of the end")},
        {6, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Colour of the mark"), Color},
        {9, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Drawn"), Choice, kMarkAxes},
    };
    return kWords;
}

std::span<const TSettingWords> MarginWords() {
    static constexpr TSettingWords kWords[] = {
        {2, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Left margin")},
        {3, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Right margin")},
        {4, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Top margin")},
        {1, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Bottom margin")},
        {5, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Length of the ticks")},
        {10, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Distance of the graph's title"), SignedNumber},
        {6, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Distance of the X axis title"), SignedNumber},
        {7, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Distance of the X axis labels"), SignedNumber},
        {8, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Distance of the Y axis titles"), SignedNumber},
        {9, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Distance of the Y axis labels"), SignedNumber},
    };
    return kWords;
}

std::span<const TSettingWords> PaperWords() {
    static constexpr TSettingWords kWords[] = {
        {11, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Place across the page, in percent")},
        {12, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Place down the page, in percent")},
        {13, QT_TRANSLATE_NOOP("lumoplot::TTexts", "Width on the page, in percent")},
    };
    return kWords;
}

} // namespace lumoplot
