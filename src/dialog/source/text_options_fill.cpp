// How the options of a text source are shown.
#include "controls/number_edit.h"
#include "controls/texts.h"
#include "dialog/common/x_value_text.h"
#include "dialog/source/text_options_panel.h"
#include "dialogs/import/auto_list.h"
#include "dialogs/import/column_items.h"
#include "sources/text/column_formula.h"
#include "sources/text/error_columns.h"
#include "support/number_text.h"
#include "ui_text_options_panel.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace lumoplot {
namespace {

/// Those with boxes of their own; the row end stands for none at all.
constexpr const char* kPlainSeparators = "\t,; \n";

// Items 1 and up of the lists; item 0 is "Auto".
constexpr std::array kDecimalSigns = {'.', ','};
constexpr std::array kDateOrders = {TDateOrder::YearMonthDay, TDateOrder::DayMonthYear,
                                    TDateOrder::MonthDayYear};
constexpr std::array kEncodings = {TTextEncoding::Utf8, TTextEncoding::Utf16LittleEndian,
                                   TTextEncoding::Utf16BigEndian, TTextEncoding::CodePage};

/// A column that is described by its number is shown by its name.
void ShowColumn(QComboBox& box, const TTextFormat* found, const QString& chosen) {
    int item = box.findData(chosen, Qt::UserRole, Qt::MatchFixedString);
    const auto number = TryParseInteger(chosen.toStdString());
    if (item < 0 && number && found && *number >= 1 && *number <= static_cast<int>(found->columns.size()))
        item = box.findData(ColumnItemKey(*found, *number - 1), Qt::UserRole, Qt::MatchFixedString);
    box.setCurrentIndex(item);
    if (item < 0) box.setEditText(chosen);
    box.lineEdit()->setCursorPosition(0);
}

void FillColumnList(QComboBox& box, const TTextFormat* found, int used, bool isX, const QString& chosen) {
    const bool isKnown = found && used != TTextFormat::kNoColumn;
    box.clear();
    box.addItem(isKnown ? TTexts::tr("Auto (%1)").arg(ColumnItemText(*found, used)) : TTexts::tr("Auto"),
                QString());
    if (isX) box.addItem(TTexts::tr("Row number"), QStringLiteral("0"));
    for (std::size_t i = 0; found && i < found->columns.size(); ++i)
        box.addItem(ColumnItemText(*found, static_cast<int>(i)), ColumnItemKey(*found, static_cast<int>(i)));
    ShowColumn(box, found, chosen);
}

} // namespace

void TTextOptionsPanel::SetUnlessTyped(QLineEdit& edit, const QString& text) {
    if (edit.hasFocus() && !m_isOther) return;
    if (edit.text() != text) edit.setText(text);
    MarkEdit(edit, {});
}

void TTextOptionsPanel::FillFrom(const TSeries& series, const TTextFormat* found) {
    const TFillingScope filling(m_context);
    m_isOther = m_series != &series;
    m_series = &series;
    m_found = found ? *found : TTextFormat{};
    FillText(series.DataSourceInfo());
    FillReading(series.TextWishes(), found);
    FillColumns(series, found);
    MarkFormulas(series, found);
    FillRows(series);
}

