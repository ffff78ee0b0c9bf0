#include "dialogs/import/reading_options.h"

#include "controls/texts.h"
#include "data/series/ds_info.h"
#include "dialogs/import/auto_list.h"
#include "dialogs/import/sheet_list.h"
#include "graph/loading/source_loading.h"
#include "sources/spreadsheet/sheet_place.h"
#include "ui_reading_options.h"

#include <array>
#include <string>

namespace lumoplot {
namespace {

// In the order of the lists, behind their "Auto". The row end divides no cells.
const std::array<std::string, 6> kSeparators = {"\t", ";", ",", "|", " \t", "\n"};
constexpr std::array kSigns = {'.', ','};
constexpr std::array kOrders = {TDateOrder::YearMonthDay, TDateOrder::DayMonthYear, TDateOrder::MonthDayYear};
constexpr std::array kCodings = {TTextEncoding::Utf8, TTextEncoding::Utf16LittleEndian,
                                 TTextEncoding::Utf16BigEndian, TTextEncoding::CodePage};

std::optional<std::string> SeparatorFound(const TTextFormat* found) {
    if (!found) return std::nullopt;
    return found->separators.empty() ? kSeparators.back() : found->separators;
}

std::optional<TDateOrder> OrderFound(const TTextFormat* found) {
    const auto isDate = [](const TTextColumn& column) { return column.kind == TCellKind::Date; };
    if (!found || !std::ranges::any_of(found->columns, isDate)) return std::nullopt;
    return found->dateOrder;
}

std::optional<TTextEncoding> EncodingFound(const TTextFormat* found) {
    if (!found) return std::nullopt;
    return found->encoding == TTextEncoding::Utf8WithMark ? TTextEncoding::Utf8 : found->encoding;
}

} // namespace

TReadingOptions::TReadingOptions(QWidget* parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::TReadingOptions>()) {
    m_ui->setupUi(this);
    // What would not fit behind "Auto".
    m_ui->cbx_Separator->setItemData(2, QStringLiteral(";"), kShortCaption);
    m_ui->cbx_Separator->setItemData(4, QStringLiteral("|"), kShortCaption);
    m_ui->cbx_Encoding->setItemData(4, QStringLiteral("1252"), kShortCaption);
    connect(m_ui->cbx_Sheet, &QComboBox::activated, this, &TReadingOptions::SheetPicked);
    for (QComboBox* box :
         {m_ui->cbx_Separator, m_ui->cbx_DecimalSign, m_ui->cbx_DateOrder, m_ui->cbx_Encoding})
        connect(box, &QComboBox::activated, this, &TReadingOptions::Picked);
    connect(m_ui->se_HeaderRows, &QSpinBox::valueChanged, this, &TReadingOptions::Picked);
}

TReadingOptions::~TReadingOptions() = default;

// The sheets are listed once for a file; the one that is read is known before.
void TReadingOptions::ShowSheets(const std::string& fileName, const std::string& chosen) {
    const QString name = QString::fromStdString(chosen);
    if (m_sheetsOf != fileName) {
        m_sheetsOf = fileName;
        m_ui->cbx_Sheet->clear();
        ListSheets(*this, fileName, [this, fileName](const std::vector<TBookSheet>& sheets) {
            if (m_sheetsOf == fileName) FillSheets(sheets);
        });
    }
    if (!chosen.empty() && m_ui->cbx_Sheet->findText(name) < 0) m_ui->cbx_Sheet->addItem(name);
    m_ui->cbx_Sheet->setCurrentIndex(m_ui->cbx_Sheet->findText(name));
    ShowWhatIsOpen();
}

void TReadingOptions::FillSheets(const std::vector<TBookSheet>& sheets) {
    const QString chosen = m_ui->cbx_Sheet->currentText();
    m_ui->cbx_Sheet->clear();
    for (const TBookSheet& sheet : sheets) m_ui->cbx_Sheet->addItem(QString::fromStdString(sheet.name));
    m_ui->cbx_Sheet->setCurrentIndex(m_ui->cbx_Sheet->findText(chosen));
    ShowWhatIsOpen();
}

// How a sheet is divided and encoded is known.
void TReadingOptions::ShowWhatIsOpen() {
    const bool isBook = m_ui->cbx_Sheet->count() > 0;
    m_ui->lblSheet->setVisible(isBook);
    m_ui->cbx_Sheet->setVisible(isBook);
    m_ui->lblSeparator->setVisible(!isBook);
    m_ui->cbx_Separator->setVisible(!isBook);
    m_ui->lblEncoding->setVisible(!isBook);
    m_ui->cbx_Encoding->setVisible(!isBook);
}

std::string TReadingOptions::Sheet() const {
    return m_ui->cbx_Sheet->currentText().toStdString();
}

void TReadingOptions::Show(const TSeries& series, const TTextFormat* found) {
    const bool isFile = series.DataSourceInfo().Kind() == TSourceKind::TextFile;
    const TSheetPlace place = isFile ? SheetPlaceOf(SourceFileOf(series)) : TSheetPlace();
    ShowSheets(place.file, found && found->sheet ? *found->sheet : place.sheet);
    const TDSInfo& info = series.DataSourceInfo();
    const TTextWishes& wishes = series.TextWishes();
    const auto separator =
        info.TextSeparators().empty() ? std::nullopt : std::optional(info.TextSeparators());
    FillAutoList(*m_ui->cbx_Separator, kSeparators, separator, SeparatorFound(found));
    // Others, and columns by width, stay as they are unless one of the list is chosen.
    if (separator && m_ui->cbx_Separator->currentIndex() == 0) m_ui->cbx_Separator->setCurrentIndex(-1);
    if (info.DivideTextByWidth()) m_ui->cbx_Separator->setCurrentIndex(-1);
    FillAutoList(*m_ui->cbx_DecimalSign, kSigns, wishes.decimalSign,
                 found ? std::optional(found->decimalSign) : std::nullopt);
    FillAutoList(*m_ui->cbx_DateOrder, kOrders, wishes.dateOrder, OrderFound(found));
    FillAutoList(*m_ui->cbx_Encoding, kCodings, wishes.encoding, EncodingFound(found));
    const QSignalBlocker quiet(m_ui->se_HeaderRows);
    m_ui->se_HeaderRows->setSpecialValueText(found ? TTexts::tr("Auto: %1").arg(found->headerRows)
                                                   : TTexts::tr("Auto"));
    m_ui->se_HeaderRows->setValue(info.FileHasHeaders());
}

void TReadingOptions::Store(TSeries& series) const {
    TDSInfo& info = series.DataSourceInfo();
    if (m_ui->cbx_Separator->currentIndex() >= 0) {
        info.SetTextSeparators(AutoListWish(*m_ui->cbx_Separator, kSeparators).value_or(std::string()));
        info.SetDivideTextByWidth(TDSInfo().DivideTextByWidth());
    }
    info.SetFileHasHeaders(m_ui->se_HeaderRows->value());
    TTextWishes wishes = series.TextWishes();
    wishes.decimalSign = AutoListWish(*m_ui->cbx_DecimalSign, kSigns);
    wishes.dateOrder = AutoListWish(*m_ui->cbx_DateOrder, kOrders);
    wishes.encoding = AutoListWish(*m_ui->cbx_Encoding, kCodings);
    series.SetTextWishes(wishes);
}

} // namespace lumoplot
