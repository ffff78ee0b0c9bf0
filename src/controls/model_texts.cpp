#include "controls/model_texts.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace lumoplot {
namespace {

// A pattern whose beginning another one has, too, comes in front of it.
constexpr const char* kPatterns[] = {
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "errors of Y of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "rename to %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "load %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "recover"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "add data set"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "delete data set %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "duplicate %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "move %1 to the front"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "sort data sets"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "reverse data sets"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "fit of %1: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "generate %1 points"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "function of %1: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "function of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "X format of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "set values of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "edit points"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "paste points"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "insert rows"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "delete rows"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "clear cells"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "apply filter to %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "new sheet"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "rename sheet %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "delete sheet %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "add point to %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "move point of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "delete point of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "regression of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "regression line of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "regression colour of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "bounds of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "bounds colour of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "automatic name of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "show all data sets with %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "hide others than %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "show %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "hide %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Y axis of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "automatic baseline of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "baseline of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "slope of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "baseline from mark of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "point shape of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "line style of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "filling of points of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "point size of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "point border of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "line width of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "point colour of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "line colour of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "style of %1 data sets from %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "kind of source of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "source of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "data directory of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "choose source of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "reload %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "reading of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "keep all points of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "text options of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "fit of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "fit %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "curve of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "curve width"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "curve colour"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "better minimum of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "generate points of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "start values of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "minimum of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "data sets of parameters"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "fits of data sets"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "edit fit of %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "make %1 manual"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Undone: %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Redone: %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Discard the changes?"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Discard the changes?\n%1 step: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Discard the changes?\n%1 steps, last: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no DataSet selected"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Delete DataSet  \"%1\"  permanently?"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "File \"%1\" exists. Overwrite?"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Data from Current DataSet Will be lost, Continue?"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Clear All Marks?"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Fail to Apply Filter"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts",
                      "The points are those of the curve now: their errors of Y are gone."),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The points are others now: their errors of Y are gone."),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Can not read file %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Can not save to file %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Can not open file %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Stream read Error"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The recovery file is damaged"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Not a valid graph file"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Not a valid graph file: %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Wrong Graph version"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Wrong File Format!"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts",
                      "%1 is not a data-set file. Choose one that was exported as .lds"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts",
                      "%1 is not a function file. Choose one that was saved as .lfn"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There are no points"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There are no points to fit"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There are no points between the margins"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no equation to fit"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no equation to generate points from"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There are fewer points than varied parameters"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "No parameter is varied"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "All X are equal"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "All Y are equal"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no formula"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Unequal brackets"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Unknown name %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Syntax error in expression %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Too many arguments"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Can not find operand/function"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The printer can not be used"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "No point lies in the range"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The range ends before it begins"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Both numbers are needed"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "A factor must not be 0"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "A baseline needs two points or more"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Two points of the baseline have the same X"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The number of neighbours must be odd"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The degree must be below the number of neighbours"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no data set on the clipboard"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is no peak to fit"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "A panel of its own needs a second data set in the graph"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The standard error of Y must be a number above 0"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The percentage of Y must be a number above 0"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "There is nothing to follow: name a file, a pipe or a line"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Following %1: %2 rows"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Following %1: no rows with numbers yet"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Ended: %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Paused: %1"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "%1. Trying again in %2 s"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "%1 is not a valid floating point value"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "X is empty"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Y is empty"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "X must be a finite number"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "The error of Y must be a number above 0"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "Row %1: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts", "row %1: %2"),
    QT_TRANSLATE_NOOP("lumoplot::TModelTexts",
                      "No sheet is offered by the application that holds this graph"),
};

QString Translated(const char* pattern) {
    return QCoreApplication::translate("lumoplot::TModelTexts", pattern);
}

/// Of the pattern with something in each of its places.
QRegularExpression ExpressionOf(const QString& pattern) {
    static const QRegularExpression kPlace(QStringLiteral("%\\d"));
    QStringList pieces = pattern.split(kPlace);
    for (QString& piece : pieces) piece = QRegularExpression::escape(piece);
    return QRegularExpression(QStringLiteral("\\A") + pieces.join(QStringLiteral("(.+?)")) +
                                  QStringLiteral("\\z"),
                              QRegularExpression::DotMatchesEverythingOption);
}

/// All of them at once, as what one puts in may look like the place of another.
QString Filled(const QString& pattern, const QStringList& texts) {
    QString filled;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const int place = pattern[i] == u'%' && i + 1 < pattern.size() ? pattern[i + 1].digitValue() : -1;
        if (place < 1 || place >= texts.size()) {
            filled += pattern[i];
            continue;
        }
        const bool isText = pattern.endsWith(QStringLiteral(": %") + QString::number(place));
        filled += isText ? InLanguage(texts[place]) : texts[place]; // others are names and numbers
        ++i;
    }
    return filled;
}

} // namespace

QString InLanguage(const QString& text) {
    for (const char* pattern : kPatterns) {
        const QString translated = Translated(pattern);
        const QString source = QString::fromUtf8(pattern);
        if (translated == source) continue; // English, or not translated
        if (!text.startsWith(source.section(u'%', 0, 0))) continue;
        const QRegularExpressionMatch match = ExpressionOf(source).match(text);
        if (match.hasMatch()) return Filled(translated, match.capturedTexts());
    }
    return text;
}

} // namespace lumoplot
