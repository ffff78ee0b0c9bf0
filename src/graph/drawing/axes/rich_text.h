// Texts with raised and lowered parts, signs by name and line breaks, as users write them: x_{max}, 10^{3},
// \alpha. Only braces behind ^ or _ and known names mean something; all else is drawn as it stands. A
// backslash in front of a text turns all of it off.
#pragma once

#include <QString>
#include <vector>

namespace lumoplot {

enum class TTextLevel { Base, Raised, Lowered };

struct TTextRun {
    QString Text;
    TTextLevel Level = TTextLevel::Base;

    bool operator==(const TTextRun&) const = default;
};

using TTextLine = std::vector<TTextRun>;

/// The lines of a text, at least one; a line without text has no runs.
std::vector<TTextLine> RichLines(const QString& text);

} // namespace lumoplot
