#include "fit/equation_editor/frm_calc.h"

#include "fit/equation_editor/fit_settings_group.h"
#include "fit/equation_editor/formula_group.h"
#include "fit/equation_editor/function_list.h"
#include "fit/equation_editor/parameter_group.h"
#include "fit/equation_editor/parameter_model.h"
#include "support/number_text.h"
#include "ui_frm_calc.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>

namespace lumoplot {
namespace {

constexpr int kResultDigits = 15;
constexpr QSize kWindowFrame(8, 36);
constexpr int kLeastFormula = 40;

// A list to choose from: the edits beside it show the rest.
void ShowNamesOnly(QTableView& table) {
    for (int column = 0; column < TParameterModel::ColumnCount; ++column)
        table.setColumnHidden(column, column != TParameterModel::Name);
    table.horizontalHeader()->hide();
    table.setShowGrid(false);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
}

} // namespace

TfrmCalc::TfrmCalc(TCurFit& fit, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TfrmCalc>()), m_fit(fit) {
    m_ui->setupUi(this);
    if (parent) setWindowIcon(parent->window()->windowIcon());
    for (const TListedFunction& function : ListedFunctions())
        m_ui->lb_Functions->addItem(QString::fromLatin1(function.Piece));
    m_ui->keypad->TakeKeys(*m_ui->m_Equation);
    MakeGroups();
    ConnectEvaluation();
    ConnectPieces();
    ConnectClosing();
    Guarded([&] { PrepareFolder(); });
    Fill();
    FitOnScreen(screen()->availableSize() - kWindowFrame);
}

// Where the screen is too small keys and parameters scroll; the formula and the buttons stay.
void TfrmCalc::FitOnScreen(const QSize& room) {
    resize(size().boundedTo(room));
    const QSize least = layout()->minimumSize();
    if (least.width() <= room.width() && least.height() <= room.height()) return;
    auto* area = new QScrollArea(this);
    auto* pieces = new QWidget(this);
    const int place = m_ui->dialogLayout->indexOf(m_ui->middleLayout);
    m_ui->dialogLayout->removeItem(m_ui->middleLayout);
    pieces->setLayout(m_ui->middleLayout);
    m_ui->middleLayout->setContentsMargins(0, 0, 0, 0);
    area->setWidget(pieces);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus); // its controls have the focus, and bring themselves into view
    m_ui->dialogLayout->insertWidget(place, area, 4);
    m_ui->m_Equation->setMinimumHeight(kLeastFormula);
    resize(size().boundedTo(room));
}

// An edit that loses the focus while the dialog's base destroys it must not reach the groups.
TfrmCalc::~TfrmCalc() {
    delete m_formula;
    delete m_parameters;
    delete m_settings;
}

void TfrmCalc::MakeGroups() {
    m_parameters = new TParameterGroup(*this, *this, this);
    m_formula = new TFormulaGroup(*this, *this, *m_parameters, this);
    m_settings = new TFitSettingsGroup(*this, *this, this);
    ShowNamesOnly(*m_ui->t_Parameters);
}

void TfrmCalc::ConnectEvaluation() {
    connect(m_ui->e_X, &TValueEdit::ValueEdited, this, [this](double x) {
        m_x = x;
        m_ui->e_Result->clear();
    });
    connect(m_ui->btnResult, &QPushButton::clicked, this, [this] { Guarded([&] { Evaluate(); }); });
    m_ui->e_X->installEventFilter(this);
}

void TfrmCalc::ConnectPieces() {
    connect(m_ui->keypad, &TKeypad::PieceChosen, this, [this](const QString& piece) {
        m_ui->m_Equation->InsertPiece(piece);
        if (!m_ui->keypad->isAncestorOf(focusWidget())) m_ui->m_Equation->setFocus();
    });
    connect(m_ui->lb_Functions, &QListWidget::currentRowChanged, this, &TfrmCalc::ShowFunctionHelp);
    connect(m_ui->lb_Functions, &QListWidget::itemDoubleClicked, this, &TfrmCalc::InsertFunction);
    connect(m_ui->btnFunction, &QPushButton::clicked, this, &TfrmCalc::InsertFunction);
    connect(m_ui->btnVariable, &QPushButton::clicked, this, [this] { Insert(m_ui->e_XVarName->text()); });
    connect(m_ui->t_Parameters, &QTableView::doubleClicked, this, &TfrmCalc::InsertParameter);
    connect(m_ui->btnParameter, &QPushButton::clicked, this, &TfrmCalc::InsertParameter);
    m_ui->lb_Functions->installEventFilter(this);
    m_ui->t_Parameters->installEventFilter(this);
    m_ui->lb_Functions->setCurrentRow(0);
}

void TfrmCalc::ConnectClosing() {
    connect(m_ui->btnSaveAs, &QPushButton::clicked, this, [this] { Guarded([&] { SaveAs(); }); });
    connect(m_ui->btnOpen, &QPushButton::clicked, this, [this] { Guarded([&] { Open(); }); });
    connect(m_ui->btnOk, &QPushButton::clicked, this, [this] {
        m_settings->TakeMargins();
        done(kOk);
    });
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &TfrmCalc::reject);
}

// The Return key does to a list or to x what the button beside it does.
bool TfrmCalc::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return QDialog::eventFilter(watched, event);
    QPushButton* button = watched == m_ui->lb_Functions   ? m_ui->btnFunction
                          : watched == m_ui->t_Parameters ? m_ui->btnParameter
                                                          : m_ui->btnResult;
    button->click();
    return true;
}

void TfrmCalc::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        m_ui->m_Equation->setFocus();
        if (const QScreen* on = screen()) move(on->availableGeometry().center() - rect().center());
    }
    QDialog::showEvent(event);
}

void TfrmCalc::Fill() {
    m_parameters->Fill();
    m_settings->Fill();
    m_formula->Fill();
    m_x = 0;
    m_ui->e_X->ShowValue(m_x);
    ShowFileName(m_fileName);
    FitEdited();
}

void TfrmCalc::ShowXName() {
    m_ui->lblX->setText(QString::fromStdString(m_fit.XVarName()) + QStringLiteral(" ="));
}

// What the result belongs to may have changed with any edit.
void TfrmCalc::FitEdited() {
    m_ui->e_Result->clear();
    ShowXName();
    m_parameters->ShowTable();
    m_formula->Check();
}

void TfrmCalc::ShowFunctionHelp(int item) {
    const auto functions = ListedFunctions();
    if (item >= 0 && item < static_cast<int>(functions.size()))
        m_ui->lblHelp->setText(QString::fromLatin1(functions[static_cast<std::size_t>(item)].Help));
}

void TfrmCalc::Insert(const QString& piece) {
    m_ui->m_Equation->InsertPiece(piece);
    m_ui->m_Equation->setFocus();
}

void TfrmCalc::InsertFunction() {
    if (const QListWidgetItem* item = m_ui->lb_Functions->currentItem()) Insert(item->text());
}

void TfrmCalc::InsertParameter() {
    if (const TDBLParameter* parameter = m_parameters->Selected())
        Insert(QString::fromStdString(parameter->Name()));
}

void TfrmCalc::Evaluate() {
    m_fit.Compile();
    m_ui->e_Result->setText(QString::fromStdString(FormatGeneral(m_fit.EvaluateAt(m_x), kResultDigits)));
}

} // namespace lumoplot
