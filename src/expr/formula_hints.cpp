#include "expr/formula_hints.h"

#include "expr/built_in_words.h"
#include "expr/names.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>

namespace lumoplot {
namespace {

constexpr int kMostRewritings = 100;
constexpr std::size_t kMostNearest = 3;
constexpr std::size_t kLongestQuantity = 2; ///< bytes of a name that is taken for a parameter, not a function

/// Names that are used elsewhere.
struct TOtherName {
    std::string_view Name;
    std::array<const char*, 2> Here;
};
constexpr TOtherName kOtherNames[] = {
    {"log", {"ln", "log10"}},         {"lg", {"log10", nullptr}},      {"log2", {"logn", nullptr}},
    {"asin", {"arcsin", nullptr}},    {"acos", {"arccos", nullptr}},   {"atan", {"arctan2", nullptr}},
    {"arctan", {"arctan2", nullptr}}, {"atan2", {"arctan2", nullptr}}, {"asinh", {"arcsinh", nullptr}},
    {"acosh", {"arccosh", nullptr}},  {"atanh", {"arctanh", nullptr}}, {"tg", {"tan", nullptr}},
    {"square", {"sqr", nullptr}},     {"root", {"sqrt", nullptr}},     {"int", {"trunc", "round"}},
    {"floor", {"trunc", nullptr}},    {"ceil", {"round", nullptr}},    {"fabs", {"abs", nullptr}},
};

bool IsBlankByte(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool IsDigitByte(char c) {
    return c >= '0' && c <= '9';
}
bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Walks through a formula as the tokeniser does, but that an exponent has digits.
class TWalker {
public:
    explicit TWalker(std::string_view text) : m_text(text) {}

    char At(std::size_t place) const { return place < m_text.size() ? m_text[place] : '\0'; }
    std::size_t SkipBlanks(std::size_t place) const {
        while (IsBlankByte(At(place))) ++place;
        return place;
    }

    /// Behind the value that starts at `place`, with its arguments and what stands behind it ("!", "%"); the
    /// place itself where there is no value.
    std::size_t EndOfValue(std::size_t place) const {
        std::size_t end = EndOfPlainValue(place);
        while (end > place && (At(SkipBlanks(end)) == '!' || At(SkipBlanks(end)) == '%'))
            end = SkipBlanks(end) + 1;
        return end;
    }

    /// Behind the token at `place`, which is no blank: a value without arguments, or one character.
    std::size_t EndOfToken(std::size_t place) const {
        const char first = At(place);
        if (first == '\'') return EndOfString(m_text, place);
        if (IsDigitByte(first) || first == '.') return std::max(EndOfWrittenNumber(place), place + 1);
        if (IsNameStart(first)) return EndOfName(m_text, place);
        std::size_t end = place + 1;
        while (IsContinuation(At(end))) ++end;
        return end;
    }

    std::string_view Text(std::size_t place, std::size_t end) const {
        return m_text.substr(place, end - place);
    }

private:
    bool IsOperatorAt(std::size_t place) const {
        static constexpr std::string_view kSigns = "+-*/^%!=<>:,;()";
        return kSigns.find(At(place)) != std::string_view::npos;
    }

    // "2exp(x)" is no number with an exponent, though the tokeniser begins to read one.
    std::size_t EndOfWrittenNumber(std::size_t place) const {
        const std::size_t end = EndOfNumber(m_text, place);
        const bool isCut = end > place && (m_text[end - 1] == 'e' || m_text[end - 1] == 'E');
        return isCut && IsNameStart(At(end)) ? end - 1 : end;
    }

    std::size_t EndOfPlainValue(std::size_t place) const {
        const char first = At(place);
        if (first == '(') return EndOfBrackets(place);
        if (first == '\0' || first == '\'' || IsOperatorAt(place)) return place;
        const std::size_t end = EndOfToken(place);
        const bool isFunction = IsNameStart(first) && At(SkipBlanks(end)) == '(';
        return isFunction ? EndOfBrackets(SkipBlanks(end)) : end;
    }

    // The place itself where they are not closed.
    std::size_t EndOfBrackets(std::size_t place) const {
        int depth = 0;
        for (std::size_t i = place; i < m_text.size(); i = EndOfToken(i)) {
            if (At(i) == '(') ++depth;
            if (At(i) == ')' && --depth == 0) return i + 1;
        }
        return place;
    }

    std::string_view m_text;
};

bool IsWordOperator(std::string_view word) {
    static constexpr std::string_view kWords[] = {"div", "mod", "or", "and", "xor", "not"};
    return std::ranges::count(kWords, LowerCased(word)) > 0;
}

bool IsOddWhole(std::string_view exponent) {
    return !exponent.empty() && std::ranges::all_of(exponent, IsDigitByte) &&
           (exponent.back() - '0') % 2 == 1;
}

/// Looks for signs in front of powers.
class TSignFinder {
public:
    explicit TSignFinder(std::string_view formula) : m_formula(formula), m_walker(formula) {}

    std::optional<TRewriteHint> Run() const {
        bool mayBeSign = true; // no value stands in front
        bool isExponent = false;
        for (std::size_t i = m_walker.SkipBlanks(0); i < m_formula.size();) {
            const char c = m_walker.At(i);
            if (mayBeSign && (c == '-' || c == '+')) {
                std::size_t behind = i;
                const bool isMinus = IsMinus(behind);
                if (isMinus && !isExponent)
                    if (const auto hint = HintAt(i, behind)) return hint;
                i = behind;
                continue;
            }
            const std::size_t end = m_walker.EndOfToken(i);
            const bool isValue = IsNameStart(c) || IsDigitByte(c) || c == '.' || c == ')' || c == '\'' ||
                                 c == '!' || c == '%' || (static_cast<unsigned char>(c) & 0x80) != 0;
            mayBeSign = !isValue || IsWordOperator(m_walker.Text(i, end));
            isExponent = c == '^';
            i = m_walker.SkipBlanks(end);
        }
        return std::nullopt;
    }

private:
    // Whether a run of signs is a minus; moves behind it.
    bool IsMinus(std::size_t& place) const {
        bool isMinus = false;
        while (m_walker.At(place) == '-' || m_walker.At(place) == '+') {
            isMinus ^= m_walker.At(place) == '-';
            place = m_walker.SkipBlanks(place + 1);
        }
        return isMinus;
    }

    std::optional<TRewriteHint> HintAt(std::size_t sign, std::size_t base) const {
        std::size_t end = m_walker.EndOfValue(base);
        bool makesDifference = false;
        while (end > base && m_walker.At(m_walker.SkipBlanks(end)) == '^') {
            std::size_t exponent = m_walker.SkipBlanks(m_walker.SkipBlanks(end) + 1);
            const std::size_t from = exponent;
            IsMinus(exponent);
            const std::size_t behind = m_walker.EndOfValue(exponent);
            if (behind == exponent) break;
            makesDifference |= !IsOddWhole(m_walker.Text(from, behind));
            end = behind;
        }
        if (!makesDifference) return std::nullopt;
        const std::string power = "-(" + std::string(m_walker.Text(base, end)) + ')';
        return TRewriteHint{sign, end - sign, "a sign binds tighter than ^: write " + power,
                            std::string(m_formula.substr(0, sign)) + power +
                                std::string(m_formula.substr(end))};
    }

    std::string_view m_formula;
    TWalker m_walker;
};

std::vector<std::string> BuiltInFunctions() {
    TExpressList words(30);
    AddBuiltInWords(words);
    std::vector<std::string> names;
    for (const TExprWord* word : words)
        if (IsName(word->Name()) && !word->IsOperator() && word->ArgCount() > 0)
            names.push_back(word->Name());
    return names;
}

// Changes of one character that lead from one name to the other; neighbours that are exchanged count as one
// (F. J. Damerau, Comm. ACM 7 (1964) 171-176).
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> rows(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                rows[i][j] = i + j;
                continue;
            }
            rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1,
                                   rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    }
    return rows[a.size()][b.size()];
}

std::vector<std::string> NearestTo(const std::string& name) {
    std::vector<std::string> nearest;
    for (const TOtherName& other : kOtherNames)
        if (other.Name == name)
            for (const char* here : other.Here)
                if (here) nearest.emplace_back(here);
    if (!nearest.empty()) return nearest;
    const std::size_t most = name.size() <= 3 ? 1 : 2;
    std::vector<std::pair<std::size_t, std::string>> found;
    for (const std::string& known : BuiltInFunctions())
        if (const std::size_t distance = Distance(name, known); distance <= most && distance < name.size())
            found.emplace_back(distance, known);
    std::ranges::sort(found);
    for (const auto& [distance, known] : found)
        if (nearest.size() < kMostNearest && distance == found.front().first) nearest.push_back(known);
    return nearest;
}

/// Looks for values with nothing between them.
class TProductFinder {
public:
    TProductFinder(std::string_view formula, TExpressionParser& parser)
        : m_formula(formula), m_walker(formula), m_parser(parser) {}

