// Lines of plain text on paper: a heading and the page number at the top of each page, and lines that are
// wider than the page continued on the next one.
#pragma once

#include <QFont>
#include <QStringList>
#include <vector>

class QPrinter;

namespace lumoplot {

/// Prints lines in a font whose size is kept on paper. No lines print the heading alone. Throws EFileError
/// "The printer can not be used".
void PrintLines(QPrinter& printer, const QString& heading, const QStringList& lines, const QFont& font);

/// The layout behind it: which parts of which lines a page holds.
class TTextPages {
public:
    /// A part of a line as wide as the page at most.
    struct TPart {
        int Line;   ///< from 0
        int From;   ///< first character
        int Length; ///< characters
    };
    using TPage = std::vector<TPart>;

    /// `body` is the place for lines in units of the device.
    TTextPages(const QStringList& lines, const QFont& font, const QPaintDevice& device, const QSizeF& body);

    /// At least one page.
    const std::vector<TPage>& Pages() const { return m_pages; }
    double LineHeight() const { return m_lineHeight; }

private:
    void Add(const TPart& part, std::size_t partsOnPage);

    double m_lineHeight;
    std::vector<TPage> m_pages;
};

} // namespace lumoplot
