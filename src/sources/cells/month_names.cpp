#include "sources/cells/month_names.h"

#include <array>

namespace lumoplot {
namespace {

/// For each month its names: English, German, French, Spanish, Italian, Portuguese, Dutch, Scandinavian,
/// Polish, Czech, Hungarian, and abbreviations that do not begin them.
constexpr std::array<std::string_view, 12> kMonths = {
    "january januar janner janvier enero gennaio janeiro januari stycznia styczen ledna leden",
    "february februar feber fevrier febrero febbraio fevereiro februari lutego luty unora unor",
    "march marz mars marzo marco maart marts marca marzec brezna brezen marcius mrz mrt",
    "april avril abril aprile kwietnia kwiecien dubna duben aprilis",
    "may mai mayo maggio maio mei maj maja kvetna kveten majus",
    "june juni juin junio giugno junho czerwca czerwiec cervna cerven junius",
    "july juli juillet julio luglio julho lipca lipiec cervence cervenec julius",
    "august aout agosto augustus augusti sierpnia sierpien srpna srpen augusztus",
    "september septembre septiembre settembre setembro wrzesnia wrzesien zari szeptember",
    "october oktober octobre octubre ottobre outubro oktobar pazdziernika pazdziernik rijna rijen",
    "november novembre noviembre novembro listopada listopad",
    "december dezember decembre diciembre dicembre dezembro desember grudnia grudzien prosince prosinec"};

constexpr std::string_view kWeekdays =
    "monday tuesday wednesday thursday friday saturday sunday montag dienstag mittwoch donnerstag freitag "
    "samstag sonnabend sonntag lundi mardi mercredi jeudi vendredi samedi dimanche lunes martes miercoles "
    "jueves viernes sabado domingo lunedi martedi mercoledi giovedi venerdi domenica segunda terca quarta "
    "quinta sexta maandag dinsdag woensdag donderdag vrijdag zaterdag zondag mandag tirsdag onsdag torsdag "
    "fredag lordag sondag poniedzialek wtorek sroda czwartek piatek sobota niedziela";

// Calls take(name) for each name of the list until one returns true.
template <class TTake>
bool AnyName(std::string_view list, TTake take) {
    while (!list.empty()) {
        const std::string_view name = list.substr(0, list.find(' '));
        if (take(name)) return true;
        list.remove_prefix(name.size() < list.size() ? name.size() + 1 : list.size());
    }
    return false;
}

} // namespace

int MonthOfName(std::string_view folded) {
    constexpr std::size_t kShortest = 3;
    if (folded.size() < kShortest) return 0;
    int shortened = 0;
    bool isOpen = false;
    for (std::size_t month = 0; month < kMonths.size(); ++month) {
        const auto number = static_cast<int>(month) + 1;
        if (AnyName(kMonths[month], [folded](auto name) { return name == folded; })) return number;
        const auto begins = [folded](auto name) { return name.starts_with(folded); };
        if (!AnyName(kMonths[month], begins)) continue;
        isOpen = shortened != 0;
        shortened = number;
    }
    return isOpen ? 0 : shortened;
}

bool IsWeekday(std::string_view folded) {
    return folded.size() >= 2 && AnyName(kWeekdays, [folded](auto name) { return name.starts_with(folded); });
}

} // namespace lumoplot
