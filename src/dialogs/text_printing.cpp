#include "dialogs/text_printing.h"

#include "support/errors.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kCharactersInTab = 8;
/// Below the heading, in lines.
constexpr double kHeadingSpace = 1.5;

/// Tab stops are measured without a device: a layout scales them to its own.
QTextOption TabbedText(const QFont& font, QTextOption::WrapMode wrap) {
    QTextOption option;
    option.setWrapMode(wrap);
    option.setTabStopDistance(kCharactersInTab * QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')));
    return option;
}

/// Paints the pages of a text.
class TTextPrint {
public:
    TTextPrint(QPrinter& printer, QPainter& painter, const QString& heading, const QStringList& lines,
               const QFont& font)
        : m_printer(printer), m_painter(painter), m_heading(heading), m_lines(lines), m_font(font),
          m_headingFont(font), m_paper(QPointF(), printer.pageRect(QPrinter::DevicePixel).size()) {
        m_headingFont.setBold(true);
        m_bodyTop = (1 + kHeadingSpace) * QFontMetricsF(m_headingFont, &printer).lineSpacing();
    }

    void Run() {
        const TTextPages text(m_lines, m_font, m_printer,
                              QSizeF(m_paper.width(), m_paper.height() - m_bodyTop));
        const std::size_t count = text.Pages().size();
        for (std::size_t page = 0; page < count; ++page) {
            if (page > 0 && !m_printer.newPage()) throw EFileError("The printer can not be used");
            PaintHeading(QStringLiteral("%1 / %2").arg(page + 1).arg(count));
            PaintBody(text.Pages()[page], text.LineHeight());
        }
    }

private:
    void PaintHeading(const QString& number) {
        const QFontMetricsF metrics(m_headingFont, &m_printer);
        const double room =
            m_paper.width() - metrics.horizontalAdvance(number) - metrics.averageCharWidth() * 2;
        m_painter.setFont(m_headingFont);
        m_painter.drawText(QPointF(0, metrics.ascent()),
                           metrics.elidedText(m_heading, Qt::ElideRight, std::max(0.0, room)));
        m_painter.drawText(QPointF(m_paper.width() - metrics.horizontalAdvance(number), metrics.ascent()),
                           number);
        const double rule = metrics.height() * 1.2;
        m_painter.drawLine(QPointF(0, rule), QPointF(m_paper.width(), rule));
    }

    void PaintBody(const TTextPages::TPage& page, double lineHeight) {
        const QTextOption option = TabbedText(m_font, QTextOption::NoWrap);
        m_painter.setFont(m_font);
        double top = m_bodyTop;
        for (const TTextPages::TPart& part : page) {
            m_painter.drawText(QRectF(0, top, m_paper.width(), lineHeight),
                               m_lines[part.Line].mid(part.From, part.Length), option);
            top += lineHeight;
        }
    }

    QPrinter& m_printer;
    QPainter& m_painter;
    const QString& m_heading;
    const QStringList& m_lines;
    QFont m_font;
    QFont m_headingFont;
    QRectF m_paper;
    double m_bodyTop;
};

} // namespace

void PrintLines(QPrinter& printer, const QString& heading, const QStringList& lines, const QFont& font) {
    QPainter painter;
    if (!painter.begin(&printer)) throw EFileError("The printer can not be used");
    TTextPrint(printer, painter, heading, lines, font).Run();
}

TTextPages::TTextPages(const QStringList& lines, const QFont& font, const QPaintDevice& device,
                       const QSizeF& body)
    : m_lineHeight(QFontMetricsF(font, &device).lineSpacing()), m_pages(1) {
    const auto partsOnPage =
        static_cast<std::size_t>(std::max(1.0, std::floor(body.height() / m_lineHeight)));
    const QTextOption option = TabbedText(font, QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (int number = 0; number < lines.size(); ++number) {
        QTextLayout layout(lines[number], font, &device);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(body.width());
            Add({number, line.textStart(), line.textLength()}, partsOnPage);
        }
        layout.endLayout();
    }
}

void TTextPages::Add(const TPart& part, std::size_t partsOnPage) {
    if (m_pages.back().size() == partsOnPage) m_pages.emplace_back();
    m_pages.back().push_back(part);
}

} // namespace lumoplot
