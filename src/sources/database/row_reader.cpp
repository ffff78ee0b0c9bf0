#include "sources/database/row_reader.h"

#include "data/points/point_block.h"
#include "sources/database/database_loader.h"
#include "sources/database/sql_text.h"
#include "sources/database/value_reader.h"
#include "support/errors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kSampledRows = 100;
constexpr std::size_t kBlockRows = 4096;

// Which rows are read, and what the SELECT leaves to who reads it.
struct TReadPlan {
    std::string select;
    std::int64_t firstRow = 1; ///< the number of the first row that comes
    int rowStep = 1;           ///< from each row that comes to the next one
    int everyNth = 1;          ///< of the rows that come one is used
    std::int64_t lastRow = std::numeric_limits<std::int64_t>::max();
    bool hasNulls = true; ///< rows without a value are among those that come
};

TCellKind CellKindOf(TSqlColumnKind kind) {
    switch (kind) {
    case TSqlColumnKind::Number:
    case TSqlColumnKind::NumberText: return TCellKind::Number;
    case TSqlColumnKind::Date:
    case TSqlColumnKind::DateText: return TCellKind::Date;
    case TSqlColumnKind::TimeOfDay: return TCellKind::TimeOfDay;
    case TSqlColumnKind::Text:
    case TSqlColumnKind::Binary: return TCellKind::Text;
    case TSqlColumnKind::Empty: break;
    }
    return TCellKind::Empty;
}

TTextFormat FormatOf(const std::vector<TTableColumn>& columns, TChosenColumns chosen) {
    TTextFormat format;
    for (const TTableColumn& column : columns) {
        TTextColumn& added = format.columns.emplace_back();
        added.name = column.name;
        added.kind = CellKindOf(column.kind);
    }
    format.xColumn = chosen.x;
    format.yColumn = chosen.y;
    format.yErrorColumn = chosen.yError;
    const auto isDate = [&](int place) {
        return place >= 0 && columns[static_cast<std::size_t>(place)].IsDate();
    };
    if (isDate(chosen.x)) format.xFormat = TColumnFormat::DateTime;
    if (isDate(chosen.y)) format.yFormat = TColumnFormat::DateTime;
    return format;
}

// A choice of rows by X is left to the engine where X is what it has.
class TRowReader {
public:
    TRowReader(const TRowRequest& request, TRowStream& stream)
        : m_request(request), m_stream(stream), m_session(OpenSession(ParseConnection(request.connection))) {
        m_stream.SetSession(m_session.get());
    }
    ~TRowReader() { m_stream.SetSession(nullptr); }
    TRowReader(const TRowReader&) = delete;
    TRowReader& operator=(const TRowReader&) = delete;

    TTextReport Run() {
        const std::string source = SourceSql(*m_session, m_request.info);
        m_columns = ReadPreview(*m_session, source, CleanedSql(m_request.info.Database().where), kSampledRows)
                        .columns;
        const TChosenColumns chosen = Chosen();
        m_report.readings.best.format = FormatOf(m_columns, chosen);
        m_formulas.emplace(m_request.formulas, m_report.readings.best.format);
        ChooseRead(chosen);
        const TSelectBuilder builder(*m_session, m_request.info, source, m_read,
                                     IsByX() && !m_formulas->ChangeX());
        m_canThin = builder.CanThin();
        m_filtersX = IsByX() && !(builder.CanFindExtremes() && m_read[0] && !m_formulas->ChangeX());
        const TReadPlan plan = Plan(builder, source);
        if (!m_report.isOverLimit) ReadAll(plan);
        return Finished();
    }

private:
    bool IsByX() const { return m_request.info.RowChoiceMode() == TRowChoice::ByX; }
    bool HasYErrors() const { return m_errorPlace > 0; }
    bool HasFormulas() const { return m_formulas->ChangeX() || m_formulas->ChangeY(); }

    TChosenColumns Chosen() const {
        try {
            return ChooseColumns(m_columns, m_request.info);
        } catch (const EFileError& error) {
            throw EFileError(DatabaseSourceText(m_request.connection, m_request.info) + ": " + error.what());
        }
    }

