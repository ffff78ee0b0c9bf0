#include "stream/reader.h"

#include "stream/float80.h"
#include "support/code_page.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

[[noreturn]] void ThrowConversionError() {
    throw EStreamError("conversion error");
}

int Truncated(double value) {
    const double whole = std::trunc(value);
    if (!(whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()))
        ThrowConversionError();
    return static_cast<int>(whole);
}

bool IsString(TItemTag tag) {
    return tag == TItemTag::ShortString || tag == TItemTag::LongString;
}

} // namespace

int TxyReader::ReadKey() {
    if (!m_valueConsumed) throw EStreamError("reading error 1");
    const std::string text = ReadBareString();
    if (text.size() < 3) ThrowConversionError();
    const int key = ParseInteger(std::string_view(text).substr(text.size() - 3, 2));
    m_letter = text.back();
    m_valueConsumed = false;
    if (key == kEndOfSection) SkipValue();
    return key;
}

void TxyReader::ConsumeValue() {
    if (m_valueConsumed) throw EStreamError("reading error 2");
    m_valueConsumed = true;
}

void TxyReader::ReadAsString(std::string& value) {
    ConsumeValue();
    switch (m_letter) {
    case 'B': value = ReadTypedBoolean() ? "true" : "false"; break;
    case 'D': value = FormatShortest(ReadExtended()); break;
    case 'I': value = std::to_string(ReadBareInteger()); break;
    case 'S': value = FromCodePage(ReadBareString()); break;
    case 'F': ThrowConversionError();
    default: break;
    }
}

int TxyReader::ReadAsInteger() {
    ConsumeValue();
    switch (m_letter) {
    case 'B': return ReadTypedBoolean() ? 1 : 0;
    case 'D': return Truncated(ReadExtended());
    case 'I': return ReadBareInteger();
    case 'S': return ParseInteger(ReadBareString());
    default: ThrowConversionError();
    }
}

double TxyReader::ReadAsFloat() {
    ConsumeValue();
    switch (m_letter) {
    case 'B': return ReadTypedBoolean() ? 1.0 : 0.0;
    case 'D': return ReadExtended();
    case 'I': return ReadBareInteger();
    case 'S': return ParseFloat(ReadBareString());
    default: ThrowConversionError();
    }
}

bool TxyReader::ReadAsBoolean() {
    ConsumeValue();
    switch (m_letter) {
    case 'B': return ReadTypedBoolean();
    case 'D': return false;
    case 'I': return ReadBareInteger() == 1;
    case 'S': return ReadBareString() == "true";
    default: ThrowConversionError();
    }
}

TFontSpec TxyReader::ReadFont() {
    ConsumeValue();
    if (m_letter != 'F') ThrowConversionError();
    TFontSpec font;
    font.Name = FromCodePage(ReadBareString());
    font.Size = ReadBareInteger();
    font.Color = ReadBareInteger();
    for (bool* style : {&font.Bold, &font.Italic, &font.Underline, &font.StrikeOut})
        *style = ReadTypedBoolean();
    return font;
}

void TxyReader::SkipValue() {
    ConsumeValue();
    switch (m_letter) {
    case 'B': ReadTypedBoolean(); break;
    case 'D': ReadExtended(); break;
    case 'I': ReadBareInteger(); break;
    case 'S': ReadBareString(); break;
    case 'F':
        m_valueConsumed = false;
        ReadFont();
        break;
    default: break;
    }
}

void TxyReader::BeginComposite() {
    ConsumeValue();
    if (m_letter != 'C' && m_letter != 'S') ThrowConversionError();
}

std::string TxyReader::ReadStringItem() {
    return FromCodePage(ReadBareString());
}

int TxyReader::ReadIntegerItem() {
    return IsString(PeekTag()) ? ParseInteger(ReadBareString()) : ReadBareInteger();
}

double TxyReader::ReadFloatItem() {
    return IsString(PeekTag()) ? ParseFloat(ReadBareString()) : ReadExtended();
}

bool TxyReader::ReadBooleanItem() {
    return IsString(PeekTag()) ? ReadBareString() == "true" : ReadTypedBoolean();
}

