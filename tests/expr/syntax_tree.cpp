#include "expr/syntax_tree.h"
#include "common/special_values.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace lumoplot::tests {
namespace {

double Whole(double a, double b, bool remainder) {
    a = std::nearbyint(a);
    b = std::nearbyint(b);
    if (!(std::fabs(a) < 9.2e18) || !(std::fabs(b) < 9.2e18) || b == 0) return kNaN;
    const auto m = static_cast<std::int64_t>(a);
    const auto n = static_cast<std::int64_t>(b);
    return static_cast<double>(remainder ? m % n : m / n);
}

double Byte(double a) {
    return std::fabs(a) < 9.2e18 ? std::llrint(a) & 255 : 0;
}
bool NotFinite(double a, double b = 0) {
    return !std::isfinite(a) || !std::isfinite(b);
}

double WholePower(double a, double b) {
    const double n = std::nearbyint(b);
    if (std::isnan(a) || std::isnan(n) || (a == 0 && n < 0)) return kNaN;
    if (n < 0 || n > 8) return std::pow(a, n);
    // The products of the language: squares of halves, odd powers from the even one below, but a*a*a.
    const double square = a * a;
    const double cube = square * a;
    const double powers[] = {1,
                             a,
                             square,
                             cube,
                             square * square,
                             square * square * a,
                             cube * cube,
                             cube * cube * a,
                             (square * square) * (square * square)};
    return powers[static_cast<int>(n)];
}

double Fact(double a) {
    const double n = std::nearbyint(a);
    if (std::isnan(n)) return kNaN;
    if (n < 1.1) return 1;
    return n > 200 ? kInfinity : n * Fact(n - 1);
}

struct TMeaning {
    const char* name;
    bool isOperator;
    int priority;
    int args;
    double (*apply)(const double* a);
};

const TMeaning kMeanings[] = {
    {"pi", false, 0, 0, [](const double*) { return 3.141592653589793; }},
    {"!", true, 10, 1, [](const double* a) { return Fact(a[0]); }},
    {"%", true, 10, 1, [](const double* a) { return a[0] * 0.01; }},
    {"-@", true, 10, 1, [](const double* a) { return -a[0]; }},
    {"+@", true, 10, 1, [](const double* a) { return a[0]; }},
    {"^", true, 20, 2,
     [](const double* a) {
         return std::isnan(a[0]) || std::isnan(a[1]) || (a[0] == 0 && a[1] < 0) ? kNaN : std::pow(a[0], a[1]);
     }},
    {"^@", true, 20, 2, [](const double* a) { return WholePower(a[0], a[1]); }},
    {"*", true, 30, 2, [](const double* a) { return a[0] * a[1]; }},
    {"/", true, 30, 2, [](const double* a) { return a[1] == 0 ? kNaN : a[0] / a[1]; }},
    {"div", true, 30, 2, [](const double* a) { return Whole(a[0], a[1], false); }},
    {"mod", true, 30, 2, [](const double* a) { return Whole(a[0], a[1], true); }},
    {"+", true, 40, 2, [](const double* a) { return a[0] + a[1]; }},
    {"-", true, 40, 2, [](const double* a) { return a[0] - a[1]; }},
    {">", true, 50, 2, [](const double* a) { return a[0] > a[1] ? 1.0 : 0.0; }},
    {">=", true, 50, 2, [](const double* a) { return a[0] + 1e-20 >= a[1] ? 1.0 : 0.0; }},
    {"<=", true, 50, 2, [](const double* a) { return a[1] + 1e-20 >= a[0] ? 1.0 : 0.0; }},
    {"<", true, 50, 2, [](const double* a) { return a[0] < a[1] ? 1.0 : 0.0; }},
    {"<>", true, 50, 2, [](const double* a) { return std::fabs(a[0] - a[1]) > 1e-30 ? 1.0 : 0.0; }},
    {"=", true, 50, 2, [](const double* a) { return std::fabs(a[0] - a[1]) <= 1e-30 ? 1.0 : 0.0; }},
    {"not", true, 60, 1,
     [](const double* a) {
         return NotFinite(a[0]) ? kNaN : Byte(a[0]) + (std::fmod(Byte(a[0]), 2) == 0 ? 1 : -1);
     }},
    {"or", true, 70, 2,
     [](const double* a) { return NotFinite(a[0], a[1])         ? kNaN
                                  : Byte(a[0]) + Byte(a[1]) > 0 ? 1.0
                                                                : 0.0; }},
    {"and", true, 70, 2,
     [](const double* a) { return NotFinite(a[0], a[1])         ? kNaN
                                  : Byte(a[0]) * Byte(a[1]) > 0 ? 1.0
                                                                : 0.0; }},
    {"xor", true, 70, 2,
     [](const double* a) {
         return NotFinite(a[0], a[1]) ? kNaN : double(int(Byte(a[0])) ^ int(Byte(a[1])));
     }},
    {":=", true, 200, 2, nullptr},
    {"exp", false, 0, 1,
     [](const double* a) { return a[0] >= 709.75    ? kNaN
                                  : a[0] <= -744.44 ? 0
                                                    : std::exp(a[0]); }},
    {"sqr", false, 0, 1, [](const double* a) { return a[0] * a[0]; }},
    {"sqrt", false, 0, 1, [](const double* a) { return std::sqrt(a[0]); }},
    {"abs", false, 0, 1, [](const double* a) { return std::fabs(a[0]); }},
    {"round", false, 0, 1, [](const double* a) { return std::nearbyint(a[0]) + 0.0; }},
    {"trunc", false, 0, 1, [](const double* a) { return std::trunc(a[0]) + 0.0; }},
    {"ln", false, 0, 1, [](const double* a) { return a[0] <= 0 ? kNaN : std::log(a[0]); }},
    {"log10", false, 0, 1, [](const double* a) { return a[0] <= 0 ? kNaN : std::log10(a[0]); }},
    {"logn", false, 0, 2,
     [](const double* a) {
         if (!(a[0] > 0 && a[1] > 0) || a[0] == 1) return kNaN;
         if (a[0] == 2 || a[0] == 10) return a[0] == 2 ? std::log2(a[1]) : std::log10(a[1]);
         return std::log(a[1]) / std::log(a[0]);
     }},
    {"power", false, 0, 2, [](const double* a) { return kMeanings[5].apply(a); }},
    {"pow", false, 0, 2, [](const double* a) { return kMeanings[5].apply(a); }},
    {"intpower", false, 0, 2, [](const double* a) { return WholePower(a[0], a[1]); }},
    {"max", false, 0, 2, [](const double* a) { return a[0] >= a[1] ? a[0] : a[1]; }},
    {"min", false, 0, 2, [](const double* a) { return a[0] <= a[1] ? a[0] : a[1]; }},
    {"sin", false, 0, 1, [](const double* a) { return std::sin(a[0]); }},
    {"cos", false, 0, 1, [](const double* a) { return std::cos(a[0]); }},
    {"tan", false, 0, 1, [](const double* a) { return std::tan(a[0]); }},
    {"arcsin", false, 0, 1, [](const double* a) { return std::asin(a[0]); }},
    {"arccos", false, 0, 1, [](const double* a) { return std::acos(a[0]); }},
    {"arctan2", false, 0, 2, [](const double* a) { return std::atan2(a[0], a[1]); }},
    {"sinh", false, 0, 1, [](const double* a) { return std::sinh(a[0]); }},
    {"cosh", false, 0, 1, [](const double* a) { return std::cosh(a[0]); }},
    {"tanh", false, 0, 1, [](const double* a) { return std::tanh(a[0]); }},
    {"arcsinh", false, 0, 1, [](const double* a) { return std::asinh(a[0]); }},
    {"arccosh", false, 0, 1, [](const double* a) { return std::acosh(a[0]); }},
    {"arctanh", false, 0, 1, [](const double* a) { return std::fabs(a[0]) >= 1 ? kNaN : std::atanh(a[0]); }},
    {"degtorad", false, 0, 1, [](const double* a) { return a[0] * (3.141592653589793 / 180); }},
    {"radtodeg", false, 0, 1, [](const double* a) { return a[0] * (180 / 3.141592653589793); }},
};

const TMeaning* MeaningOf(const std::string& name) {
    for (const TMeaning& meaning : kMeanings)
        if (name == meaning.name) return &meaning;
    return nullptr;
}

struct TToken {
    std::string text;
    const TMeaning* meaning = nullptr;

