#include "graph/plotted/date_text.h"

#include <QLocale>
#include <array>
#include <cmath>

namespace lumoplot {
namespace {

constexpr qint64 kJulianDayOfZero = 2415019; // 1899-12-30
constexpr qint64 kMillisecondsOfDay = 86400000;

struct TMoment {
    QDate Date;
    int Hour;
    int Minute;
    int Second;
    int Millisecond;
};

TMoment MomentOf(double value) {
    const auto total = static_cast<qint64>(std::llround(value * static_cast<double>(kMillisecondsOfDay)));
    qint64 day = total / kMillisecondsOfDay;
    qint64 rest = total % kMillisecondsOfDay;
    if (rest < 0) {
        rest += kMillisecondsOfDay;
        --day;
    }
    const auto part = [rest](qint64 unit, qint64 count) { return static_cast<int>(rest / unit % count); };
    return {QDate::fromJulianDay(kJulianDayOfZero + day), part(3600000, 24), part(60000, 60), part(1000, 60),
            part(1, 1000)};
}

QString Digits(int number, qsizetype width) {
    return QString::number(number).rightJustified(width, u'0');
}

class TDateFormatter {
public:
    TDateFormatter(const TMoment& moment, const QString& format) : m_moment(moment), m_format(format) {
        m_countsTo12 = format.contains(QLatin1String("am/pm"), Qt::CaseInsensitive) ||
                       format.contains(QLatin1String("a/p"), Qt::CaseInsensitive);
    }

    QString Text() {
        while (m_place < m_format.size()) Step();
        return m_text;
    }

private:
    void Step() {
        const QChar c = m_format[m_place];
        if (c == u'\'' || c == u'"') return TakeQuoted(c);
        if (TakeHalfOfDay(QLatin1String("am/pm"), QLatin1String("am"), QLatin1String("pm"))) return;
        if (TakeHalfOfDay(QLatin1String("a/p"), QLatin1String("a"), QLatin1String("p"))) return;
        const char letter = c.toLower().toLatin1();
        if (!QLatin1String("dmyhnsz").contains(c.toLower())) {
            m_text += c;
            ++m_place;
            return;
        }
        qsizetype length = 1;
        while (m_place + length < m_format.size() && m_format[m_place + length].toLower() == c.toLower())
            ++length;
        m_place += length;
        m_text += Token(letter, length);
        m_lastToken = letter;
    }

    void TakeQuoted(QChar quote) {
        const qsizetype end = m_format.indexOf(quote, m_place + 1);
        const qsizetype stop = end < 0 ? m_format.size() : end;
        m_text += QStringView(m_format).mid(m_place + 1, stop - m_place - 1);
        m_place = stop + 1;
    }

    bool TakeHalfOfDay(QLatin1String token, QLatin1String morning, QLatin1String afternoon) {
        const QStringView here = QStringView(m_format).mid(m_place, token.size());
        if (here.compare(token, Qt::CaseInsensitive) != 0) return false;
        const QString half = m_moment.Hour < 12 ? morning : afternoon;
        m_text += here.front().isUpper() ? half.toUpper() : half;
        m_place += token.size();
        return true;
    }

    QString Token(char letter, qsizetype length) const {
        switch (letter) {
        case 'd': return Day(length);
        case 'm':
            return m_lastToken == 'h' ? Digits(m_moment.Minute, std::min<qsizetype>(length, 2))
                                      : Month(length);
        case 'y':
            return length <= 2 ? Digits(m_moment.Date.year() % 100, 2) : Digits(m_moment.Date.year(), 4);
        case 'h': return Digits(Hour(), std::min<qsizetype>(length, 2));
        case 'n': return Digits(m_moment.Minute, std::min<qsizetype>(length, 2));
        case 's': return Digits(m_moment.Second, std::min<qsizetype>(length, 2));
        default: return Digits(m_moment.Millisecond, std::min<qsizetype>(length, 3));
        }
    }

    int Hour() const {
        if (!m_countsTo12) return m_moment.Hour;
        return m_moment.Hour % 12 == 0 ? 12 : m_moment.Hour % 12;
    }
    QString Day(qsizetype length) const {
        if (length <= 2) return Digits(m_moment.Date.day(), length);
        return QLocale::c().dayName(m_moment.Date.dayOfWeek(),
                                    length == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
    }
    QString Month(qsizetype length) const {
        if (length <= 2) return Digits(m_moment.Date.month(), length);
        return QLocale::c().monthName(m_moment.Date.month(),
                                      length == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
    }

    TMoment m_moment;
    QString m_format;
    QString m_text;
    qsizetype m_place = 0;
    char m_lastToken = 0;
    bool m_countsTo12;
};

} // namespace

double ValueOfDate(const QDate& date) {
    return static_cast<double>(date.toJulianDay() - kJulianDayOfZero);
}

QDate DateOfValue(double value) {
    return QDate::fromJulianDay(kJulianDayOfZero + static_cast<qint64>(std::floor(value)));
}

QString DateText(double value, std::string_view format) {
    if (!(value >= kFirstDateValue && value < kLastDateValue)) return {};
    return TDateFormatter(MomentOf(value),
                          QString::fromUtf8(format.data(), static_cast<qsizetype>(format.size())))
        .Text();
}

} // namespace lumoplot
