#include "dialog/series/y_error_group.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "data/series/y_error_rule.h"
#include "ui_y_error_group.h"

#include <QLocale>
#include <QStandardItemModel>
#include <algorithm>

namespace lumoplot {
namespace {

enum TItem { kNone, kConstant, kPercent, kSquareRoot, kDataSet, kColumn, kEntered };

constexpr double kFirstPercent = 5;

TItem ItemOf(const TSeries& series) {
    switch (series.DataSourceInfo().YErrorRule().Kind) {
    case TYErrorKind::Constant: return kConstant;
    case TYErrorKind::Percent: return kPercent;
    case TYErrorKind::SquareRoot: return kSquareRoot;
    case TYErrorKind::Column: return kColumn;
    case TYErrorKind::None: break;
    }
    return series.HasYErrors() ? kEntered : kNone;
}

/// A hundredth of the range of Y.
double FirstConstant(const TSeries& series) {
    const double range = (series.MaxY() - series.MinY()) / 100;
    return UsableYError(range) > 0 ? range : 1;
}

} // namespace

TYErrorGroup::TYErrorGroup(TWizardContext& context, QWidget* parent)
    : QGroupBox(parent), m_context(context), m_ui(std::make_unique<Ui::TYErrorGroup>()) {
    m_ui->setupUi(this);
    ConnectControls();
    EnableControls();
}

TYErrorGroup::~TYErrorGroup() = default;

void TYErrorGroup::ConnectControls() {
    connect(m_ui->cbx_YErrors, &QComboBox::currentIndexChanged, this, [this] {
        EnableControls();
        SetByRule();
    });
    connect(m_ui->e_YErrorValue, &QLineEdit::textChanged, this, [this] { SetByValue(); });
    connect(m_ui->cbx_YErrorDataSet, &QComboBox::activated, this, [this] { SetFromDataSet(); });
}

void TYErrorGroup::FillFrom(const TSeries& series) {
    const TFillingScope filling(m_context);
    const TItem item = ItemOf(series);
    // What only the source or the grid can give is there to be read.
    auto* items = qobject_cast<QStandardItemModel*>(m_ui->cbx_YErrors->model());
    for (const TItem given : {kColumn, kEntered}) items->item(given)->setEnabled(given == item);
    ListDataSets(series);
    items->item(kDataSet)->setEnabled(m_ui->cbx_YErrorDataSet->count() > 0);
    m_ui->cbx_YErrors->setCurrentIndex(item);
    const TYErrorRule& rule = series.DataSourceInfo().YErrorRule();
    if (item == kColumn)
        ShowText(*m_ui->e_YErrorValue, rule.Column);
    else if (item == kConstant || item == kPercent)
        ShowNumber(*m_ui->e_YErrorValue, rule.Value);
    else
        ShowNumberText(*m_ui->e_YErrorValue, {});
    EnableControls();
    ShowState(series);
}

void TYErrorGroup::ListDataSets(const TSeries& series) {
    m_ui->cbx_YErrorDataSet->clear();
    for (const TSeries* other : series.Graph().Series())
        if (other != &series)
            m_ui->cbx_YErrorDataSet->addItem(QString::fromStdString(other->SeriesName()),
                                             other->SeriesIndex());
}

void TYErrorGroup::ShowState(const TSeries& series) {
    const std::vector<double> errors = series.YErrors();
    const auto count = static_cast<int>(std::ranges::count_if(errors, [](double e) { return e > 0; }));
    const QLocale locale;
    const bool hasRule = m_ui->cbx_YErrors->currentIndex() != kNone;
    m_ui->lblYErrorState->setText(count == 0 && !hasRule
                                      ? TTexts::tr("Page Data Source: a column, or single ones in its grid")
                                      : TTexts::tr("%1 of %2 points have one")
                                            .arg(locale.toString(count), locale.toString(series.Count())));
}

void TYErrorGroup::EnableControls() {
    const int item = m_ui->cbx_YErrors->currentIndex();
    const bool isNumber = item == kConstant || item == kPercent;
    m_ui->e_YErrorValue->setVisible(isNumber || item == kColumn);
    m_ui->e_YErrorValue->setReadOnly(item == kColumn);
    m_ui->cbx_YErrorDataSet->setVisible(item == kDataSet);
}

template <class TAction>
void TYErrorGroup::Edit(TMergeKey key, TAction action) {
    TSeries* series = m_context.CurrSeries();
    if (m_context.Filling() || !series) return;
    Guarded([&] {
        m_context.Session().Change("errors of Y of " + series->SeriesName(), key, [&] { action(*series); });
    });
    ShowState(*series);
}

void TYErrorGroup::SetByRule() {
    const int item = m_ui->cbx_YErrors->currentIndex();
    if (item == kDataSet) return SetFromDataSet();
    if (item == kColumn || item == kEntered) return;
    Edit(TMergeKey{}, [&](TSeries& series) {
        TYErrorRule rule;
        if (item == kConstant) rule = {TYErrorKind::Constant, FirstConstant(series)};
        if (item == kPercent) rule = {TYErrorKind::Percent, kFirstPercent};
        if (item == kSquareRoot) rule = {TYErrorKind::SquareRoot};
        SetYErrorsBy(series, rule);
        const TFillingScope filling(m_context);
        if (item == kConstant || item == kPercent) ShowNumber(*m_ui->e_YErrorValue, rule.Value);
    });
}

void TYErrorGroup::SetByValue() {
    if (m_context.Filling()) return;
    const int item = m_ui->cbx_YErrors->currentIndex();
    const std::optional<double> value = NumberIn(*m_ui->e_YErrorValue);
    if (!value || (item != kConstant && item != kPercent)) return;
    if (UsableYError(*value) == 0)
        return MarkEdit(*m_ui->e_YErrorValue, TTexts::tr("A number above 0 is needed"));
    Edit({m_ui->e_YErrorValue}, [&](TSeries& series) {
        SetYErrorsBy(series, {item == kConstant ? TYErrorKind::Constant : TYErrorKind::Percent, *value});
    });
}

void TYErrorGroup::SetFromDataSet() {
    const int number = m_ui->cbx_YErrorDataSet->currentData().toInt();
    Edit({m_ui->cbx_YErrorDataSet}, [&](TSeries& series) {
        if (const TSeries* errors = series.Graph().FindSeries(number)) SetYErrorsFrom(series, *errors);
    });
}

} // namespace lumoplot
