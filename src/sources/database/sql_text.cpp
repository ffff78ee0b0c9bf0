#include "sources/database/sql_text.h"

#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace lumoplot {
namespace {

char Lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool IsBlank(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// Behind the text between quotes that begins at `place`.
std::size_t BehindQuoted(const std::string& text, std::size_t place) {
    const char quote = text[place] == '[' ? ']' : text[place];
    const std::size_t end = text.find(quote, place + 1);
    return end == std::string::npos ? text.size() : end + 1;
}

std::size_t BehindComment(const std::string& text, std::size_t place) {
    if (text.compare(place, 2, "--") == 0) return std::min(text.find('\n', place), text.size());
    if (text.compare(place, 2, "/*") != 0) return place;
    const std::size_t end = text.find("*/", place + 2);
    return end == std::string::npos ? text.size() : end + 2;
}

// The text with a blank in place of each comment; what is between quotes is handed to `quoted` in one piece.
template <class TTake>
void WalkSql(const std::string& text, TTake&& take) {
    for (std::size_t i = 0; i < text.size();) {
        if (const std::size_t end = BehindComment(text, i); end != i) {
            take(std::string_view(" "));
            i = end;
            continue;
        }
        const bool isQuote = text[i] == '\'' || text[i] == '"' || text[i] == '`';
        const std::size_t end = isQuote ? BehindQuoted(text, i) : i + 1;
        take(std::string_view(text).substr(i, end - i));
        i = end;
    }
}

bool BeginsWithWord(std::string_view text, std::string_view word) {
    if (text.size() <= word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if (Lower(text[i]) != word[i]) return false;
    const char next = text[word.size()];
    return !std::isalnum(static_cast<unsigned char>(next)) && next != '_';
}

// Parentheses that close what they did not open would leave the place that the text is put into.
std::string ShapeProblem(const std::string& cleaned) {
    int open = 0;
    std::string problem;
    WalkSql(cleaned, [&](std::string_view piece) {
        if (piece == ";") problem = "only one statement can be run";
        if (piece == "(") ++open;
        if (piece == ")" && --open < 0) problem = "a parenthesis is closed that was not opened";
    });
    return problem.empty() && open > 0 ? "a parenthesis is not closed" : problem;
}

void RequireShape(const std::string& cleaned, const char* what) {
    if (const std::string problem = ShapeProblem(cleaned); !problem.empty())
        throw EFileError(std::string(what) + ": " + problem);
}

std::string TableNames(const std::vector<TSqlTable>& tables) {
    constexpr std::size_t kMostNamed = 12;
    std::string names;
    for (std::size_t i = 0; i < std::min(tables.size(), kMostNamed); ++i)
        names += (i == 0 ? "" : ", ") + tables[i].Shown();
    return tables.empty() ? "it has none"
                          : "its tables are " + names + (tables.size() > kMostNamed ? ", …" : "");
}

std::string QuotedTable(TSqlSession& session, const std::string& name) {
    const std::vector<TSqlTable> tables = session.Tables();
    const auto find = [&](auto matches) { return std::ranges::find_if(tables, matches); };
    auto found = find([&](const TSqlTable& table) { return table.Shown() == name; });
    const bool isOnly = name.empty() && tables.size() == 1;
    if (isOnly) found = tables.begin();
    if (found == tables.end() && name.empty())
        throw EFileError(session.Connection().shown + ": no table is chosen (" + TableNames(tables) + ")");
    if (found == tables.end())
        throw EFileError(session.Connection().shown + ": there is no table '" + name + "' (" +
                         TableNames(tables) + ")");
    const std::string table = session.Quoted(found->name);
    return found->schema.empty() ? table : session.Quoted(found->schema) + "." + table;
}

} // namespace

std::string CleanedSql(const std::string& text) {
    std::string cleaned;
    WalkSql(text, [&](std::string_view piece) { cleaned += piece; });
    while (!cleaned.empty() && (IsBlank(cleaned.back()) || cleaned.back() == ';')) cleaned.pop_back();
    const auto begin = std::ranges::find_if_not(cleaned, IsBlank);
    return std::string(begin, cleaned.end());
}

std::string SelectProblem(const std::string& text) {
    const std::string cleaned = CleanedSql(text);
    if (cleaned.empty()) return "there is no statement";
    if (!BeginsWithWord(cleaned, "select") && !BeginsWithWord(cleaned, "with"))
        return "only a SELECT (or WITH … SELECT) can be run";
    return ShapeProblem(cleaned);
}

std::string SourceSql(TSqlSession& session, const TDSInfo& info) {
    const std::string& query = info.Database().query;
    if (query.empty()) return QuotedTable(session, info.SourceName());
    if (const std::string problem = SelectProblem(query); !problem.empty())
        throw EFileError(session.Connection().shown + ": " + problem);
    return "(" + CleanedSql(query) + ") lumo_q";
}

TSelectBuilder::TSelectBuilder(const TSqlSession& session, const TDSInfo& info, std::string source,
                               std::vector<const TTableColumn*> columns, bool choosesRowsByX)
    : m_session(session), m_info(info), m_source(std::move(source)), m_columns(std::move(columns)),
      m_choosesRowsByX(choosesRowsByX) {
    RequireShape(CleanedSql(info.Database().where), "WHERE");
    RequireShape(CleanedSql(info.Database().orderBy), "ORDER BY");
}

bool TSelectBuilder::CanThin() const {
    return m_session.Dialect() != TDatabaseKind::Odbc;
}

bool TSelectBuilder::CanFindExtremes() const {
    const auto isComparable = [](const TTableColumn* column) {
        return !column || column->kind != TSqlColumnKind::Text;
    };
    return CanThin() && isComparable(m_columns[0]) && isComparable(m_columns[1]);
}

std::string TSelectBuilder::NumberSql(const TTableColumn& column) const {
    const std::string name = m_session.Quoted(column.name);
    const bool isText = column.kind == TSqlColumnKind::NumberText;
    switch (m_session.Dialect()) {
    case TDatabaseKind::PostgreSql: {
        if (column.kind == TSqlColumnKind::TimeOfDay) return "EXTRACT(EPOCH FROM " + name + ")::float8/86400";
        if (column.IsDate()) {
            const std::string cast = column.kind == TSqlColumnKind::DateText ? "::timestamptz" : "";
            return "((EXTRACT(EPOCH FROM " + name + cast + ")::float8+2209161600)/86400)";
        }
        const std::string number = (isText ? "NULLIF(" + name + ",'')" : name) + "::float8";
        return "NULLIF(NULLIF(NULLIF(" + number + ",'NaN'),'Infinity'),'-Infinity')";
    }
    case TDatabaseKind::MySql:
        if (column.kind == TSqlColumnKind::TimeOfDay) return "TIME_TO_SEC(" + name + ")/86400e0";
        if (column.IsDate())
            return "(TIMESTAMPDIFF(MICROSECOND,'1970-01-01'," + name + ")/86400000000e0+25569)";
        return isText ? "(" + name + "+0e0)" : name;
    default: break;
    }
    if (column.kind == TSqlColumnKind::DateText) return "(julianday(" + name + ")-2415018.5)";
    const std::string real = "CAST(" + name + " AS REAL)";
    if (isText) return "CASE WHEN " + real + "<>0 OR TRIM(" + name + ") GLOB '[0.+-]*' THEN " + real + " END";
    return "CASE WHEN typeof(" + name + ") IN ('integer','real') THEN " + name + " END";
}

// Dates of servers are turned into numbers there, where their zones are known.
std::string TSelectBuilder::StoredSql(const TTableColumn& column) const {
    const TDatabaseKind dialect = m_session.Dialect();
    const bool isServer = dialect == TDatabaseKind::PostgreSql || dialect == TDatabaseKind::MySql;
    const bool isMoment = column.kind == TSqlColumnKind::Date || column.kind == TSqlColumnKind::TimeOfDay;
    return isServer && isMoment ? NumberSql(column) : m_session.Quoted(column.name);
}

std::string TSelectBuilder::Condition() const {
    std::string condition = CleanedSql(m_info.Database().where);
    if (!condition.empty()) condition = "(" + condition + ")";
    if (!m_choosesRowsByX || !CanFindExtremes() || !m_columns[0])
        return condition.empty() ? "" : " WHERE " + condition;
    const auto [from, to] = std::minmax({m_info.RowChoiceValue1(), m_info.RowChoiceValue2()});
    const std::string range =
        NumberSql(*m_columns[0]) + " BETWEEN " + FormatShortest(from) + " AND " + FormatShortest(to);
    return " WHERE " + condition + (condition.empty() ? "" : " AND ") + range;
}

std::string TSelectBuilder::Order() const {
    const std::string order = CleanedSql(m_info.Database().orderBy);
    return order.empty() ? "" : " ORDER BY " + order;
}

std::int64_t TSelectBuilder::FirstRow() const {
    if (m_info.RowChoiceMode() != TRowChoice::ByNumber) return 1;
    return static_cast<std::int64_t>(std::clamp(std::ceil(m_info.RowChoiceValue1()), 1.0, 9e15));
}

std::string TSelectBuilder::RowLimits() const {
    if (m_info.RowChoiceMode() != TRowChoice::ByNumber || !CanThin()) return {};
    const std::int64_t first = FirstRow();
    const auto last = static_cast<std::int64_t>(std::floor(std::min(m_info.RowChoiceValue2(), 9e15)));
    const std::int64_t count = last < 1 ? INT64_MAX - first : std::max<std::int64_t>(0, last - first + 1);
    return " LIMIT " + std::to_string(count) + " OFFSET " + std::to_string(first - 1);
}

std::string TSelectBuilder::RowNumber() const {
    return "ROW_NUMBER() OVER (" + (Order().empty() ? "" : Order().substr(1)) + ")";
}

std::string TSelectBuilder::Base(TForm form, const std::string& more) const {
    std::string columns;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const TTableColumn* column = m_columns[i];
        if (i > 0) columns += ", ";
        if (column)
            columns += form == TForm::Numbers ? NumberSql(*column) : StoredSql(*column);
        else
            columns += form == TForm::Numbers ? RowNumber() : "0";
        columns += " AS lumo_" + std::to_string(i);
    }
    return "SELECT " + columns + more + " FROM " + m_source + Condition() + Order() + RowLimits();
}

std::string TSelectBuilder::EveryRow() const {
    return Base(TForm::AsStored);
}

std::string TSelectBuilder::Extent() const {
    return "SELECT COUNT(*), COUNT(CASE WHEN lumo_0 IS NOT NULL AND lumo_1 IS NOT NULL THEN 1 END), "
           "MIN(lumo_0), MAX(lumo_0) FROM (" +
           Base(TForm::Numbers) + ") lumo_b";
}

std::string TSelectBuilder::EveryNth(int n) const {
    return "SELECT * FROM (" + Base(TForm::AsStored, ", " + RowNumber() + " AS lumo_n") +
           ") lumo_b WHERE (lumo_n-" + std::to_string(FirstRow()) + ") % " + std::to_string(n) +
           " = 0 ORDER BY lumo_n";
}

std::string TSelectBuilder::ExtremesOfParts(double from, double to, int count) const {
    const double step = (to - from) / count;
    const std::string place =
        "(lumo_0-(" + FormatShortest(from) + "))/" + FormatShortest(step > 0 ? step : 1);
    const bool isSqlite = m_session.Dialect() == TDatabaseKind::Sqlite;
    const std::string part = isSqlite ? "CAST(" + place + " AS INTEGER)" : "FLOOR(" + place + ")";
    const std::string rows = "(SELECT lumo_0, lumo_1, " + part + " AS lumo_p FROM (" + Base(TForm::Numbers) +
                             ") lumo_b WHERE lumo_0 IS NOT NULL AND lumo_1 IS NOT NULL)";
    return "SELECT MIN(t.lumo_0) AS lumo_0, t.lumo_1 FROM " + rows +
           " t JOIN (SELECT lumo_p, MIN(lumo_1) AS lumo_lo, MAX(lumo_1) AS lumo_hi FROM " + rows +
           " r GROUP BY lumo_p) m ON t.lumo_p = m.lumo_p AND (t.lumo_1 = m.lumo_lo OR t.lumo_1 = m.lumo_hi) "
           "GROUP BY t.lumo_p, t.lumo_1 ORDER BY 1";
}

} // namespace lumoplot
