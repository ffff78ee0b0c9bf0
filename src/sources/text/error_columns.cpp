#include "sources/text/error_columns.h"

#include "sources/cells/folded_text.h"

#include <algorithm>
#include <cctype>

namespace lumoplot {
namespace {

using TWords = std::vector<std::string>;

constexpr std::string_view kErrorWords[] = {"error",
                                            "errors",
                                            "err",
                                            "sigma",
                                            "sig",
                                            "sd",
                                            "std",
                                            "stdev",
                                            "stddev",
                                            "stderr",
                                            "sdev",
                                            "sem",
                                            "deviation",
                                            "unc",
                                            "uncertainty",
                                            "uncert",
                                            "fehler",
                                            "messfehler",
                                            "unsicherheit",
                                            "messunsicherheit",
                                            "standardabweichung",
                                            "erreur",
                                            "incertitude",
                                            "ecart",
                                            "errore",
                                            "incertezza",
                                            "incertidumbre",
                                            "desviacion",
                                            "fout",
                                            "\xC2\xB1",
                                            "\xCF\x83",
                                            "+/-",
                                            "+-"};

/// As the above where the name says whose they are: alone they may be something else.
constexpr std::string_view kErrorWordsOfOne[] = {"se", "dev", "s"};

/// Beside a word of the list they say nothing else.
constexpr std::string_view kFillers[] = {"of",       "in",   "the", "standard", "type",
                                         "estandar", "mean", "bar", "bars"};

/// "dy", "delta y".
constexpr std::string_view kDifferences[] = {"d", "delta", "\xCE\x94", "\xCE\xB4"};

template <class TList>
bool IsIn(const TList& list, std::string_view word) {
    return std::ranges::find(list, word) != std::end(list);
}

// In small letters, without what stands in brackets, which is a unit; signs of errors are words.
TWords WordsOf(const std::string& name) {
    TWords words(1);
    int depth = 0;
    const std::string folded = FoldText(name);
    for (std::size_t i = 0; i < folded.size();) {
        const std::string_view rest = std::string_view(folded).substr(i);
        const auto sign = std::ranges::find_if(kErrorWords, [rest](std::string_view word) {
            return !std::isalpha(static_cast<unsigned char>(word[0])) && rest.starts_with(word);
        });
        if (sign != std::end(kErrorWords)) {
            words.emplace_back(*sign);
            words.emplace_back();
            i += sign->size();
            continue;
        }
        const char c = folded[i++];
        if (c == '(' || c == '[') ++depth;
        if (depth == 0 && (std::isalnum(static_cast<unsigned char>(c)) || (c & 0x80) != 0))
            words.back() += c;
        else if (!words.back().empty())
            words.emplace_back();
        if ((c == ')' || c == ']') && depth > 0) --depth;
    }
    std::erase(words, "");
    return words;
}

/// What a name says of errors: whose they are, in words, where it says that.
struct TErrorName {
    bool isError = false;
    TWords owner;
};

TErrorName ReadName(const std::string& name) {
    TErrorName read;
    bool isErrorOfOne = false;
    for (const std::string& word : WordsOf(name)) {
        if (IsIn(kErrorWords, word))
            read.isError = true;
        else if (IsIn(kErrorWordsOfOne, word))
            isErrorOfOne = true;
        else
            read.owner.push_back(word);
    }
    if (read.isError || isErrorOfOne)
        std::erase_if(read.owner, [](const auto& word) { return IsIn(kFillers, word); });
    read.isError = read.isError || (isErrorOfOne && !read.owner.empty());
    return read;
}

// "dV" beside "V", "delta_v" beside "v".
bool IsDifferenceOf(const std::string& name, const std::string& owner) {
    const TWords words = WordsOf(name);
    const TWords ownerWords = WordsOf(owner);
    if (ownerWords.empty()) return false;
    if (words.size() == ownerWords.size() + 1 && IsIn(kDifferences, words[0]))
        return std::equal(ownerWords.begin(), ownerWords.end(), words.begin() + 1);
    // Joined, only names of a letter or two are told from words.
    return words.size() == 1 && ownerWords.size() == 1 && ownerWords[0].size() <= 2 &&
           (words[0] == "d" + ownerWords[0] || words[0] == "s" + ownerWords[0]);
}

bool IsNumber(const TTextColumn& column) {
    return column.kind == TCellKind::Number;
}

// The column that the errors belong to: the one that the name names, else the one in front of them, which is
// not the first, as that is X.
int OwnerOf(const TTextFormat& format, int column) {
    const auto& columns = format.columns;
    const std::string& name = columns[static_cast<std::size_t>(column)].name;
    const TErrorName read = ReadName(name);
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        const TTextColumn& other = columns[static_cast<std::size_t>(i)];
        if (i == column || other.name.empty() || ReadName(other.name).isError) continue;
        const bool isNamed = read.isError && !read.owner.empty() && WordsOf(other.name) == read.owner;
        if (isNamed || IsDifferenceOf(name, other.name)) return i;
    }
    const bool isAnyY = read.owner.empty() || read.owner == TWords{"y"};
    const int front = column - 1;
    const auto isValue = [](const TTextColumn& other) {
        return other.kind != TCellKind::Text && other.kind != TCellKind::Empty &&
               other.role == TColumnRole::Values;
    };
    const bool hasX = std::any_of(columns.begin(), columns.begin() + std::max(front, 0), isValue);
    const bool fits = front >= 0 && hasX && IsNumber(columns[static_cast<std::size_t>(front)]) &&
                      !ReadName(columns[static_cast<std::size_t>(front)].name).isError;
    return read.isError && isAnyY && fits ? front : TTextFormat::kNoColumn;
}

} // namespace

std::vector<int> ErrorOwners(const TTextFormat& format) {
    const auto& columns = format.columns;
    const auto isCandidate = [](const TTextColumn& column) {
        const bool isValue = column.role == TColumnRole::Values || column.role == TColumnRole::Constant;
        return IsNumber(column) && isValue && !column.name.empty();
    };
    std::vector<int> owners(columns.size(), TTextFormat::kNoColumn);
    std::size_t left = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int owner =
            isCandidate(columns[i]) ? OwnerOf(format, static_cast<int>(i)) : TTextFormat::kNoColumn;
        if (owner >= 0 && IsNumber(columns[static_cast<std::size_t>(owner)]))
            owners[i] = owner;
        else if (columns[i].kind != TCellKind::Text && columns[i].kind != TCellKind::Empty)
            ++left;
    }
    // X and Y come first.
    if (left < 2) std::ranges::fill(owners, TTextFormat::kNoColumn);
    return owners;
}

int ErrorColumnOf(const TTextFormat& format, int column) {
    const std::vector<int> owners = ErrorOwners(format);
    const auto found = column < 0 ? owners.end() : std::ranges::find(owners, column);
    return found == owners.end() ? TTextFormat::kNoColumn : static_cast<int>(found - owners.begin());
}

} // namespace lumoplot
