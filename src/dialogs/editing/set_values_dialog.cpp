#include "dialogs/editing/set_values_dialog.h"

#include "controls/model_texts.h"
#include "controls/number_edit.h"
#include "controls/return_key.h"
#include "controls/texts.h"
#include "controls/whole_captions.h"
#include "dialogs/hand_edit.h"
#include "dialogs/manual_window.h"
#include "expr/formula_hints.h"
#include "fit/definition/cur_fit.h"
#include "graph/model/graph.h"
#include "support/errors.h"
#include "support/guard.h"
#include "support/number_text.h"
#include "ui_set_values_dialog.h"

#include <QApplication>
#include <QHeaderView>
#include <QLocale>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kListedDigits = 6;

double BoundIn(const QLineEdit& edit) {
    const double value = ExactNumberIn(edit);
    if (std::isnan(value)) throw EConvertError("'" + edit.text().toStdString() + "' is no bound of a range");
    return value;
}

QTableWidgetItem* Cell(const QString& text) {
    auto* cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return cell;
}

QTableWidgetItem* NumberCell(double value) {
    return Cell(QString::fromStdString(FormatGeneral(value, kListedDigits)));
}

/// Why a range has no points.
QString EmptyText(const TSeries& series, const std::optional<TXRange>& range) {
    if (!range || series.Count() == 0) return TTexts::tr("The data set has no points.");
    if (range->From > range->To) return TTexts::tr("The range ends before it begins.");
    return TTexts::tr("No point lies in the range: X goes from %1 to %2.")
        .arg(QString::fromStdString(FormatGeneral(series.MinX(), kListedDigits)),
             QString::fromStdString(FormatGeneral(series.MaxX(), kListedDigits)));
}

/// Names that the formula has and nothing stands for.
QString UnknownNames(const std::string& formula, const TSeries& series) {
    QStringList unknown;
    for (const std::string& name : UnknownVariables(formula, series.Graph()))
        unknown += QString::fromStdString(name);
    if (unknown.isEmpty()) return {};
    return (unknown.size() == 1 ? TTexts::tr("Not known: %1. Click a variable below to use it.")
                                : TTexts::tr("Not known: %1. Click variables below to use them."))
        .arg(unknown.join(QStringLiteral(", ")));
}

QString CountText(const TSeries& series, const TNewValues& values) {
    const std::size_t chosen = values.Points.size();
    const int unusable = values.Unusable;
    const QLocale locale;
    QString text = TTexts::tr("%1 of %2 points")
                       .arg(locale.toString(static_cast<int>(chosen)), locale.toString(series.Count()));
    if (unusable > 0)
        text += unusable == 1 ? TTexts::tr("; 1 of them has no new value and keeps its Y")
                              : TTexts::tr("; %1 of them have no new value and keep their Y")
                                    .arg(locale.toString(unusable));
    text += QLatin1Char('.');
    return values.YErrors.empty() ? text : text + TTexts::tr(" The errors of Y follow the new Y.");
}

/// What to tell beside a formula and to rewrite by a click of that caption; empty for nothing.
struct THintOffer {
    std::string Text;
    std::string Caption;
    std::string Rewritten;
};

// The name of a function that is called otherwise here, a product without its sign, or a sign that takes part
// in a power.
THintOffer OfferFor(const std::string& formula, bool compiles) {
    TCurFit words; // none but those of the language
    THintOffer offer;
    const auto name = FindNameHint(formula, words);
    if (name) offer.Text = name->Text();
    if (name && !name->Nearest.empty()) {
        offer.Caption = "Use " + name->Nearest.front();
        offer.Rewritten = formula;
        offer.Rewritten.replace(name->Place, name->Name.size(), name->Nearest.front());
        return offer;
    }
    const auto hint = compiles ? FindSignHint(formula) : FindProductHint(formula, words);
    if (!hint) return offer;
    offer.Text += (name ? ": " : "") + hint->Text;
    offer.Caption = "Rewrite";
    offer.Rewritten = hint->Rewritten;
    return offer;
}

} // namespace

Txy_SetValues::Txy_SetValues(TSeries& series, QWidget* parent)
    : QDialog(parent), m_series(series), m_ui(std::make_unique<Ui::Txy_SetValues>()) {
    m_ui->setupUi(this);
    setWindowTitle(TTexts::tr("Set Values of ") + QString::fromStdString(series.SeriesName()));
    QPalette faulty = m_ui->lblFormulaError->palette();
    faulty.setColor(QPalette::WindowText, QColor(229, 57, 53));
    m_ui->lblFormulaError->setPalette(faulty);
    m_ui->t_Preview->setColumnCount(3);
    m_ui->t_Preview->setHorizontalHeaderLabels(
        {QStringLiteral("X"), QStringLiteral("Y"), TTexts::tr("New Y")});
    m_ui->t_Preview->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    KeepCaptionsWhole(*m_ui->t_Preview->horizontalHeader());
    ShowNumber(*m_ui->e_From, series.MinX());
    ShowNumber(*m_ui->e_To, series.MaxX());
    KeepOpenOnReturn(*this);
    OfferManual(*this, [] { return QStringLiteral("editing.md"); });
    ListVariables();
    ConnectControls();
    ShowFirstValues();
}

Txy_SetValues::~Txy_SetValues() = default;

