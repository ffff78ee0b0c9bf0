#include "dialogs/import/server_dialog.h"

#include "ui_server_dialog.h"

#include <QPushButton>
#include <QUrl>

namespace lumoplot {
namespace {

// In the order of the list.
enum TServerKind { kPostgreSql, kMySql, kOdbc };
constexpr const char* kSchemes[] = {"postgresql", "mysql"};
constexpr const char* kUsualPorts[] = {"5432", "3306", ""};
const QString kOdbcMark = QStringLiteral("odbc:");

int KindOfScheme(const QString& scheme) {
    return scheme == QStringLiteral("mysql") || scheme == QStringLiteral("mariadb") ? kMySql : kPostgreSql;
}

// "KEY=value" of a list divided by semicolons, empty where it is not there.
QString OdbcPart(const QString& options, const QString& key) {
    for (const QString& part : options.split(QLatin1Char(';')))
        if (part.startsWith(key + QLatin1Char('='), Qt::CaseInsensitive)) return part.mid(key.size() + 1);
    return {};
}

} // namespace

TServerDialog::TServerDialog(const QString& address, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TServerDialog>()) {
    m_ui->setupUi(this);
    m_ui->buttons->button(QDialogButtonBox::Ok)->setText(tr("Co&nnect"));
    connect(m_ui->cbx_Kind, &QComboBox::currentIndexChanged, this, &TServerDialog::ShowKind);
    for (QLineEdit* edit : {m_ui->e_Host, m_ui->e_Database, m_ui->e_User})
        connect(edit, &QLineEdit::textChanged, this, &TServerDialog::EnableControls);
    connect(m_ui->e_Port, &QLineEdit::textChanged, this, &TServerDialog::EnableControls);
    Fill(address);
    ShowKind();
}

TServerDialog::~TServerDialog() = default;

void TServerDialog::Fill(const QString& address) {
    if (address.startsWith(kOdbcMark)) {
        const QString options = address.mid(kOdbcMark.size());
        const QString source = OdbcPart(options, QStringLiteral("DSN"));
        m_ui->cbx_Kind->setCurrentIndex(kOdbc);
        m_ui->e_Database->setText(source.isEmpty() ? options : source);
        m_ui->e_User->setText(source.isEmpty() ? QString() : OdbcPart(options, QStringLiteral("UID")));
    } else if (address.contains(QStringLiteral("://"))) {
        const QUrl url(address);
        m_ui->cbx_Kind->setCurrentIndex(KindOfScheme(url.scheme()));
        m_ui->e_Host->setText(url.host());
        if (url.port() > 0) m_ui->e_Port->setText(QString::number(url.port()));
        m_ui->e_Database->setText(url.path().mid(1));
        m_ui->e_User->setText(url.userName());
    }
}

void TServerDialog::ShowKind() {
    const int kind = m_ui->cbx_Kind->currentIndex();
    for (QWidget* control : {static_cast<QWidget*>(m_ui->lblHost), static_cast<QWidget*>(m_ui->e_Host),
                             static_cast<QWidget*>(m_ui->lblPort), static_cast<QWidget*>(m_ui->e_Port)})
        control->setVisible(kind != kOdbc);
    m_ui->lblDatabase->setText(kind == kOdbc ? tr("&Data source:") : tr("&Database:"));
    m_ui->e_Database->setPlaceholderText(kind == kOdbc ? tr("its name, or DRIVER=…;…") : QString());
    m_ui->e_Port->setPlaceholderText(QString::fromLatin1(kUsualPorts[kind]));
    EnableControls();
}

void TServerDialog::EnableControls() {
    m_ui->buttons->button(QDialogButtonBox::Ok)->setEnabled(!Address().isEmpty());
}

QString TServerDialog::Address() const {
    const QString database = m_ui->e_Database->text().trimmed();
    const QString user = m_ui->e_User->text().trimmed();
    if (database.isEmpty()) return {};
    const int kind = m_ui->cbx_Kind->currentIndex();
    if (kind == kOdbc) {
        const bool isWhole = database.contains(QLatin1Char('=')) || user.isEmpty();
        return kOdbcMark + (isWhole ? database : QStringLiteral("DSN=%1;UID=%2").arg(database, user));
    }
    constexpr int kMostPort = 65535;
    const QString host = m_ui->e_Host->text().trimmed();
    bool isNumber = true;
    const QString portText = m_ui->e_Port->text().trimmed();
    const int port = portText.isEmpty() ? -1 : portText.toInt(&isNumber);
    if (!isNumber || port == 0 || port > kMostPort) return {};
    QUrl url;
    url.setScheme(QString::fromLatin1(kSchemes[kind]));
    url.setPort(port);
    if (!user.isEmpty()) url.setUserName(user);
    url.setPath(QLatin1Char('/') + database, QUrl::DecodedMode);
    // An address can not name a user or a port without a host.
    const bool isNamed = !host.isEmpty() || !user.isEmpty() || port > 0;
    if (isNamed) url.setHost(host.isEmpty() ? QStringLiteral("localhost") : host);
    if (!url.isValid() || (isNamed && url.host().isEmpty())) return {};
    return isNamed ? url.toString(QUrl::FullyEncoded)
                   : url.scheme() + QStringLiteral("://") + url.path(QUrl::FullyEncoded);
}

QString TServerDialog::Password() const {
    return m_ui->e_Password->text();
}

} // namespace lumoplot
