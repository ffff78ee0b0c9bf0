#include "dialogs/editing/graph_edit_bar.h"

#include "data/series/ds_info.h"
#include "dialogs/editing/mark_editor.h"
#include "dialogs/editing/series_list.h"
#include "dialogs/editing/set_values_dialog.h"
#include "dialogs/hand_edit.h"
#include "graph/mouse/graph_mouse.h"
#include "graph/mouse/hand_editing.h"
#include "graph/mouse/mark_mode.h"
#include "graph/mouse/point_mode.h"
#include "support/guard.h"
#include "ui_graph_edit_bar.h"

#include <QAbstractItemView>

namespace lumoplot {
namespace {

TListedSeries ListedOf(const TSeries& series) {
    return {series.SeriesName(), series.LinesShown(), series.PointsShown(), series.LineColor(),
            series.PointColor()};
}

} // namespace

TGraphEditBar::TGraphEditBar(TxyGraph& graph, QWidget* parent)
    : QWidget(parent), m_graph(&graph), m_ui(std::make_unique<Ui::TGraphEditBar>()),
      m_editing(std::make_shared<THandEditing>()) {
    m_ui->setupUi(this);
    const QPointer<TGraphEditBar> self = this;
    m_editing->MayEdit = [self](TSeries& series) {
        if (series.DataSourceInfo().Kind() == TSourceKind::Manual) return true;
        bool may = false;
        Guarded([&] {
            series.Graph().ChangeByUser({"make " + series.SeriesName() + " manual"},
                                        [&] { may = self && MakeManual(series, self->window()); });
        });
        return may;
    };
    ConnectModes();
    OfferFilter(*m_ui->cbx_CurrSeries);
    connect(m_ui->cbx_CurrSeries, &QComboBox::activated, this, [this] { PickSeries(); });
    connect(m_ui->btnMarks, &QPushButton::clicked, this, &TGraphEditBar::EditMarksOfGraph);
    connect(m_ui->btnSetValues, &QPushButton::clicked, this, &TGraphEditBar::SetValuesOfSeries);
    connect(&graph, &TxyGraph::OnPaintEnd, this, [this] { ShowSeries(); });
}

TGraphEditBar::~TGraphEditBar() {
    if (m_graph) m_graph->Mouse().SetMode(nullptr);
}

void TGraphEditBar::ConnectModes() {
    TGraphMouse& mouse = m_graph->Mouse();
    const auto on = [this](QToolButton* button, auto makeMode) {
        connect(button, &QToolButton::toggled, this, [this, makeMode](bool chosen) {
            if (chosen && m_graph) m_graph->Mouse().SetMode(makeMode());
        });
    };
    const auto points = [this, &mouse](TPointAction action) {
        return [this, &mouse, action] { return std::make_unique<TPointMode>(mouse, action, m_editing); };
    };
    on(m_ui->btnShow, [] { return std::unique_ptr<TMouseMode>(); });
    on(m_ui->btnAddPoint, points(TPointAction::Add));
    on(m_ui->btnMovePoint, points(TPointAction::Move));
    on(m_ui->btnDeletePoint, points(TPointAction::Delete));
    on(m_ui->btnPlaceMark, [this, &mouse] { return std::make_unique<TMarkMode>(mouse, m_editing); });
    connect(m_ui->btnSnap, &QToolButton::toggled, this, [this](bool snaps) { m_editing->Snaps = snaps; });
    connect(m_ui->cbx_MarkType, &QComboBox::currentIndexChanged, this, [this](int item) {
        m_editing->MarkType = static_cast<TMarkType>(item);
        m_ui->btnPlaceMark->setChecked(true);
    });
}

void TGraphEditBar::ShowZoom() {
    m_ui->btnShow->setChecked(true);
}

bool TGraphEditBar::ShowsZoom() const {
    return m_ui->btnShow->isChecked();
}

void TGraphEditBar::showEvent(QShowEvent* event) {
    ShowSeries();
    QWidget::showEvent(event);
}

TSeries* TGraphEditBar::Current() const {
    return m_graph ? m_graph->FindSeries(m_graph->Appearance()->CurrSerIndex()) : nullptr;
}

/// Lists the data sets anew where the list is out of date.
void TGraphEditBar::ShowSeries() {
    if (!m_graph || m_ui->cbx_CurrSeries->view()->isVisible()) return;
    std::vector<TListedSeries> listed;
    for (const auto& series : m_graph->Series()) listed.push_back(ListedOf(*series));
    if (listed != m_listed) {
        m_ui->cbx_CurrSeries->clear();
        for (const auto& series : m_graph->Series())
            m_ui->cbx_CurrSeries->addItem(SeriesIcon(*series), QString::fromStdString(series->SeriesName()));
        m_listed = std::move(listed);
    }
    const TSeries* current = Current();
    m_ui->cbx_CurrSeries->setCurrentIndex(current ? current->SeriesIndex() - 1 : -1);
    m_ui->cbx_CurrSeries->setEnabled(!m_listed.empty());
    m_ui->btnSetValues->setEnabled(current && current->Count() > 0);
}

void TGraphEditBar::PickSeries() {
    if (!m_graph) return;
    m_graph->Appearance()->SetCurrSerIndex(m_ui->cbx_CurrSeries->currentIndex() + 1);
    Q_EMIT SeriesPicked(m_graph->Appearance()->CurrSerIndex());
}

void TGraphEditBar::EditMarksOfGraph() {
    if (m_graph) m_graph->ChangeByUser({"edit marks"}, [this] { EditMarks(window(), *m_graph); });
}

void TGraphEditBar::SetValuesOfSeries() {
    TSeries* series = Current();
    if (!series) return;
    Guarded([&] {
        m_graph->ChangeByUser({"set values of " + series->SeriesName()},
                              [&] { SetValuesOf(*series, window()); });
    });
}

} // namespace lumoplot
