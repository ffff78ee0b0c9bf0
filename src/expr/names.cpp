#include "expr/names.h"

#include <algorithm>

namespace lumoplot {
namespace {

// Behind the end stands a character that nothing goes on with.
char At(std::string_view text, std::size_t place) {
    return place < text.size() ? text[place] : '\0';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t EndOfDigits(std::string_view text, std::size_t place) {
    while (IsDigit(At(text, place))) ++place;
    return place;
}

bool IsAssignedBehind(std::string_view text, std::size_t place) {
    while (At(text, place) == ' ') ++place;
    return At(text, place) == ':' && At(text, place + 1) == '=';
}

} // namespace

bool IsName(std::string_view text) {
    return !text.empty() && IsNameStart(text.front()) && std::ranges::all_of(text, IsNamePart);
}

std::size_t EndOfName(std::string_view text, std::size_t start) {
    while (IsNamePart(At(text, start))) ++start;
    return start;
}

std::size_t EndOfNumber(std::string_view text, std::size_t start) {
    std::size_t end = EndOfDigits(text, start);
    if (At(text, end) == '.') end = EndOfDigits(text, end + 1);
    if (At(text, end) != 'e' && At(text, end) != 'E') return end;
    ++end;
    if (At(text, end) == '+' || At(text, end) == '-') ++end;
    return EndOfDigits(text, end);
}

std::size_t EndOfString(std::string_view text, std::size_t start) {
    const std::size_t quote = text.find('\'', start + 1);
    return quote == std::string_view::npos ? text.size() : quote + 1;
}

std::vector<TNameUse> NamesIn(std::string_view formula) {
    std::vector<TNameUse> names;
    for (std::size_t i = 0; i < formula.size();) {
        const std::size_t start = i;
        const char first = formula[start];
        if (first == '\'') {
            i = EndOfString(formula, start);
        } else if (IsDigit(first) || first == '.') {
            i = EndOfNumber(formula, start);
        } else if (IsNameStart(first)) {
            i = EndOfName(formula, start);
            names.push_back(
                {std::string(formula.substr(start, i - start)), IsAssignedBehind(formula, i), start});
        } else {
            ++i;
        }
    }
    return names;
}

} // namespace lumoplot
