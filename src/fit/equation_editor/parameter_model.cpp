#include "fit/equation_editor/parameter_model.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "fit/definition/fit_result.h"
#include "fit/equation_editor/formula_check.h"
#include "support/number_text.h"

#include <QLineEdit>
#include <algorithm>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr int kTableDigits = 6;
constexpr int kTableErrorDigits = 3;
constexpr double kOpenBound = std::numeric_limits<double>::infinity();

const char* const kTitles[] = {
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Name"),       QT_TRANSLATE_NOOP("lumoplot::TTexts", "Value"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Std. Error"), QT_TRANSLATE_NOOP("lumoplot::TTexts", "Vary"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Min"),        QT_TRANSLATE_NOOP("lumoplot::TTexts", "Max"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Unit"),       QT_TRANSLATE_NOOP("lumoplot::TTexts", "Tied To")};
const char* const kHints[] = {
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "The name of the parameter in the equation"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "Its value: the start of the next fit, the end of the last one"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "The standard error that the last fit found"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "The fit may change the value"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "The fit keeps the value from here on up; empty for no bound"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "The fit keeps the value up to here; empty for no bound"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts", "A text behind the value"),
    QT_TRANSLATE_NOOP("lumoplot::TTexts",
                      "A formula of other parameters that gives the value, as 2*b1; empty for none")};
const char* const kSteps[] = {
    "name of a parameter", "value of a parameter",       "",
    "varied parameters",   "lower bound of a parameter", "upper bound of a parameter",
    "text of a parameter", "tie of a parameter"};

QString NumberShown(double value, bool isWhole) {
    if (std::isinf(value)) return {};
    return QString::fromStdString(isWhole ? FormatShortest(value) : FormatGeneral(value, kTableDigits));
}

double BoundIn(const std::string& text, double none) {
    return Trimmed(text).empty() ? none : ParseTyped(text);
}

} // namespace

TParameterModel::TParameterModel(TFitAccess& access, QObject* parent)
    : QAbstractTableModel(parent), m_access(access) {
}

int TParameterModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rows;
}

int TParameterModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

TDBLParameter* TParameterModel::ParameterOf(const QModelIndex& index) const {
    TCurFit* fit = m_access.Fit();
    return fit ? fit->Parameter(index.row() + 1) : nullptr;
}

QString TParameterModel::ErrorText(int number) const {
    const TCurFit& fit = *m_access.Fit();
    const TFitResult* result = fit.Result();
    const bool isKnown = result && !fit.IsStale() && fit.FitError().empty();
    if (const TDBLParameter& tied = *fit.Parameter(number); tied.IsTied())
        return isKnown && tied.FinalDeviation > 0
                   ? QString::fromStdString(FormatGeneral(tied.FinalDeviation, kTableErrorDigits))
                   : QStringLiteral("tied");
    if (!fit.Parameter(number)->Vary()) return QStringLiteral("held");
    if (!isKnown) return {};
    const auto place = std::ranges::find(result->Varied, number);
    if (place == result->Varied.end()) return {};
    const double error = result->StandardError(static_cast<std::size_t>(place - result->Varied.begin()));
    if (std::isfinite(error)) return QString::fromStdString(FormatGeneral(error, kTableErrorDigits));
    const TDBLParameter& parameter = *fit.Parameter(number);
    return !parameter.IsOnBound()                 ? TTexts::tr("not determined")
           : parameter.Value() == parameter.Min() ? TTexts::tr("on Min")
                                                  : TTexts::tr("on Max");
}

QString TParameterModel::TextOf(const TDBLParameter& parameter, int number, int column, bool isWhole) const {
    switch (column) {
    case Name: return QString::fromStdString(parameter.Name());
    case Value: return NumberShown(parameter.Value(), isWhole);
    case Error: return ErrorText(number);
    case Min: return NumberShown(parameter.Min(), isWhole);
    case Max: return NumberShown(parameter.Max(), isWhole);
    case Units: return QString::fromStdString(parameter.Units);
    case Tie: return QString::fromStdString(parameter.Tie());
    default: return {};
    }
}

