#include "dialogs/import/database_chooser.h"

#include "controls/return_key.h"
#include "controls/texts.h"
#include "dialogs/import/server_dialog.h"
#include "dialogs/manual_window.h"
#include "sources/database/connection/saved_connections.h"
#include "sources/database/database_loader.h"
#include "support/errors.h"
#include "support/message_text.h"
#include "ui_database_chooser.h"

#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <future>
#include <thread>

namespace lumoplot {
namespace {

using namespace std::chrono_literals;

constexpr int kRowsShown = 100;
constexpr int kMostColumnWidth = 200; // pixels
constexpr int kLookMs = 20;           // whether the database has answered
constexpr auto kUnnoticed = 60ms;     // what is done within needs no telling
QString NoErrorsItem() {
    return TTexts::tr("(none)");
}

QString RowNumberItem() {
    return TTexts::tr("(row number)");
}

QString Shown(const std::string& text) {
    return QString::fromStdString(ShownLine(text));
}

} // namespace

TDatabaseChooser::TDatabaseChooser(const TDSInfo& current, const QString& connection, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TDatabaseChooser>()), m_source(current) {
    m_ui->setupUi(this);
    CloseOnCtrlReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("databases.md"); });
    m_ui->splitter->setStretchFactor(1, 1);
    if (current.Kind() != TSourceKind::Database) m_source = TDSInfo();
    ListConnections();
    const TDatabaseWish& wish = m_source.Database();
    m_ui->cbx_Connection->setEditText(connection.isEmpty() ? QString::fromStdString(wish.connection)
                                                           : connection);
    m_ui->cb_OwnSelect->setChecked(!wish.query.empty());
    m_ui->m_Select->setPlainText(QString::fromStdString(wish.query));
    m_ui->e_Where->setText(QString::fromStdString(wish.where));
    m_ui->e_Order->setText(QString::fromStdString(wish.orderBy));
    m_stop = m_ui->buttons->addButton(TTexts::tr("S&top"), QDialogButtonBox::ActionRole);
    m_stop->setObjectName(QStringLiteral("btnStop"));
    ConnectControls();
    EnableControls();
    const QString text = Connection();
    if (!text.isEmpty() && !IsServer(text.toStdString())) Connect();
    m_connected.isEmpty() ? m_ui->cbx_Connection->setFocus() : m_ui->lst_Tables->setFocus();
}

TDatabaseChooser::~TDatabaseChooser() = default;

/// A server may let wait: the window is there before it is called.
void TDatabaseChooser::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous() && m_connected.isEmpty() && IsServer(Connection().toStdString()))
        QTimer::singleShot(0, this, [this] { Connect(); });
}

void TDatabaseChooser::reject() {
    if (!m_isWaiting) return QDialog::reject();
    m_isStopped = true;
}

bool TDatabaseChooser::Wait(const std::function<bool()>& isDone) {
    const QPointer<QWidget> focus = focusWidget();
    m_isWaiting = true;
    m_isStopped = false;
    m_ui->lblMessage->setText(TTexts::tr("Waiting for the database…"));
    EnableControls();
    m_stop->setFocus();
    QEventLoop loop;
    QTimer look;
    connect(&look, &QTimer::timeout, &loop, [&] {
        if (isDone() || m_isStopped) loop.quit();
    });
    look.start(kLookMs);
    loop.exec();
    m_isWaiting = false;
    m_ui->lblMessage->clear();
    EnableControls();
    if (focus) focus->setFocus();
    return !m_isStopped;
}

/// The thread is left to itself when nobody waits for it any more.
template <class T>
std::optional<T> TDatabaseChooser::Await(std::function<T()> work) {
    auto promise = std::make_shared<std::promise<T>>();
    std::future<T> result = promise->get_future();
    std::thread([promise, work = std::move(work)] {
        try {
            promise->set_value(work());
        } catch (...) {
            promise->set_exception(std::current_exception());
        }
    }).detach();
    const auto isDone = [&result] { return result.wait_for(0s) == std::future_status::ready; };
    const bool isQuick = result.wait_for(kUnnoticed) == std::future_status::ready;
    if (!isQuick && !Wait(isDone)) {
        m_ui->lblMessage->setText(TTexts::tr("Stopped: nothing was read."));
        return std::nullopt;
    }
    return result.get();
}

