#include "dialog/series/general_page.h"

#include "controls/number_edit.h"
#include "dialog/common/color_button.h"
#include "dialog/series/style_choice.h"
#include "dialog/series/y_error_group.h"
#include "graph/loading/second_axis.h"
#include "graph/model/axis.h"
#include "support/update_hold.h"
#include "ui_general_page.h"

#include <array>

namespace lumoplot {
namespace {

// Items 1 to 9 of the shape list.
constexpr std::array kShapeOfItem = {
    TPointShape::Square,     TPointShape::Circle,       TPointShape::Diamond,
    TPointShape::UpTriangle, TPointShape::DownTriangle, TPointShape::Cross,
    TPointShape::XCross,     TPointShape::Star,         TPointShape::WidePoint};

int ItemOfShape(TPointShape shape) {
    return static_cast<int>(std::ranges::find(kShapeOfItem, shape) - kShapeOfItem.begin()) + 1;
}

} // namespace

TGeneralPage::TGeneralPage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TGeneralPage>()) {
    m_ui->setupUi(this);
    m_yErrors = new TYErrorGroup(context, this);
    m_ui->errorsPlace->addWidget(m_yErrors);
    ConnectNameAndVisibility();
    ConnectBaseline();
    ConnectStyle();
}

TGeneralPage::~TGeneralPage() = default;

void TGeneralPage::ConnectNameAndVisibility() {
    connect(m_ui->e_SeriesName, &QLineEdit::textChanged, this, [this](const QString& text) {
        Edit("rename ", {m_ui->e_SeriesName}, [&](TSeries& series) {
            Context().Session().NameStep("rename to " + text.toStdString());
            series.SetSeriesName(text.toStdString());
            // Or the next loading would name it after the source again.
            const bool isAsFilled = series.SeriesName() == m_filledName;
            series.SetSeriesFlag(isAsFilled && m_filledAutoName);
            const QSignalBlocker quiet(m_ui->cb_AutoName);
            m_ui->cb_AutoName->setChecked(series.SeriesFlag());
            series.Changed(TSeries::kStyleChanged);
            Context().WorkGraph().SetHolderID({});
            Context().ShowSeriesName(text);
        });
    });
    connect(m_ui->cb_AutoName, &QCheckBox::toggled, this, [this](bool on) {
        Edit("automatic name of ", [&](TSeries& series) { series.SetSeriesFlag(m_filledAutoName = on); });
    });
    connect(m_ui->cb_Active, &QCheckBox::toggled, this, [this](bool on) {
        Edit(on ? "show " : "hide ", [&](TSeries& series) { series.SetActive(on); });
    });
    connect(m_ui->rb_SecondAxis, &QRadioButton::toggled, this, [this](bool second) {
        Edit("Y axis of ", [&](TSeries& series) {
            PutOnYAxis(series, second ? TYAxisChoice::Second : TYAxisChoice::Main);
            EnableBaseline(second);
        });
    });
    connect(m_ui->btnHideOthers, &QPushButton::clicked, this, [this] { SetActiveOfAll(false); });
    connect(m_ui->btnShowAll, &QPushButton::clicked, this, [this] { SetActiveOfAll(true); });
}

void TGeneralPage::ConnectBaseline() {
    connect(m_ui->cb_AutoZero, &QCheckBox::toggled, this, [this](bool on) {
        EnableBaseline(m_ui->rb_SecondAxis->isChecked());
        Edit("automatic baseline of ", [&](TSeries& series) {
            series.SetAutoZero(on);
            if (on) series.RecalcExtents();
            ShowBaseline(series);
        });
    });
    connect(m_ui->e_ZeroValue, &QLineEdit::textChanged, this, [this] {
        Edit("baseline of ", {m_ui->e_ZeroValue}, [&](TSeries& series) {
            if (const auto value = NumberIn(*m_ui->e_ZeroValue)) series.SetZeroValue(*value);
        });
    });
    connect(m_ui->e_Slope, &QLineEdit::textChanged, this, [this] {
        Edit("slope of ", {m_ui->e_Slope}, [&](TSeries& series) {
            if (const auto value = NumberIn(*m_ui->e_Slope)) series.SetBaseLineSlope(*value);
        });
    });
    connect(m_ui->btnReadMark, &QPushButton::clicked, this, [this] {
        Edit("baseline from mark of ", [&](TSeries& series) {
            TxyGraph& graph = series.Graph();
            graph.SetBaselineFromMark(graph.Marks().CurrentID(), series.SeriesIndex());
            ShowBaseline(series);
        });
    });
}