    void ChooseRead(TChosenColumns chosen) {
        const auto column = [this](int place) {
            return place >= 0 ? &m_columns[static_cast<std::size_t>(place)] : nullptr;
        };
        m_read = {column(chosen.x), column(chosen.y)};
        for (const int extra : m_formulas->Columns()) m_read.push_back(column(extra));
        if (chosen.yError >= 0) {
            m_errorPlace = static_cast<int>(m_read.size());
            m_read.push_back(column(chosen.yError));
        }
        static const TTableColumn rowNumber;
        for (const TTableColumn* read : m_read) m_readers.emplace_back(read ? *read : rowNumber);
        if (m_formulas->KeepsY()) m_report.yName = m_read[1]->name;
    }

    std::vector<double> Figures(const std::string& select) {
        const auto rows = m_session->Query(select);
        std::vector<double> figures;
        if (rows->Next())
            for (int i = 0; i < rows->ColumnCount(); ++i) {
                const TSqlCell cell = rows->Cell(i);
                figures.push_back(cell.kind == TSqlCell::TKind::Null ? std::nan("") : cell.number);
            }
        figures.resize(4, std::nan(""));
        return figures;
    }

    // What the engine knows without counting; 0 where it does not.
    std::int64_t Estimate(const std::string& source) {
        if (!m_request.info.Database().query.empty()) return 0;
        std::string select;
        if (m_session->Connection().kind == TDatabaseKind::Sqlite)
            select = "SELECT MAX(rowid) FROM " + source;
        else if (m_session->Dialect() == TDatabaseKind::PostgreSql)
            select = "SELECT GREATEST(reltuples,0)::float8 FROM pg_class WHERE oid = " + Literal(source) +
                     "::regclass";
        if (select.empty()) return 0;
        try {
            const double rows = Figures(select).front();
            return std::isfinite(rows) ? static_cast<std::int64_t>(rows) : 0;
        } catch (const EFileError&) {
            return 0; // a view
        }
    }

    static std::string Literal(const std::string& text) {
        std::string literal = "'";
        for (const char c : text) literal.append(c == '\'' ? 2 : 1, c);
        return literal + "'";
    }

    TReadPlan Plan(const TSelectBuilder& builder, const std::string& source) {
        const TDSInfo& info = m_request.info;
        TReadPlan plan;
        plan.select = builder.EveryRow();
        if (info.RowChoiceMode() == TRowChoice::ByNumber) ChooseRowNumbers(plan);
        const bool toBudget = info.AutoRowHitFreq() && m_request.budget > 0;
        if (toBudget && m_request.budget < std::numeric_limits<int>::max())
            return PlanForBudget(builder, plan);
        const int every = info.AutoRowHitFreq() ? 1 : std::max(1, info.RowSamplingFrequency());
        if (every > 1) return PlanEveryNth(builder, plan, every);
        const std::int64_t expected = Estimate(source);
        m_stream.Expect(expected);
        if (m_request.rowLimit > 0 && expected > m_request.rowLimit &&
            info.RowChoiceMode() == TRowChoice::All)
            m_report.isOverLimit = CountUpToLimit(builder) > m_request.rowLimit;
        return plan;
    }

    double CountUpToLimit(const TSelectBuilder& builder) {
        return Figures("SELECT COUNT(*) FROM (" + builder.EveryRow() + " LIMIT " +
                       std::to_string(m_request.rowLimit + 1) + ") lumo_c")
            .front();
    }

    void ChooseRowNumbers(TReadPlan& plan) {
        const double from = m_request.info.RowChoiceValue1();
        const double to = m_request.info.RowChoiceValue2();
        m_firstChosen = static_cast<std::int64_t>(std::max(1.0, std::ceil(from)));
        if (m_canThin) {
            plan.firstRow = m_firstChosen;
            return;
        }
        if (to >= 1 && to < 9e15) plan.lastRow = static_cast<std::int64_t>(std::floor(to));
    }

    TReadPlan PlanEveryNth(const TSelectBuilder& builder, TReadPlan plan, int every) {
        m_report.samplingFrequency = every;
        if (!m_canThin) {
            plan.everyNth = every;
            return plan;
        }
        plan.select = builder.EveryNth(every);
        plan.rowStep = every;
        NoteExtent(Figures(builder.Extent()));
        return plan;
    }

    void NoteExtent(const std::vector<double>& extent) {
        m_chosenRows = static_cast<std::int64_t>(extent[0]);
        m_stream.Expect(m_chosenRows / std::max(1, m_report.samplingFrequency));
    }

