#include "stream/writer.h"

#include "stream/float80.h"
#include "support/code_page.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <cstdint>
#include <limits>
#include <string>

namespace lumoplot {
namespace {

std::string BooleanText(bool value) {
    return value ? "true" : "false";
}

} // namespace

void TxyWriter::WriteKey(int key, std::string_view name, char letter) {
    if (key < 0 || key > 99) throw EStreamError("illegal call in savetofile");
    std::string text;
    if (m_encoding == TEncoding::Text) text = name;
    text += key < 10 ? ' ' : static_cast<char>('0' + key / 10);
    text += static_cast<char>('0' + key % 10);
    text += m_encoding == TEncoding::Text && letter != 'F' ? 'S' : letter;
    WriteBareString(text);
}

void TxyWriter::WriteString(int key, std::string_view name, std::string_view value) {
    WriteKey(key, name, 'S');
    WriteStringItem(value);
}

void TxyWriter::WriteInteger(int key, std::string_view name, int value) {
    WriteKey(key, name, 'I');
    WriteIntegerItem(value);
}

void TxyWriter::WriteFloat(int key, std::string_view name, double value) {
    WriteKey(key, name, 'D');
    WriteFloatItem(value);
}

void TxyWriter::WriteBoolean(int key, std::string_view name, bool value) {
    WriteKey(key, name, 'B');
    WriteBooleanItem(value);
}

void TxyWriter::WriteFont(int key, std::string_view name, const TFontSpec& font) {
    WriteKey(key, name, 'F');
    WriteBareString(ToCodePage(font.Name));
    WriteBareInteger(font.Size);
    WriteBareInteger(font.Color);
    for (const bool style : {font.Bold, font.Italic, font.Underline, font.StrikeOut})
        AppendTag(style ? TItemTag::True : TItemTag::False);
}

void TxyWriter::WriteEndOfSection(std::string_view name) {
    WriteBoolean(kEndOfSection, name, false);
}

void TxyWriter::WriteCompositeKey(int key, std::string_view name) {
    WriteKey(key, name, 'C');
}

void TxyWriter::WriteStringItem(std::string_view value) {
    WriteBareString(ToCodePage(value));
}

void TxyWriter::WriteIntegerItem(int value) {
    if (m_encoding == TEncoding::Text)
        WriteBareString(std::to_string(value));
    else
        WriteBareInteger(value);
}

void TxyWriter::WriteFloatItem(double value) {
    if (m_encoding == TEncoding::Text)
        WriteBareString(FormatShortest(value));
    else
        AppendExtended(value);
}

void TxyWriter::WriteBooleanItem(bool value) {
    if (m_encoding == TEncoding::Text)
        WriteBareString(BooleanText(value));
    else
        AppendTag(value ? TItemTag::True : TItemTag::False);
}

void TxyWriter::WritePointHeader(int count) {
    WriteInteger(kNumberOfPoints, "NumberOfPoints", count);
    WriteInteger(kEntriesPerPoint, "EntriesPerPoint", m_thirdEntry == TThirdEntry::None ? 2 : 3);
    WriteBareString(m_encoding == TEncoding::Text ? "S" : "D");
}

void TxyWriter::WritePoint(double x, double y, double yError) {
    WriteFloatItem(x);
    WriteFloatItem(y);
    if (m_thirdEntry == TThirdEntry::YError)
        WriteBareString(yError == 0 ? std::string() : FormatShortest(yError));
}

void TxyWriter::WritePoints(std::span<const double> xs, std::span<const double> ys,
                            std::span<const double> yErrors) {
    if (m_encoding == TEncoding::Text || m_thirdEntry != TThirdEntry::None) {
        for (std::size_t i = 0; i < xs.size(); ++i)
            WritePoint(xs[i], ys[i], yErrors.empty() ? 0 : yErrors[i]);
        return;
    }
    constexpr std::size_t kItemSize = 1 + kFloat80Size;
    const std::size_t start = m_bytes.size();
    m_bytes.resize(start + 2 * kItemSize * xs.size());
    std::uint8_t* item = m_bytes.data() + start;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        for (const double value : {xs[i], ys[i]}) {
            *item = static_cast<std::uint8_t>(TItemTag::Extended);
            EncodeFloat80(value, item + 1);
            item += kItemSize;
        }
    }
}

void TxyWriter::WriteBareString(std::string_view bytes) {
    if (bytes.size() <= 255) {
        AppendTag(TItemTag::ShortString);
        m_bytes.push_back(static_cast<std::uint8_t>(bytes.size()));
    } else {
        if (bytes.size() > std::numeric_limits<std::int32_t>::max())
            throw EStreamError("illegal call in savetofile");
        AppendTag(TItemTag::LongString);
        AppendInteger(m_bytes, static_cast<std::int32_t>(bytes.size()), 4);
    }
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

void TxyWriter::WriteBareInteger(int value) {
    const bool fits8 = value >= -128 && value <= 127;
    const bool fits16 = value >= -32768 && value <= 32767;
    AppendTag(fits8 ? TItemTag::Int8 : fits16 ? TItemTag::Int16 : TItemTag::Int32);
    AppendInteger(m_bytes, value, fits8 ? 1 : fits16 ? 2 : 4);
}

void TxyWriter::AppendExtended(double value) {
    AppendTag(TItemTag::Extended);
    const std::size_t start = m_bytes.size();
    m_bytes.resize(start + kFloat80Size);
    EncodeFloat80(value, m_bytes.data() + start);
}

} // namespace lumoplot
