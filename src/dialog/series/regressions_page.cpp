#include "dialog/series/regressions_page.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "dialog/common/color_button.h"
#include "dialog/series/regression_text.h"
#include "dialogs/hand_edit.h"
#include "graph/fitting/series_fitting.h"
#include "support/number_text.h"
#include "ui_regressions_page.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kSplineItem = 4;
constexpr int kFitCurveItem = 5;
constexpr int kSmoothingItem = 6;

struct TControlCaptions {
    const char* First = QT_TRANSLATE_NOOP("lumoplot::TTexts", "Value not used");
    const char* Second = QT_TRANSLATE_NOOP("lumoplot::TTexts", "Value not used");
};

TControlCaptions CaptionsOf(int item) {
    switch (item) {
    case kSplineItem:
        return {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Number of Points:"),
                QT_TRANSLATE_NOOP("lumoplot::TTexts", "Gradient at ends:")};
    case kFitCurveItem:
        return {QT_TRANSLATE_NOOP("lumoplot::TTexts", "Number of Points:"),
                QT_TRANSLATE_NOOP("lumoplot::TTexts", "Fitting Tension:")};
    case kSmoothingItem: return {.Second = QT_TRANSLATE_NOOP("lumoplot::TTexts", "Alpha value:")};
    default: return {};
    }
}

// Four decimals, but an exponent where these would show nothing of the value, or hundreds of digits.
std::string BoundText(double value) {
    const double size = std::abs(value);
    return size == 0 || (size >= 0.00005 && size < 1e15) ? FormatFixed(value, 4) : FormatExponent(value, 4);
}

void KeepPlaceWhenHidden(QWidget& control) {
    QSizePolicy policy = control.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control.setSizePolicy(policy);
}

} // namespace

TRegressionsPage::TRegressionsPage(TWizardContext& context, QWidget* parent)
    : TWizardPage(context, parent), m_ui(std::make_unique<Ui::TRegressionsPage>()) {
    m_ui->setupUi(this);
    KeepControlsInPlace();
    ConnectRegression();
    ConnectBounds();
}

TRegressionsPage::~TRegressionsPage() = default;

// Neither another caption nor a colour box that comes and goes moves what lies beside it.
void TRegressionsPage::KeepControlsInPlace() {
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->lblLineColor), static_cast<QWidget*>(m_ui->lblBoundsColor),
          static_cast<QWidget*>(m_ui->b_RegressionColor), static_cast<QWidget*>(m_ui->b_BoundsColor)})
        KeepPlaceWhenHidden(*control);
    int width = 0;
    for (int item = 0; item < m_ui->cbx_Regression->count(); ++item)
        for (const char* caption : {CaptionsOf(item).First, CaptionsOf(item).Second})
            width = std::max(width, fontMetrics().horizontalAdvance(TTexts::tr(caption)));
    m_ui->lblControlValue1->setMinimumWidth(width);
}

void TRegressionsPage::ConnectRegression() {
    connect(m_ui->cbx_Regression, &QComboBox::currentIndexChanged, this, [this] {
        EnableLineControls();
        ShowControlCaptions();
    });
    // Choosing the item shown counts too: it replaces a regression that the list does not offer.
    const auto choose = [this](int item) {
        Edit("regression of ", {m_ui->cbx_Regression}, [&](TSeries& series) {
            m_ui->b_RegressionColor->SetColor(series.RegressionColor());
            series.SetRegressionType(TRegressionType{item});
            ShowResults(series);
        });
    };
    connect(m_ui->cbx_Regression, &QComboBox::currentIndexChanged, this, choose);
    connect(m_ui->cbx_Regression, &QComboBox::activated, this, choose);
    connect(m_ui->e_ControlValue1, &QLineEdit::textChanged, this, [this] {
        Edit("regression of ", {m_ui->e_ControlValue1}, [&](TSeries& series) {
            if (const auto value = IntegerIn(*m_ui->e_ControlValue1))
                series.SetRegressionControlValue1(*value);
            ShowResults(series);
        });
    });
    connect(m_ui->e_ControlValue2, &QLineEdit::textChanged, this, [this] {
        Edit("regression of ", {m_ui->e_ControlValue2}, [&](TSeries& series) {
            if (const auto value = NumberIn(*m_ui->e_ControlValue2))
                series.SetRegressionControlValue2(*value);
            ShowResults(series);
        });
    });
    connect(m_ui->cbx_RegressionLineStyle, &QComboBox::currentIndexChanged, this, [this](int item) {
        Edit("regression line of ", {m_ui->cbx_RegressionLineStyle},
             [&](TSeries& series) { series.SetRegressionLineStyle(static_cast<TPenStyle>(item)); });
    });
    connect(m_ui->se_RegressionLineWidth, &QSpinBox::valueChanged, this, [this](int width) {
        Edit("regression line of ", {m_ui->se_RegressionLineWidth},
             [&](TSeries& series) { series.SetRegressionLineWidth(width); });
    });
    connect(m_ui->b_RegressionColor, &TColorButton::ColorPicked, this, [this](TColor color) {
        Edit("regression colour of ", [&](TSeries& series) { series.SetRegressionColor(color); });
    });
}

