#include "dialog/manual/manual_commit.h"

#include "dialog/common/x_value_text.h"

#include <cmath>

namespace lumoplot {
namespace {

/// What the edits come to, in the terms of a chain.
struct TManualEdits {
    std::vector<bool> Keep; ///< one a point
    std::vector<std::pair<std::int32_t, double>> NewYs;
    std::vector<std::pair<std::int32_t, double>> NewYErrors;
    std::vector<TSeriesPoint> NewPoints; ///< without an Id
    bool EditsYErrors = false;
};

double ValueOf(const QString& text, int column, TColumnFormat xFormat) {
    return column == 0 ? ParseXValue(text, xFormat) : ParseXValue(text, TColumnFormat::Number);
}

double CellValue(const QString& text, std::size_t row, int column, TColumnFormat xFormat, double pointValue) {
    if (text.isNull()) return pointValue;
    if (column == 2 && text.trimmed().isEmpty()) return 0;
    const std::string reason = ReasonAgainst(text, column, xFormat);
    if (!reason.empty()) throw EManualCell(row, column, reason);
    return ValueOf(text, column, xFormat);
}

class TEditReader {
public:
    TEditReader(const TManualRows& rows, TColumnFormat xFormat) : m_rows(rows), m_xFormat(xFormat) {}

    TManualEdits Read() {
        m_edits.Keep.assign(m_rows.PointCount(), false);
        m_rows.Visit([this](std::size_t number, const TManualRow& row) { Take(number, row); },
                     [this](std::size_t, std::size_t place, std::size_t count) {
                         std::fill_n(m_edits.Keep.begin() + static_cast<std::ptrdiff_t>(place), count, true);
                     });
        return std::move(m_edits);
    }

private:
    void Take(std::size_t number, const TManualRow& row) {
        const bool isPoint = row.Point != TManualRow::kNew;
        const bool cleared =
            !row.X.isNull() && !row.Y.isNull() && (row.X + row.Y + row.YError).trimmed().isEmpty();
        if (row.IsEmpty() || cleared) return;
        const TSeriesPoint point = isPoint ? m_rows.Point(row.Point) : TSeriesPoint{};
        const QString x = isPoint || !row.X.isNull() ? row.X : QLatin1String("");
        const QString y = isPoint || !row.Y.isNull() ? row.Y : QLatin1String("");
        const double newX = CellValue(x, number, 0, m_xFormat, point.X);
        const double newY = CellValue(y, number, 1, m_xFormat, point.Y);
        m_edits.EditsYErrors |= !row.YError.trimmed().isEmpty();
        const double newYError = CellValue(row.YError, number, 2, m_xFormat, point.YError);
        if (!isPoint || newX != point.X) return m_edits.NewPoints.push_back({0, newX, newY, 0, newYError});
        if (newYError != point.YError) m_edits.NewYErrors.emplace_back(point.Id, newYError);
        m_edits.Keep[row.Point] = true;
        if (newY != point.Y) m_edits.NewYs.emplace_back(point.Id, newY);
    }

    const TManualRows& m_rows;
    TColumnFormat m_xFormat;
    TManualEdits m_edits;
};

} // namespace

std::string ReasonAgainst(const QString& text, int column, TColumnFormat xFormat) {
    if (text.trimmed().isEmpty()) return column == 0 ? "X is empty" : column == 1 ? "Y is empty" : "";
    try {
        const double value = ValueOf(text, column, xFormat);
        if (column == 0 && !std::isfinite(value)) return "X must be a finite number";
        if (column == 2 && UsableYError(value) == 0) return "The error of Y must be a number above 0";
    } catch (const EConvertError& error) {
        return error.what();
    }
    return {};
}

TManualPoints PointsOf(const TManualRows& rows, TColumnFormat xFormat, const TPointChain& current,
                       const TMergeRule& rule) {
    const TManualEdits edits = TEditReader(rows, xFormat).Read();
    TManualPoints result{current, 0, edits.EditsYErrors};
    for (std::size_t place = 0; place < edits.Keep.size(); ++place)
        if (!edits.Keep[place]) result.Points.Erase(rows.Point(place).Id);
    for (const auto& [id, y] : edits.NewYs) result.Points.SetY(id, y);
    const auto wanted = static_cast<std::size_t>(result.Points.Count()) + edits.NewPoints.size();
    for (const auto& [id, error] : edits.NewYErrors) result.Points.SetYError(id, error);
    for (const TSeriesPoint& point : edits.NewPoints) result.Points.Add(point.X, point.Y, rule, point.YError);
    result.Merged = static_cast<int>(wanted - static_cast<std::size_t>(result.Points.Count()));
    return result;
}

} // namespace lumoplot