void TGeneralPage::ConnectStyle() {
    connect(m_ui->btnSameStyle, &QPushButton::clicked, this, &TGeneralPage::StyleOthers);
    connect(m_ui->cbx_PointShape, &QComboBox::currentIndexChanged, this, [this](int item) {
        EnablePointControls();
        Edit("point shape of ", {m_ui->cbx_PointShape},
             [&](TSeries& series) { ChangePointShape(series, item); });
    });
    connect(m_ui->cbx_LineStyle, &QComboBox::currentIndexChanged, this, [this](int item) {
        EnableLineControls();
        Edit("line style of ", {m_ui->cbx_LineStyle},
             [&](TSeries& series) { ChangeLineStyle(series, item); });
    });
    connect(m_ui->cb_FillPoints, &QCheckBox::toggled, this, [this](bool on) {
        Edit("filling of points of ", [&](TSeries& series) { series.SetFillPoints(on); });
    });
    const auto connectSpin = [this](QSpinBox* spin, const char* what, void (TSeries::*set)(int)) {
        connect(spin, &QSpinBox::valueChanged, this, [this, spin, what, set](int value) {
            Edit(what, {spin}, [&](TSeries& series) { (series.*set)(value); });
        });
    };
    connectSpin(m_ui->se_PointSize, "point size of ", &TSeries::SetPointSize);
    connectSpin(m_ui->se_PointBorderWidth, "point border of ", &TSeries::SetPointBorderWidth);
    connectSpin(m_ui->se_LineWidth, "line width of ", &TSeries::SetLineWidth);
    connect(m_ui->se_PointSize, &QSpinBox::editingFinished, this, [this] {
        if (const TSeries* series = Context().CurrSeries()) ShowPointSize(*series);
    });
    connect(m_ui->b_PointColor, &TColorButton::ColorPicked, this, [this](TColor color) {
        Edit("point colour of ", [&](TSeries& series) { series.SetPointColor(color); });
    });
    connect(m_ui->b_LineColor, &TColorButton::ColorPicked, this, [this](TColor color) {
        Edit("line colour of ", [&](TSeries& series) { series.SetLineColor(color); });
    });
}

void TGeneralPage::FillFrom(TSeries& series) {
    const TFillingScope filling(Context());
    m_ui->e_SeriesName->setText(QString::fromStdString(series.SeriesName()));
    m_filledName = series.SeriesName();
    m_filledAutoName = series.SeriesFlag();
    m_ui->cb_AutoName->setChecked(m_filledAutoName);
    m_ui->cb_Active->setChecked(series.Active());
    const bool second = series.IsOnSecondY();
    (second ? m_ui->rb_SecondAxis : m_ui->rb_MainAxis)->setChecked(true);
    m_ui->cbx_PointShape->setCurrentIndex(series.PointsShown() ? ItemOfShape(series.PointShape()) : 0);
    m_ui->cbx_LineStyle->setCurrentIndex(series.LinesShown() ? static_cast<int>(series.LineStyle()) + 1 : 0);
    ShowPointSize(series);
    m_ui->btnSameStyle->setEnabled(series.Graph().Series().size() > 1);
    ShowInteger(*m_ui->se_PointBorderWidth, series.PointBorderWidth());
    ShowInteger(*m_ui->se_LineWidth, series.LineWidth());
    m_ui->cb_FillPoints->setChecked(series.FillPoints());
    m_ui->b_PointColor->SetColor(series.PointColor());
    m_ui->b_LineColor->SetColor(series.LineColor());
    m_ui->cb_AutoZero->setChecked(series.AutoZero());
    EnablePointControls();
    EnableLineControls();
    EnableBaseline(second);
    ShowBaseline(series);
    m_yErrors->FillFrom(series);
}

