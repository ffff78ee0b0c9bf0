#include "graph/drawing/axes/rich_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace lumoplot {
namespace {

struct TNamedSign {
    const char* Name;
    char16_t Sign;
};

constexpr TNamedSign kSigns[] = {
    {"alpha", u'α'},  {"beta", u'β'},   {"gamma", u'γ'},   {"delta", u'δ'},      {"epsilon", u'ε'},
    {"zeta", u'ζ'},   {"eta", u'η'},    {"theta", u'θ'},   {"iota", u'ι'},       {"kappa", u'κ'},
    {"lambda", u'λ'}, {"mu", u'μ'},     {"nu", u'ν'},      {"xi", u'ξ'},         {"pi", u'π'},
    {"rho", u'ρ'},    {"sigma", u'σ'},  {"tau", u'τ'},     {"upsilon", u'υ'},    {"phi", u'φ'},
    {"chi", u'χ'},    {"psi", u'ψ'},    {"omega", u'ω'},   {"Gamma", u'Γ'},      {"Delta", u'Δ'},
    {"Theta", u'Θ'},  {"Lambda", u'Λ'}, {"Xi", u'Ξ'},      {"Pi", u'Π'},         {"Sigma", u'Σ'},
    {"Phi", u'Φ'},    {"Psi", u'Ψ'},    {"Omega", u'Ω'},   {"pm", u'±'},         {"times", u'×'},
    {"cdot", u'·'},   {"AA", u'Å'},     {"deg", u'°'},     {"degree", u'°'},     {"infty", u'∞'},
    {"approx", u'≈'}, {"le", u'≤'},     {"leq", u'≤'},     {"ge", u'≥'},         {"geq", u'≥'},
    {"ne", u'≠'},     {"neq", u'≠'},    {"partial", u'∂'}, {"sum", u'∑'},        {"int", u'∫'},
    {"sqrt", u'√'},   {"propto", u'∝'}, {"to", u'→'},      {"rightarrow", u'→'}, {"hbar", u'ℏ'},
    {"ell", u'ℓ'},    {"permil", u'‰'}, {"prime", u'′'},
};

bool IsLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

class TRichTextReader {
public:
    explicit TRichTextReader(const QString& text) : m_text(text) {}

    std::vector<TTextLine> Lines() {
        m_isPlain = m_text.startsWith(u'\\') && !SignAt(0).second;
        m_place = m_isPlain ? 1 : 0;
        while (m_place < m_text.size()) TakeNext();
        return std::move(m_lines);
    }

private:
    // The sign that a name behind a backslash stands for, and the length of both; 0 for none.
    std::pair<QChar, qsizetype> SignAt(qsizetype place) const {
        qsizetype end = place + 1;
        while (end < m_text.size() && IsLetter(m_text[end])) ++end;
        const QStringView name = QStringView(m_text).mid(place + 1, end - place - 1);
        const auto found = std::ranges::find_if(
            kSigns, [name](const TNamedSign& each) { return name == QLatin1String(each.Name); });
        if (found == std::end(kSigns)) return {{}, 0};
        return {QChar(found->Sign), end - place};
    }

    void TakeNext() {
        const QChar c = m_text[m_place];
        if (c == u'\n') {
            m_lines.emplace_back();
            ++m_place;
            return;
        }
        if (c == u'\r') {
            ++m_place;
            return;
        }
        if (!m_isPlain && (c == u'^' || c == u'_') && TakeBraces(c)) return;
        TakeCharacter(TTextLevel::Base);
    }

    bool TakeBraces(QChar sign) {
        if (m_place + 1 >= m_text.size() || m_text[m_place + 1] != u'{') return false;
        const qsizetype end = m_text.indexOf(u'}', m_place);
        if (end < 0) return false;
        m_place += 2;
        while (m_place < end) TakeCharacter(sign == u'^' ? TTextLevel::Raised : TTextLevel::Lowered);
        m_place = end + 1;
        return true;
    }

    void TakeCharacter(TTextLevel level) {
        const QChar c = m_text[m_place];
        const auto [sign, length] =
            c == u'\\' && !m_isPlain ? SignAt(m_place) : std::pair(QChar(), qsizetype(0));
        Append(length > 0 ? sign : c, level);
        m_place += std::max<qsizetype>(length, 1);
    }

    void Append(QChar c, TTextLevel level) {
        TTextLine& line = m_lines.back();
        if (line.empty() || line.back().Level != level) line.push_back({{}, level});
        line.back().Text += c;
    }

    const QString& m_text;
    qsizetype m_place = 0;
    bool m_isPlain = false;
    std::vector<TTextLine> m_lines{1};
};

} // namespace

std::vector<TTextLine> RichLines(const QString& text) {
    return TRichTextReader(text).Lines();
}

} // namespace lumoplot
