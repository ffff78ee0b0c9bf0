#include "dialog/manual/manual_panel.h"

#include "controls/texts.h"
#include "dialog/manual/manual_commit.h"
#include "dialogs/editing/set_values_dialog.h"
#include "ui_manual_panel.h"

#include <QLocale>

namespace lumoplot {
namespace {

std::unique_ptr<Ui::TManualPanel> SetUp(QWidget* panel) {
    auto ui = std::make_unique<Ui::TManualPanel>();
    ui->setupUi(panel);
    return ui;
}

} // namespace

TManualPanel::TManualPanel(TWizardContext& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_ui(SetUp(this)), m_points(m_ui->grid->Points()) {
    ConnectControls();
    JoinSession();
    ShowState();
}

TManualPanel::~TManualPanel() {
    m_points.disconnect(this);
    m_points.SetStepMaker({});
    m_context.Session().SetSide({});
}

void TManualPanel::ConnectControls() {
    const auto on = [this](QPushButton* button, void (TManualGrid::*action)()) {
        connect(button, &QPushButton::clicked, this,
                [this, action] { Guarded([&] { (m_ui->grid->*action)(); }); });
    };
    on(m_ui->btnPaste, &TManualGrid::PasteClipboard);
    on(m_ui->btnInsertRows, &TManualGrid::InsertRowsAtSelection);
    on(m_ui->btnDeleteRows, &TManualGrid::DeleteSelectedRows);
    connect(m_ui->btnSetValues, &QPushButton::clicked, this, [this] { Guarded([this] { SetValues(); }); });
    connect(m_ui->cbx_ManualXFormat, &QComboBox::currentIndexChanged, this, [this](int item) {
        const auto format = static_cast<TColumnFormat>(item);
        m_points.SetXFormat(format);
        if (m_context.Filling() || !m_context.CurrSeries()) return;
        TSeries& series = *m_context.CurrSeries();
        m_context.Session().Change("X format of " + series.SeriesName(),
                                   [&] { series.DataSourceInfo().SetXFormat(format); });
    });
    connect(m_ui->cb_ManualYErrors, &QCheckBox::clicked, this, [this](bool shown) {
        m_ui->grid->FinishEditing();
        const QModelIndex cell = m_ui->grid->currentIndex();
        m_points.ShowYErrors(shown);
        m_ui->grid->GoTo(cell.row(), std::min(cell.column(), m_points.columnCount() - 1));
        ShowState();
    });
    connect(&m_points, &TManualPointsModel::Edited, this, &TManualPanel::ShowState);
}

void TManualPanel::JoinSession() {
    m_points.SetStepMaker([this](const char* name, const std::function<void()>& edit) {
        m_context.Session().Change(name + (" of " + m_points.Series()->SeriesName()), edit);
    });
    m_context.Session().SetSide(
        {[this] { return m_points.Pending(); },
         [this](const TSideStatePtr& side) { PutBack(dynamic_cast<const TPendingRows*>(side.get())); },
         [this] { return m_ui->grid->TypedText().has_value(); },
         [this] {
             return m_points.PendingWith(m_ui->grid->currentIndex(),
                                         m_ui->grid->TypedText().value_or(QString()));
         }});
    connect(m_ui->grid, &TManualGrid::Typed, &m_context.Session(), &TGraphSession::Typed);
}

/// The row that changes comes into view.
void TManualPanel::PutBack(const TPendingRows* pending) {
    TSeries* series =
        pending ? m_context.WorkGraph().FindSeries(pending->SeriesNumber) : m_context.CurrSeries();
    if (!series || (!pending && !m_points.HasEdits())) return;
    const int column = std::max(m_ui->grid->currentIndex().column(), 0);
    m_ui->grid->GoTo(m_points.ShowPending(*series, pending), column);
}

void TManualPanel::FillFrom(TSeries& series) {
    m_ui->cbx_ManualXFormat->setCurrentIndex(static_cast<int>(series.DataSourceInfo().XFormat()));
    if (m_points.Series() == &series && m_points.HasEdits()) return;
    const QModelIndex cell = m_ui->grid->currentIndex();
    m_points.Show(&series);
    m_ui->grid->GoTo(std::min(cell.row(), m_points.rowCount() - 1), cell.column());
}

void TManualPanel::Clear() {
    m_points.Show(nullptr);
}

bool TManualPanel::Commit(TEqualX equalX) {
    m_ui->grid->FinishEditing();
    const QModelIndex cell = m_ui->grid->currentIndex();
    try {
        const bool edited = m_points.HasEdits();
        bool done = true;
        m_context.Session().FollowUp([&] { done = m_points.Commit(equalX); });
        if (edited && done) m_ui->grid->GoTo(std::min(cell.row(), m_points.rowCount() - 1), cell.column());
        return done;
    } catch (const EManualCell& error) {
        m_ui->grid->GoTo(static_cast<int>(error.Row), error.Column);
        m_ui->grid->setFocus(); // what is typed next mends the cell
        throw;
    }
}

void TManualPanel::RestoreRows(std::span<const std::uint8_t> rows) {
    PutBack(PendingRowsOf(rows, m_context.WorkGraph()).get());
}

void TManualPanel::SetValues() {
    TSeries* series = m_context.CurrSeries();
    if (m_context.Filling() || !series || !Commit(TEqualX::Ask)) return;
    m_context.Session().Change("set values of " + series->SeriesName(), [&] {
        if (SetValuesOf(*series, window())) m_context.RefillPages();
    });
}

void TManualPanel::ShowState() {
    const bool shown = m_points.Series() != nullptr;
    const int rows = std::max(m_points.rowCount() - 1, 0);
    QString text = rows == 1 ? TTexts::tr("1 row") : TTexts::tr("%1 rows").arg(QLocale().toString(rows));
    if (m_points.HasEdits()) text += TTexts::tr(", edited");
    m_ui->lblState->setText(shown ? text : QString());
    m_ui->btnDeleteRows->setEnabled(rows > 0);
    m_ui->cb_ManualYErrors->setChecked(m_points.ShowsYErrors());
}

} // namespace lumoplot
