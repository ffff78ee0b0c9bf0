#include "sources/text/layout/text_detect.h"

#include "sources/cells/plain_number.h"
#include "sources/cells/unit_names.h"
#include "sources/text/layout/aligned_fields.h"
#include "sources/text/layout/column_roles.h"
#include "sources/text/layout/date_evidence.h"
#include "sources/text/layout/header_rows.h"
#include "sources/text/layout/number_evidence.h"
#include "sources/text/layout/number_names.h"
#include "sources/text/text_columns.h"
#include "sources/text/text_window.h"
#include "support/errors.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

constexpr std::size_t kSampleSize = 131072;
constexpr std::size_t kMostSample = std::size_t{4} << 20;
/// Lines that may be rows of numbers; with so many of them a sample is enough.
constexpr std::size_t kRowsWanted = 400;
/// Readings that make no values of the rows in front of that many do not make them of later ones, either.
constexpr std::size_t kRowsEnough = 4 * TSampleTable::kMaxRows;
constexpr int kPieces = 12;
constexpr std::size_t kPieceLength = 3000;
/// A reading that turns less than this share of the rows into values is not offered.
constexpr double kFits = 0.5;
/// What the score of a reading is lowered by that differs from a likelier one in a single matter.
constexpr double kOther = 0.9;
/// Below it the text is prose with some numbers in it, unless the user has said how to read it.
constexpr double kProse = 0.05;

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && (byte < 0x09 || byte > 0x0D) && byte != 0x1A && byte != 0x1B;
}

// Of random bytes a tenth are control characters, of text none.
void RequireText(const TTextFile& file, std::string_view text) {
    const auto controls = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsControl));
    if (controls * 20 <= text.size()) return;
    const auto first = std::find_if(text.begin(), text.end(), IsControl);
    const auto row = std::count(text.begin(), first, '\n') + 1;
    throw EFileError("File " + file.Name() + " is no text file: row " + std::to_string(row) +
                     " holds characters that no text has");
}

std::int64_t CountLineEnds(std::string_view text) {
    return std::count(text.begin(), text.end(), '\n') + std::count(text.begin(), text.end(), '\r');
}

// Lines with more digits than letters, at most `most` of them; `end` gets where the last one ends.
std::size_t CountRowsOfNumbers(std::string_view text, std::size_t most, std::size_t& end) {
    static constexpr auto kWeights = [] {
        std::array<signed char, 256> weights{};
        for (int c = '0'; c <= '9'; ++c) weights[static_cast<std::size_t>(c)] = 1;
        for (int c = 'a'; c <= 'z'; ++c)
            weights[static_cast<std::size_t>(c)] = weights[static_cast<std::size_t>(c - 0x20)] = -1;
        return weights;
    }();
    std::size_t rows = 0;
    end = 0;
    for (std::size_t i = 0; i < text.size() && rows < most; ++i) {
        int digitsLead = 0;
        for (; i < text.size() && text[i] != '\n' && text[i] != '\r'; ++i)
            digitsLead += kWeights[static_cast<unsigned char>(text[i])];
        if (i == text.size() || digitsLead <= 0) continue;
        ++rows;
        end = i + 1;
    }
    return rows;
}

// Which characters occur.
class TCharactersIn {
public:
    explicit TCharactersIn(std::string_view text) {
        for (const char c : text) m_occurs[static_cast<unsigned char>(c)] = true;
    }
    bool HasAny(std::string_view characters) const {
        return std::ranges::any_of(characters,
                                   [this](char c) { return m_occurs[static_cast<unsigned char>(c)]; });
    }

private:
    std::array<bool, 256> m_occurs{};
};

// "sep=;" in the first row names the separator; one that is in no other row is none.
std::string NamedSeparator(std::string_view text) {
    const bool isNamed = text.size() > 5 && (text[0] | 0x20) == 's' && (text[1] | 0x20) == 'e' &&
                         (text[2] | 0x20) == 'p' && text[3] == '=' && (text[5] == '\r' || text[5] == '\n');
    return isNamed && text.find(text[4], 5) != std::string_view::npos ? std::string(1, text[4])
                                                                      : std::string();
}

