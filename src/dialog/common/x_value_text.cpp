#include "dialog/common/x_value_text.h"

#include "controls/number_edit.h"
#include "sources/cells/text_date.h"
#include "support/errors.h"
#include "support/number_text.h"

#include <QDateTime>
#include <QLocale>
#include <cmath>

namespace lumoplot {
namespace {

constexpr qint64 kMillisecondsADay = 86'400'000;
const QDate kFirstDay(1899, 12, 30);
const QDate kLastDay(9999, 12, 31);

bool IsShownAsDate(double days) {
    const double first = static_cast<double>(kFirstDay.daysTo(QDate(1, 1, 1)));
    const double last = static_cast<double>(kFirstDay.daysTo(kLastDay));
    return days >= first && days <= last;
}

QString DateText(double days) {
    const double day = std::floor(days);
    auto milliseconds =
        static_cast<qint64>(std::llround((days - day) * static_cast<double>(kMillisecondsADay)));
    const qint64 carried = milliseconds / kMillisecondsADay;
    milliseconds %= kMillisecondsADay;
    const QString date =
        kFirstDay.addDays(static_cast<qint64>(day) + carried).toString(QStringLiteral("yyyy-MM-dd"));
    if (milliseconds == 0) return date;
    const char* format = milliseconds % 60'000 == 0 ? " HH:mm"
                         : milliseconds % 1000 == 0 ? " HH:mm:ss"
                                                    : " HH:mm:ss.zzz";
    return date +
           QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds)).toString(QLatin1String(format));
}

TDateOrder OrderOfLocale() {
    const QString format = QLocale().dateFormat(QLocale::ShortFormat);
    const auto day = format.indexOf(QLatin1Char('d'));
    const auto month = format.indexOf(QLatin1Char('M'));
    if (format.startsWith(QLatin1Char('y'))) return TDateOrder::YearMonthDay;
    return day < month ? TDateOrder::DayMonthYear : TDateOrder::MonthDayYear;
}

} // namespace

QString XValueText(double value, TColumnFormat format) {
    if (format == TColumnFormat::DateTime && IsShownAsDate(value)) return DateText(value);
    return QString::fromStdString(FormatShortest(value));
}

double ParseXValue(const QString& text, TColumnFormat format) {
    const std::string trimmed = text.trimmed().toStdString();
    if (format == TColumnFormat::Number) return ParseTyped(trimmed);
    if (const auto date = ParseDate(trimmed, OrderOfLocale())) return date->days;
    throw EConvertError("'" + trimmed + "' is not a valid date");
}

} // namespace lumoplot
