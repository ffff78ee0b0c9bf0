// Random formulas: well-formed ones over all words of the language, and ones with a few characters changed.
#pragma once

#include <random>
#include <string>

namespace lumoplot::tests {

class TFormulaMaker {
public:
    explicit TFormulaMaker(unsigned seed) : m_random(seed) {}

    /// A formula in x, y and z of at most `depth` operations inside each other, in all its spellings.
    std::string Any(int depth);
    /// As Any, of smooth functions only and without assignments.
    std::string Smooth(int depth);
    /// The text with up to three characters removed, doubled, exchanged or replaced.
    std::string Broken(std::string text);

    int Below(int limit) { return std::uniform_int_distribution<>(0, limit - 1)(m_random); }

private:
    std::string Value();
    std::string Blank() { return Below(4) == 0 ? " " : ""; }

    std::mt19937 m_random;
};

} // namespace lumoplot::tests
