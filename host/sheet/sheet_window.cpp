#include "host/sheet/sheet_window.h"

#include "dialogs/manual_window.h"
#include "host/files/file_choice.h"
#include "host/sheet/sheet_book.h"
#include "host/sheet/sheet_model.h"
#include "host/sheet/sheet_text.h"
#include "session/graph_session.h"
#include "support/errors.h"
#include "support/guard.h"
#include "support/message_text.h"
#include "support/replace_file.h"
#include "ui_sheet_window.h"

#include <QClipboard>
#include <QFile>
#include <QFileInfo>
#include <QInputDialog>
#include <QTabBar>
#include <algorithm>

namespace lumoplot {
namespace {

QString CsvFilters() {
    return TSheetWindow::tr("CSV and text (*.csv *.txt *.tsv);;All files (*)");
}

std::vector<int> ColumnsWithValues(const TSheet& sheet) {
    std::vector<int> columns;
    for (int i = 0; i < sheet.ColumnCount(); ++i) {
        const bool isWorkedOut = !sheet.Column(i).Formula().empty();
        const auto& cells = sheet.Column(i).cells;
        if (isWorkedOut || std::ranges::any_of(cells, [](const auto& cell) { return !cell.empty(); }))
            columns.push_back(i);
    }
    return columns;
}

} // namespace

TSheetWindow::TSheetWindow(TSheetBook& book, TGraphSession& session, QWidget* parent)
    : QMainWindow(parent), m_ui(std::make_unique<Ui::SheetWindow>()), m_book(book), m_session(session),
      m_model(new TSheetModel(book, this)) {
    m_ui->setupUi(this);
    OfferManual(*this, [] { return QStringLiteral("sheets.md"); });
    m_ui->table->setModel(m_model);
    ConnectActions();
    connect(&m_book, &TSheetBook::Changed, this, &TSheetWindow::ListSheets);
    connect(&m_session, &TGraphSession::Changed, this, &TSheetWindow::ShowState);
    connect(m_ui->tabs, &QTabBar::currentChanged, m_model, &TSheetModel::ShowSheet);
    ListSheets();
}

TSheetWindow::~TSheetWindow() = default;

void TSheetWindow::ConnectActions() {
    using TSlot = void (TSheetWindow::*)();
    const std::pair<QAction*, TSlot> actions[] = {
        {m_ui->a_NewSheet, &TSheetWindow::NewSheet},   {m_ui->a_ImportCsv, &TSheetWindow::ImportCsv},
        {m_ui->a_ExportCsv, &TSheetWindow::ExportCsv}, {m_ui->a_Plot, &TSheetWindow::Plot},
        {m_ui->a_Rename, &TSheetWindow::RenameSheet},  {m_ui->a_Delete, &TSheetWindow::DeleteSheet},
        {m_ui->a_Copy, &TSheetWindow::Copy},           {m_ui->a_Cut, &TSheetWindow::Cut},
        {m_ui->a_Paste, &TSheetWindow::Paste},         {m_ui->a_Clear, &TSheetWindow::ClearCells},
    };
    for (const auto& [action, slot] : actions)
        connect(action, &QAction::triggered, this,
                [this, slot = slot] { Guarded([&] { (this->*slot)(); }); });
    connect(m_ui->tabs, &QTabBar::tabBarDoubleClicked, m_ui->a_Rename, &QAction::trigger);
    connect(m_ui->a_Undo, &QAction::triggered, &m_session, &TGraphSession::Undo);
    connect(m_ui->a_Redo, &QAction::triggered, &m_session, &TGraphSession::Redo);
    connect(m_ui->a_Close, &QAction::triggered, this, &TSheetWindow::close);
    const auto edit = [this](QAction* action, const QString& step, void (*change)(TSheet&, const QRect&)) {
        connect(action, &QAction::triggered, this, [this, step, change] {
            Guarded([&] { Change(step, [&](TSheet& sheet) { change(sheet, Chosen()); }); });
        });
    };
    edit(m_ui->a_InsertRows, tr("insert rows"),
         [](TSheet& sheet, const QRect& at) { sheet.InsertRows(std::max(at.top() - 1, 0), at.height()); });
    edit(m_ui->a_DeleteRows, tr("delete rows"), [](TSheet& sheet, const QRect& at) {
        const int first = std::max(at.top() - 1, 0);
        sheet.DeleteRows(first, at.bottom() - first);
    });
    edit(m_ui->a_InsertColumn, tr("insert column"),
         [](TSheet& sheet, const QRect& at) { sheet.InsertColumn(at.left()); });
    edit(m_ui->a_DeleteColumns, tr("delete columns"), [](TSheet& sheet, const QRect& at) {
        for (int i = 0; i < at.width(); ++i) sheet.DeleteColumn(at.left());
    });
}

void TSheetWindow::Open() {
    if (m_book.Sheets().empty()) m_book.Add();
    show();
    raise();
    activateWindow();
    if (!m_ui->table->currentIndex().isValid()) m_ui->table->setCurrentIndex(m_model->index(1, 0));
    m_ui->table->setFocus();
}

void TSheetWindow::ListSheets() {
    const auto& sheets = m_book.Sheets();
    const int before = m_ui->tabs->currentIndex();
    {
        const QSignalBlocker quiet(m_ui->tabs);
        while (m_ui->tabs->count() > static_cast<int>(sheets.size()))
            m_ui->tabs->removeTab(m_ui->tabs->count() - 1);
        for (std::size_t i = 0; i < sheets.size(); ++i) {
            const QString name =
                QString::fromStdString(ShownLine(sheets[i].Name())).replace(u'&', QStringLiteral("&&"));
            const int tab = static_cast<int>(i);
            tab < m_ui->tabs->count() ? m_ui->tabs->setTabText(tab, name) : void(m_ui->tabs->addTab(name));
        }
        m_ui->tabs->setCurrentIndex(std::clamp(before, 0, std::max(m_ui->tabs->count() - 1, 0)));
    }
    if (m_model->Number() != m_ui->tabs->currentIndex()) m_model->ShowSheet(m_ui->tabs->currentIndex());
    ShowState();
}

void TSheetWindow::ShowState() {
    for (QAction* action : {m_ui->a_Rename, m_ui->a_Delete}) action->setEnabled(m_model->Sheet() != nullptr);
    m_ui->a_Undo->setEnabled(m_session.CanUndo());
    m_ui->a_Redo->setEnabled(m_session.CanRedo());
    const QString problem = m_book.Problem();
    problem.isEmpty() ? m_ui->statusBar->clearMessage() : m_ui->statusBar->showMessage(problem);
}

void TSheetWindow::Change(const QString& step, const std::function<void(TSheet&)>& action) {
    if (m_model->Sheet()) m_book.Change(m_model->Number(), step, action);
}

/// The cells from the first that is chosen to the last, as columns and rows of the table.
QRect TSheetWindow::Chosen() const {
    QRect chosen;
    for (const QItemSelectionRange& range : m_ui->table->selectionModel()->selection())
        chosen =
            chosen.united(QRect(QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom())));
    const QModelIndex current = m_ui->table->currentIndex();
    if (chosen.isNull() && current.isValid()) chosen = QRect(current.column(), current.row(), 1, 1);
    return chosen;
}

