#include "cli/read_as.h"

#include "cli/arguments.h"
#include "support/number_text.h"

#include <functional>
#include <map>

namespace lumoplot {
namespace {

using TSetPart = std::function<void(TDSInfo&, TTextWishes&)>;

TSetPart Separators(const char* separators) {
    return [separators](TDSInfo& info, TTextWishes&) { info.SetTextSeparators(separators); };
}

template <class TValue>
TSetPart Wish(std::optional<TValue> TTextWishes::*wish, TValue value) {
    return [wish, value](TDSInfo&, TTextWishes& wishes) { wishes.*wish = value; };
}

const std::map<std::string, TSetPart>& Parts() {
    static const std::map<std::string, TSetPart> parts = {
        {"tab", Separators("\t")},
        {"semicolon", Separators(";")},
        {"comma", Separators(",")},
        {"vertical bar", Separators("|")},
        {"blanks", Separators(" \t")},
        {"one column", Separators("\n")},
        {"aligned columns",
         [](TDSInfo& info, TTextWishes& wishes) {
             info.SetTextSeparators(" \t");
             wishes.columns = TColumnLayout::Aligned;
         }},
        {"decimal point", Wish(&TTextWishes::decimalSign, '.')},
        {"decimal comma", Wish(&TTextWishes::decimalSign, ',')},
        {"dates year-month-day", Wish(&TTextWishes::dateOrder, TDateOrder::YearMonthDay)},
        {"dates day.month.year", Wish(&TTextWishes::dateOrder, TDateOrder::DayMonthYear)},
        {"dates month/day/year", Wish(&TTextWishes::dateOrder, TDateOrder::MonthDayYear)},
        {"times in minutes:seconds", Wish(&TTextWishes::shortTimes, TShortTimes::MinutesAndSeconds)},
        {"times in hours:minutes", Wish(&TTextWishes::shortTimes, TShortTimes::HoursAndMinutes)},
        {"times run on behind midnight", Wish(&TTextWishes::midnight, TMidnight::RunsOn)},
        {"times below 24 hours", Wish(&TTextWishes::midnight, TMidnight::BeginsAgain)},
        {"UTF-8", Wish(&TTextWishes::encoding, TTextEncoding::Utf8)},
        {"UTF-16 LE", Wish(&TTextWishes::encoding, TTextEncoding::Utf16LittleEndian)},
        {"UTF-16 BE", Wish(&TTextWishes::encoding, TTextEncoding::Utf16BigEndian)},
        {"Windows-1252", Wish(&TTextWishes::encoding, TTextEncoding::CodePage)}};
    return parts;
}

std::string PartList() {
    std::string list = "other";
    for (const auto& [name, part] : Parts()) list += ", " + name;
    return list;
}

} // namespace

bool IsOther(const std::string& reading) {
    return Trimmed(reading) == "other";
}

void ReadAs(const std::string& reading, TDSInfo& info, TTextWishes& wishes) {
    for (std::size_t begin = 0; begin <= reading.size();) {
        const std::size_t end = std::min(reading.find(',', begin), reading.size());
        const std::string name(Trimmed(reading.substr(begin, end - begin)));
        const auto part = Parts().find(name);
        if (part == Parts().end()) throw EUsage("--read-as: '" + name + "' is none of " + PartList());
        part->second(info, wishes);
        begin = end + 1;
    }
}

} // namespace lumoplot
