#include "dialogs/import/column_items.h"

#include "controls/texts.h"
#include "support/number_text.h"

#include <algorithm>

namespace lumoplot {

QString ColumnItemText(const TTextFormat& format, int column) {
    if (column == TTextFormat::kRowNumber) return TTexts::tr("Row number");
    const QString number = QString::number(column + 1);
    const std::string& name = format.columns[static_cast<std::size_t>(column)].name;
    return name.empty() ? number : number + QStringLiteral(": ") + QString::fromStdString(name).simplified();
}

QString ColumnItemKey(const TTextFormat& format, int column) {
    const QString name = QString::fromStdString(format.columns[static_cast<std::size_t>(column)].name);
    const auto isSame = [&](const TTextColumn& other) {
        return name.compare(QString::fromStdString(other.name), Qt::CaseInsensitive) == 0;
    };
    const bool isUnique = std::ranges::count_if(format.columns, isSame) == 1;
    const bool isPlain = !name.isEmpty() && name.trimmed() == name && !TryParseInteger(name.toStdString());
    return isUnique && isPlain ? name : QString::number(column + 1);
}

} // namespace lumoplot
