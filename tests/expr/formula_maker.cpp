#include "expr/formula_maker.h"

#include <initializer_list>
#include <utility>

namespace lumoplot::tests {
namespace {

const char* const kNumbers[] = {"0",    "1",   "2",   "3",   "7",   "0.5",  "2.25",
                                "1e-3", "12.", ".75", "100", "1E2", "1e20", "255"};
const char* const kFunctions[] = {"exp",   "sqr",  "sqrt",    "abs",     "round",   "trunc",    "ln",
                                  "log10", "sin",  "cos",     "tan",     "arcsin",  "arccos",   "sinh",
                                  "cosh",  "tanh", "arcsinh", "arccosh", "arctanh", "DegToRad", "radtodeg"};
const char* const kPairs[] = {"logN", "power", "pow", "intpower", "max", "min", "arctan2"};
const char* const kOperators[] = {"+",  "-",  "*", "/",  "^", " div ", " mod ", ">",
                                  ">=", "<=", "<", "<>", "=", " or ",  " and ", " xor "};
const char* const kSmoothNumbers[] = {"0.5", "1", "2", "3", "0.7", "1.3"};
const char* const kSmoothOperators[] = {"+", "-", "*", "/"};
const char* const kSmoothFunctions[] = {"exp",  "sqr",     "sqrt",    "ln",      "log10",    "sin",
                                        "cos",  "tan",     "arcsin",  "arccos",  "sinh",     "cosh",
                                        "tanh", "arcsinh", "arccosh", "arctanh", "degtorad", "radtodeg",
                                        "abs",  "-",       "3!*",     "0.5%*"};
const char* const kStrings[] = {"'a'", "'b'", "'A'", "''"};
const char* const kComparisons[] = {"=", ">", "<", ">=", "<="};

template <std::size_t Size>
std::string Pick(TFormulaMaker& maker, const char* const (&texts)[Size]) {
    return texts[maker.Below(static_cast<int>(Size))];
}

/// Braces, unlike a chain of "+", make the random parts in one order with every compiler.
std::string Join(std::initializer_list<std::string> parts) {
    std::string text;
    for (const std::string& part : parts) text += part;
    return text;
}

} // namespace

std::string TFormulaMaker::Value() {
    const int kind = Below(20);
    if (kind < 8) return Below(3) ? "x" : "X";
    if (kind < 11) return Below(2) ? "y" : "z";
    if (kind == 11) return "pi";
    if (kind == 12) return Join({"new_", std::to_string(Below(3))});
    return Pick(*this, kNumbers);
}

std::string TFormulaMaker::Any(int depth) {
    if (depth <= 0) return Value();
    const std::string blank = Blank();
    switch (Below(18)) {
    case 0: return Join({"-", blank, Any(depth - 1)});
    case 1: return Join({(Below(2) ? "- -" : "+-"), Any(depth - 1)});
    case 2: return Join({"(", blank, Any(depth - 1), ")"});
    case 3: return Join({"(", Any(depth - 1), ")", (Below(2) ? "!" : "%")});
    case 4: return Join({(Below(2) ? "not " : "not not "), Any(depth - 1)});
    case 5: return Join({Any(depth - 1), "^", blank, std::to_string(Below(10))});
    case 6: return Join({Pick(*this, kStrings), Pick(*this, kComparisons), Pick(*this, kStrings)});
    case 7: return Join({"(new_", std::to_string(Below(3)), blank, ":=", Any(depth - 1), ")"});
    case 8:
    case 9:
    case 10: return Join({Pick(*this, kFunctions), blank, "(", Any(depth - 1), ")"});
    case 11:
    case 12: return Join({Pick(*this, kPairs), "(", Any(depth - 1), ",", blank, Any(depth - 1), ")"});
    default: return Join({Any(depth - 1), blank, Pick(*this, kOperators), blank, Any(depth - 1)});
    }
}

std::string TFormulaMaker::Smooth(int depth) {
    if (depth <= 0) return Below(3) == 0 ? Pick(*this, kSmoothNumbers) : std::string(1, "xyz"[Below(3)]);
    switch (Below(10)) {
    case 0: return Join({"(", Smooth(depth - 1), ")^", std::to_string(Below(10))});
    case 1: return Join({"(", Smooth(depth - 1), ")^(", Smooth(depth - 1), ")"});
    case 2: return Join({Pick(*this, kPairs), "(", Smooth(depth - 1), ",", Smooth(depth - 1), ")"});
    case 3:
    case 4:
    case 5: return Join({Pick(*this, kSmoothFunctions), "(", Smooth(depth - 1), ")"});
    default:
        return Join(
            {"(", Smooth(depth - 1), ")", Pick(*this, kSmoothOperators), "(", Smooth(depth - 1), ")"});
    }
}

std::string TFormulaMaker::Broken(std::string text) {
    static const std::string characters = "()+-*/^!%<>=:,.'x1e @";
    for (int changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
        const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
        const char other = characters[static_cast<std::size_t>(Below(static_cast<int>(characters.size())))];
        switch (Below(4)) {
        case 0: text.erase(at, 1); break;
        case 1: text.insert(at, 1, other); break;
        case 2: text[at] = other; break;
        default: std::swap(text[at], text[text.size() - 1 - at]);
        }
    }
    return text;
}

} // namespace lumoplot::tests
