#include "expr/parser_exception.h"
#include "expr/tokeniser.h"

#include <algorithm>
#include <iterator>

namespace lumoplot {
namespace {

using TWords = std::vector<TExprWord*>;

bool IsNamed(const TExprWord* word, std::string_view name) {
    return word->Name() == name;
}
bool IsOperatorNamed(const TExprWord* word, std::string_view name) {
    return word->IsOperator() && IsNamed(word, name);
}
bool IsPlusOrMinus(const TExprWord* word) {
    return IsOperatorNamed(word, "+") || IsOperatorNamed(word, "-");
}
bool IsNot(const TExprWord* word) {
    return IsOperatorNamed(word, "not");
}
bool IsString(const TExprWord* word) {
    return word->ResultType() == TResultType::String;
}

// A comma starts an argument as a bracket does: max(x,-1).
bool StartsAValue(const TExprWord* word) {
    return word->ResultType() == TResultType::LeftBracket || word->ResultType() == TResultType::Comma;
}

bool IsSign(const TWords& before) {
    return before.empty() || StartsAValue(before.back()) ||
           (before.back()->IsOperator() && before.back()->ArgCount() == 2);
}

bool StartsNots(const TWords& before) {
    return before.empty() || StartsAValue(before.back()) || before.back()->IsOperator();
}

bool IsWholeNumberText(const TExprWord* word) {
    const std::string& name = word->Name();
    return word->IsValue() && name[0] >= '0' && name[0] <= '9' && name.find('.') == std::string::npos;
}

void CheckBrackets(const TWords& tokens) {
    const auto count = [&](TResultType type) {
        return std::count_if(tokens.begin(), tokens.end(),
                             [&](auto* word) { return word->ResultType() == type; });
    };
    if (count(TResultType::LeftBracket) != count(TResultType::RightBracket))
        throw EParserException("Unequal brackets");
}

// A derived parser may have left the folded forms out of its dictionary.
TExprWord* KnownWord(const TExpressList& dictionary, std::string_view name) {
    if (TExprWord* word = dictionary.Find(name)) return word;
    throw EParserException("Can not find operand/function");
}

TWords FoldSigns(const TWords& tokens, const TExpressList& dictionary) {
    TWords folded;
    for (auto token = tokens.begin(); token != tokens.end();) {
        if (!IsPlusOrMinus(*token) || !IsSign(folded)) {
            folded.push_back(*token++);
            continue;
        }
        const auto behind = std::find_if_not(token, tokens.end(), IsPlusOrMinus);
        const auto minuses = std::count_if(token, behind, [](auto* word) { return IsNamed(word, "-"); });
        folded.push_back(KnownWord(dictionary, minuses % 2 != 0 ? "-@" : "+@"));
        token = behind;
    }
    return folded;
}

TWords FoldNots(const TWords& tokens) {
    TWords folded;
    for (auto token = tokens.begin(); token != tokens.end();) {
        if (!IsNot(*token) || !StartsNots(folded)) {
            folded.push_back(*token++);
            continue;
        }
        const auto behind = std::find_if_not(token, tokens.end(), IsNot);
        if (std::distance(token, behind) % 2 != 0) folded.push_back(*token);
        token = behind;
    }
    return folded;
}

void MarkIntegerPowers(TWords& tokens, const TExpressList& dictionary) {
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (IsOperatorNamed(tokens[i], "^") && IsWholeNumberText(tokens[i + 1]))
            tokens[i] = KnownWord(dictionary, "^@");
}

TWords JoinStringComparisons(const TWords& tokens, TOCollection& constants) {
    TWords joined;
    for (std::size_t end = tokens.size(); end > 0;) {
        const bool comparison = end >= 3 && IsString(tokens[end - 3]) && tokens[end - 2]->IsOperator() &&
                                IsString(tokens[end - 1]);
        if (!comparison) {
            joined.push_back(tokens[--end]);
            continue;
        }
        auto word =
            std::make_unique<TLogicalStringOper>(tokens[end - 2]->Name(), tokens[end - 3], tokens[end - 1]);
        joined.push_back(word.get());
        constants.Add(std::move(word));
        end -= 3;
    }
    std::reverse(joined.begin(), joined.end());
    return joined;
}

} // namespace

void CheckAndRewrite(const TExpressList& dictionary, TNewWords& made, TExprCollection& tokens) {
    TWords words(tokens.begin(), tokens.end());
    CheckBrackets(words);
    words = FoldNots(FoldSigns(words, dictionary));
    MarkIntegerPowers(words, dictionary);
    words = JoinStringComparisons(words, made.Constants);
    tokens.Clear();
    for (TExprWord* word : words) tokens.Add(word);
}

} // namespace lumoplot
