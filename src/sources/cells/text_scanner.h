// A view of a text that is consumed from its front.
#pragma once

#include "sources/cells/decimal.h"

#include <optional>
#include <string_view>

namespace lumoplot {

class TTextScanner {
public:
    explicit TTextScanner(std::string_view text) : m_text(text) {}

    bool AtEnd() const { return m_text.empty(); }
    char Front() const { return m_text.empty() ? '\0' : m_text.front(); }
    std::string_view Rest() const { return m_text; }
    void Drop(std::size_t count) { m_text.remove_prefix(count); }
    bool Take(char c) {
        if (Front() != c || AtEnd()) return false;
        Drop(1);
        return true;
    }
    /// Takes the front when it is one of these characters.
    bool TakeAny(std::string_view characters) {
        if (AtEnd() || characters.find(Front()) == std::string_view::npos) return false;
        Drop(1);
        return true;
    }
    void TakeBlanks() {
        while (TakeAny(" \t")) {
        }
    }
    /// How many digits there are at the front.
    std::size_t Digits() const {
        std::size_t count = 0;
        while (count < m_text.size() && decimal::IsDigit(m_text[count])) ++count;
        return count;
    }
    /// One to `maxDigits` digits (at most 9), and no more of them behind; their number goes to `digits`.
    std::optional<int> Integer(std::size_t maxDigits, std::size_t& digits) {
        digits = Digits();
        if (digits == 0 || digits > maxDigits) return std::nullopt;
        return Exactly(digits);
    }
    /// The next digits, of which there are so many.
    int Exactly(std::size_t digits) {
        int value = 0;
        for (std::size_t i = 0; i < digits; ++i) value = value * 10 + (m_text[i] - '0');
        Drop(digits);
        return value;
    }

private:
    std::string_view m_text;
};

} // namespace lumoplot