    bool Is(const char* other) const { return text == other; }
    bool IsOperator() const { return meaning && meaning->isOperator; }
    bool IsString() const { return text[0] == '\'' && comparison.empty(); }
    bool IsNumber() const { return std::isdigit(static_cast<unsigned char>(text[0])) || text[0] == '.'; }
    bool TakesArguments() const { return meaning && meaning->args > 0; }
    /// "0" or "1" for a comparison of strings.
    std::string comparison;
};

using TTokens = std::vector<TToken>;

std::size_t NumberEnd(const std::string& s, std::size_t i) {
    const auto digits = [&] {
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) ++i;
    };
    digits();
    if (s[i] == '.') ++i, digits();
    if (s[i] == 'e') {
        ++i;
        if (s[i] == '+' || s[i] == '-') ++i;
        digits();
    }
    return i;
}

void CheckNumber(const std::string& text) {
    char* end = nullptr;
    std::strtod(text.c_str(), &end);
    if (*end != 0 || text == ".") throw TTreeError("'" + text + "' is not a valid floating point value");
}

TTokens Split(const std::string& s) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || c == '_'; };
    TTokens tokens;
    for (std::size_t i = 0; i < s.size();) {
        if (s[i] == ' ') {
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        if (std::isdigit(static_cast<unsigned char>(s[i])) || s[i] == '.') {
            end = NumberEnd(s, i);
            CheckNumber(s.substr(i, end - i));
        } else if (s[i] == '\'') {
            while (end < s.size() && s[end] != '\'') ++end;
            end = std::min(end + 1, s.size());
        } else if (isLetter(s[i])) {
            while (end < s.size() && (isLetter(s[end]) || std::isdigit(static_cast<unsigned char>(s[end]))))
                ++end;
        } else {
            for (const char* two : {":=", "<=", "<>", "<<", ">=", ">>"})
                if (s.compare(i, 2, two) == 0) end = i + 2;
        }
        TToken token;
        token.text = s.substr(i, end - i);
        token.meaning = MeaningOf(token.text);
        tokens.push_back(token);
        i = end;
    }
    return tokens;
}

