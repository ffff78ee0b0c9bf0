#include "dialogs/link/link_dialog.h"

#include "controls/model_texts.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/manual_window.h"
#include "sources/link/link_place.h"
#include "support/errors.h"
#include "ui_link_dialog.h"

#include <QFileDialog>
#include <QPushButton>

namespace lumoplot {
namespace {

constexpr int kKeepAll = 0;
constexpr int kKeepRows = 1;
constexpr double kMostKept = 1e9;

struct TKindTexts {
    const char* label;
    const char* example;
};

// In the order of TLinkKind.
constexpr TKindTexts kKinds[] = {
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&File:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "a text file that grows or is written anew")},
#if defined(Q_OS_WIN)
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Pipe:"), R"(\\.\pipe\feed)"},
#else
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Pipe:"), "/tmp/feed"},
#endif
    {"", ""},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Server:"), "host:5000"},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Port:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "5000 for this machine alone, or address:5000")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Line:"), "/dev/ttyUSB0@9600, COM3@9600"},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Item:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "SERVICE|TOPIC!ITEM of a Windows program")},
    {QT_TRANSLATE_NOOP("lumoplot::TTexts", "&Item:"),
     QT_TRANSLATE_NOOP("lumoplot::TTexts", "SERVICE|TOPIC!ITEM of a Windows program")},
};

constexpr const char* kPrefixes[] = {"",        "pipe:", "-",        "tcp://", "tcp-listen://",
                                     "serial:", "dde:",  "dde-warm:"};

QString Column(const QLineEdit& edit) {
    return edit.text().trimmed();
}

} // namespace

TLinkDialog::TLinkDialog(const TDSInfo& current, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TLinkDialog>()) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("links.md"); });
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(tr("F&ollow"));
    connect(m_ui->cbx_Kind, &QComboBox::currentIndexChanged, this, &TLinkDialog::ShowKind);
    connect(m_ui->cbx_Keep, &QComboBox::currentIndexChanged, this, &TLinkDialog::ShowKeep);
    connect(m_ui->btnBrowse, &QPushButton::clicked, this, &TLinkDialog::Browse);
    connect(m_ui->e_Place, &QLineEdit::textEdited, m_ui->lblProblem, &QLabel::clear);
    connect(m_ui->e_Keep, &QLineEdit::textEdited, m_ui->lblProblem, &QLabel::clear);
    Fill(current);
    ShowKind();
    ShowKeep();
    m_ui->e_Place->setFocus();
}

TLinkDialog::~TLinkDialog() = default;

void TLinkDialog::Fill(const TDSInfo& current) {
    if (current.Kind() != TSourceKind::Link) return;
    m_source = current;
    const QString text = QString::fromStdString(current.SourceName());
    try {
        const int kind = static_cast<int>(ParseLink(current.SourceName()).kind);
        m_ui->cbx_Kind->setCurrentIndex(kind);
        m_ui->e_Place->setText(text.mid(static_cast<int>(std::string_view(kPrefixes[kind]).size())));
    } catch (const EFileError&) {
        m_ui->e_Place->setText(text);
    }
    const TLinkLimit limit = current.LinkLimit();
    if (limit.rows > 0) m_ui->e_Keep->setText(QString::number(limit.rows));
    if (limit.seconds > 0) m_ui->e_Keep->setText(QString::number(limit.seconds));
    m_ui->cbx_Keep->setCurrentIndex(limit.rows > 0      ? kKeepRows
                                    : limit.seconds > 0 ? kKeepRows + 1
                                                        : kKeepAll);
    m_ui->e_XColumn->setText(QString::fromStdString(current.XDataColumn()));
    m_ui->e_YColumn->setText(QString::fromStdString(current.YDataColumn()));
}

void TLinkDialog::ShowKind() {
    const int kind = m_ui->cbx_Kind->currentIndex();
    const bool hasPlace = kind != static_cast<int>(TLinkKind::StandardInput);
    m_ui->lblPlace->setText(TTexts::tr(kKinds[kind].label));
    m_ui->e_Place->setPlaceholderText(TTexts::tr(kKinds[kind].example));
    m_ui->lblPlace->setVisible(hasPlace);
    m_ui->e_Place->setVisible(hasPlace);
    m_ui->btnBrowse->setVisible(kind <= static_cast<int>(TLinkKind::Pipe));
    m_ui->lblProblem->clear();
}

void TLinkDialog::ShowKeep() {
    m_ui->e_Keep->setVisible(m_ui->cbx_Keep->currentIndex() != kKeepAll);
    m_ui->lblProblem->clear();
}

void TLinkDialog::Browse() {
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Follow"), m_ui->e_Place->text(), tr("All files (*)"));
    if (file.isEmpty()) return;
    m_ui->e_Place->setText(file);
    m_ui->lblProblem->clear();
}

TLinkPlace TLinkDialog::Place() const {
    const int kind = m_ui->cbx_Kind->currentIndex();
    QString place = m_ui->e_Place->text().trimmed();
    if (kind == static_cast<int>(TLinkKind::TcpListen) && !place.contains(u':')) place.prepend(u':');
    if (kind == static_cast<int>(TLinkKind::StandardInput)) place.clear();
    return ParseLink(kPrefixes[kind] + place.toStdString());
}

TLinkLimit TLinkDialog::Limit() const {
    const int keep = m_ui->cbx_Keep->currentIndex();
    if (keep == kKeepAll) return {};
    bool isNumber = false;
    const double value = locale().toDouble(m_ui->e_Keep->text().trimmed(), &isNumber);
    const bool isRows = keep == kKeepRows;
    if (!isNumber || value <= 0 || value > kMostKept || (isRows && value != std::floor(value)))
        throw EConvertError(isRows ? "The number of rows is to be a whole number from 1"
                                   : "The time is to be a number of seconds above 0");
    return {isRows ? static_cast<std::int64_t>(value) : 0, isRows ? 0 : value};
}

void TLinkDialog::accept() {
    try {
        m_source.SetKind(TSourceKind::Link);
        m_source.SetSourceName(LinkText(Place()));
        m_source.SetLinkLimit(Limit());
        m_source.SetXDataColumn(Column(*m_ui->e_XColumn).toStdString());
        m_source.SetYDataColumn(Column(*m_ui->e_YColumn).toStdString());
    } catch (const ELumoError& error) {
        m_ui->lblProblem->setText(InLanguage(QString::fromUtf8(error.what())));
        return;
    }
    QDialog::accept();
}

TDSInfo TLinkDialog::Source() const {
    return m_source;
}

} // namespace lumoplot