void TSheetWindow::NewSheet() {
    const int number = m_book.Add();
    m_ui->tabs->setCurrentIndex(number);
}

void TSheetWindow::RenameSheet() {
    if (!m_model->Sheet()) return;
    bool isTaken = false;
    const QString before = QString::fromStdString(m_model->Sheet()->Name());
    const QString name = QInputDialog::getText(this, tr("Rename Sheet"), tr("Name of the sheet:"),
                                               QLineEdit::Normal, before, &isTaken);
    if (isTaken) m_book.Rename(m_model->Number(), name);
}

/// No question: it is a step that can be taken back.
void TSheetWindow::DeleteSheet() {
    if (m_model->Sheet()) m_book.Delete(m_model->Number());
}

void TSheetWindow::ImportCsv() {
    const QString name = AskFileToOpen(this, {tr("Import CSV"), CsvFilters(), {}, {}});
    if (name.isEmpty()) return;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        throw EFileError("Can not open file " + name.toStdString() + ": " + file.errorString().toStdString());
    QByteArray text = file.readAll();
    if (text.startsWith("\xEF\xBB\xBF")) text.remove(0, 3);
    const TSheet sheet = SheetOf({}, CellsOf(text.toStdString()), TSheetTop::Found);
    const bool isEmpty = m_model->Sheet() && m_model->Sheet()->ColumnCount() == 0;
    if (!isEmpty) return m_ui->tabs->setCurrentIndex(m_book.Add(&sheet));
    Change(tr("import %1").arg(QFileInfo(name).fileName()),
           [&](TSheet& present) { present = sheet.Named(present.Name()); });
}