QVariant TParameterModel::data(const QModelIndex& index, int role) const {
    const TDBLParameter* parameter = ParameterOf(index);
    if (!parameter) return {};
    switch (role) {
    case Qt::DisplayRole: return TextOf(*parameter, index.row() + 1, index.column(), false);
    case Qt::EditRole: return TextOf(*parameter, index.row() + 1, index.column(), true);
    case Qt::ToolTipRole:
        return index.column() == Name ? QString::fromStdString(parameter->Description)
                                      : TextOf(*parameter, index.row() + 1, index.column(), true);
    case Qt::AccessibleTextRole:
        return QString::fromStdString(parameter->Name()) + QLatin1Char(' ') +
               TTexts::tr(kTitles[index.column()]) + QLatin1Char(' ') +
               TextOf(*parameter, index.row() + 1, index.column(), false);
    case Qt::CheckStateRole:
        return index.column() != Vary ? QVariant() : parameter->Vary() ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole: {
        const bool isNumber = index.column() != Name && index.column() < Units;
        return QVariant::fromValue((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    default: return {};
    }
}

QVariant TParameterModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
    if (role == Qt::DisplayRole) return TTexts::tr(kTitles[section]);
    if (role == Qt::ToolTipRole) return TTexts::tr(kHints[section]);
    return {};
}

Qt::ItemFlags TParameterModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags common = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == Error) return common;
    return common | (index.column() == Vary ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

QString TParameterModel::FaultOf(const QModelIndex& index, const QString& typed) const {
    const TDBLParameter* parameter = ParameterOf(index);
    const std::string text = typed.toStdString();
    if (!parameter) return {};
    try {
        switch (index.column()) {
        case Name:
            if (text.empty() || text == parameter->Name()) return {};
            return QString::fromStdString(ParameterNameFault(*m_access.Fit(), text));
        case Value:
            if (std::isfinite(ParseTyped(text))) return {};
            return TTexts::tr("A value is a number");
        case Min:
            if (BoundIn(text, -kOpenBound) < parameter->Max()) return {};
            return TTexts::tr("The lower bound is not below the upper one");
        case Max:
            if (BoundIn(text, kOpenBound) > parameter->Min()) return {};
            return TTexts::tr("The upper bound is not above the lower one");
        default: return {};
        }
    } catch (const ELumoError& error) {
        return QString::fromUtf8(error.what());
    }
}

void TParameterModel::Take(TDBLParameter& parameter, int column, const std::string& text) const {
    switch (column) {
    case Name: parameter.SetName(text); break;
    case Value: parameter.SetValue(ParseTyped(text)); break;
    case Min: parameter.SetBounds(BoundIn(text, -kOpenBound), parameter.Max()); break;
    case Max: parameter.SetBounds(parameter.Min(), BoundIn(text, kOpenBound)); break;
    case Units: parameter.Units = text; break;
    case Tie: parameter.SetTie(text); break;
    default: break;
    }
}

bool TParameterModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    TDBLParameter* parameter = ParameterOf(index);
    const int column = index.column();
    if (!parameter || !m_access.FitToEdit()) return false;
    if (role == Qt::CheckStateRole) {
        m_access.EditFit(kSteps[Vary], [&](TCurFit&) { parameter->SetVary(value.toInt() == Qt::Checked); });
        Q_EMIT CellEdited();
        return true;
    }
    const QString text = value.toString();
    if (role != Qt::EditRole || text == data(index, Qt::EditRole).toString()) return false;
    if (!FaultOf(index, text).isEmpty() || (column == Value && Trimmed(text.toStdString()) == "."))
        return false;
    m_access.EditFit(kSteps[column], [&](TCurFit& fit) {
        Take(*parameter, column, text.toStdString());
        if (column == Units) NotifyShown(fit);
    });
    Q_EMIT CellEdited();
    return true;
}

void TParameterModel::Update() {
    const TCurFit* fit = m_access.Fit();
    const int rows = fit ? fit->NParams() : 0;
    if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    } else if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    }
    if (rows > 0) Q_EMIT dataChanged(index(0, 0), index(rows - 1, ColumnCount - 1));
}

} // namespace lumoplot