std::vector<std::string> SeparatorsToTry(const TTextSample& sample, const TCharactersIn& characters,
                                         const TDSInfo& info) {
    if (info.DivideTextByWidth()) return {""};
    if (!info.TextSeparators().empty()) return {info.TextSeparators()};
    // It may divide nothing.
    if (auto named = NamedSeparator(sample.text); !named.empty()) return {named, ""};
    std::vector<std::string> found;
    for (const char* separators : {"\t", ";", ",", "|", " \t"})
        if (characters.HasAny(separators)) found.emplace_back(separators);
    found.emplace_back("");
    return found;
}

// Among readings that fit equally well the earlier separators win.
double Preference(const TTextFormat& format) {
    constexpr std::array<std::string_view, 6> kOrder = {"\t", ";", ",", "|", " \t", ""};
    const auto place = std::find(kOrder.begin(), kOrder.end(), format.separators) - kOrder.begin();
    return 1 - 0.01 * static_cast<double>(place) - (format.decimalSign == ',' ? 0.002 : 0) -
           (format.hasInlineComments ? 0.004 : 0) - (format.quotes == "'" ? 0.004 : 0);
}

TTextFormat FixedFormat(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes) {
    TTextFormat format;
    format.encoding = sample.encoding;
    format.quotes = wishes.quotes.value_or(info.TextMarkers());
    format.columnWidth = info.DivideTextByWidth() ? info.ColumnWidth() : 0;
    format.headerRows = info.FileHasHeaders();
    return format;
}

// A mark of a comment behind a blank, somewhere in the text.
bool MayHaveInlineComments(std::string_view text) {
    for (const char* mark : {" #", "\t#", " %", " //", " !", " ;"})
        if (text.find(mark) != std::string_view::npos) return true;
    return false;
}

// Apostrophes at the beginnings of cells.
bool MayHaveApostrophes(std::string_view text) {
    constexpr int kEnough = 4;
    int count = 0;
    for (std::size_t i = text.find('\''); i != std::string_view::npos && count < kEnough;
         i = text.find('\'', i + 1))
        if (i == 0 || std::string_view("\n\r,;\t| ").find(text[i - 1]) != std::string_view::npos) ++count;
    return count >= kEnough;
}

void TakeNames(TSampleTable& table, TTextFormat& format, std::size_t headerRows) {
    const TColumnNames names = FindColumnNames(table, headerRows, format);
    table.WidenTo(names.names.size());
    // Separators at the ends of rows make no columns.
    const auto isNameless = [&names](std::size_t column) {
        return column >= names.names.size() || names.names[column].text.empty();
    };
    while (table.Columns().size() > 1 && table.Columns().back() == TCellKind::Empty &&
           isNameless(table.Columns().size() - 1))
        table.DropLastColumn();
    format.columns.clear();
    for (std::size_t i = 0; i < table.Columns().size(); ++i) {
        TTextColumn column;
        column.kind = table.Columns()[i];
        column.marks = table.Units()[i];
        column.hasMarks = table.HasMarks(i);
        if (i < names.names.size()) column.name = DisplayText(names.names[i], format);
        if (i < names.units.size()) column.unit = WithoutBrackets(DisplayText(names.units[i], format));
        const std::string mark = column.marks.behind.empty() ? column.marks.front : column.marks.behind;
        if (column.unit.empty() && !mark.empty() && column.marks != kBracketMarks)
            column.unit = ToDisplayText(mark, format.encoding);
        format.columns.push_back(column);
    }
}

class TFormatFinder {
public:
    TFormatFinder(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes)
        : m_sample(sample), m_info(info), m_wishes(wishes), m_characters(sample.text),
          m_mayHaveComments(m_characters.HasAny("#%/!;") && MayHaveInlineComments(sample.text)),
          m_mayHaveApostrophes(m_characters.HasAny("'") && MayHaveApostrophes(sample.text)) {}