void TTextOptionsPanel::FillText(const TDSInfo& info) {
    const bool findsSeparators = info.TextSeparators().empty();
    const bool byWidth = info.DivideTextByWidth();
    const QString separators =
        QString::fromStdString(findsSeparators ? m_found.separators : info.TextSeparators());
    QString others = separators;
    for (const char* plain = kPlainSeparators; *plain; ++plain) others.remove(QLatin1Char(*plain));
    m_ui->cb_FindSeparators->setChecked(findsSeparators);
    const std::array boxes = {m_ui->cb_Tab, m_ui->cb_Comma, m_ui->cb_Semicolon, m_ui->cb_Blank};
    for (std::size_t i = 0; i < boxes.size(); ++i)
        boxes[i]->setChecked(!byWidth && separators.contains(QLatin1Char(kPlainSeparators[i])));
    const bool isTyping = m_ui->e_Other->hasFocus() && !m_isOther && !findsSeparators;
    m_ui->cb_Other->setChecked(!byWidth && (!others.isEmpty() || isTyping));
    SetUnlessTyped(*m_ui->e_Other, others);
    m_ui->cb_FindSeparators->setEnabled(!byWidth);
    for (QCheckBox* box : {boxes[0], boxes[1], boxes[2], boxes[3], m_ui->cb_Other})
        box->setEnabled(!byWidth && !findsSeparators);
    m_ui->e_Other->setEnabled(m_ui->cb_Other->isEnabled() && m_ui->cb_Other->isChecked());
    m_ui->cb_FixedWidth->setChecked(byWidth);
    m_ui->se_ColumnWidth->setValue(info.ColumnWidth());
    m_ui->se_ColumnWidth->setEnabled(byWidth);
    SetUnlessTyped(*m_ui->e_TextMarkers, QString::fromStdString(info.TextMarkers()));
    m_ui->e_TextMarkers->setEnabled(!byWidth);
    // How a sheet is divided and encoded is known.
    for (QWidget* widget : std::initializer_list<QWidget*>{
             m_ui->lblSeparators, m_ui->cb_FindSeparators, m_ui->cb_Tab, m_ui->cb_Comma, m_ui->cb_Semicolon,
             m_ui->cb_Blank, m_ui->cb_Other, m_ui->e_Other, m_ui->lblTextMarkers, m_ui->e_TextMarkers,
             m_ui->cb_FixedWidth, m_ui->se_ColumnWidth, m_ui->cbx_Encoding})
        widget->setVisible(!m_found.sheet);
    const bool findsHeaders = info.FileHasHeaders() == TDSInfo::kFindHeaders;
    m_ui->cb_FindHeaders->setChecked(findsHeaders);
    m_ui->se_HeaderRows->setEnabled(!findsHeaders);
    m_ui->se_HeaderRows->setValue(findsHeaders ? m_found.headerRows : info.FileHasHeaders());
}

void TTextOptionsPanel::FillReading(const TTextWishes& wishes, const TTextFormat* found) {
    std::optional<char> decimalSign;
    std::optional<TDateOrder> dateOrder;
    std::optional<TTextEncoding> encoding;
    if (found) {
        const bool hasMark = found->encoding == TTextEncoding::Utf8WithMark;
        decimalSign = found->decimalSign;
        encoding = hasMark ? TTextEncoding::Utf8 : found->encoding;
        const auto isDate = [](const TTextColumn& column) { return column.kind == TCellKind::Date; };
        if (std::ranges::any_of(found->columns, isDate)) dateOrder = found->dateOrder;
    }
    FillAutoList(*m_ui->cbx_DecimalSign, kDecimalSigns, wishes.decimalSign, decimalSign);
    FillAutoList(*m_ui->cbx_DateOrder, kDateOrders, wishes.dateOrder, dateOrder);
    FillAutoList(*m_ui->cbx_Encoding, kEncodings, wishes.encoding, encoding);
}

TTextWishes TTextOptionsPanel::ShownWishes() const {
    // What the panel does not show stays as it is.
    const TSeries* series = m_context.CurrSeries();
    TTextWishes wishes = series ? series->TextWishes() : TTextWishes();
    wishes.encoding = AutoListWish(*m_ui->cbx_Encoding, kEncodings);
    wishes.decimalSign = AutoListWish(*m_ui->cbx_DecimalSign, kDecimalSigns);
    wishes.dateOrder = AutoListWish(*m_ui->cbx_DateOrder, kDateOrders);
    return wishes;
}

