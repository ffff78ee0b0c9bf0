// File dialogs' filters in the form "Caption|pattern; pattern|Caption|…", as the system's texts have them.
#pragma once

#include <QString>
#include <QStringList>

namespace lumoplot {

/// The toolkit's form: each caption with all of its patterns in brackets behind it.
inline QString ToolkitFilter(const QString& filter) {
    QStringList result;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString caption = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (QString& pattern : patterns) pattern = pattern.trimmed();
        result << QStringLiteral("%1 (%2)").arg(caption, patterns.join(QLatin1Char(' ')));
    }
    return result.join(QStringLiteral(";;"));
}

} // namespace lumoplot