    TTextReadings Find();

private:
    void Try(const std::string& separators, char decimalSign);
    void TryFormat(const TTextFormat& format);
    void TryTable(TTextReading reading, TSampleTable& table);
    void TryHeader(TTextReading reading, TSampleTable& table, std::size_t headerRows, double share);
    void AddWithOthers(TTextReading reading, const TSampleTable& table);
    void Add(TTextReading reading);
    bool DiffersFrom(const TTextReading& best, const TTextReading& other) const;
    void TryOtherEncoding(const TTextReading& best);
    bool MayBeDecimalSign(char decimalSign, const std::string& separators) const;

    const TTextSample& m_sample;
    const TDSInfo& m_info;
    const TTextWishes& m_wishes;
    TCharactersIn m_characters;
    bool m_mayHaveComments;
    bool m_mayHaveApostrophes;
    std::vector<TTextReading> m_readings;
};

// Where the comma divides cells, decimal commas need quotes around them.
bool TFormatFinder::MayBeDecimalSign(char decimalSign, const std::string& separators) const {
    if (m_wishes.decimalSign.value_or(decimalSign) != decimalSign) return false;
    return decimalSign != ',' || separators.find(',') == std::string::npos ||
           !m_info.TextSeparators().empty() || m_characters.HasAny(m_info.TextMarkers());
}

void TFormatFinder::Try(const std::string& separators, char decimalSign) {
    TTextFormat format = FixedFormat(m_sample, m_info, m_wishes);
    format.separators = separators;
    format.decimalSign = decimalSign;
    TryFormat(format);
    if (format.columnWidth > 0) return;
    if (m_mayHaveComments) {
        TTextFormat shorter = format;
        shorter.hasInlineComments = true;
        TryFormat(shorter);
    }
    if (m_wishes.quotes || format.quotes != "\"" || !m_mayHaveApostrophes) return;
    format.quotes = "'";
    TryFormat(format);
}

void TFormatFinder::TryFormat(const TTextFormat& format) {
    TSampleTable table(m_sample, format);
    if (format.decimalSign == ',' && !m_wishes.decimalSign && !HasDecimalSign(table, ',')) return;
    // A separator that divides nothing is none.
    const bool found = !m_info.DivideTextByWidth() && m_info.TextSeparators().empty();
    if (found && !format.separators.empty() && table.Columns().size() < 2) return;
    const bool isAligned = format.separators == " \t" &&
                           m_wishes.columns.value_or(TColumnLayout::Aligned) == TColumnLayout::Aligned;
    TTextFormat aligned = format;
    if (isAligned) aligned.fields = FindAlignedFields(table);
    TryTable({format, 0, {}}, table);
    if (aligned.fields.empty()) return;
    TSampleTable alignedTable(m_sample, aligned);
    TryTable({aligned, 0, {}}, alignedTable);
}

void TFormatFinder::TryTable(TTextReading reading, TSampleTable& table) {
    const std::size_t headerRows = FindHeaderRows(table);
    const auto otherRows = OtherHeaderRows(table, headerRows);
    // With few rows one more or less changes the score.
    if (otherRows) TryHeader(reading, table, *otherRows, kOther * kOther);
    TryHeader(std::move(reading), table, headerRows, 1);
}

void TFormatFinder::TryHeader(TTextReading reading, TSampleTable& table, std::size_t headerRows,
                              double share) {
    TTextFormat& format = reading.format;
    format.headerRows = static_cast<int>(headerRows);
    TakeNames(table, format, headerRows);
    FindColumnRoles(table, format);
    const TDateChoice dates = ChooseDateOrder(table);
    format.dateOrder = m_wishes.dateOrder.value_or(dates.order);
    format.shortTimes = m_wishes.shortTimes.value_or(ChooseShortTimes(table).shortTimes);
    format.midnight = m_wishes.midnight.value_or(TMidnight::BeginsAgain);
    reading.problem = ChooseColumns(format, m_info);
    const double readable = m_wishes.dateOrder ? 1 : 0.5 + 0.5 * dates.readShare;
    reading.score = table.Score(headerRows) * Preference(format) * NumberEvidence(table) * readable *
                    (reading.problem.empty() ? 1 : 0.1) * share;
    // A comma among the names divides them, and the values too.
    const bool isDivided = format.separators.empty() && format.decimalSign == ',' &&
                           !format.columns.empty() && format.columns[0].name.find(',') != std::string::npos;
    if (isDivided && m_info.TextSeparators().empty()) reading.score *= 0.5;
    AddWithOthers(std::move(reading), table);
}