// A spin box or list shows nothing by having no text; what it holds is of no data set.
void TGeneralPage::ShowNothing() {
    for (QLineEdit* edit : {m_ui->e_SeriesName, m_ui->e_ZeroValue, m_ui->e_Slope}) edit->clear();
    for (QSpinBox* spin : {m_ui->se_PointSize, m_ui->se_PointBorderWidth, m_ui->se_LineWidth}) spin->clear();
    for (QComboBox* list : {m_ui->cbx_PointShape, m_ui->cbx_LineStyle}) list->setCurrentIndex(-1);
    for (QCheckBox* box : {m_ui->cb_AutoName, m_ui->cb_Active, m_ui->cb_FillPoints, m_ui->cb_AutoZero})
        box->setChecked(false);
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->b_PointColor, m_ui->lblPointColor,
                                                            m_ui->b_LineColor, m_ui->lblLineColor})
        control->hide();
}

void TGeneralPage::RefreshAfterPreview(TSeries& series) {
    if (m_ui->cb_AutoZero->isChecked()) ShowBaseline(series);
}

void TGeneralPage::ShowBaseline(const TSeries& series) {
    const TFillingScope filling(Context());
    ShowNumber(*m_ui->e_ZeroValue, series.ZeroValue(), kFewDigits);
    ShowNumber(*m_ui->e_Slope, series.BaseLineSlope(), kFewDigits);
}

// Most shapes have even sizes only.
void TGeneralPage::ShowPointSize(const TSeries& series) {
    m_ui->se_PointSize->setSingleStep(series.PointShape() == TPointShape::WidePoint ? 1 : 2);
    ShowInteger(*m_ui->se_PointSize, series.PointSize());
}

void TGeneralPage::EnableBaseline(bool secondAxis) {
    const bool manual = !m_ui->cb_AutoZero->isChecked();
    m_ui->e_ZeroValue->setEnabled(manual);
    m_ui->e_Slope->setEnabled(manual);
    m_ui->btnReadMark->setEnabled(manual && !secondAxis);
}

void TGeneralPage::EnablePointControls() {
    const bool shown = m_ui->cbx_PointShape->currentIndex() > 0;
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->cb_FillPoints), static_cast<QWidget*>(m_ui->se_PointSize),
          static_cast<QWidget*>(m_ui->se_PointBorderWidth)})
        control->setEnabled(shown);
    m_ui->b_PointColor->setVisible(shown);
    m_ui->lblPointColor->setVisible(shown);
}

void TGeneralPage::EnableLineControls() {
    const bool shown = m_ui->cbx_LineStyle->currentIndex() > 0;
    m_ui->se_LineWidth->setEnabled(shown);
    m_ui->b_LineColor->setVisible(shown);
    m_ui->lblLineColor->setVisible(shown);
}

void TGeneralPage::SetActiveOfAll(bool others) {
    Edit(others ? "show all data sets with " : "hide others than ", [&](TSeries& current) {
        for (const auto& series : current.Graph().Series()) series->SetActive(series == &current || others);
        const TFillingScope filling(Context());
        m_ui->cb_Active->setChecked(true);
    });
}

void TGeneralPage::StyleOthers() {
    TSeries* current = Context().CurrSeries();
    if (!current) return;
    TStyleChoice choice(*current, window());
    if (choice.exec() != QDialog::Accepted) return;
    Edit("style of " + std::to_string(choice.Chosen()) + " data sets from ", [&](TSeries&) {
        choice.Apply();
        Context().FillList(current->SeriesIndex());
    });
}

void TGeneralPage::ChangePointShape(TSeries& series, int item) {
    const TUpdateHold hold(series);
    const bool before = series.PointsShown();
    series.SetPointsShown(item > 0);
    if (item > 0) series.SetPointShape(kShapeOfItem[static_cast<std::size_t>(item - 1)]);
    ShowPointSize(series);
    if (!series.LinesShown() || !series.PointsShown() || before) return;
    series.SetPointColor(series.LineColor());
    m_ui->b_PointColor->SetColor(series.PointColor());
}

void TGeneralPage::ChangeLineStyle(TSeries& series, int item) {
    const TUpdateHold hold(series);
    const bool before = series.LinesShown();
    series.SetLinesShown(item > 0);
    if (item > 0) series.SetLineStyle(static_cast<TPenStyle>(item - 1));
    if (!series.LinesShown() || !series.PointsShown() || before) return;
    series.SetLineColor(series.PointColor());
    m_ui->b_LineColor->SetColor(series.LineColor());
}

} // namespace lumoplot
