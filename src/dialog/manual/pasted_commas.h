// What the commas in the numbers of a pasted block mean, by the whole of each column.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace lumoplot {

/// A number with commas in front of each three digits: "1,234", "-12,345,678.5".
bool IsGrouped(const QString& cell);

/// Writes the numbers of each column that has commas, and whose locale has the point as decimal sign, without
/// commas or with a point: as groups of digits when all numbers of the column can be written so, as decimal
/// signs when one can not. A column in which one number says this and another that stays as it is. Returns
/// what the commas were read as, in a sentence, or nothing.
QString ReadCommas(QList<QStringList>& block);

} // namespace lumoplot
