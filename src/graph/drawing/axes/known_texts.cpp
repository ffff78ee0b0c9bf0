#include "graph/drawing/axes/known_texts.h"

#include <QCoreApplication>
#include <QTextLayout>
#include <QThread>
#include <algorithm>
#include <vector>

namespace lumoplot {
namespace {

constexpr std::size_t kMostFonts = 16;

thread_local std::vector<std::shared_ptr<TKnownTexts>> t_fonts; // the one used last at the end

// Glyphs may not outlive the application.
void ForgetWithApplication() {
    static const bool isRegistered = (qAddPostRoutine([] { t_fonts.clear(); }), true);
    Q_UNUSED(isRegistered);
}

template <class TValue>
TValue& Put(QHash<QString, TValue>& texts, qsizetype most, const QString& text, TValue value) {
    if (texts.size() >= most) texts.clear();
    return *texts.insert(text, std::move(value));
}

QList<QGlyphRun> GlyphsOf(const QString& text, const QFont& font) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    if (!line.isValid()) return {};
    QList<QGlyphRun> runs = layout.glyphRuns();
    for (QGlyphRun& run : runs) {
        QList<QPointF> places = run.positions();
        for (QPointF& place : places) place.ry() -= line.y() + line.ascent();
        run.setPositions(places);
    }
    return runs;
}

} // namespace

TKnownTexts::TKnownTexts(const QFont& font)
    : m_font(font), m_metrics(font), m_capHeight(m_metrics.capHeight()) {
}

std::shared_ptr<TKnownTexts> TKnownTexts::Of(const QFont& font) {
    const auto found = std::ranges::find(t_fonts, font, &TKnownTexts::Font);
    if (found != t_fonts.end()) {
        std::rotate(found, found + 1, t_fonts.end());
        return t_fonts.back();
    }
    const QCoreApplication* application = QCoreApplication::instance();
    if (application && application->thread() == QThread::currentThread()) ForgetWithApplication();
    if (t_fonts.size() >= kMostFonts) t_fonts.erase(t_fonts.begin());
    return t_fonts.emplace_back(std::make_shared<TKnownTexts>(font));
}

double TKnownTexts::Width(const QString& text) {
    if (const auto found = m_widths.constFind(text); found != m_widths.cend()) return *found;
    return Put(m_widths, kMostTexts, text, m_metrics.horizontalAdvance(text));
}

const QList<QGlyphRun>& TKnownTexts::Glyphs(const QString& text) {
    if (const auto found = m_glyphs.constFind(text); found != m_glyphs.cend()) return *found;
    return Put(m_glyphs, kMostTexts, text, GlyphsOf(text, m_font));
}

} // namespace lumoplot
