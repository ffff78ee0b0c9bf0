// What else people call the settings of a graph, for those who look for one.
#pragma once

#include <QString>
#include <QStringList>

namespace lumoplot {

/// Words that a setting may have in the place of this one: none for most, of any letter case.
QStringList OtherWordsFor(const QString& word);

} // namespace lumoplot
