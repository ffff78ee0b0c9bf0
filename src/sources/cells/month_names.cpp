#include "sources/cells/month_names.h"

#include <algorithm>
#include <array>
#include <vector>

namespace lumoplot {
namespace {

/// For each month its names: English, German, French, Spanish, Italian, Portuguese, Dutch, Scandinavian,
/// Polish, Czech, Hungarian, Finnish, Romanian, Turkish, Russian, and abbreviations that do not begin them.
constexpr std::array<std::string_view, 12> kMonths = {
    "january januar janner janvier enero gennaio janeiro januari stycznia styczen ledna leden tammikuuta "
    "ianuarie ocak января январь",
    "february februar feber fevrier febrero febbraio fevereiro februari lutego luty unora unor helmikuuta "
    "subat февраля февраль",
    "march marz mars marzo marco maart marts marca marzec brezna brezen marcius mrz mrt mar maaliskuuta "
    "martie март марта",
    "april avril abril aprile kwietnia kwiecien dubna duben aprilis huhtikuuta nisan апреля апрель",
    "may mai mayo maggio maio mei maj maja kvetna kveten majus toukokuuta mayis мая май",
    "june juni juin junio giugno junho czerwca czerwiec cervna cerven junius kesakuuta iunie haziran июня "
    "июнь",
    "july juli juillet julio luglio julho lipca lipiec cervence cervenec julius heinakuuta iulie temmuz июля "
    "июль",
    "august aout agosto augustus augusti sierpnia sierpien srpna srpen augusztus elokuuta agustos августа",
    "september septembre septiembre settembre setembro wrzesnia wrzesien zari szeptember syyskuuta "
    "septembrie eylul сентября",
    "october oktober octobre octubre ottobre outubro oktobar pazdziernika pazdziernik rijna rijen lokakuuta "
    "octombrie ekim октября",
    "november novembre noviembre novembro listopadu listopada listopad marraskuuta noiembrie kasim ноября",
    "december dezember decembre diciembre dicembre dezembro desember grudnia grudzien prosince prosinec "
    "joulukuuta decembrie aralik декабря"};

constexpr std::string_view kWeekdays =
    "monday tuesday wednesday thursday friday saturday sunday montag dienstag mittwoch donnerstag freitag "
    "samstag sonnabend sonntag lundi mardi mercredi jeudi vendredi samedi dimanche lunes martes miercoles "
    "jueves viernes sabado domingo lunedi martedi mercoledi giovedi venerdi domenica segunda terca quarta "
    "quinta sexta maandag dinsdag woensdag donderdag vrijdag zaterdag zondag mandag tirsdag onsdag torsdag "
    "fredag lordag sondag poniedzialek wtorek sroda czwartek piatek sobota niedziela";

struct TName {
    std::string_view name;
    int month = 0;

    bool operator<(const TName& other) const {
        return name != other.name ? name < other.name : month < other.month;
    }
};

using TNames = std::vector<TName>;

void AddNames(TNames& names, std::string_view list, int month) {
    while (!list.empty()) {
        const std::string_view name = list.substr(0, list.find(' '));
        names.push_back({name, month});
        list.remove_prefix(name.size() < list.size() ? name.size() + 1 : list.size());
    }
}

TNames SortedMonths() {
    TNames names;
    for (std::size_t month = 0; month < kMonths.size(); ++month)
        AddNames(names, kMonths[month], static_cast<int>(month) + 1);
    std::sort(names.begin(), names.end());
    return names;
}

TNames SortedWeekdays() {
    TNames names;
    AddNames(names, kWeekdays, 0);
    std::sort(names.begin(), names.end());
    return names;
}

// The first name that is not before the text: those that begin with it follow one after the other.
TNames::const_iterator FirstFrom(const TNames& names, std::string_view text) {
    return std::ranges::lower_bound(names, text, {}, &TName::name);
}

} // namespace

int MonthOfName(std::string_view folded) {
    static const TNames names = SortedMonths();
    constexpr std::size_t kShortest = 3;
    if (folded.size() < kShortest) return 0;
    auto name = FirstFrom(names, folded);
    if (name == names.end() || !name->name.starts_with(folded)) return 0;
    const int month = name->month;
    if (name->name == folded) return month;
    for (; name != names.end() && name->name.starts_with(folded); ++name)
        if (name->month != month) return 0;
    return month;
}

bool IsWeekday(std::string_view folded) {
    static const TNames names = SortedWeekdays();
    const auto name = FirstFrom(names, folded);
    return folded.size() >= 2 && name != names.end() && name->name.starts_with(folded);
}

} // namespace lumoplot