// Beside the reading those that differ from it in what its dates and times mean only.
void TFormatFinder::AddWithOthers(TTextReading reading, const TSampleTable& table) {
    const auto add = [&](auto change) {
        TTextReading other = reading;
        change(other.format);
        other.score *= kOther;
        Add(std::move(other));
    };
    const auto& columns = reading.format.columns;
    const auto has = [&columns](TCellKind kind) {
        return std::ranges::any_of(columns, [kind](const auto& column) { return column.kind == kind; });
    };
    const TDateChoice dates = ChooseDateOrder(table);
    if (has(TCellKind::Date) && dates.other && !m_wishes.dateOrder)
        add([&](TTextFormat& format) { format.dateOrder = *dates.other; });
    if (has(TCellKind::TimeOfDay) && ChooseShortTimes(table).otherFits && !m_wishes.shortTimes)
        add([](TTextFormat& format) { format.shortTimes = TShortTimes::MinutesAndSeconds; });
    const int x = reading.format.xColumn;
    const bool isTime = x >= 0 && columns[static_cast<std::size_t>(x)].kind == TCellKind::TimeOfDay;
    if (isTime && !m_wishes.midnight &&
        PassesMidnight(table, static_cast<std::size_t>(x), reading.format.shortTimes)) {
        add([](TTextFormat&) {});
        reading.format.midnight = TMidnight::RunsOn;
    }
    Add(std::move(reading));
}

// Two readings that give the same points and texts are no choice.
bool TFormatFinder::DiffersFrom(const TTextReading& best, const TTextReading& other) const {
    if (best.format.hasInlineComments != other.format.hasInlineComments &&
        best.format.separators == other.format.separators)
        return false;
    const auto values = [](const TTextFormat& format) {
        return std::ranges::count_if(format.columns, [](const auto& column) { return IsValue(column.kind); });
    };
    // What makes texts of values is no choice either.
    const bool isSameTable = best.format.separators == other.format.separators;
    if (isSameTable && values(other.format) < values(best.format)) return false;
    return best.format.encoding != other.format.encoding ||
           TSampleTable(m_sample, best.format).Points(best.format) !=
               TSampleTable(m_sample, other.format).Points(other.format);
}

void TFormatFinder::Add(TTextReading reading) {
    m_readings.push_back(std::move(reading));
}

// Text that is UTF-8 makes sense in the code page too, only less.
void TFormatFinder::TryOtherEncoding(const TTextReading& best) {
    const auto isWide = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const std::string& text = m_sample.text;
    if (m_wishes.encoding || best.format.encoding != TTextEncoding::Utf8) return;
    if (std::none_of(text.begin(), text.end(), isWide)) return;
    TTextSample sample = m_sample;
    sample.encoding = TTextEncoding::CodePage;
    TTextWishes wishes = m_wishes;
    wishes.encoding = TTextEncoding::CodePage;
    TTextReading other = TFormatFinder(sample, m_info, wishes).Find().best;
    other.score *= 0.8;
    Add(std::move(other));
}

TTextReadings TFormatFinder::Find() {
    for (const std::string& separators : SeparatorsToTry(m_sample, m_characters, m_info)) {
        for (const char decimalSign : {'.', ','})
            if (MayBeDecimalSign(decimalSign, separators)) Try(separators, decimalSign);
    }
    const auto isBetter = [](const auto& a, const auto& b) { return a.score > b.score; };
    std::stable_sort(m_readings.begin(), m_readings.end(), isBetter);
    TryOtherEncoding(TTextReading(m_readings.front()));
    std::stable_sort(m_readings.begin(), m_readings.end(), isBetter);
    TTextReadings found{m_readings.front(), std::nullopt};
    for (std::size_t i = 1; i < m_readings.size() && m_readings[i].score >= kFits && !found.runnerUp; ++i)
        if (DiffersFrom(found.best, m_readings[i])) found.runnerUp = m_readings[i];
    const bool isFree = m_info.TextSeparators().empty() && m_info.FileHasHeaders() == TDSInfo::kFindHeaders &&
                        m_info.XDataColumn().empty() && m_info.YDataColumn().empty();
    if (found.best.score <= (isFree ? kProse : 0) && found.best.problem.empty())
        found.best.problem = "holds no table of numbers";
    return found;
}