int TxyReader::ReadPointHeader() {
    if (ReadKey() != kNumberOfPoints) throw EStreamError("Stream read Error");
    const int count = ReadAsInteger();
    if (ReadKey() != kEntriesPerPoint) throw EStreamError("Stream Read Error");
    m_entriesPerPoint = ReadAsInteger();
    m_pointsAreFloats = ReadBareString() == "D";
    const std::size_t smallestPair = m_pointsAreFloats ? 2 * (1 + kFloat80Size) : 2 * 2;
    const auto others = static_cast<std::size_t>(std::max(m_entriesPerPoint, 2) - 2);
    const std::size_t smallestPoint = smallestPair + 2 * others; // a string has a tag and a length
    if (count < 0 || static_cast<std::size_t>(count) > m_source.Remaining() / smallestPoint)
        throw EStreamError("Stream read Error");
    return count;
}

double TxyReader::ReadCoordinate() {
    return m_pointsAreFloats ? ReadExtended() : ParseFloat(ReadBareString());
}

void TxyReader::ReadPoint(double& x, double& y) {
    double yError = 0;
    ReadPoint(x, y, yError);
}

void TxyReader::ReadPoint(double& x, double& y, double& yError) {
    x = ReadCoordinate();
    y = ReadCoordinate();
    yError = 0;
    for (int i = 2; i < m_entriesPerPoint; ++i) {
        const std::string entry = ReadBareString();
        if (i == 2 && m_thirdEntry == TThirdEntry::YError) yError = TryParseFloat(entry).value_or(0);
    }
}

void TxyReader::ReadPoints(std::span<double> xs, std::span<double> ys, std::span<double> yErrors) {
    if (!m_pointsAreFloats || m_entriesPerPoint > 2) {
        double dropped = 0;
        for (std::size_t i = 0; i < xs.size(); ++i)
            ReadPoint(xs[i], ys[i], yErrors.empty() ? dropped : yErrors[i]);
        return;
    }
    std::ranges::fill(yErrors, 0.0);
    constexpr std::size_t kItemSize = 1 + kFloat80Size;
    const std::uint8_t* item = m_source.Take(2 * kItemSize * xs.size()).data();
    for (std::size_t i = 0; i < xs.size(); ++i, item += 2 * kItemSize) {
        constexpr auto kTag = static_cast<std::uint8_t>(TItemTag::Extended);
        if (item[0] != kTag || item[kItemSize] != kTag) ThrowConversionError();
        xs[i] = DecodeFloat80(item + 1);
        ys[i] = DecodeFloat80(item + kItemSize + 1);
    }
}

std::string TxyReader::ReadBareString() {
    return TakeString(TakeTag());
}

int TxyReader::ReadBareInteger() {
    return TakeInteger(TakeTag());
}

double TxyReader::ReadExtended() {
    if (TakeTag() != TItemTag::Extended) ThrowConversionError();
    return DecodeFloat80(m_source.Take(kFloat80Size).data());
}

bool TxyReader::ReadTypedBoolean() {
    const TItemTag tag = TakeTag();
    if (tag != TItemTag::True && tag != TItemTag::False) ThrowConversionError();
    return tag == TItemTag::True;
}

TItemTag TxyReader::PeekTag() const {
    TByteSource ahead = m_source;
    return static_cast<TItemTag>(ahead.TakeByte());
}

std::string TxyReader::TakeString(TItemTag tag) {
    if (!IsString(tag)) ThrowConversionError();
    const std::int32_t length = tag == TItemTag::ShortString ? m_source.TakeByte() : m_source.TakeInteger(4);
    if (length < 0) throw EStreamError("Stream read Error");
    const auto bytes = m_source.Take(static_cast<std::size_t>(length));
    return {bytes.begin(), bytes.end()};
}

int TxyReader::TakeInteger(TItemTag tag) {
    switch (tag) {
    case TItemTag::Int8: return m_source.TakeInteger(1);
    case TItemTag::Int16: return m_source.TakeInteger(2);
    case TItemTag::Int32: return m_source.TakeInteger(4);
    default: ThrowConversionError();
    }
}

} // namespace lumoplot
