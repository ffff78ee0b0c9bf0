#include "dialog/manual/pasted_commas.h"
#include "controls/texts.h"

#include <QLocale>
#include <QRegularExpression>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr QChar kComma = u',';

bool Matches(const QString& cell, const QString& pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(cell).hasMatch();
}

// Digits that a comma would have to group, or a comma where no group ends.
bool CanNotBeGrouped(const QString& cell) {
    if (cell.contains(kComma)) return !IsGrouped(cell);
    return Matches(cell, QStringLiteral("[+-]?\\d{4,}"));
}

bool IsSurelyGrouped(const QString& cell) {
    return IsGrouped(cell) && (cell.contains(u'.') || cell.count(kComma) > 1);
}

struct TColumn {
    bool HasCommas = false;
    bool IsGrouped = false; ///< for sure
    bool IsDecimal = false; ///< for sure
};

TColumn Look(const QList<QStringList>& block, qsizetype column) {
    TColumn found;
    for (const QStringList& cells : block) {
        const QString cell = cells.value(column);
        found.HasCommas |= cell.contains(kComma);
        found.IsGrouped |= IsSurelyGrouped(cell) || Matches(cell, QStringLiteral("[+-]?\\d*\\.\\d+"));
        found.IsDecimal |= CanNotBeGrouped(cell);
    }
    return found;
}

void Rewrite(QList<QStringList>& block, qsizetype column, const QString& comma) {
    for (QStringList& cells : block)
        if (column < cells.size()) cells[column].replace(kComma, comma);
}

} // namespace

bool IsGrouped(const QString& cell) {
    return Matches(cell, QStringLiteral("[+-]?[1-9]\\d{0,2}(,\\d{3})+(\\.\\d*)?"));
}

QString ReadCommas(QList<QStringList>& block) {
    if (QLocale().decimalPoint() == kComma) return {};
    qsizetype width = 0;
    for (const QStringList& cells : block) width = std::max(width, cells.size());
    QStringList readings;
    for (qsizetype column = 0; column < width; ++column) {
        const TColumn found = Look(block, column);
        if (!found.HasCommas || (found.IsGrouped && found.IsDecimal)) continue;
        Rewrite(block, column, found.IsDecimal ? QStringLiteral(".") : QString());
        const QString reading = found.IsDecimal ? TTexts::tr("The commas were read as decimal signs.")
                                                : TTexts::tr("The commas were read as groups of digits.");
        if (!readings.contains(reading)) readings << reading;
    }
    return readings.join(u' ');
}

} // namespace lumoplot