    std::optional<TRewriteHint> Run() {
        for (std::size_t i = m_walker.SkipBlanks(0); i < m_formula.size(); i = m_walker.SkipBlanks(i)) {
            const std::size_t end = m_walker.EndOfToken(i);
            if (m_isBehindValue && StartsValue(i, end) && !(m_isBehindNumber && IsNumber(i)))
                return HintAt(i, end);
            Pass(i, end);
            i = end;
        }
        return std::nullopt;
    }

private:
    bool IsWord(std::size_t place, std::size_t end) const {
        const char first = m_walker.At(place);
        const bool isName = IsNameStart(first) || (static_cast<unsigned char>(first) & 0x80) != 0;
        return isName && !IsWordOperator(m_walker.Text(place, end));
    }

    bool IsNumber(std::size_t place) const {
        const char first = m_walker.At(place);
        return IsDigitByte(first) || (first == '.' && IsDigitByte(m_walker.At(place + 1)));
    }

    bool StartsValue(std::size_t place, std::size_t end) const {
        return m_walker.At(place) == '(' || IsNumber(place) || IsWord(place, end);
    }

    // A name in front of a bracket has arguments unless it is known to have none or is that of a quantity.
    bool TakesArguments(std::size_t place, std::size_t end) const {
        if (m_walker.At(m_walker.SkipBlanks(end)) != '(') return false;
        const std::string name = LowerCased(m_walker.Text(place, end));
        if (const TExprWord* word = m_parser.FindWord(name)) return !word->IsValue();
        return name.size() > kLongestQuantity || !NearestTo(name).empty();
    }