void TDatabaseChooser::ConnectControls() {
    connect(m_ui->buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttons, &QDialogButtonBox::rejected, this, &TDatabaseChooser::reject);
    connect(m_stop, &QPushButton::clicked, this, [this] { m_isStopped = true; });
    connect(m_ui->cbx_Connection, &QComboBox::activated, this, [this] { ConnectionPicked(); });
    connect(m_ui->cbx_Connection->lineEdit(), &QLineEdit::textEdited, this, [this] { EnableControls(); });
    connect(m_ui->btnFile, &QPushButton::clicked, this, [this] { ChooseFile(); });
    connect(m_ui->btnServer, &QPushButton::clicked, this, [this] { ChooseServer(); });
    connect(m_ui->btnSave, &QPushButton::clicked, this, [this] { SaveAs(); });
    connect(m_ui->btnForget, &QPushButton::clicked, this, [this] { Forget(); });
    connect(m_ui->btnConnect, &QPushButton::clicked, this, [this] { Connect(); });
    connect(m_ui->lst_Tables, &QListWidget::currentRowChanged, this, [this] {
        m_ui->cb_OwnSelect->setChecked(false);
        ShowPreview();
    });
    connect(m_ui->cb_OwnSelect, &QCheckBox::toggled, this, [this] {
        EnableControls();
        ShowPreview();
    });
    for (QLineEdit* edit : {m_ui->e_Where, m_ui->e_Order})
        connect(edit, &QLineEdit::editingFinished, this, [this, edit] {
            if (edit->isModified()) ShowPreview();
            edit->setModified(false);
        });
}

// Enter in a field takes what was typed; it does not close the window from there.
void TDatabaseChooser::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && m_ui->e_Password->hasFocus()) return Connect();
    if (isEnter && m_ui->cbx_Connection->lineEdit()->hasFocus() && Connection() != m_connected)
        return Connect();
    if (isEnter && (m_ui->e_Where->hasFocus() || m_ui->e_Order->hasFocus())) return;
    QDialog::keyPressEvent(event);
}

void TDatabaseChooser::ListConnections() {
    const QString text = m_ui->cbx_Connection->currentText();
    m_ui->cbx_Connection->clear();
    for (const std::string& name : SavedConnectionNames())
        m_ui->cbx_Connection->addItem(QString::fromStdString(name));
    m_ui->cbx_Connection->setEditText(text);
}

QString TDatabaseChooser::Connection() const {
    const QString text = m_ui->cbx_Connection->currentText().trimmed();
    const auto saved = SavedConnection(text.toStdString());
    return saved ? QString::fromStdString(*saved) : text;
}

void TDatabaseChooser::ConnectionPicked() {
    EnableControls();
    Connect();
}

