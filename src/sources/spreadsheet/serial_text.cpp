#include "sources/spreadsheet/serial_text.h"

#include <QDate>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace lumoplot {
namespace {

constexpr std::int64_t kSecond = 1000000;
constexpr std::int64_t kDay = 86400 * kSecond;
constexpr double kLastDay = 2958466; // 10000-01-01
/// Sheets whose calendar begins with 1900 have a 29th of February in that year.
constexpr double kFirstRightDay = 61;

bool IsIn(char c, std::string_view characters) {
    return characters.find(c) != std::string_view::npos;
}

// The letters of the first part of a format code, in lower case; those of a duration in capitals.
std::string Letters(std::string_view code) {
    std::string letters;
    for (std::size_t i = 0; i < code.size() && code[i] != ';'; ++i) {
        const char c = code[i];
        if (c == '"' || c == '[') {
            const std::size_t end = std::min(code.find(c == '"' ? '"' : ']', i + 1), code.size());
            const std::string_view inside = code.substr(i + 1, end - i - 1);
            if (c == '[' && !inside.empty() && inside.find_first_not_of("hHmMsS") == std::string_view::npos)
                letters += static_cast<char>(std::toupper(static_cast<unsigned char>(inside[0])));
            i = end;
        } else if (IsIn(c, "\\_*")) {
            ++i;
        } else {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return letters;
}

// Microseconds; a time that was worked out is near a whole millisecond and not at it.
std::int64_t MicrosecondsOf(double days) {
    constexpr std::int64_t kNear = 5;
    const auto exact = static_cast<std::int64_t>(std::llround(days * static_cast<double>(kDay)));
    const std::int64_t rounded = (exact + 500) / 1000 * 1000;
    return std::abs(exact - rounded) <= kNear ? rounded : exact;
}

std::string TimeText(std::int64_t microseconds) {
    const std::int64_t seconds = microseconds / kSecond;
    char text[48];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    std::string result = text;
    if (microseconds % kSecond == 0) return result;
    std::snprintf(text, sizeof text, ".%06d", static_cast<int>(microseconds % kSecond));
    result += text;
    return result.substr(0, result.find_last_not_of('0') + 1);
}

} // namespace

TSerialKind SerialKindOf(std::string_view formatCode) {
    const std::string letters = Letters(formatCode);
    const auto has = [&letters](const char* any) { return letters.find_first_of(any) != std::string::npos; };
    if (letters == "general" || has("0#?")) {
        // "ss.00" has digits, too.
        if (!has("hsHMS")) return TSerialKind::Number;
    }
    if (has("HMS")) return TSerialKind::Duration;
    const bool hasTime = has("hs");
    if (has("yd") || (has("m") && !hasTime)) return hasTime ? TSerialKind::DateTime : TSerialKind::Date;
    return hasTime ? TSerialKind::Time : TSerialKind::Number;
}

TSerialKind SerialKindOf(int formatNumber) {
    const auto within = [formatNumber](int first, int last) {
        return formatNumber >= first && formatNumber <= last;
    };
    if (within(14, 17) || within(27, 31) || within(34, 36) || within(50, 58)) return TSerialKind::Date;
    if (formatNumber == 22) return TSerialKind::DateTime;
    if (within(18, 21) || within(32, 33) || formatNumber == 45 || formatNumber == 47)
        return TSerialKind::Time;
    return formatNumber == 46 ? TSerialKind::Duration : TSerialKind::Number;
}

std::string SerialText(double days, TSerialKind kind) {
    const bool isDay = days >= 0 && days < kLastDay;
    if (kind == TSerialKind::Number || !isDay) return {};
    const bool isTime = kind == TSerialKind::Duration || (kind == TSerialKind::Time && days < 1);
    if (isTime) return TimeText(MicrosecondsOf(days));
    const std::int64_t microseconds = MicrosecondsOf(days < kFirstRightDay ? days + 1 : days);
    const std::int64_t time = microseconds % kDay;
    const QDate date = QDate(1899, 12, 30).addDays(microseconds / kDay);
    const std::string text = date.toString(Qt::ISODate).toStdString();
    return kind == TSerialKind::Date && time == 0 ? text : text + ' ' + TimeText(time);
}

} // namespace lumoplot
