// What has been found out about texts in one font: how wide they are and which glyphs draw them. Layouts and
// pictures ask for the same few texts in every frame.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QList>
#include <memory>

namespace lumoplot {

class TKnownTexts {
public:
    explicit TKnownTexts(const QFont& font);

    /// Those of the font, shared by all who ask for it in a thread; the fonts used last are kept.
    static std::shared_ptr<TKnownTexts> Of(const QFont& font);

    const QFont& Font() const { return m_font; }
    const QFontMetricsF& Metrics() const { return m_metrics; }
    double CapHeight() const { return m_capHeight; }
    /// Of a text as it stands.
    double Width(const QString& text);
    /// The glyphs of a text as it stands, the left end of the base line being (0, 0).
    const QList<QGlyphRun>& Glyphs(const QString& text);
    /// The width of a text with raised and lowered parts, worked out by `measure` where it is not known.
    template <class TMeasure>
    double RichWidth(const QString& text, TMeasure measure) {
        if (const auto found = m_richWidths.constFind(text); found != m_richWidths.cend()) return *found;
        if (m_richWidths.size() >= kMostTexts) m_richWidths.clear();
        return *m_richWidths.insert(text, measure());
    }

private:
    static constexpr qsizetype kMostTexts = 2000; ///< then all are forgotten

    QFont m_font;
    QFontMetricsF m_metrics;
    double m_capHeight;
    QHash<QString, double> m_widths;
    QHash<QString, double> m_richWidths;
    QHash<QString, QList<QGlyphRun>> m_glyphs;
};

} // namespace lumoplot
