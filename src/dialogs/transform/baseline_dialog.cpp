#include "dialogs/transform/baseline_dialog.h"

#include "controls/model_texts.h"
#include "controls/number_edit.h"
#include "controls/return_key.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "dialogs/messages/window_place.h"
#include "dialogs/transform/transformed_curve.h"
#include "graph/model/graph.h"
#include "graph/mouse/graph_mouse.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "ui_baseline_dialog.h"

#include <QHeaderView>
#include <QLineF>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

constexpr double kGripReach = 8; // pixels
constexpr int kPlaceSize = 8;
constexpr TColor kDataGray = MakeColor(140, 140, 140);
constexpr TColor kBaselineRed = MakeColor(200, 40, 40);
constexpr TColor kResultBlue = MakeColor(30, 110, 220);
constexpr int kDataCurve = 0;
constexpr int kBaselineCurve = 1;
constexpr int kPlacesCurve = 2;
constexpr int kResultCurve = 3;

/// The Y of the point that lies nearest in X.
double HeightNear(const TCurveValues& curve, double x) {
    const auto right = std::ranges::lower_bound(curve.X, x) - curve.X.begin();
    const auto last = static_cast<std::ptrdiff_t>(curve.X.size()) - 1;
    std::ptrdiff_t nearest = std::min(right, last);
    const auto distance = [&](std::ptrdiff_t i) {
        return std::abs(curve.X[static_cast<std::size_t>(i)] - x);
    };
    if (nearest > 0 && distance(nearest - 1) < distance(nearest)) --nearest;
    return curve.Y[static_cast<std::size_t>(nearest)];
}

} // namespace

TBaselineDialog::TBaselineDialog(TSeries& series, QWidget* parent)
    : QDialog(parent), m_series(series), m_ui(std::make_unique<Ui::TBaselineDialog>()),
      m_curve(CorrectedCurve(series)) {
    m_ui->setupUi(this);
    setWindowTitle(tr("Baseline of %1").arg(QString::fromStdString(series.SeriesName())));
    TxyGraph& plot = *m_ui->plot;
    m_shown[kDataCurve] = &AddPreviewCurve(plot, tr("data").toStdString(), kDataGray, 1);
    m_shown[kBaselineCurve] = &AddPreviewCurve(plot, tr("baseline").toStdString(), kBaselineRed, 2);
    m_shown[kPlacesCurve] = &AddPreviewCurve(plot, {}, kBaselineRed, 1);
    m_shown[kResultCurve] = &AddPreviewCurve(plot, tr("result").toStdString(), kResultBlue, 2);
    TSeries& places = *m_shown[kPlacesCurve];
    places.SetLinesShown(false);
    places.SetPointsShown(true);
    places.SetPointShape(TPointShape::Square);
    places.SetPointSize(kPlaceSize);
    places.SetPointColor(kBaselineRed);
    places.SetShowInLegend(false);
    SetUpPreview(plot, series);
    ShowCurve(*m_shown[kDataCurve], m_curve);
    plot.setContextMenuPolicy(Qt::PreventContextMenu); // the right button takes places away
    TPlaceKeeper& keeper = *this;
    plot.Mouse().SetMode(std::make_unique<TBaselineMode>(keeper));
    m_ui->t_Places->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_ui->t_Places->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    KeepOpenOnReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("transform.md"); });
    ConnectControls();
    ShowPlaces(-1);
    resize(QSize(860, 520).boundedTo(RoomOnScreen(*this)));
}

TBaselineDialog::~TBaselineDialog() {
    m_ui->plot->Mouse().SetMode(nullptr);
}

