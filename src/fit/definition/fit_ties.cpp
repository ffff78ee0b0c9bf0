#include "fit/definition/fit_ties.h"

#include "expr/names.h"
#include "fit/definition/fit_result.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <vector>

namespace lumoplot {
namespace {

constexpr double kDifference = 1e-6; // relative step of difference quotients

const TDBLParameter* ParameterNamed(const TCurFit& fit, std::string_view name) {
    const std::string wanted = LowerCased(name);
    for (int i = 1; i <= fit.NParams(); ++i)
        if (LowerCased(fit.Parameter(i)->Name()) == wanted) return fit.Parameter(i);
    return nullptr;
}

class TTies {
public:
    explicit TTies(const TCurFit& fit) : m_fit(fit) {}

    std::string Replaced(const std::string& formula) {
        std::string text;
        std::size_t from = 0;
        for (const TNameUse& use : NamesIn(formula)) {
            const TDBLParameter* parameter = ParameterNamed(m_fit, use.Name);
            if (!parameter || !parameter->IsTied() || use.IsAssigned) continue;
            text.append(formula, from, use.Place - from)
                .append("(")
                .append(FormulaOf(*parameter))
                .append(")");
            from = use.Place + use.Name.size();
            if (text.size() > TCurFit::kMaxExpandedLength)
                throw EParserException("The equation is too long with the formulas of its tied parameters");
        }
        return text.append(formula, from);
    }

private:
    std::string FormulaOf(const TDBLParameter& parameter) {
        if (std::ranges::find(m_open, &parameter) != m_open.end())
            throw EParserException("The parameter \"" + parameter.Name() + "\" is tied to itself");
        Check(parameter);
        m_open.push_back(&parameter);
        std::string text = Replaced(parameter.Tie());
        m_open.pop_back();
        return text;
    }

    void Check(const TDBLParameter& parameter) const {
        const std::string which = "The formula of the parameter \"" + parameter.Name() + "\" can not ";
        TExpressionParser language;
        for (const TNameUse& use : NamesIn(parameter.Tie())) {
            if (use.IsAssigned) throw EParserException(which + "assign");
            const bool isVariable = LowerCased(use.Name) == LowerCased(m_fit.XVarName());
            const bool isKnown = ParameterNamed(m_fit, use.Name) || language.FindWord(LowerCased(use.Name));
            if (isVariable || !isKnown)
                throw EParserException(which + "use \"" + use.Name + "\": it is no parameter");
        }
    }

    const TCurFit& m_fit;
    std::vector<const TDBLParameter*> m_open;
};

/// A tied parameter's formula of the parameters that are not tied.
class TTieFormula {
public:
    TTieFormula(const TCurFit& fit, const TDBLParameter& parameter) {
        for (int i = 1; i <= fit.NParams(); ++i) {
            m_values.push_back(fit.Parameter(i)->Value());
            m_parser.DefineVariable(fit.Parameter(i)->Name(), &m_values.back());
        }
        m_parser.AddExpression(WithTies(fit, parameter.Name()));
    }

    double Value() { return m_parser.Evaluate(); }

    double Derivative(int number, double error) {
        double& value = m_values[static_cast<std::size_t>(number - 1)];
        const double at = value;
        const double scale = std::max(std::abs(at), std::isfinite(error) ? error : 0);
        const double step = scale > 0 ? kDifference * scale : kDifference;
        value = at + step;
        const double above = Value();
        value = at - step;
        const double below = Value();
        value = at;
        return (above - below) / (2 * step);
    }

private:
    std::deque<double> m_values;
    TExpressionParser m_parser;
};

double PropagatedError(const TCurFit& fit, const TDBLParameter& parameter, const TFitResult& result) {
    TTieFormula formula(fit, parameter);
    std::vector<double> shares;
    for (std::size_t i = 0; i < result.Varied.size(); ++i) {
        const double error = result.StandardError(i);
        const double slope = formula.Derivative(result.Varied[i], error);
        shares.push_back(slope != 0 ? slope * error : 0);
    }
    return CombinedError(result.Correlations, shares);
}

} // namespace

std::string WithTies(const TCurFit& fit, const std::string& formula) {
    return TTies(fit).Replaced(formula);
}

double TiedValue(const TCurFit& fit, const TDBLParameter& parameter) {
    try {
        return TTieFormula(fit, parameter).Value();
    } catch (const ELumoError&) {
        return std::numeric_limits<double>::quiet_NaN();
    }
}

void PropagateErrors(TCurFit& fit, const TFitResult& result) {
    for (int i = 1; i <= fit.NParams(); ++i) {
        TDBLParameter& parameter = *fit.Parameter(i);
        if (!parameter.IsTied()) continue;
        try {
            const double error = PropagatedError(fit, parameter, result);
            parameter.FinalDeviation = std::isfinite(error) ? error : 0;
        } catch (const ELumoError&) {
            parameter.FinalDeviation = 0;
        }
    }
}

} // namespace lumoplot