TToken Word(const char* name) {
    return {name, MeaningOf(name), {}};
}

bool StartsValue(const TTokens& tokens) {
    return tokens.empty() || tokens.back().Is("(") || tokens.back().Is(",");
}

TTokens FoldSigns(const TTokens& tokens) {
    TTokens out;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const auto isSign = [&](std::size_t k) {
            return k < tokens.size() && (tokens[k].Is("+") || tokens[k].Is("-"));
        };
        const bool here = StartsValue(out) || (out.back().IsOperator() && out.back().meaning->args == 2);
        if (!isSign(i) || !here) {
            out.push_back(tokens[i]);
            continue;
        }
        bool minus = tokens[i].Is("-");
        while (isSign(i + 1)) minus ^= tokens[++i].Is("-");
        out.push_back(Word(minus ? "-@" : "+@"));
    }
    return out;
}

TTokens FoldNots(const TTokens& tokens) {
    TTokens out;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (!tokens[i].Is("not") || !(StartsValue(out) || out.back().IsOperator())) {
            out.push_back(tokens[i]);
            continue;
        }
        int count = 1;
        while (i + 1 < tokens.size() && tokens[i + 1].Is("not")) ++i, ++count;
        if (count % 2) out.push_back(tokens[i]);
    }
    return out;
}