    TReadPlan PlanForBudget(const TSelectBuilder& builder, TReadPlan plan) {
        const std::vector<double> extent =
            m_canThin ? Figures(builder.Extent())
                      : Figures("SELECT COUNT(*) FROM (" + builder.EveryRow() + ") lumo_c");
        const std::int64_t rows = static_cast<std::int64_t>(extent[0]);
        const std::int64_t every = (rows + m_request.budget - 1) / m_request.budget;
        if (every <= 1) {
            m_stream.Expect(rows);
            return plan;
        }
        plan = PlanEveryNthOfMany(builder, std::move(plan), static_cast<int>(every));
        NoteExtent(extent);
        const bool knowsRange = std::isfinite(extent[2]) && std::isfinite(extent[3]);
        if (HasFormulas() || HasYErrors() || !m_read[0] || !builder.CanFindExtremes() || !knowsRange)
            return plan;
        plan.select = builder.ExtremesOfParts(extent[2], extent[3], std::max(1, m_request.budget / 2 - 1));
        plan.hasNulls = false;
        m_nullRows = rows - static_cast<std::int64_t>(extent[1]);
        return plan;
    }

    TReadPlan PlanEveryNthOfMany(const TSelectBuilder& builder, TReadPlan plan, int every) {
        m_report.samplingFrequency = every;
        if (m_canThin) {
            plan.select = builder.EveryNth(every);
            plan.rowStep = every;
        } else {
            plan.everyNth = every;
        }
        return plan;
    }

    void ReadAll(const TReadPlan& plan) {
        const auto rows = m_session->Query(plan.select);
        std::int64_t row = plan.firstRow - plan.rowStep;
        std::int64_t sinceUsed = -1;
        StartBlock();
        try {
            while (rows->Next()) {
                row += plan.rowStep;
                if (row < m_firstChosen) continue;
                if (row > plan.lastRow) break;
                ++m_rowsSeen;
                if (++sinceUsed % plan.everyNth != 0) continue;
                TakeRow(*rows, row);
                if (m_block.x.size() == kBlockRows && !FinishBlock()) return;
                if (IsOverLimit()) return;
            }
        } catch (const EFileError& error) {
            const std::string& table = m_request.info.SourceName();
            throw EFileError(std::string(error.what()) + " (" +
                             (table.empty() ? "" : "table " + table + ", ") + "behind row " +
                             std::to_string(std::max<std::int64_t>(0, row)) + ")");
        }
        FinishBlock();
    }

    bool IsOverLimit() {
        m_report.isOverLimit = m_request.rowLimit > 0 && m_report.rowsUsed > m_request.rowLimit;
        return m_report.isOverLimit;
    }

    void StartBlock() {
        m_block = {};
        m_block.x.reserve(kBlockRows);
        m_block.y.reserve(kBlockRows);
        m_rowNumbers.clear();
        m_extras.assign(m_formulas->Columns().size(), {});
    }

    void TakeRow(TSqlRows& rows, std::int64_t row) {
        double x = static_cast<double>(row);
        double y = 0;
        if (m_read[0] && !TakeCell(rows, 0, row, m_formulas->NeedsX(), x)) return;
        if (!TakeCell(rows, 1, row, m_formulas->NeedsY(), y)) return;
        m_extraRow.resize(m_extras.size());
        for (std::size_t i = 0; i < m_extras.size(); ++i)
            if (!TakeCell(rows, i + 2, row, true, m_extraRow[i])) return;
        for (std::size_t i = 0; i < m_extras.size(); ++i) m_extras[i].push_back(m_extraRow[i]);
        m_block.x.push_back(x);
        m_block.y.push_back(y);
        m_rowNumbers.push_back(static_cast<double>(row));
        if (HasYErrors()) m_block.yErrors.push_back(YErrorOf(rows));
    }

    // A row counts without its error, too.
    double YErrorOf(TSqlRows& rows) {
        TValueReader& reader = m_readers[static_cast<std::size_t>(m_errorPlace)];
        const double error = UsableYError(reader.Read(rows.Cell(m_errorPlace), m_counts).value_or(0));
        if (error == 0) ++m_report.rowsWithoutYError;
        return error;
    }

    bool TakeCell(TSqlRows& rows, std::size_t place, std::int64_t row, bool isNeeded, double& value) {
        TValueReader& reader = m_readers[place];
        const auto read = reader.Read(rows.Cell(static_cast<int>(place)), m_counts);
        value = read.value_or(0);
        if (read || !isNeeded) return true;
        Skip(row, reader.Problem());
        return false;
    }

