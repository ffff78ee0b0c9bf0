#include "expr/tokeniser.h"

#include "expr/names.h"

namespace lumoplot {
namespace {

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
        if ((c >= '0' && c <= '9') || c == '.') {
            m_position = EndOfNumber(m_text, start);
            const std::string_view number = Since(start);
            TakeConstant(std::make_unique<TDoubleConstant>(number, number));
        } else if (c == '\'') {
            m_position = EndOfString(m_text, start);
            TakeConstant(std::make_unique<TStringConstant>(Since(start)));
        } else {
            SkipWord(c);
            TakeWord(Since(start));
        }
    }

    std::string_view Since(std::size_t start) const { return m_text.substr(start, m_position - start); }

    void SkipWord(char first) {
        ++m_position;
        const char second = At(m_position);
        if (IsNameStart(first)) {
            m_position = EndOfName(m_text, m_position);
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