std::string Unquoted(const std::string& s) {
    return s.size() > 1 && s.back() == '\'' ? s.substr(1, s.size() - 2) : s;
}

TToken CompareStrings(const TToken& left, const TToken& op, const TToken& right) {
    const int order = Unquoted(left.text).compare(Unquoted(right.text));
    bool holds;
    if (op.Is("="))
        holds = order == 0;
    else if (op.Is(">"))
        holds = order > 0;
    else if (op.Is("<"))
        holds = order < 0;
    else if (op.Is(">="))
        holds = order >= 0;
    else if (op.Is("<="))
        holds = order <= 0;
    else
        throw TTreeError(op.text + " is not a valid string operand");
    return {op.text, nullptr, holds ? "1" : "0"};
}

TTokens Rewrite(TTokens tokens) {
    const auto count = [&](const char* text) {
        return std::count_if(tokens.begin(), tokens.end(), [&](const TToken& t) { return t.Is(text); });
    };
    if (count("(") != count(")")) throw TTreeError("Unequal brackets");
    tokens = FoldNots(FoldSigns(tokens));
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (tokens[i].Is("^") && tokens[i + 1].IsNumber() &&
            tokens[i + 1].text.find('.') == std::string::npos)
            tokens[i] = Word("^@");
    for (int i = static_cast<int>(tokens.size()) - 3; i >= 0; --i) {
        const auto at = tokens.begin() + i;
        if (at + 2 >= tokens.end() || !at[0].IsString() || !at[1].IsOperator() || !at[2].IsString()) continue;
        *at = CompareStrings(at[0], at[1], at[2]);
        tokens.erase(at + 1, at + 3);
    }
    return tokens;
}

} // namespace

struct TSyntaxTree::TNode {
    const TMeaning* meaning = nullptr;
    std::vector<std::unique_ptr<TNode>> args;
    double value = 0;
    std::string variable;

    bool IsLeaf() const { return !meaning; }
    double Evaluate(TVariables& variables) const;
};

namespace {

using TNode = TSyntaxTree::TNode;
using TNodePtr = std::unique_ptr<TNode>;

class TBuilder {
public:
    explicit TBuilder(const std::string& text) : m_text(text) {}

    TNodePtr Build(TTokens tokens) {
        while (tokens.size() > 1 && tokens[0].Is("(") && Closing(tokens, 0) == tokens.size() - 1)
            tokens = TTokens(tokens.begin() + 1, tokens.end() - 1);
        if (tokens.size() == 1) return Single(tokens[0]);
        TNodePtr current;
        std::size_t position = 0;
        while (position < tokens.size()) {
            const std::size_t split = FindSplit(tokens, position);
            auto node = std::make_unique<TNode>();
            node->meaning = tokens[split].meaning;
            if (current) node->args.push_back(std::move(current));
            position = tokens[split].IsOperator() ? TakeOperator(tokens, position, split, *node)
                                                  : TakeFunction(tokens, position, split, *node);
            if (static_cast<int>(node->args.size()) != node->meaning->args) Fail();
            current = std::move(node);
        }
        if (!current) Fail();
        return current;
    }

private:
    [[noreturn]] void Fail() const { throw TTreeError("Syntax error in expression " + m_text); }

    std::size_t Closing(const TTokens& tokens, std::size_t open) const {
        int depth = 0;
        for (std::size_t i = open; i < tokens.size(); ++i) {
            depth += tokens[i].Is("(") ? 1 : tokens[i].Is(")") ? -1 : 0;
            if (depth == 0) return i;
        }
        Fail();
    }

