#include "sources/link/row_feed.h"

#include "sources/text/loading/text_pass.h"
#include "sources/text/text_rows.h"
#include "support/errors.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::size_t kSampleLength = 65536;

TTextEncoding EncodingOf(std::string_view text) {
    return FindEncoding(text.substr(0, kSampleLength)) == TTextEncoding::CodePage ? TTextEncoding::CodePage
                                                                                  : TTextEncoding::Utf8;
}

} // namespace

bool TFeedReading::operator==(const TFeedReading& other) const {
    return info == other.info && wishes == other.wishes && formulas.x == other.formulas.x &&
           formulas.y == other.formulas.y;
}

TRowFeed::TRowFeed(TFeedReading reading) : m_reading(std::move(reading)) {
}

TRowFeed::~TRowFeed() = default;

TRowFeed& TRowFeed::operator=(TRowFeed&&) = default;

void TRowFeed::Restart() {
    *this = TRowFeed(std::move(m_reading));
}

void TRowFeed::Add(std::string_view bytes) {
    if (m_hasStarted) return Decode(bytes);
    m_start += bytes;
    if (m_start.size() < kUtf8Mark.size()) return;
    m_hasStarted = true;
    const std::string start = std::exchange(m_start, {});
    if (start.starts_with("\xFF\xFE"))
        m_wide = std::make_unique<QStringDecoder>(QStringDecoder::Utf16LE);
    else if (start.starts_with("\xFE\xFF"))
        m_wide = std::make_unique<QStringDecoder>(QStringDecoder::Utf16BE);
    else if (start.starts_with(kUtf8Mark))
        return Decode(std::string_view(start).substr(kUtf8Mark.size()));
    Decode(start);
}

void TRowFeed::Decode(std::string_view bytes) {
    m_isChanged = m_isChanged || !bytes.empty();
    if (!m_wide)
        m_text += bytes;
    else
        m_text += QString(m_wide->decode(QByteArrayView(bytes))).toStdString();
}

void TRowFeed::Cut() {
    const std::size_t lineEnd = m_text.find_last_of("\r\n");
    m_text.resize(lineEnd == std::string::npos ? 0 : lineEnd + 1);
}

// Half of a CRLF may follow, and a quoted cell may hold the end of a line.
std::size_t TRowFeed::WholeRows(TTextEnd end) const {
    if (end == TTextEnd::File) return m_text.size();
    std::size_t length = m_text.size();
    if (length > 0 && m_text.back() == '\r') --length;
    const std::size_t lineEnd = m_text.find_last_of("\r\n", length == 0 ? 0 : length - 1);
    if (length == 0 || lineEnd == std::string::npos) return 0;
    const bool hasQuotes =
        m_isSettled && m_text.find_first_of(m_report.readings.best.format.quotes) <= lineEnd;
    return hasQuotes ? BehindWholeRow() : lineEnd + 1;
}

std::size_t TRowFeed::BehindWholeRow() const {
    const TRowSplitter splitter(m_report.readings.best.format);
    const char* begin = m_text.data();
    const char* end = begin + m_text.size();
    const char* text = begin;
    while (text < end) {
        const TTextRow row = splitter.Scan(text, end, TTextEnd::More);
        if (row.kind == TRowKind::Incomplete) break;
        text = row.next;
    }
    return static_cast<std::size_t>(text - begin);
}

void TRowFeed::Take(TTextEnd end, TFedPoints& points) {
    if (end == TTextEnd::File && !m_hasStarted) {
        m_hasStarted = true;
        Decode(std::exchange(m_start, {}));
    }
    if (!std::exchange(m_isChanged, false) && end != TTextEnd::File) return;
    const std::size_t length = WholeRows(end);
    if (length > 0 && m_isSettled) {
        ReadOn(std::string_view(m_text).substr(0, length), points);
        m_text.erase(0, length);
    } else if (length > m_readLength + m_waitFor || (end == TTextEnd::File && length > m_readLength)) {
        m_readLength = length;
        ReadAgain(length, points);
    }
    if (m_text.size() <= kMostHeld) return;
    const bool isLine = m_isSettled;
    m_text.clear();
    m_readLength = 0;
    m_waitFor = 0;
    throw EFileError(isLine ? "a row is longer than 1 MB" : "no row with numbers has come in the first MB");
}

// Of rows that give no points yet nothing is said: the numbers may follow.
void TRowFeed::ReadAgain(std::size_t length, TFedPoints& points) {
    const std::string_view rows = std::string_view(m_text).substr(0, length);
    const std::string_view front = rows.substr(0, rows.find_last_of("\r\n", kSampleLength) + 1);
    TTextSample sample;
    sample.text = front.empty() ? rows : front;
    sample.encoding = m_reading.wishes.encoding.value_or(EncodingOf(rows));
    if (m_wide) sample.encoding = TTextEncoding::Utf8;
    m_report = {};
    m_report.readings = FindTextFormat(sample, m_reading.info, m_reading.wishes);
    // A long text without numbers is not looked at again for each of its rows.
    const bool isTable = m_report.readings.best.problem.empty();
    m_waitFor = isTable ? 0 : length / 8;
    if (!isTable) return;
    m_formulas = std::make_unique<TRowFormulas>(m_reading.formulas, m_report.readings.best.format);
    m_pass = std::make_unique<TTextPass>(m_report.readings.best.format, m_reading.info, *m_formulas);
    points = TFedPoints();
    points.isAnew = true;
    ReadOn(rows, points);
    m_isSettled =
        std::ranges::count(rows, '\n') >= kSettledRows || std::ranges::count(rows, '\r') >= kSettledRows;
    if (m_isSettled) m_text.erase(0, length);
}

void TRowFeed::ReadOn(std::string_view rows, TFedPoints& points) {
    const auto take = [&points](std::span<const double> x, std::span<const double> y,
                                std::span<const double> errors) {
        points.yErrors.resize(errors.empty() ? 0 : points.x.size());
        points.x.insert(points.x.end(), x.begin(), x.end());
        points.y.insert(points.y.end(), y.begin(), y.end());
        points.yErrors.insert(points.yErrors.end(), errors.begin(), errors.end());
    };
    m_pass->Continue(rows, Frequency(), take, m_report);
    if (m_formulas->KeepsY())
        m_report.yName = m_report.readings.best.format
                             .columns[static_cast<std::size_t>(m_report.readings.best.format.yColumn)]
                             .name;
}

int TRowFeed::Frequency() const {
    return m_reading.info.AutoRowHitFreq() ? 1 : std::max(1, m_reading.info.RowSamplingFrequency());
}

} // namespace lumoplot