void TRegressionsPage::ConnectBounds() {
    connect(m_ui->cbx_Bounds, &QComboBox::currentIndexChanged, this, [this](int item) {
        EnableBoundsControls();
        Edit("bounds of ", {m_ui->cbx_Bounds}, [&](TSeries& series) {
            m_ui->b_BoundsColor->SetColor(series.BoundsColor());
            series.SetBoundsType(static_cast<TBoundsType>(item));
        });
    });
    connect(m_ui->cbx_BoundsLineStyle, &QComboBox::currentIndexChanged, this, [this](int item) {
        Edit("bounds of ", {m_ui->cbx_BoundsLineStyle},
             [&](TSeries& series) { series.SetBoundsLineStyle(static_cast<TPenStyle>(item)); });
    });
    connect(m_ui->b_BoundsColor, &TColorButton::ColorPicked, this, [this](TColor color) {
        Edit("bounds colour of ", [&](TSeries& series) { series.SetBoundsColor(color); });
    });
    const auto connectBound = [this](QLineEdit* edit, void (TSeries::*set)(double)) {
        connect(edit, &QLineEdit::textChanged, this, [this, edit, set] {
            Edit("bounds of ", {edit}, [&](TSeries& series) {
                if (const auto value = FiniteNumberIn(*edit)) (series.*set)(*value);
            });
        });
    };
    connectBound(m_ui->e_LowerBound, &TSeries::SetLowerBound);
    connectBound(m_ui->e_UpperBound, &TSeries::SetUpperBound);
}

void TRegressionsPage::FillFrom(TSeries& series) {
    const TFillingScope filling(Context());
    const int type = static_cast<int>(series.RegressionType());
    if (type >= 0 && type < m_ui->cbx_Regression->count()) m_ui->cbx_Regression->setCurrentIndex(type);
    m_ui->b_RegressionColor->SetColor(series.RegressionColor());
    ShowNumber(*m_ui->e_ControlValue1, series.RegressionControlValue1(),
               [](double value) { return FormatFixed(value, 0); });
    ShowNumber(*m_ui->e_ControlValue2, series.RegressionControlValue2(),
               [](double value) { return FormatExponent(value, 4); });
    m_ui->cbx_RegressionLineStyle->setCurrentIndex(static_cast<int>(series.RegressionLineStyle()));
    m_ui->se_RegressionLineWidth->setValue(series.RegressionLineWidth());
    m_ui->cbx_Bounds->setCurrentIndex(static_cast<int>(series.BoundsType()));
    ShowNumber(*m_ui->e_LowerBound, series.LowerBound(), &BoundText);
    ShowNumber(*m_ui->e_UpperBound, series.UpperBound(), &BoundText);
    m_ui->cbx_BoundsLineStyle->setCurrentIndex(static_cast<int>(series.BoundsLineStyle()));
    m_ui->b_BoundsColor->SetColor(series.BoundsColor());
    EnableLineControls();
    ShowControlCaptions();
    EnableBoundsControls();
    ShowResults(series);
}

void TRegressionsPage::ShowNothing() {
    for (QLabel* label : {m_ui->lblRegressionError, m_ui->lblRegressionResult, m_ui->lblYStatistics}) {
        label->clear();
        label->setToolTip({});
    }
    for (QLineEdit* edit :
         {m_ui->e_ControlValue1, m_ui->e_ControlValue2, m_ui->e_LowerBound, m_ui->e_UpperBound})
        edit->clear();
    for (QComboBox* list :
         {m_ui->cbx_Regression, m_ui->cbx_RegressionLineStyle, m_ui->cbx_Bounds, m_ui->cbx_BoundsLineStyle})
        list->setCurrentIndex(0);
    m_ui->se_RegressionLineWidth->clear();
}

// What the preview or another page has changed meanwhile.
void TRegressionsPage::showEvent(QShowEvent* event) {
    if (TSeries* series = Context().CurrSeries()) Guarded([&] { ShowResults(*series); });
    TWizardPage::showEvent(event);
}

void TRegressionsPage::EnableLineControls() {
    const bool shown = m_ui->cbx_Regression->currentIndex() > 0;
    m_ui->cbx_RegressionLineStyle->setEnabled(shown);
    m_ui->se_RegressionLineWidth->setEnabled(shown);
    m_ui->b_RegressionColor->setVisible(shown);
    m_ui->lblLineColor->setVisible(shown);
}

void TRegressionsPage::EnableBoundsControls() {
    const int item = m_ui->cbx_Bounds->currentIndex();
    const bool shown = item != static_cast<int>(TBoundsType::None);
    const bool set = item == static_cast<int>(TBoundsType::SetValues);
    m_ui->cbx_BoundsLineStyle->setEnabled(shown);
    m_ui->b_BoundsColor->setVisible(shown);
    m_ui->lblBoundsColor->setVisible(shown);
    m_ui->e_LowerBound->setEnabled(set);
    m_ui->e_UpperBound->setEnabled(set);
}

void TRegressionsPage::ShowControlCaptions() {
    const TControlCaptions captions = CaptionsOf(m_ui->cbx_Regression->currentIndex());
    m_ui->lblControlValue1->setText(TTexts::tr(captions.First));
    m_ui->lblControlValue2->setText(TTexts::tr(captions.Second));
}

/// Figures are those of every row; when that can not be read they say what they are of.
void TRegressionsPage::ReadRows(TSeries& series) {
    if (!series.HoldsSomeRows() || m_rowsTried == series.DataStamp()) return;
    m_rowsTried = series.DataStamp();
    Guarded([&] { Context().Session().FollowUp([&] { ReadEveryRow(series, window()); }); });
}

// A regression of many points takes its time, so only for those who look.
void TRegressionsPage::ShowResults(TSeries& series) {
    if (!isVisible()) return;
    ReadRows(series);
    UpdateRegressionOf(series);
    m_ui->lblRegressionError->setText(RegressionErrorText(series));
    m_ui->lblRegressionResult->setText(RegressionResultText(series, TDigits::Four));
    m_ui->lblRegressionResult->setToolTip(RegressionResultText(series, TDigits::All));
    m_ui->lblYStatistics->setText(YStatisticsText(series, TDigits::Four));
    m_ui->lblYStatistics->setToolTip(YStatisticsText(series, TDigits::All));
}

} // namespace lumoplot
