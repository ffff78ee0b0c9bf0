#include "sources/text/text_detect.h"

#include "sources/text/sample_table.h"
#include "sources/text/text_columns.h"
#include "sources/text/text_window.h"
#include "support/errors.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

constexpr std::size_t kSampleSize = 65536;
/// A reading that turns less than this share of the rows into values is not offered.
constexpr double kFits = 0.5;
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

std::vector<std::string> SeparatorsToTry(const TDSInfo& info) {
    if (info.DivideTextByWidth()) return {""};
    if (!info.TextSeparators().empty()) return {info.TextSeparators()};
    return {"\t", ";", ",", "|", " \t", ""};
}

// Among readings that fit equally well the earlier separators win.
double Preference(const TTextFormat& format) {
    constexpr std::array<std::string_view, 6> kOrder = {"\t", ";", ",", "|", " \t", ""};
    const auto place = std::find(kOrder.begin(), kOrder.end(), format.separators) - kOrder.begin();
    return 1 - 0.01 * static_cast<double>(place) - (format.decimalSign == ',' ? 0.002 : 0);
}

struct TDateChoice {
    TDateOrder order = TDateOrder::YearMonthDay;
    std::optional<TDateOrder> other; ///< reads as many dates
};

// The order that reads most dates; among equals the one by which they run back and forth least, since
// measurements are noted one after the other.
TDateChoice ChooseDateOrder(const TSampleTable& table) {
    std::array orders = {TDateOrder::DayMonthYear, TDateOrder::MonthDayYear, TDateOrder::YearMonthDay};
    const auto isBetter = [&table](TDateOrder left, TDateOrder right) {
        const auto a = table.FitDates(left);
        const auto b = table.FitDates(right);
        return a.read != b.read ? a.read > b.read : a.reversals < b.reversals;
    };
    std::stable_sort(orders.begin(), orders.end(), isBetter);
    const auto best = table.FitDates(orders[0]);
    if (best.open == 0) return {};
    const bool otherFits = table.FitDates(orders[1]).read == best.read;
    return {orders[0], otherFits ? std::optional(orders[1]) : std::nullopt};
}

TTextFormat FixedFormat(const TTextSample& sample, const TDSInfo& info) {
    TTextFormat format;
    format.encoding = sample.encoding;
    format.quotes = info.TextMarkers();
    format.columnWidth = info.DivideTextByWidth() ? info.ColumnWidth() : 0;
    format.headerRows = info.FileHasHeaders();
    return format;
}

class TFormatFinder {
public:
    TFormatFinder(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes)
        : m_sample(sample), m_info(info), m_wishes(wishes) {}

    TTextReadings Find();

private:
    void Try(const std::string& separators, char decimalSign);
    void Add(TTextReading reading);
    bool DiffersFrom(const TTextReading& best, const TTextReading& other) const;
    void TryOtherEncoding(const TTextReading& best);
    bool MayBeDecimalSign(char decimalSign, const std::string& separators) const;

    const TTextSample& m_sample;
    const TDSInfo& m_info;
    const TTextWishes& m_wishes;
    std::vector<TTextReading> m_readings;
};

// Where the comma divides cells, decimal commas need quotes around them.
bool TFormatFinder::MayBeDecimalSign(char decimalSign, const std::string& separators) const {
    if (m_wishes.decimalSign.value_or(decimalSign) != decimalSign) return false;
    return decimalSign != ',' || separators.find(',') == std::string::npos ||
           !m_info.TextSeparators().empty() ||
           m_sample.text.find_first_of(m_info.TextMarkers()) != std::string::npos;
}

void TFormatFinder::Try(const std::string& separators, char decimalSign) {
    TTextReading reading{FixedFormat(m_sample, m_info), 0, {}};
    TTextFormat& format = reading.format;
    format.separators = separators;
    format.decimalSign = decimalSign;
    const TSampleTable table(m_sample, format);
    if (decimalSign == ',' && !m_wishes.decimalSign && !table.HasDecimalSign(',')) return;
    // A separator that divides nothing is none.
    const bool found = !m_info.DivideTextByWidth() && m_info.TextSeparators().empty();
    if (found && !separators.empty() && table.Columns().size() < 2) return;
    const std::size_t headerRows = table.HeaderRows();
    format.headerRows = static_cast<int>(headerRows);
    format.trailingSeparator = table.HasTrailingSeparator(headerRows);
    for (const TCellKind kind : table.Columns()) format.columns.push_back({{}, kind});
    const auto names = table.ColumnNames(headerRows);
    for (std::size_t i = 0; i < names.size(); ++i) format.columns[i].name = DisplayText(names[i], format);
    const TDateChoice dates = ChooseDateOrder(table);
    format.dateOrder = m_wishes.dateOrder.value_or(dates.order);
    reading.problem = ChooseColumns(format, m_info);
    reading.score = table.Score(headerRows) * Preference(format) * (reading.problem.empty() ? 1 : 0.1);
    const bool hasDates = std::any_of(format.columns.begin(), format.columns.end(),
                                      [](const auto& column) { return column.kind == TCellKind::Date; });
    if (hasDates && dates.other && !m_wishes.dateOrder) {
        TTextReading other = reading;
        other.format.dateOrder = *dates.other;
        other.score *= 0.9;
        Add(std::move(other));
    }
    Add(std::move(reading));
}

// Two readings that give the same points and texts are no choice.
bool TFormatFinder::DiffersFrom(const TTextReading& best, const TTextReading& other) const {
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
    TTextSample sample{text, TTextEncoding::CodePage, m_sample.whole};
    TTextWishes wishes = m_wishes;
    wishes.encoding = TTextEncoding::CodePage;
    TTextReading other = TFormatFinder(sample, m_info, wishes).Find().best;
    other.score *= 0.8;
    Add(std::move(other));
}

TTextReadings TFormatFinder::Find() {
    for (const std::string& separators : SeparatorsToTry(m_info)) {
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

} // namespace

TTextSample TakeSample(TTextFile& file, const TDSInfo& info, const TTextWishes& wishes) {
    TTextSample sample;
    sample.encoding = wishes.encoding.value_or(file.Encoding());
    file.Restart(sample.encoding);
    std::int64_t lineEnds = 0;
    // A piece with data behind the header rows, or as far as a row may reach.
    for (bool isEnough = false; !sample.whole && !isEnough;) {
        isEnough = lineEnds > std::int64_t{2} * std::max(info.FileHasHeaders(), 0);
        const std::size_t before = sample.text.size();
        if (before > TTextWindow::kMaxRowLength) break;
        sample.text.resize(before + kSampleSize);
        const std::size_t count = file.Read(sample.text.data() + before, kSampleSize);
        sample.text.resize(before + count);
        sample.whole = count == 0;
        lineEnds += CountLineEnds(std::string_view(sample.text).substr(before));
    }
    if (lineEnds == 0 && !sample.whole)
        throw EFileError("File " + file.Name() + ": row 1 is longer than 4 MB");
    RequireText(file, sample.text);
    file.Restart(sample.encoding);
    return sample;
}

TTextReadings FindTextFormat(const TTextSample& sample, const TDSInfo& info, const TTextWishes& wishes) {
    return TFormatFinder(sample, info, wishes).Find();
}

} // namespace lumoplot