void Txy_SetValues::ConnectControls() {
    connect(m_ui->e_Formula, &QLineEdit::textChanged, this, [this] { ShowFirstValues(); });
    connect(m_ui->rb_Range, &QRadioButton::toggled, this, [this] { ShowFirstValues(); });
    connect(m_ui->btnRewrite, &QPushButton::clicked, this, [this] {
        m_ui->e_Formula->setFocus();
        m_ui->e_Formula->setText(QString(m_rewritten));
    });
    for (QLineEdit* edit : {m_ui->e_From, m_ui->e_To}) {
        connect(edit, &QLineEdit::textEdited, this, [this] { m_ui->rb_Range->setChecked(true); });
        connect(edit, &QLineEdit::textChanged, this, [this] { ShowFirstValues(); });
    }
    const auto insert = [this](const QListWidgetItem* item) {
        InsertVariable(item->data(Qt::UserRole).toString());
    };
    connect(m_ui->m_Variables, &QListWidget::itemClicked, this, insert);
    connect(m_ui->m_Variables, &QListWidget::itemActivated, this, insert);
    connect(m_ui->btnOk, &QPushButton::clicked, this, &Txy_SetValues::accept);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void Txy_SetValues::ListVariables() {
    const auto add = [this](const QString& variable, const QString& meaning) {
        auto* item = new QListWidgetItem(variable + QStringLiteral(" – ") + meaning, m_ui->m_Variables);
        item->setData(Qt::UserRole, variable.section(QStringLiteral(", "), -1));
    };
    add(QStringLiteral("x"), TTexts::tr("X of the point"));
    add(QStringLiteral("y"), TTexts::tr("its Y"));
    add(QStringLiteral("n"), TTexts::tr("its number, from 1"));
    const TxyGraph& graph = m_series.Graph();
    const std::vector<std::string> variables = SeriesVariables(graph);
    for (std::size_t i = 0; i < variables.size(); ++i)
        add(QString::fromStdString(variables[i]),
            TTexts::tr("Y of ") + QString::fromStdString(graph.Series()[i]->SeriesName()));
}

void Txy_SetValues::InsertVariable(const QString& variable) {
    // A double click is two clicks and an activation, and means one variable.
    const bool isAgain = m_lastInserted.isValid() && m_lastVariable == variable &&
                         m_lastInserted.elapsed() < QApplication::doubleClickInterval();
    m_lastInserted.start();
    m_lastVariable = variable;
    if (!isAgain) m_ui->e_Formula->insert(variable);
    m_ui->e_Formula->setFocus();
}

std::optional<TXRange> Txy_SetValues::Range() const {
    if (m_ui->rb_AllPoints->isChecked()) return std::nullopt;
    return TXRange{BoundIn(*m_ui->e_From), BoundIn(*m_ui->e_To)};
}

void Txy_SetValues::ShowFirstValues() {
    ShowValuesOf(m_ui->e_Formula->text().toStdString());
    ShowHint(m_ui->e_Formula->text().toStdString());
}

void Txy_SetValues::ShowValuesOf(const std::string& formula) {
    try {
        if (Trimmed(formula).empty()) return ShowProblem({});
        const std::optional<TXRange> range = Range();
        const TNewValues values = TValueFormula(m_series, formula).Evaluate(range);
        if (const QString unknown = UnknownNames(formula, m_series); !unknown.isEmpty())
            return ShowProblem(unknown);
        if (values.Points.empty()) return ShowProblem(EmptyText(m_series, range));
        FillTable(values);
        m_ui->lblFormulaError->clear();
        m_ui->lblCount->setText(CountText(m_series, values));
        m_ui->btnOk->setEnabled(true);
    } catch (const ELumoError& error) {
        ShowProblem(InLanguage(QString::fromUtf8(error.what())));
    }
}

void Txy_SetValues::ShowHint(const std::string& formula) {
    const QString told = m_ui->lblFormulaError->text();
    const THintOffer offer = OfferFor(formula, told.isEmpty());
    if (!offer.Text.empty())
        m_ui->lblFormulaError->setText((told.isEmpty() ? told : told + QStringLiteral(": ")) +
                                       QString::fromStdString(offer.Text));
    OfferRewriting(offer.Caption, offer.Rewritten);
}

void Txy_SetValues::OfferRewriting(const std::string& caption, const std::string& formula) {
    m_rewritten = QString::fromStdString(formula);
    m_ui->btnRewrite->setText(QString::fromStdString(caption));
    m_ui->btnRewrite->setToolTip(m_rewritten);
    m_ui->btnRewrite->setVisible(!m_rewritten.isEmpty());
}

void Txy_SetValues::ShowProblem(const QString& text) {
    m_ui->lblFormulaError->setText(text);
    m_ui->t_Preview->setRowCount(0);
    m_ui->lblCount->clear();
    m_ui->btnOk->setEnabled(false);
}

void Txy_SetValues::FillTable(const TNewValues& values) {
    const int rows = std::min(kPreviewRows, static_cast<int>(values.Points.size()));
    m_ui->t_Preview->setRowCount(rows);
    for (int row = 0; row < rows; ++row) {
        const auto place = static_cast<std::size_t>(row);
        const TSeriesPoint& point = values.Points[place];
        const double y = values.Y[place];
        m_ui->t_Preview->setItem(row, 0, NumberCell(point.X));
        m_ui->t_Preview->setItem(row, 1, NumberCell(point.Y));
        m_ui->t_Preview->setItem(row, 2, std::isfinite(y) ? NumberCell(y) : Cell(QStringLiteral("(stays)")));
    }
}

void Txy_SetValues::accept() {
    bool set = false;
    Guarded([&] {
        const std::string formula = m_ui->e_Formula->text().toStdString();
        const std::optional<TXRange> range = Range();
        static_cast<void>(TValueFormula(m_series, formula)); // told before the data set leaves its source
        if (!MakeManual(m_series, this)) return;
        TValueFormula(m_series, formula).Apply(range);
        set = true;
    });
    if (set) QDialog::accept();
}

bool SetValuesOf(TSeries& series, QWidget* window) {
    return Txy_SetValues(series, window).exec() == QDialog::Accepted;
}

} // namespace lumoplot
