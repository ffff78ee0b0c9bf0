#include "graph/mouse/graph_access.h"

#include "graph/model/child_graph.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/plotted/value_text.h"
#include "support/number_text.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <map>

namespace lumoplot {
namespace {

constexpr int kSpokenDigits = 6;

QString Spoken(double value) {
    return QString::fromStdString(FormatGeneral(value, kSpokenDigits));
}

/// Dates as they stand at the axis.
QString SpokenX(const TxyGraph& graph, double value) {
    return graph.XAxis()->ShowAsTime() ? ValueText(*graph.XAxis(), value) : Spoken(value);
}

/// The interfaces of an interface's children, made when somebody asks for them, and gone with it.
class TChildAccess {
public:
    ~TChildAccess() {
        for (const auto& [place, id] : m_ids) QAccessible::deleteAccessibleInterface(id);
    }
    template <class TMake>
    QAccessibleInterface* At(int place, TMake make) {
        const auto known = m_ids.find(place);
        if (known != m_ids.end()) return QAccessible::accessibleInterface(known->second);
        QAccessibleInterface* made = make();
        m_ids[place] = QAccessible::registerAccessibleInterface(made);
        return made;
    }
    int PlaceOf(const QAccessibleInterface* child) const {
        for (const auto& [place, id] : m_ids)
            if (QAccessible::accessibleInterface(id) == child) return place;
        return -1;
    }

private:
    std::map<int, QAccessible::Id> m_ids;
};

/// What data sets and points have in common: they are no objects, and lie in a graph.
class TPartAccess : public QAccessibleInterface {
public:
    TPartAccess(TxyGraph& graph, int number) : m_graph(&graph), m_number(number) {}

    bool isValid() const override { return Series() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_graph ? m_graph->window()->windowHandle() : nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QRect rect() const override {
        return m_graph ? QRect(m_graph->mapToGlobal(QPoint()), m_graph->size()) : QRect();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        return state;
    }

protected:
    const TSeries* Series() const { return m_graph ? m_graph->FindSeries(m_number) : nullptr; }

    QPointer<TxyGraph> m_graph;
    int m_number;
};

class TPointAccess : public TPartAccess {
public:
    TPointAccess(TxyGraph& graph, int number, int place, QAccessibleInterface* parent)
        : TPartAccess(graph, number), m_place(place), m_parent(parent) {}

    QAccessible::Role role() const override { return QAccessible::StaticText; }
    QAccessibleInterface* parent() const override { return m_parent; }
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override {
        const TSeries* series = Series();
        if (!series || m_place >= series->Count()) return {};
        if (kind != QAccessible::Name && kind != QAccessible::Value) return {};
        std::size_t place = static_cast<std::size_t>(m_place);
        for (std::size_t i = 0; i < series->Points().BlockCount(); ++i) {
            const TPointSpans block = series->Points().Block(i);
            if (place < block.X.size())
                return QStringLiteral("X %1, Y %2")
                    .arg(SpokenX(*m_graph, block.X[place]),
                         Spoken(series->CorrectedY(block.X[place], block.Y[place])));
            place -= block.X.size();
        }
        return {};
    }

private:
    int m_place;
    QAccessibleInterface* m_parent;
};

class TSeriesAccess : public TPartAccess {
public:
    TSeriesAccess(TxyGraph& graph, int number, QAccessibleInterface* parent)
        : TPartAccess(graph, number), m_parent(parent) {}

    QAccessible::Role role() const override { return QAccessible::List; }
    QAccessibleInterface* parent() const override { return m_parent; }
    int childCount() const override { return Series() ? Series()->Count() : 0; }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        auto* self = const_cast<TSeriesAccess*>(this);
        return m_points.At(index, [&] { return new TPointAccess(*m_graph, m_number, index, self); });
    }
    int indexOfChild(const QAccessibleInterface* child) const override { return m_points.PlaceOf(child); }
    QString text(QAccessible::Text kind) const override {
        const TSeries* series = Series();
        if (!series) return {};
        if (kind == QAccessible::Name) return QString::fromStdString(series->SeriesName());
        if (kind != QAccessible::Description && kind != QAccessible::Value) return {};
        if (series->Count() == 0) return QObject::tr("no points");
        return QObject::tr("%1 points, X from %2 to %3")
            .arg(QString::number(series->Count()), SpokenX(*m_graph, series->MinX()),
                 SpokenX(*m_graph, series->MaxX()));
    }

private:
    QAccessibleInterface* m_parent;
    mutable TChildAccess m_points;
};

class TGraphAccess : public QAccessibleWidget {
public:
    explicit TGraphAccess(TxyGraph& graph) : QAccessibleWidget(&graph, QAccessible::Chart), m_graph(graph) {}

    /// The data sets, and the panels behind them.
    int childCount() const override { return SeriesCount() + static_cast<int>(m_graph.ChildGraphs().size()); }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        if (index >= SeriesCount())
            return QAccessible::queryAccessibleInterface(
                m_graph.ChildGraphs()[static_cast<std::size_t>(index - SeriesCount())]);
        auto* self = const_cast<TGraphAccess*>(this);
        const int number = m_graph.Series()[static_cast<std::size_t>(index)]->SeriesIndex();
        return m_series.At(number, [&] { return new TSeriesAccess(m_graph, number, self); });
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        if (child && child->object())
            for (int i = SeriesCount(); i < childCount(); ++i)
                if (m_graph.ChildGraphs()[static_cast<std::size_t>(i - SeriesCount())] == child->object())
                    return i;
        const int number = m_series.PlaceOf(child);
        for (std::size_t i = 0; i < m_graph.Series().size(); ++i)
            if (m_graph.Series()[i]->SeriesIndex() == number) return static_cast<int>(i);
        return -1;
    }
    QString text(QAccessible::Text kind) const override {
        const QString title = QString::fromStdString(m_graph.Appearance()->GraphTitle());
        switch (kind) {
        case QAccessible::Name: return title.isEmpty() ? QAccessibleWidget::text(kind) : title;
        case QAccessible::Description: {
            const QString point = NearText();
            return point.isEmpty() ? QObject::tr("Graph with %1 data sets").arg(SeriesCount()) : point;
        }
        case QAccessible::Value: return NearText();
        default: return QAccessibleWidget::text(kind);
        }
    }

private:
    int SeriesCount() const { return static_cast<int>(m_graph.Series().size()); }

    QString NearText() const {
        const auto& hit = m_graph.Mouse().NearPoint();
        if (!hit) return {};
        return QStringLiteral("%1: X = %2, Y = %3")
            .arg(QString::fromStdString(hit->Series->SeriesName()), ValueText(*m_graph.XAxis(), hit->X),
                 ValueText(*hit->Series->YAxisOfSeries(), hit->Y));
    }

    TxyGraph& m_graph;
    mutable TChildAccess m_series;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
    auto* graph = qobject_cast<TxyGraph*>(object);
    return graph ? new TGraphAccess(*graph) : nullptr;
}

const bool g_offersAccess = (QAccessible::installFactory(&MakeAccess), true);

} // namespace

void TellNearPoint(TxyGraph& graph) {
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(&graph, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace lumoplot