void TSheetWindow::ExportCsv() {
    if (!m_model->Sheet()) return;
    const QString proposal = QString::fromStdString(m_model->Sheet()->Name());
    const QString name =
        AskFileToSave(this, {tr("Export CSV"), CsvFilters(), QStringLiteral("csv"), proposal});
    if (name.isEmpty()) return;
    const std::string text = TextOf(CellsOf(*m_model->Sheet(), TSheetTitles::NamesOnly), ',');
    ReplaceFile(name.toStdString(),
                std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

/// The chosen columns over the first one, or every other column when only one is chosen that can be none.
void TSheetWindow::Plot() {
    const TSheet* sheet = m_model->Sheet();
    if (!sheet) return;
    const std::vector<int> all = ColumnsWithValues(*sheet);
    if (all.empty()) throw EFileError("The sheet has no values yet: type or paste some");
    const int x = all.size() > 1 ? all.front() : -1;
    const QRect chosen = Chosen();
    std::vector<int> wanted;
    for (const int column : all)
        if (column != x && column >= chosen.left() && column <= chosen.right()) wanted.push_back(column + 1);
    if (wanted.empty())
        for (const int column : all)
            if (column != x) wanted.push_back(column + 1);
    Q_EMIT PlotWanted(QString::fromStdString(sheet->Name()), x + 1, wanted);
}

void TSheetWindow::Copy() {
    const QRect chosen = Chosen();
    if (chosen.isEmpty()) return;
    const TSheetCells cells = m_model->Shown(m_model->index(chosen.top(), chosen.left()),
                                             m_model->index(chosen.bottom(), chosen.right()));
    QGuiApplication::clipboard()->setText(QString::fromStdString(TextOf(cells)));
}

void TSheetWindow::Cut() {
    Copy();
    ClearCells();
}

/// Into the row of titles where that is chosen, or where an empty sheet is pasted into whose first row are
/// titles.
void TSheetWindow::Paste() {
    const QRect chosen = Chosen();
    TSheetCells cells = CellsOf(QGuiApplication::clipboard()->text().toStdString());
    if (cells.empty() || chosen.isEmpty()) return;
    Change(tr("paste cells"), [&](TSheet& sheet) {
        const bool isFirst = sheet.ColumnCount() == 0 && chosen.topLeft() == QPoint(0, 1);
        if (isFirst) {
            sheet = SheetOf(sheet.Name(), cells, TSheetTop::Found);
            return;
        }
        if (chosen.top() > 0) return sheet.Paste(chosen.top() - 1, chosen.left(), cells);
        for (std::size_t i = 0; i < cells.front().size(); ++i)
            sheet.SetTitle(chosen.left() + static_cast<int>(i), cells.front()[i]);
        cells.erase(cells.begin());
        if (!cells.empty()) sheet.Paste(0, chosen.left(), cells);
    });
}

void TSheetWindow::ClearCells() {
    const QRect chosen = Chosen();
    Change(tr("clear cells"), [&](TSheet& sheet) {
        if (chosen.top() == 0)
            for (int i = chosen.left(); i <= std::min(chosen.right(), sheet.ColumnCount() - 1); ++i)
                sheet.SetTitle(i, {});
        const int first = std::max(chosen.top() - 1, 0);
        sheet.Clear(first, chosen.left(), chosen.bottom() - first, chosen.width());
    });
}

} // namespace lumoplot
