#include "dialog/source/text_options_panel.h"

#include "controls/number_edit.h"
#include "dialog/common/typing_key.h"
#include "dialog/common/x_value_text.h"
#include "sources/text/column_formula.h"
#include "support/errors.h"
#include "ui_text_options_panel.h"

namespace lumoplot {
namespace {

/// Ends rows and no cells: each row is one cell. An empty description would have the separator found.
constexpr const char* kNoSeparator = "\n";

/// The chosen or typed column as descriptions keep it; empty where the list leaves it open.
std::string ColumnIn(const QComboBox& box) {
    const int item = box.findText(box.currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
    const QString column = item >= 0 ? box.itemData(item).toString() : box.currentText().trimmed();
    return column.toStdString();
}

} // namespace

TTextOptionsPanel::TTextOptionsPanel(TWizardContext& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_ui(std::make_unique<Ui::TTextOptionsPanel>()) {
    m_ui->setupUi(this);
    ConnectText();
    ConnectReading();
    ConnectColumns();
    ConnectRows();
}

TTextOptionsPanel::~TTextOptionsPanel() = default;

/// Carries out a change of the current data set's description, and tells when there was one.
void TTextOptionsPanel::Change(const TChange& change) {
    TSeries* series = m_context.CurrSeries();
    if (m_context.Filling() || !series) return;
    bool changed = false;
    const auto action = [&] {
        TDSInfo& info = series->DataSourceInfo();
        const bool neededReload = info.NeedsReload();
        info.SetNeedsReload(false);
        change(*series);
        changed = info.NeedsReload();
        info.SetNeedsReload(changed || neededReload);
    };
    const std::string name = "text options of " + series->SeriesName();
    Guarded([&] { m_context.Session().Change(name, TypingKey(), action); });
    if (changed) Q_EMIT Changed();
}

void TTextOptionsPanel::ConnectText() {
    connect(m_ui->cb_FindSeparators, &QCheckBox::toggled, this, [this](bool find) {
        const std::string found = m_found.separators.empty() ? kNoSeparator : m_found.separators;
        Change([&](TSeries& series) { series.DataSourceInfo().SetTextSeparators(find ? "" : found); });
    });
    for (QCheckBox* box : {m_ui->cb_Tab, m_ui->cb_Comma, m_ui->cb_Semicolon, m_ui->cb_Blank})
        connect(box, &QCheckBox::toggled, this, &TTextOptionsPanel::TakeSeparators);
    connect(m_ui->cb_Other, &QCheckBox::toggled, this, [this](bool other) {
        m_ui->e_Other->setEnabled(other);
        if (m_context.Filling()) return;
        if (other) m_ui->e_Other->setFocus();
        TakeSeparators();
    });
    connect(m_ui->e_Other, &QLineEdit::textEdited, this, &TTextOptionsPanel::TakeSeparators);
    connect(m_ui->cb_FindHeaders, &QCheckBox::toggled, this, [this](bool find) {
        const int rows = find ? TDSInfo::kFindHeaders : m_found.headerRows;
        Change([&](TSeries& series) { series.DataSourceInfo().SetFileHasHeaders(rows); });
    });
    connect(m_ui->se_HeaderRows, &QSpinBox::valueChanged, this, [this](int rows) {
        Change([&](TSeries& series) { series.DataSourceInfo().SetFileHasHeaders(rows); });
    });
    connect(m_ui->e_TextMarkers, &QLineEdit::textEdited, this, [this](const QString& text) {
        Change([&](TSeries& series) { series.DataSourceInfo().SetTextMarkers(text.toStdString()); });
    });
    connect(m_ui->cb_FixedWidth, &QCheckBox::toggled, this, [this](bool on) {
        Change([&](TSeries& series) { series.DataSourceInfo().SetDivideTextByWidth(on); });
    });
    connect(m_ui->se_ColumnWidth, &QSpinBox::valueChanged, this, [this](int width) {
        Change([&](TSeries& series) { series.DataSourceInfo().SetColumnWidth(width); });
    });
}

void TTextOptionsPanel::ConnectReading() {
    for (QComboBox* box : {m_ui->cbx_DecimalSign, m_ui->cbx_DateOrder, m_ui->cbx_Encoding})
        connect(box, &QComboBox::currentIndexChanged, this,
                [this] { Change([this](TSeries& series) { series.SetTextWishes(ShownWishes()); }); });
}

void TTextOptionsPanel::ConnectColumns() {
    const auto connectColumn = [this](QComboBox* box, bool isX) {
        connect(box, &QComboBox::activated, this, [this, box, isX] { TakeColumn(*box, isX); });
        connect(box->lineEdit(), &QLineEdit::editingFinished, this,
                [this, box, isX] { TakeColumn(*box, isX); });
    };
    connectColumn(m_ui->cbx_XColumn, true);
    connectColumn(m_ui->cbx_YColumn, false);
    connect(m_ui->cbx_YErrorColumn, &QComboBox::activated, this, &TTextOptionsPanel::TakeYErrors);
    connect(m_ui->cbx_YErrorColumn->lineEdit(), &QLineEdit::editingFinished, this,
            &TTextOptionsPanel::TakeYErrors);
    connect(m_ui->cbx_XFormat, &QComboBox::currentIndexChanged, this, [this](int item) {
        Change(
            [&](TSeries& series) { series.DataSourceInfo().SetXFormat(static_cast<TColumnFormat>(item)); });
    });
    connect(m_ui->cbx_YFormat, &QComboBox::currentIndexChanged, this, [this](int item) {
        Change(
            [&](TSeries& series) { series.DataSourceInfo().SetYFormat(static_cast<TColumnFormat>(item)); });
    });
    connect(m_ui->e_XExpression, &QLineEdit::textEdited, this, [this](const QString& text) {
        Change([&](TSeries& series) {
            series.SetXColExpr(text.toStdString());
            series.DataSourceInfo().SetNeedsReload(true);
        });
    });
    connect(m_ui->e_YExpression, &QLineEdit::textEdited, this, [this](const QString& text) {
        Change([&](TSeries& series) {
            series.SetYColExpr(text.toStdString());
            series.DataSourceInfo().SetNeedsReload(true);
        });
    });
}

void TTextOptionsPanel::ConnectRows() {
    connect(m_ui->cbx_RowChoice, &QComboBox::currentIndexChanged, this, [this](int item) {
        Change([&](TSeries& series) {
            series.DataSourceInfo().SetRowChoiceMode(static_cast<TRowChoice>(item));
        });
    });
    connect(m_ui->e_From, &QLineEdit::textEdited, this, [this] { TakeBound(true); });
    connect(m_ui->e_To, &QLineEdit::textEdited, this, [this] { TakeBound(false); });
    connect(m_ui->se_RowFrequency, &QSpinBox::valueChanged, this, [this](int frequency) {
        Change([&](TSeries& series) { series.DataSourceInfo().SetRowSamplingFrequency(frequency); });
    });
    connect(m_ui->cb_AutoFrequency, &QCheckBox::toggled, this, [this](bool on) {
        m_ui->se_RowFrequency->setEnabled(!on);
        Change([&](TSeries& series) { series.DataSourceInfo().SetAutoRowHitFreq(on); });
    });
}

void TTextOptionsPanel::TakeSeparators() {
    QString separators;
    if (m_ui->cb_Tab->isChecked()) separators += QLatin1Char('\t');
    if (m_ui->cb_Comma->isChecked()) separators += QLatin1Char(',');
    if (m_ui->cb_Semicolon->isChecked()) separators += QLatin1Char(';');
    if (m_ui->cb_Blank->isChecked()) separators += QLatin1Char(' ');
    if (m_ui->cb_Other->isChecked()) separators += m_ui->e_Other->text();
    const bool isComing = separators.isEmpty() && m_ui->cb_Other->isChecked();
    if (isComing) return; // the other separator is still to be typed
    if (separators.isEmpty()) separators = QLatin1String(kNoSeparator);
    Change([&](TSeries& series) { series.DataSourceInfo().SetTextSeparators(separators.toStdString()); });
}

void TTextOptionsPanel::TakeColumn(QComboBox& box, bool isX) {
    const std::string column = ColumnIn(box);
    Change([&](TSeries& series) {
        TDSInfo& info = series.DataSourceInfo();
        isX ? info.SetXDataColumn(column) : info.SetYDataColumn(column);
    });
}

/// Without a column a rule that gives errors by Y stays.
void TTextOptionsPanel::TakeYErrors() {
    const std::string column = ColumnIn(*m_ui->cbx_YErrorColumn);
    Change([&](TSeries& series) {
        TDSInfo& info = series.DataSourceInfo();
        if (!column.empty()) return info.SetYErrorRule({TYErrorKind::Column, 0, column});
        if (info.YErrorRule().Kind != TYErrorKind::Column) return;
        info.SetYErrorRule({});
        info.SetNeedsReload(true);
    });
}

/// What the bounds of the row choice are: dates where X is a date as it is read. What a formula makes of
/// dates need be none.
TColumnFormat TTextOptionsPanel::BoundFormat(const TSeries& series) const {
    const bool isX = series.DataSourceInfo().RowChoiceMode() == TRowChoice::ByX;
    const bool isAsRead = EffectiveFormula(series.XColExpr(), "X").empty();
    return isX && isAsRead ? m_found.xFormat : TColumnFormat::Number;
}

/// A text that is no value marks the edit and leaves the bound. An empty upper row number is no bound.
void TTextOptionsPanel::TakeBound(bool first) {
    QLineEdit& edit = first ? *m_ui->e_From : *m_ui->e_To;
    const TSeries* series = m_context.CurrSeries();
    if (!series) return;
    const bool byX = series->DataSourceInfo().RowChoiceMode() == TRowChoice::ByX;
    double value = 0;
    try {
        const bool isNoBound = !byX && edit.text().trimmed().isEmpty();
        if (!isNoBound) value = ParseXValue(edit.text(), BoundFormat(*series));
        MarkEdit(edit, {});
    } catch (const EConvertError& error) {
        return MarkEdit(edit, QString::fromUtf8(error.what()));
    }
    Change([&](TSeries& changed) {
        TDSInfo& info = changed.DataSourceInfo();
        first ? info.SetRowChoiceValue1(value) : info.SetRowChoiceValue2(value);
    });
}

void TTextOptionsPanel::TakePendingTexts() {
    TakeColumn(*m_ui->cbx_XColumn, true);
    TakeColumn(*m_ui->cbx_YColumn, false);
    TakeYErrors();
}

} // namespace lumoplot