    // Notes what the token is for the next one.
    void Pass(std::size_t place, std::size_t end) {
        const char first = m_walker.At(place);
        if (first == '(') m_open.push_back(m_nameOfCall.value_or(place));
        m_nameOfCall.reset();
        m_isBehindValue = false;
        m_isBehindNumber = IsNumber(place);
        if (first == ')') {
            m_valueStart = m_open.empty() ? 0 : m_open.back();
            if (!m_open.empty()) m_open.pop_back();
            m_isBehindValue = true;
        } else if (IsWord(place, end) && TakesArguments(place, end)) {
            m_nameOfCall = place;
        } else if (IsNumber(place) || IsWord(place, end)) {
            m_valueStart = place;
            m_isBehindValue = true;
        }
    }

    TRewriteHint HintAt(std::size_t place, std::size_t end) const {
        const std::size_t behind = std::max(m_walker.EndOfValue(place), end);
        const std::string left(Trimmed(m_formula.substr(m_valueStart, place - m_valueStart)));
        const std::string product = left + '*' + std::string(m_walker.Text(place, behind));
        return {m_valueStart, behind - m_valueStart, "a product needs its sign: write " + product,
                std::string(m_formula.substr(0, m_valueStart)) + product +
                    std::string(m_formula.substr(behind))};
    }

    std::string_view m_formula;
    TWalker m_walker;
    TExpressionParser& m_parser;
    std::vector<std::size_t> m_open;         ///< where the values start whose brackets are open
    std::optional<std::size_t> m_nameOfCall; ///< of the function whose bracket comes next
    std::size_t m_valueStart = 0;            ///< of the value that has just ended
    bool m_isBehindValue = false;
    bool m_isBehindNumber = false;
};

template <class TFind>
std::optional<TRewriteHint> FirstWithAllRewritten(std::string_view formula, TFind find) {
    std::optional<TRewriteHint> first = find(formula);
    if (!first) return first;
    for (int i = 0; i < kMostRewritings; ++i) {
        const std::optional<TRewriteHint> next = find(first->Rewritten);
        if (!next) break;
        first->Rewritten = next->Rewritten;
    }
    return first;
}

} // namespace

std::optional<TRewriteHint> FindSignHint(std::string_view formula) {
    return FirstWithAllRewritten(formula, [](std::string_view text) { return TSignFinder(text).Run(); });
}

std::optional<TRewriteHint> FindProductHint(std::string_view formula, TExpressionParser& parser) {
    return FirstWithAllRewritten(formula,
                                 [&](std::string_view text) { return TProductFinder(text, parser).Run(); });
}

std::optional<TNameHint> FindNameHint(std::string_view formula, TExpressionParser& parser) {
    const TWalker walker(formula);
    std::size_t column = 1;
    for (std::size_t i = 0; i < formula.size();) {
        const std::size_t end = walker.EndOfToken(i);
        const std::string name = LowerCased(formula.substr(i, end - i));
        const bool isCalled = IsName(name) && walker.At(walker.SkipBlanks(end)) == '(';
        if (isCalled && !parser.FindWord(name))
            return TNameHint{std::string(formula.substr(i, end - i)), i, column, NearestTo(name)};
        for (; i < end; ++i)
            if (!IsContinuation(formula[i])) ++column;
    }
    return std::nullopt;
}

std::string WithNameHint(const std::string& error, std::string_view formula, TExpressionParser& parser) {
    std::string text = error;
    if (const auto name = FindNameHint(formula, parser)) {
        text += ": " + name->Text();
        if (!name->Nearest.empty()) return text;
    }
    const auto product = FindProductHint(formula, parser);
    return product ? text + ": " + product->Text : text;
}

} // namespace lumoplot
