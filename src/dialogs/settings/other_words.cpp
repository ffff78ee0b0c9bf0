#include "dialogs/settings/other_words.h"

namespace lumoplot {
namespace {

struct TOtherWords {
    const char* Typed; ///< divided by blanks
    const char* Meant; ///< divided by strokes
};

constexpr TOtherWords kOtherWords[] = {
    {"size text letters typeface bold italic", "font"},
    {"minimum maximum min max scale limits zoom extent bounds", "range"},
    {"auto autoscale automatic", "follows the data|automatic"},
    {"tick major spacing interval increment", "step|ticks"},
    {"minor subdivisions", "divisions"},
    {"logarithm log10 decades", "logarithmic|decade"},
    {"time clock calendar", "dates"},
    {"inverse inverted invert flip descending direction", "reversed"},
    {"box outline rectangle", "frame|border"},
    {"inside inward outward outside", "inwards|beyond"},
    {"background fill", "colour of the plot|colour of the margins"},
    {"image photo", "picture"},
    {"key", "legend"},
    {"position location place corner", "left|top|corner|place"},
    {"columns orientation", "order of the entries"},
    {"tight", "ends at the data"},
    {"digits precision rounding", "decimals"},
    {"scientific notation exponential", "format of the labels"},
    {"number numbers", "format of the labels|decimals|labels"},
    {"confidence prediction band interval", "bands"},
    {"errors", "residuals"},
    {"annotation comment arrow marker", "mark"},
    {"text", "caption|title"},
    {"name heading caption", "title"},
    {"padding border space", "margin|distance|room"},
    {"dashed dotted", "line style"},
    {"hide visible hidden invisible", "show"},
    {"origin intersection offset", "crosses|cross"},
    {"duplicates", "equal x"},
    {"clip clipping", "beyond the axes"},
    {"directory path", "folder"},
    {"printer print page", "page|print"},
};

} // namespace

QStringList OtherWordsFor(const QString& word) {
    QStringList meant;
    for (const TOtherWords& words : kOtherWords)
        if (QString::fromLatin1(words.Typed).split(u' ').contains(word, Qt::CaseInsensitive))
            meant += QString::fromLatin1(words.Meant).split(u'|');
    return meant;
}

} // namespace lumoplot
