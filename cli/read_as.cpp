#include "cli/read_as.h"

#include "cli/arguments.h"
#include "support/number_text.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <optional>
#include <string_view>

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
        {"text in '", [](TDSInfo&, TTextWishes& wishes) { wishes.quotes = "'"; }},
        {"no header rows", [](TDSInfo& info, TTextWishes&) { info.SetFileHasHeaders(0); }},
        {"UTF-8 with BOM", Wish(&TTextWishes::encoding, TTextEncoding::Utf8WithMark)},
        {"UTF-16 LE", Wish(&TTextWishes::encoding, TTextEncoding::Utf16LittleEndian)},
        {"UTF-16 BE", Wish(&TTextWishes::encoding, TTextEncoding::Utf16BigEndian)},
        {"Windows-1252", Wish(&TTextWishes::encoding, TTextEncoding::CodePage)}};
    return parts;
}

// "tab", "semicolon or comma", "\":\"": the characters, or nothing where it is no list of them.
std::string SeparatorsIn(std::string_view text) {
    static const std::map<std::string_view, char> names = {
        {"tab", '\t'}, {"semicolon", ';'}, {"comma", ','}, {"vertical bar", '|'}, {"blank", ' '}};
    constexpr std::string_view kOr = " or ";
    std::string separators;
    while (!text.empty()) {
        const std::string_view name = text.substr(0, text.find(kOr));
        const bool isQuoted = name.size() == 3 && name.front() == '"' && name.back() == '"';
        const auto named = names.find(name);
        if (!isQuoted && named == names.end()) return {};
        separators += isQuoted ? name[1] : named->second;
        text.remove_prefix(std::min(name.size() + kOr.size(), text.size()));
    }
    return separators;
}

// The number in "3 header rows" or "columns of 12 characters".
std::optional<int> CountIn(std::string_view text, std::string_view before, std::string_view behind) {
    if (!text.starts_with(before) || !text.ends_with(behind) || text.size() < before.size() + behind.size())
        return std::nullopt;
    text.remove_prefix(before.size());
    text.remove_suffix(behind.size());
    int count = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), count);
    const bool isWhole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return isWhole && count > 0 ? std::optional(count) : std::nullopt;
}

bool SetCount(const std::string& name, TDSInfo& info) {
    auto rows = CountIn(name, "", " header rows");
    if (!rows) rows = CountIn(name, "", " header row");
    if (rows) info.SetFileHasHeaders(*rows);
    const auto width = CountIn(name, "columns of ", " characters");
    info.SetDivideTextByWidth(info.DivideTextByWidth() || width);
    if (width) info.SetColumnWidth(*width);
    return rows || width;
}

std::string PartList() {
    std::string list = "other, tab, semicolon, comma, vertical bar, 1 header row";
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
        const std::string separators = SeparatorsIn(name);
        if (part != Parts().end())
            part->second(info, wishes);
        else if (!separators.empty())
            info.SetTextSeparators(separators);
        else if (!SetCount(name, info))
            throw EUsage("--read-as: '" + name + "' is none of " + PartList());
        begin = end + 1;
    }
}

} // namespace lumoplot