    void Skip(std::int64_t row, const std::string& problem) {
        ++m_report.rowsSkipped;
        if (problem.empty())
            ++m_nullRows;
        else if (m_report.messages.size() < TTextReport::kMaxMessages)
            m_report.messages.push_back("row " + std::to_string(row) + ": " + problem);
    }

    bool FinishBlock() {
        if (HasFormulas() || m_filtersX) ApplyFormulas();
        m_report.rowsUsed += static_cast<std::int64_t>(m_block.x.size());
        m_block.rowsSeen = m_rowsSeen;
        const bool goesOn = m_stream.Push(std::move(m_block));
        StartBlock();
        return goesOn;
    }

    void ApplyFormulas() {
        const std::vector<std::span<const double>> extras(m_extras.begin(), m_extras.end());
        m_formulas->Apply({m_block.x, m_block.y, m_rowNumbers, extras});
        const auto [from, to] =
            std::minmax({m_request.info.RowChoiceValue1(), m_request.info.RowChoiceValue2()});
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_block.x.size(); ++i) {
            const double x = m_block.x[i];
            const double y = m_block.y[i];
            if (!std::isfinite(x) || !std::isfinite(y)) {
                Skip(static_cast<std::int64_t>(m_rowNumbers[i]), NoValueText(x, y));
                continue;
            }
            if (m_filtersX && (x < from || x > to)) {
                ++m_leftOut;
                continue;
            }
            m_block.x[kept] = x;
            if (HasYErrors()) m_block.yErrors[kept] = m_block.yErrors[i];
            m_block.y[kept++] = y;
        }
        m_block.x.resize(kept);
        m_block.y.resize(kept);
        if (HasYErrors()) m_block.yErrors.resize(kept);
    }

    TTextReport Finished() {
        m_report.rowsChosen = m_chosenRows > 0 ? m_chosenRows : m_rowsSeen - m_leftOut;
        const auto note = [this](std::int64_t count, const char* one, const char* many) {
            if (count > 0) m_report.notes.push_back(std::to_string(count) + (count == 1 ? one : many));
        };
        note(m_nullRows, " row has no value (NULL) and gives no point",
             " rows have no value (NULL) and give no point");
        note(m_report.rowsWithoutYError, " row has no number above 0 as the error of Y",
             " rows have no number above 0 as the error of Y");
        note(m_counts.rounded, " value has more digits than numbers hold here and was rounded",
             " values have more digits than numbers hold here and were rounded");
        if (m_report.rowsUsed == 0 && !m_report.isOverLimit && !m_stream.IsStopped()) ThrowNoRows();
        return std::move(m_report);
    }

    [[noreturn]] void ThrowNoRows() const {
        const std::string what = DatabaseSourceText(m_request.connection, m_request.info);
        if (!m_report.messages.empty())
            throw EFileError(what + " holds no row that can be used: " + m_report.messages.front());
        throw EFileError(what + (m_nullRows > 0 ? ": all rows are without a value (NULL)"
                                                : ": there are no rows, or the choice leaves none"));
    }

    const TRowRequest& m_request;
    TRowStream& m_stream;
    std::unique_ptr<TSqlSession> m_session;
    std::vector<TTableColumn> m_columns;
    std::vector<const TTableColumn*> m_read; ///< X (null: the row's number), Y and what formulas read
    std::vector<TValueReader> m_readers;
    std::optional<TRowFormulas> m_formulas;
    bool m_canThin = true;
    bool m_filtersX = false; ///< rows are chosen by X here and not by the engine
    int m_errorPlace = 0;    ///< among m_read; 0: no column of errors was asked for
    TTextReport m_report;
    TCellCounts m_counts;
    std::int64_t m_chosenRows = 0;
    std::int64_t m_firstChosen = 1;
    std::int64_t m_rowsSeen = 0;
    std::int64_t m_nullRows = 0;
    std::int64_t m_leftOut = 0;
    TReadPoints m_block;
    std::vector<double> m_rowNumbers;
    std::vector<std::vector<double>> m_extras;
    std::vector<double> m_extraRow;
};

} // namespace

TTextReport ReadRows(const TRowRequest& request, TRowStream& stream) {
    return TRowReader(request, stream).Run();
}

} // namespace lumoplot
