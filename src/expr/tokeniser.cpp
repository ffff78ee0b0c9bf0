#include "expr/tokeniser.h"

namespace lumoplot {
namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || c == '_';
}
bool IsNamePart(char c) {
    return IsNameStart(c) || IsDigit(c);
}
bool StartsSequence(char c) {
    return static_cast<unsigned char>(c) >= 0xC0;
}
bool ContinuesSequence(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

class TTokeniser {
public:
    TTokeniser(std::string_view text, const TExpressList& dictionary, TNewWords& made,
               TExprCollection& tokens)
        : m_text(text), m_dictionary(dictionary), m_made(made), m_tokens(tokens) {}

    void Run() {
        for (;;) {
            while (At(m_position) == ' ') ++m_position;
            if (m_position >= m_text.size()) return;
            TakeToken();
        }
    }

private:
    // Behind the end stands a character that no token goes on with.
    char At(std::size_t position) const { return position < m_text.size() ? m_text[position] : '\0'; }

    void TakeToken() {
        const char c = m_text[m_position];
        const std::size_t start = m_position;
        if (IsDigit(c) || c == '.') {
            SkipNumber();
            const std::string_view number = Since(start);
            TakeConstant(std::make_unique<TDoubleConstant>(number, number));
        } else if (c == '\'') {
            SkipString();
            TakeConstant(std::make_unique<TStringConstant>(Since(start)));
        } else {
            SkipWord(c);
            TakeWord(Since(start));
        }
    }

    std::string_view Since(std::size_t start) const { return m_text.substr(start, m_position - start); }

    void SkipDigits() {
        while (IsDigit(At(m_position))) ++m_position;
    }

    void SkipNumber() {
        SkipDigits();
        if (At(m_position) == '.') {
            ++m_position;
            SkipDigits();
        }
        if (At(m_position) != 'e') return;
        ++m_position;
        if (At(m_position) == '+' || At(m_position) == '-') ++m_position;
        SkipDigits();
    }

    void SkipString() {
        const std::size_t quote = m_text.find('\'', m_position + 1);
        m_position = quote == std::string_view::npos ? m_text.size() : quote + 1;
    }

    void SkipWord(char first) {
        ++m_position;
        const char second = At(m_position);
        if (IsNameStart(first)) {
            while (IsNamePart(At(m_position))) ++m_position;
        } else if (first == ':') {
            if (second == '=') ++m_position;
        } else if (first == '<' || first == '>') {
            if (second == '=' || second == '>' || (first == '<' && second == '<')) ++m_position;
        } else if (StartsSequence(first)) {
            while (ContinuesSequence(At(m_position))) ++m_position; // one character of several bytes
        }
    }

    void TakeConstant(std::unique_ptr<TExprWord> constant) {
        m_tokens.Add(constant.get());
        m_made.Constants.Add(std::move(constant));
    }

    void TakeWord(std::string_view name) {
        TExprWord* word = m_dictionary.Find(name);
        if (!word) word = m_made.Variables.Find(name);
        if (!word) {
            auto variable = std::make_unique<TGeneratedVariable>(name);
            word = variable.get();
            m_made.Variables.Insert(std::move(variable));
        }
        m_tokens.Add(word);
    }

    std::string_view m_text;
    const TExpressList& m_dictionary;
    TNewWords& m_made;
    TExprCollection& m_tokens;
    std::size_t m_position = 0;
};

} // namespace

void Tokenise(std::string_view text, const TExpressList& dictionary, TNewWords& made,
              TExprCollection& tokens) {
    TTokeniser(text, dictionary, made, tokens).Run();
}

} // namespace lumoplot