    TNodePtr Single(const TToken& token) const {
        auto node = std::make_unique<TNode>();
        if (!token.comparison.empty())
            node->value = token.comparison == "1";
        else if (token.IsNumber())
            node->value = std::strtod(token.text.c_str(), nullptr);
        else if (token.IsString() || token.TakesArguments() || token.Is("(") || token.Is(")") ||
                 token.Is(","))
            Fail();
        else if (token.meaning)
            node->meaning = token.meaning;
        else
            node->variable = token.text;
        return node;
    }

    std::size_t FindSplit(const TTokens& tokens, std::size_t from) const {
        int depth = 0;
        for (std::size_t i = from; i < tokens.size(); ++i) {
            depth += tokens[i].Is("(") ? 1 : tokens[i].Is(")") ? -1 : 0;
            if (depth < 0) Fail();
            if (depth == 0 && tokens[i].TakesArguments() && tokens[i].comparison.empty()) return i;
        }
        Fail();
    }

    std::size_t TakeOperator(const TTokens& tokens, std::size_t from, std::size_t split, TNode& node) {
        if (split > from) {
            if (!node.args.empty()) Fail();
            node.args.push_back(Build(TTokens(tokens.begin() + long(from), tokens.begin() + long(split))));
        }
        std::size_t end = split + 1;
        for (int depth = 0; end < tokens.size(); ++end) {
            depth += tokens[end].Is("(") ? 1 : tokens[end].Is(")") ? -1 : 0;
            if (depth == 0 && tokens[end].IsOperator() && tokens[end].comparison.empty() &&
                tokens[end].meaning->priority >= tokens[split].meaning->priority)
                break;
        }
        if (end > split + 1)
            node.args.push_back(Build(TTokens(tokens.begin() + long(split) + 1, tokens.begin() + long(end))));
        return end;
    }

    std::size_t TakeFunction(const TTokens& tokens, std::size_t from, std::size_t split, TNode& node) {
        if (split != from || !node.args.empty() || split + 1 >= tokens.size() || !tokens[split + 1].Is("("))
            Fail();
        const std::size_t close = Closing(tokens, split + 1);
        TTokens part;
        int depth = 0;
        for (std::size_t i = split + 2; i <= close; ++i) {
            depth += tokens[i].Is("(") ? 1 : tokens[i].Is(")") && i < close ? -1 : 0;
            if (i == close || (depth == 0 && tokens[i].Is(","))) {
                if (part.empty()) Fail();
                node.args.push_back(Build(part));
                part.clear();
            } else {
                part.push_back(tokens[i]);
            }
        }
        return close + 1;
    }

    std::string m_text;
};

} // namespace

double TSyntaxTree::TNode::Evaluate(TVariables& variables) const {
    const auto known = [&](const std::string& name) {
        const auto entry = variables.find(name);
        return entry == variables.end() ? kNaN : entry->second;
    };
    if (!variable.empty()) return known(variable);
    if (!meaning) return value;
    // Constants and variables are read when the operation runs, after what stands to their right was
    // computed.
    double operands[2] = {};
    for (const bool leaves : {false, true})
        for (std::size_t k = 0; k < args.size(); ++k)
            if (args[k]->IsLeaf() == leaves) operands[k] = args[k]->Evaluate(variables);
    if (meaning->apply) return meaning->apply(operands);
    if (!args[0]->variable.empty()) variables[args[0]->variable] = operands[1];
    return operands[1];
}

TSyntaxTree::TSyntaxTree(const std::string& text) {
    std::string lower = text;
    for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!lower.empty() && isBlank(lower.back())) lower.pop_back();
    while (!lower.empty() && isBlank(lower.front())) lower.erase(0, 1);
    const TTokens tokens = Rewrite(Split(lower));
    m_root = TBuilder(text).Build(tokens);
}

TSyntaxTree::~TSyntaxTree() = default;

double TSyntaxTree::Evaluate(TVariables& variables) const {
    return m_root->Evaluate(variables);
}

} // namespace lumoplot::tests
