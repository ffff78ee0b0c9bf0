#include "dialog/series/style_choice.h"

#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/editing/series_list.h"
#include "graph/model/graph.h"
#include "support/update_hold.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace lumoplot {

TStyleChoice::TStyleChoice(TSeries& series, QWidget* parent) : QDialog(parent), m_series(series) {
    setWindowTitle(TTexts::tr("Same Style"));
    AddControls();
    for (const TSeries* other : series.Graph().Series()) {
        if (other == &series) continue;
        auto* item =
            new QListWidgetItem(SeriesIcon(*other), QString::fromStdString(other->SeriesName()), m_list);
        item->setData(Qt::UserRole, other->SeriesIndex());
    }
    KeepOpenOnReturn(*this);
    ShowChoice();
}

void TStyleChoice::AddControls() {
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(
        TTexts::tr("&Data sets that become like %1 (Ctrl+A for all):")
            .arg(QString::fromStdString(m_series.SeriesName()).replace(u'&', QStringLiteral("&&"))),
        this);
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("m_Others"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setMinimumHeight(120);
    label->setBuddy(m_list);
    layout->addWidget(label);
    layout->addWidget(m_list, 1);
    const auto add = [&](const char* name, const QString& caption, Qt::CheckState state) {
        auto* box = new QCheckBox(caption, this);
        box->setObjectName(QLatin1String(name));
        box->setCheckState(state);
        layout->addWidget(box);
        connect(box, &QCheckBox::toggled, this, &TStyleChoice::ShowChoice);
        return box;
    };
    m_points = add("cb_Points", TTexts::tr("&Points: shape, size, border, filling"), Qt::Checked);
    m_lines = add("cb_Lines", TTexts::tr("&Lines: style and width"), Qt::Checked);
    m_colors = add("cb_Colors", TTexts::tr("&Colours"), Qt::Unchecked);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setObjectName(QStringLiteral("btnOk"));
    layout->addWidget(buttons);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &TStyleChoice::ShowChoice);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void TStyleChoice::ShowChoice() {
    m_ok->setEnabled(Chosen() > 0 &&
                     (m_points->isChecked() || m_lines->isChecked() || m_colors->isChecked()));
}

int TStyleChoice::Chosen() const {
    return static_cast<int>(m_list->selectedItems().size());
}

void TStyleChoice::Apply() {
    for (const QListWidgetItem* item : m_list->selectedItems())
        if (TSeries* other = m_series.Graph().FindSeries(item->data(Qt::UserRole).toInt())) CopyTo(*other);
}

void TStyleChoice::CopyTo(TSeries& other) const {
    const TUpdateHold hold(other);
    if (m_points->isChecked()) {
        other.SetPointsShown(m_series.PointsShown());
        other.SetPointShape(m_series.PointShape());
        other.SetPointSize(m_series.PointSize());
        other.SetPointBorderWidth(m_series.PointBorderWidth());
        other.SetFillPoints(m_series.FillPoints());
    }
    if (m_lines->isChecked()) {
        other.SetLinesShown(m_series.LinesShown());
        other.SetLineStyle(m_series.LineStyle());
        other.SetLineWidth(m_series.LineWidth());
    }
    if (!m_colors->isChecked()) return;
    other.SetPointColor(m_series.PointColor());
    other.SetLineColor(m_series.LineColor());
}

} // namespace lumoplot
