// The first rows of a text file as the loader would read them, for a person to look at.
#pragma once

#include "sources/text/layout/text_detect.h"
#include "sources/text/row_formulas.h"
#include "sources/text/text_rows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumoplot {

enum class TCellState {
    Ok,
    Header,
    Rejected, ///< in the X or Y column (or that of the times) and no value: the row gives no point
    Skipped   ///< of a comment, or of a row outside the choice by number
};

struct TPreviewCell {
    std::string text;
    TCellState state = TCellState::Ok;
};

struct TPreviewRow {
    std::int64_t number = 0; ///< in the file, from 1
    TRowKind kind = TRowKind::Data;
    std::vector<TPreviewCell> cells; ///< a rejected cell that is missing in the file is added, empty
    std::optional<double> x;         ///< what the formula for X makes of a row that gives a point
    std::optional<double> y;
};

struct TTextPreview {
    TTextReadings readings;
    /// What makes X and Y of the cells, without blanks around it; empty where that is the cell as it is read,
    /// and where it can not be used.
    TFormulaTexts formulas;
    std::vector<TPreviewRow> rows;
    /// "row N: …" for each rejected row that is shown; in front of them why a formula can not be used.
    std::vector<std::string> messages;
};

/// The first `maxRows` rows at most, fewer when they are very long. Throws EFileError when the file can not
/// be read or is no text; a file without numbers has its rows and readings.best.problem. Formulas that can
/// not be used make nothing.
TTextPreview PreviewText(const TTextSource& source, const TDSInfo& info, int maxRows,
                         const TTextWishes& wishes = {}, const TFormulaTexts& formulas = {});

} // namespace lumoplot