void TBaselineDialog::ConnectControls() {
    connect(m_ui->cbx_Shape, &QComboBox::currentIndexChanged, this, [this] { ShowResult(); });
    connect(m_ui->se_Degree, &QSpinBox::valueChanged, this, [this] { ShowResult(); });
    connect(m_ui->t_Places, &QTableWidget::itemChanged, this,
            [this](const QTableWidgetItem* cell) { TakeCell(*cell); });
    connect(m_ui->t_Places, &QTableWidget::itemSelectionChanged, this,
            [this] { m_ui->btnRemove->setEnabled(m_ui->t_Places->currentRow() >= 0); });
    connect(m_ui->btnAdd, &QPushButton::clicked, this, &TBaselineDialog::AddInGap);
    connect(m_ui->btnRemove, &QPushButton::clicked, this, &TBaselineDialog::RemoveCurrent);
    for (QWidget* place : {static_cast<QWidget*>(m_ui->t_Places), static_cast<QWidget*>(m_ui->plot)})
        connect(new QShortcut(QKeySequence(Qt::Key_Delete), place, nullptr, nullptr, Qt::WidgetShortcut),
                &QShortcut::activated, this, &TBaselineDialog::RemoveCurrent);
    connect(m_ui->btnOk, &QPushButton::clicked, this, &TBaselineDialog::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

TBaselineWish TBaselineDialog::Wanted() const {
    return {static_cast<TBaselineShape>(m_ui->cbx_Shape->currentIndex()), m_ui->se_Degree->value(), m_places};
}

void TBaselineDialog::ShowPlaces(int current) {
    {
        const QSignalBlocker quiet(m_ui->t_Places);
        m_ui->t_Places->setRowCount(static_cast<int>(m_places.X.size()));
        for (int row = 0; row < m_ui->t_Places->rowCount(); ++row)
            for (const int column : {0, 1}) {
                const double value = (column == 0 ? m_places.X : m_places.Y)[static_cast<std::size_t>(row)];
                auto* cell = new QTableWidgetItem(QString::fromStdString(FormatGeneral(value, kShownDigits)));
                cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                m_ui->t_Places->setItem(row, column, cell);
            }
    }
    const int column = std::max(0, m_ui->t_Places->currentColumn());
    if (current >= 0) m_ui->t_Places->setCurrentCell(current, column);
    m_ui->btnRemove->setEnabled(m_ui->t_Places->currentRow() >= 0);
    ShowCurve(*m_shown[kPlacesCurve], m_places);
    ShowResult();
}

void TBaselineDialog::ShowResult() {
    m_ui->se_Degree->setEnabled(Wanted().Shape == TBaselineShape::Polynomial);
    m_baseline.clear();
    QString state = tr("Click two or more places of the baseline in the plot, or add them to the table. "
                       "Drag them; the right button takes one away.");
    if (m_places.X.size() >= 2) try {
            m_baseline = BaselineAt(Wanted(), m_curve.X);
            state = tr("The baseline goes through %n places.", nullptr, static_cast<int>(m_places.X.size()));
        } catch (const ETransformError& error) {
            state = InLanguage(QString::fromUtf8(error.what()));
        }
    m_ui->lblState->setText(state);
    m_ui->btnOk->setEnabled(!m_baseline.empty());
    TCurveValues baseline{m_baseline.empty() ? std::vector<double>() : m_curve.X, m_baseline};
    TCurveValues result = baseline;
    for (std::size_t i = 0; i < result.Y.size(); ++i) result.Y[i] = m_curve.Y[i] - m_baseline[i];
    ShowCurve(*m_shown[kBaselineCurve], baseline);
    ShowCurve(*m_shown[kResultCurve], result);
}

/// What is no number gives way to what was there.
void TBaselineDialog::TakeCell(const QTableWidgetItem& cell) {
    const auto place = static_cast<std::size_t>(cell.row());
    double& value = (cell.column() == 0 ? m_places.X : m_places.Y)[place];
    try {
        const double typed = ParseTyped(cell.text().toStdString());
        if (std::isfinite(typed)) value = typed;
    } catch (const EConvertError& error) {
        m_ui->lblState->setText(InLanguage(QString::fromUtf8(error.what())));
    }
    ShowPlaces(cell.row());
}

std::optional<int> TBaselineDialog::PlaceAt(const TPlotMap& map, QPointF at) const {
    for (std::size_t i = m_places.X.size(); i-- > 0;) {
        const QPointF place(map.X.Position(m_places.X[i]), map.Y.Position(m_places.Y[i]));
        if (QLineF(place, at).length() <= kGripReach) return static_cast<int>(i);
    }
    return std::nullopt;
}

int TBaselineDialog::AddPlace(double x, double y) {
    m_places.X.push_back(x);
    m_places.Y.push_back(y);
    const int added = static_cast<int>(m_places.X.size()) - 1;
    ShowPlaces(added);
    return added;
}

void TBaselineDialog::MovePlace(int place, double x, double y) {
    if (place >= static_cast<int>(m_places.X.size())) return;
    m_places.X[static_cast<std::size_t>(place)] = x;
    m_places.Y[static_cast<std::size_t>(place)] = y;
    ShowPlaces(place);
}

void TBaselineDialog::RemovePlace(int place) {
    if (place < 0 || place >= static_cast<int>(m_places.X.size())) return;
    m_places.X.erase(m_places.X.begin() + place);
    m_places.Y.erase(m_places.Y.begin() + place);
    ShowPlaces(std::min(place, static_cast<int>(m_places.X.size()) - 1));
}

void TBaselineDialog::RemoveCurrent() {
    RemovePlace(m_ui->t_Places->currentRow());
}

/// In the middle of the widest gap between the places; the ends of the curve come first.
double TBaselineDialog::WidestGap() const {
    std::vector<double> taken = m_places.X;
    std::ranges::sort(taken);
    const double first = m_curve.X.front();
    const double last = m_curve.X.back();
    if (taken.empty() || taken.front() > first) return first;
    if (taken.back() < last) return last;
    std::size_t widest = 1;
    for (std::size_t i = 1; i < taken.size(); ++i)
        if (taken[i] - taken[i - 1] > taken[widest] - taken[widest - 1]) widest = i;
    return taken.size() > 1 ? std::midpoint(taken[widest - 1], taken[widest]) : first;
}

void TBaselineDialog::AddInGap() {
    const double x = WidestGap();
    AddPlace(x, HeightNear(m_curve, x));
    m_ui->t_Places->setFocus();
}

bool TBaselineDialog::StoreResult() {
    const auto resultOf = [this](const TCurveValues& curve) {
        TCurveValues result{curve.X, BaselineAt(Wanted(), curve.X)};
        for (std::size_t i = 0; i < curve.Y.size(); ++i) result.Y[i] = curve.Y[i] - result.Y[i];
        return result;
    };
    const std::string& name = m_series.SeriesName();
    if (m_ui->rb_Only->isChecked()) {
        AddCurve(m_series, {m_curve.X, m_baseline},
                 tr("%1 baseline").arg(QString::fromStdString(name)).toStdString());
    } else if (m_ui->rb_NewSet->isChecked()) {
        AddCurve(m_series, resultOf(m_curve),
                 tr("%1 without baseline").arg(QString::fromStdString(name)).toStdString());
    } else {
        if (!MakeManual(m_series, this)) return false;
        PutCurve(m_series, resultOf(CorrectedCurve(m_series))); // every row may have been read only now
    }
    return true;
}

void TBaselineDialog::accept() {
    bool done = false;
    if (!m_baseline.empty()) Guarded([&] { done = StoreResult(); });
    if (done) QDialog::accept();
}

bool TakeBaselineOff(TSeries& series, QWidget* window) {
    if (!ReadEveryRow(series, window)) return false;
    return TBaselineDialog(series, window).exec() == QDialog::Accepted;
}

} // namespace lumoplot
