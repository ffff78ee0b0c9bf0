// From the text of a formula to its words: cutting the text into tokens, and folding what the language writes
// in two ways (signs, "not", whole powers, comparisons of strings).
#pragma once

#include "expr/expr_list.h"

#include <string_view>

namespace lumoplot {

/// What a formula brings with it: it joins the parser only when the whole formula compiles.
struct TNewWords {
    TOCollection Constants{10};
    TExpressList Variables{4};
};

/// The words of `text`, which is in lower case: known names from `dictionary`, numbers, strings and unknown
/// names as new words in `made`. Throws EConvertError for a malformed number.
void Tokenise(std::string_view text, const TExpressList& dictionary, TNewWords& made,
              TExprCollection& tokens);

/// Throws EParserException "Unequal brackets", or "OPERATOR is not a valid string operand".
void CheckAndRewrite(const TExpressList& dictionary, TNewWords& made, TExprCollection& tokens);

} // namespace lumoplot