void TTextOptionsPanel::FillColumns(const TSeries& series, const TTextFormat* found) {
    const TDSInfo& info = series.DataSourceInfo();
    FillColumnList(*m_ui->cbx_XColumn, found, m_found.xColumn, true,
                   QString::fromStdString(info.XDataColumn()));
    FillColumnList(*m_ui->cbx_YColumn, found, m_found.yColumn, false,
                   QString::fromStdString(info.YDataColumn()));
    FillYErrors(info.YErrorRule(), found);
    m_ui->cbx_XFormat->setCurrentIndex(static_cast<int>(found ? found->xFormat : info.XFormat()));
    m_ui->cbx_YFormat->setCurrentIndex(static_cast<int>(found ? found->yFormat : info.YFormat()));
    SetUnlessTyped(*m_ui->e_XExpression, QString::fromStdString(series.XColExpr()));
    SetUnlessTyped(*m_ui->e_YExpression, QString::fromStdString(series.YColExpr()));
}

void TTextOptionsPanel::FillYErrors(const TYErrorRule& rule, const TTextFormat* found) {
    QComboBox& box = *m_ui->cbx_YErrorColumn;
    const bool isColumn = rule.Kind == TYErrorKind::Column;
    const bool isRule = rule.Kind != TYErrorKind::None && !isColumn;
    box.clear();
    box.addItem(isRule ? TTexts::tr("By rule") : TTexts::tr("None"), QString());
    for (int i = 0; found && i < static_cast<int>(found->columns.size()); ++i)
        if (found->columns[static_cast<std::size_t>(i)].kind == TCellKind::Number)
            box.addItem(ColumnItemText(*found, i), ColumnItemKey(*found, i));
    ShowColumn(box, found, isColumn ? QString::fromStdString(rule.Column) : QString());
    const int suggested = found ? ErrorColumnOf(*found, found->yColumn) : TTextFormat::kNoColumn;
    const bool isOpen = rule.Kind == TYErrorKind::None && suggested >= 0;
    m_ui->lblYErrorsHint->setText(isOpen ? TTexts::tr("Suggested: ") + ColumnItemText(*found, suggested)
                                         : QString());
    m_ui->lblYErrorsHint->setToolTip(m_ui->lblYErrorsHint->text());
}

/// Also the one that is being typed: its user sees at once what it lacks.
void TTextOptionsPanel::MarkFormulas(const TSeries& series, const TTextFormat* found) {
    const TTextFormat* format = found && !found->columns.empty() ? found : nullptr;
    MarkEdit(*m_ui->e_XExpression, QString::fromStdString(FormulaProblem(series.XColExpr(), format)));
    MarkEdit(*m_ui->e_YExpression, QString::fromStdString(FormulaProblem(series.YColExpr(), format)));
}

void TTextOptionsPanel::FillRows(const TSeries& series) {
    const TDSInfo& info = series.DataSourceInfo();
    const TRowChoice choice = info.RowChoiceMode();
    const TColumnFormat format = BoundFormat(series);
    const bool hasStart = choice != TRowChoice::All;
    const bool hasEnd = choice == TRowChoice::ByX || (hasStart && info.RowChoiceValue2() >= 1);
    m_ui->cbx_RowChoice->setCurrentIndex(static_cast<int>(choice));
    SetUnlessTyped(*m_ui->e_From, hasStart ? XValueText(info.RowChoiceValue1(), format) : QString());
    SetUnlessTyped(*m_ui->e_To, hasEnd ? XValueText(info.RowChoiceValue2(), format) : QString());
    m_ui->e_To->setPlaceholderText(choice == TRowChoice::ByNumber ? QStringLiteral("last") : QString());
    for (QWidget* control : {static_cast<QWidget*>(m_ui->lblFrom), static_cast<QWidget*>(m_ui->e_From),
                             static_cast<QWidget*>(m_ui->lblTo), static_cast<QWidget*>(m_ui->e_To)})
        control->setEnabled(hasStart);
    m_ui->cb_AutoFrequency->setChecked(info.AutoRowHitFreq());
    m_ui->se_RowFrequency->setEnabled(!info.AutoRowHitFreq());
    m_ui->se_RowFrequency->setValue(info.RowSamplingFrequency());
}

void TTextOptionsPanel::ShowFrequency(const TSeries& series) {
    const TFillingScope filling(m_context);
    if (m_ui->cb_AutoFrequency->isChecked())
        m_ui->se_RowFrequency->setValue(series.DataSourceInfo().RowSamplingFrequency());
}

} // namespace lumoplot