void TDatabaseChooser::ChooseFile() {
    QFileDialog dialog(this, TTexts::tr("Choose a database file"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({TTexts::tr("Databases (*.db *.sqlite *.sqlite3 *.db3 *.dbf *.mdb *.accdb)"),
                           TTexts::tr("All files (*)")});
    const QFileInfo present(Connection());
    if (present.exists()) dialog.setDirectory(present.absolutePath());
    if (dialog.exec() != QDialog::Accepted) return;
    m_ui->cbx_Connection->setEditText(dialog.selectedFiles().value(0));
    ConnectionPicked();
}

void TDatabaseChooser::ChooseServer() {
    TServerDialog dialog(Connection(), this);
    if (dialog.exec() != QDialog::Accepted) return;
    m_ui->cbx_Connection->setEditText(dialog.Address());
    m_ui->e_Password->setText(dialog.Password());
    ConnectionPicked();
}

void TDatabaseChooser::SaveAs() {
    bool isGiven = false;
    const QString name = QInputDialog::getText(this, TTexts::tr("Save Connection"), TTexts::tr("Name:"),
                                               QLineEdit::Normal, {}, &isGiven)
                             .trimmed();
    if (!isGiven || name.isEmpty()) return;
    SaveConnection(name.toStdString(), Connection().toStdString());
    ListConnections();
    m_ui->cbx_Connection->setEditText(name);
    EnableControls();
}

void TDatabaseChooser::Forget() {
    const QString connection = Connection();
    SaveConnection(m_ui->cbx_Connection->currentText().trimmed().toStdString(), {});
    ListConnections();
    m_ui->cbx_Connection->setEditText(connection);
    EnableControls();
}

void TDatabaseChooser::Connect() {
    if (m_isWaiting) return;
    const QString connection = Connection();
    const std::string wanted = m_source.SourceName();
    if (!m_ui->e_Password->text().isEmpty())
        KeepPassword(connection.toStdString(), m_ui->e_Password->text().toStdString());
    m_connected.clear();
    m_isFilling = true;
    m_ui->lst_Tables->clear();
    m_isFilling = false;
    try {
        const auto found =
            Await<std::vector<TSqlTable>>([text = connection.toStdString()] { return DatabaseTables(text); });
        if (!found) return EnableControls();
        const std::vector<TSqlTable>& tables = *found;
        m_connected = connection;
        m_isFilling = true;
        int chosen = 0;
        for (const TSqlTable& table : tables) {
            const QString name = QString::fromStdString(table.Shown());
            auto* item = new QListWidgetItem(table.isView ? name + QStringLiteral("  (view)") : name,
                                             m_ui->lst_Tables);
            item->setData(Qt::UserRole, name);
            if (table.Shown() == wanted) chosen = m_ui->lst_Tables->count() - 1;
        }
        const bool isOwn = m_ui->cb_OwnSelect->isChecked();
        m_ui->lst_Tables->setCurrentRow(chosen);
        m_ui->cb_OwnSelect->setChecked(isOwn);
        m_isFilling = false;
        ShowPreview();
    } catch (const ELumoError& error) {
        ShowProblem(Shown(error.what()));
    }
    EnableControls();
}

TDSInfo TDatabaseChooser::Source() const {
    TDSInfo source = m_source;
    source.SetKind(TSourceKind::Database);
    const QListWidgetItem* item = m_ui->lst_Tables->currentItem();
    const bool isOwn = m_ui->cb_OwnSelect->isChecked();
    source.SetSourceName(item && !isOwn ? item->data(Qt::UserRole).toString().toStdString() : std::string());
    const auto text = [](const QString& typed) { return typed.trimmed().toStdString(); };
    source.SetDatabase({m_connected.toStdString(),
                        isOwn ? text(m_ui->m_Select->toPlainText()) : std::string(),
                        text(m_ui->e_Where->text()), text(m_ui->e_Order->text())});
    if (m_ui->cbx_X->count() > 0)
        source.SetXDataColumn(
            m_ui->cbx_X->currentIndex() == 0 ? "0" : m_ui->cbx_X->currentData().toString().toStdString());
    // Another rule for the errors stays where no column is chosen.
    const QString errors = m_ui->cbx_YError->currentData().toString();
    if (!errors.isEmpty())
        source.SetYErrorRule({TYErrorKind::Column, 0, errors.toStdString()});
    else if (source.YErrorRule().Kind == TYErrorKind::Column && m_ui->cbx_YError->count() > 0)
        source.SetYErrorRule({});
    if (m_ui->cbx_Y->count() > 0) source.SetYDataColumn(m_ui->cbx_Y->currentData().toString().toStdString());
    return source;
}

QString TDatabaseChooser::Name() const {
    const QString column = m_ui->cbx_Y->currentData().toString();
    const QListWidgetItem* item = m_ui->lst_Tables->currentItem();
    return column.isEmpty() && item ? item->data(Qt::UserRole).toString() : column;
}

void TDatabaseChooser::ShowPreview() {
    if (m_isFilling || m_isWaiting) return;
    if (m_connected.isEmpty()) return EnableControls();
    try {
        TDSInfo described = Source();
        if (described.SourceName() != m_source.SourceName() || m_ui->cb_OwnSelect->isChecked()) {
            described.SetXDataColumn({});
            described.SetYDataColumn({});
            described.SetYErrorRule({});
        } else {
            described.SetXDataColumn(m_source.XDataColumn());
            described.SetYDataColumn(m_source.YDataColumn());
            described.SetYErrorRule(m_source.YErrorRule());
        }
        const auto read = Await<TDatabasePreview>([text = m_connected.toStdString(), described] {
            return PreviewDatabase(text, described, kRowsShown);
        });
        if (!read) return EnableControls();
        const TDatabasePreview& preview = *read;
        FillColumns(preview);
        FillRows(preview);
        m_ui->lblMessage->setText(
            preview.chosen.y >= 0 ? QString() : TTexts::tr("No column of it holds numbers or dates."));
    } catch (const ELumoError& error) {
        ShowProblem(Shown(error.what()));
    }
    EnableControls();
}

void TDatabaseChooser::FillColumns(const TDatabasePreview& preview) {
    for (QComboBox* box : {m_ui->cbx_X, m_ui->cbx_Y, m_ui->cbx_YError}) box->clear();
    m_ui->cbx_X->addItem(RowNumberItem());
    m_ui->cbx_YError->addItem(NoErrorsItem());
    int place = 0;
    for (const TTableColumn& column : preview.table.columns) {
        const QString name = QString::fromStdString(column.name);
        const QString text = name + QStringLiteral(" – ") + QString::fromStdString(KindText(column.kind));
        const int here = place++;
        if (!column.HasValues()) continue;
        m_ui->cbx_X->addItem(text, name);
        m_ui->cbx_Y->addItem(text, name);
        m_ui->cbx_YError->addItem(text, name);
        if (here == preview.chosen.yError) m_ui->cbx_YError->setCurrentIndex(m_ui->cbx_YError->count() - 1);
        if (here == preview.chosen.x) m_ui->cbx_X->setCurrentIndex(m_ui->cbx_X->count() - 1);
        if (here == preview.chosen.y) m_ui->cbx_Y->setCurrentIndex(m_ui->cbx_Y->count() - 1);
    }
}

void TDatabaseChooser::FillRows(const TDatabasePreview& preview) {
    QTableWidget& table = *m_ui->tbl_Preview;
    table.clear();
    table.setRowCount(static_cast<int>(preview.table.rows.size()));
    table.setColumnCount(static_cast<int>(preview.table.columns.size()));
    for (int column = 0; column < table.columnCount(); ++column) {
        const TTableColumn& shown = preview.table.columns[static_cast<std::size_t>(column)];
        auto* header = new QTableWidgetItem(Shown(shown.name));
        header->setToolTip(QString::fromStdString(KindText(shown.kind)));
        table.setHorizontalHeaderItem(column, header);
        for (int row = 0; row < table.rowCount(); ++row) {
            const auto& cells = preview.table.rows[static_cast<std::size_t>(row)];
            auto* item = new QTableWidgetItem(Shown(cells[static_cast<std::size_t>(column)]));
            if (shown.HasValues()) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table.setItem(row, column, item);
        }
        table.resizeColumnToContents(column);
        table.setColumnWidth(column, std::min(table.columnWidth(column), kMostColumnWidth));
    }
    table.resizeRowsToContents();
}

void TDatabaseChooser::ShowProblem(const QString& problem) {
    m_isFilling = false;
    for (QComboBox* box : {m_ui->cbx_X, m_ui->cbx_Y, m_ui->cbx_YError}) box->clear();
    m_ui->tbl_Preview->clear();
    m_ui->tbl_Preview->setRowCount(0);
    m_ui->tbl_Preview->setColumnCount(0);
    m_ui->lblMessage->setText(problem);
}

void TDatabaseChooser::EnableControls() {
    const QString typed = m_ui->cbx_Connection->currentText().trimmed();
    const bool isSaved = SavedConnection(typed.toStdString()).has_value();
    const bool isServer = IsServer(Connection().toStdString());
    m_ui->lblPassword->setVisible(isServer);
    m_ui->e_Password->setVisible(isServer);
    m_ui->btnConnect->setVisible(isServer || Connection() != m_connected);
    m_ui->btnConnect->setEnabled(!typed.isEmpty());
    m_ui->btnSave->setEnabled(!typed.isEmpty() && !isSaved);
    m_ui->btnForget->setEnabled(isSaved);
    m_ui->m_Select->setEnabled(m_ui->cb_OwnSelect->isChecked());
    const bool isConnected = !m_connected.isEmpty() && Connection() == m_connected;
    m_ui->buttons->button(QDialogButtonBox::Ok)
        ->setEnabled(!m_isWaiting && isConnected && m_ui->cbx_Y->count() > 0);
    m_stop->setVisible(m_isWaiting);
    for (QWidget* control :
         {static_cast<QWidget*>(m_ui->splitter), static_cast<QWidget*>(m_ui->cbx_Connection),
          static_cast<QWidget*>(m_ui->btnFile), static_cast<QWidget*>(m_ui->btnServer),
          static_cast<QWidget*>(m_ui->e_Password)})
        control->setEnabled(!m_isWaiting);
    if (m_isWaiting)
        for (QPushButton* button : {m_ui->btnConnect, m_ui->btnSave, m_ui->btnForget})
            button->setEnabled(false);
}

} // namespace lumoplot