// How the cells of a sheet are divided is known.
TTextReadings FindSheetFormat(const TTextSample& sample, TDSInfo info, TTextWishes wishes) {
    info.SetDivideTextByWidth(false);
    info.SetTextSeparators("\t");
    info.SetTextMarkers("\"");
    wishes.encoding = TTextEncoding::Utf8;
    wishes.quotes = "\"";
    wishes.columns = TColumnLayout::InTurn;
    if (!wishes.decimalSign && sample.hasSheetPoint) wishes.decimalSign = '.';
    TTextReadings readings = TFormatFinder(sample, info, wishes).Find();
    readings.best.format.sheet = sample.sheet;
    if (readings.runnerUp) readings.runnerUp->format.sheet = sample.sheet;
    return readings;
}

} // namespace

TTextSample TakeSample(TTextFile& file, const TDSInfo& info, const TTextWishes& wishes) {
    TTextSample sample;
    sample.encoding = file.Sheet() ? TTextEncoding::Utf8 : wishes.encoding.value_or(file.Encoding());
    file.Restart(sample.encoding);
    std::int64_t lineEnds = 0;
    std::size_t rows = 0;
    // A piece with rows of numbers behind the header rows, or as far as a row may reach.
    for (bool isEnough = false; !sample.whole && !isEnough;) {
        isEnough = lineEnds > std::int64_t{2} * std::max(info.FileHasHeaders(), 0) && rows >= kRowsWanted;
        const std::size_t before = sample.text.size();
        if (before > kMostSample) break;
        const std::size_t room = file.AtMost(kSampleSize);
        sample.text.resize(before + room);
        const std::size_t count = file.Read(sample.text.data() + before, room);
        sample.text.resize(before + count);
        sample.whole = count == 0;
        lineEnds += CountLineEnds(std::string_view(sample.text).substr(before));
        std::size_t end = 0;
        rows += CountRowsOfNumbers(std::string_view(sample.text).substr(before), kRowsWanted, end);
    }
    if (CountRowsOfNumbers(sample.text, kRowsEnough, sample.enough) < kRowsEnough)
        sample.enough = sample.text.size();
    if (lineEnds == 0 && !sample.whole)
        throw EFileError("File " + file.Name() + ": row 1 is longer than 4 MB");
    RequireText(file, sample.text);
    for (int i = 1; i <= kPieces && !sample.whole; ++i)
        sample.behind += file.LinesAt(file.Size() / (kPieces + 1) * i, kPieceLength);
    sample.sheet = file.Sheet();
    sample.hasSheetPoint = file.HasSheetPoint();
    file.Restart(sample.encoding);
    return sample;
}

TTextReadings FindTextFormat(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes) {
    if (sample.sheet) return FindSheetFormat(sample, info, wishes);
    return TFormatFinder(sample, info, wishes).Find();
}

void KeepReading(const TTextFormat& format, TDSInfo& info, TTextWishes& wishes) {
    if (format.columnWidth == 0) info.SetTextSeparators(format.separators.empty() ? "\n" : format.separators);
    info.SetFileHasHeaders(format.headerRows);
    wishes.encoding = format.encoding;
    wishes.decimalSign = format.decimalSign;
    wishes.dateOrder = format.dateOrder;
    wishes.shortTimes = format.shortTimes;
    wishes.midnight = format.midnight;
    wishes.quotes = format.quotes;
    wishes.columns = format.fields.empty() ? TColumnLayout::InTurn : TColumnLayout::Aligned;
}

} // namespace lumoplot
