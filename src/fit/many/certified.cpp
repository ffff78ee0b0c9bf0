#include "fit/many/certified.h"

#include "support/number_text.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lumoplot {
namespace {

constexpr double kCertifiedDigits = 11;

std::vector<std::string> Split(std::string_view text, char divider) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == divider)
            parts.emplace_back();
        else if (c != '\r')
            parts.back() += c;
    }
    return parts;
}

std::vector<std::string> LinesBelowHeader(std::string_view text) {
    std::vector<std::string> lines = Split(text, '\n');
    lines.erase(lines.begin());
    std::erase(lines, "");
    return lines;
}

std::vector<double> Numbers(const std::string& text) {
    std::vector<double> numbers;
    if (!text.empty())
        for (const std::string& part : Split(text, ',')) numbers.push_back(ParseFloat(part));
    return numbers;
}

std::vector<int> Integers(const std::string& text, char divider) {
    std::vector<int> numbers;
    if (!text.empty())
        for (const std::string& part : Split(text, divider)) numbers.push_back(ParseInteger(part));
    return numbers;
}

TCertifiedProblem ProblemOf(const std::string& line) {
    std::vector<std::string> cells = Split(line, '\t');
    cells.resize(9);
    TCertifiedProblem problem;
    problem.Name = cells[0];
    problem.Equation = cells[1];
    problem.Starts = {Numbers(cells[2]), Numbers(cells[3])};
    problem.Parameters = Numbers(cells[4]);
    problem.Deviations = Numbers(cells[5]);
    problem.Rss = ParseFloat(cells[6]);
    if (!cells[7].empty())
        for (const std::string& group : Split(cells[7], ','))
            problem.Exchangeable.push_back(Integers(group, ' '));
    problem.Even = Integers(cells[8], ',');
    return problem;
}

/// The agreement of one order of the parameters: order[i] is what stands for the certified parameter i.
class TAgreement {
public:
    TAgreement(const TCertifiedProblem& problem, const TCurFit& fit, TCertifiedRun& run)
        : m_problem(problem), m_fit(fit), m_run(run), m_order(problem.Parameters.size()) {}

    void FindBest() {
        std::vector<std::size_t> groups(m_problem.Exchangeable.size());
        std::iota(groups.begin(), groups.end(), 0u);
        do {
            SetOrder(groups);
            Try();
        } while (std::next_permutation(groups.begin(), groups.end()));
    }

private:
    void SetOrder(const std::vector<std::size_t>& groups) {
        std::iota(m_order.begin(), m_order.end(), 0u);
        const auto& exchangeable = m_problem.Exchangeable;
        for (std::size_t i = 0; i < groups.size(); ++i)
            for (std::size_t k = 0; k < exchangeable[i].size(); ++k)
                m_order[Place(exchangeable[i][k])] = Place(exchangeable[groups[i]][k]);
    }

    void Try() {
        const double parameters = Worst(m_problem.Parameters, [this](std::size_t i) {
            const double value = m_fit.Parameter(static_cast<int>(m_order[i]) + 1)->Value();
            const bool isEven =
                std::ranges::find(m_problem.Even, static_cast<int>(i) + 1) != m_problem.Even.end();
            return isEven ? std::copysign(value, m_problem.Parameters[i]) : value;
        });
        if (parameters < m_run.ParameterDigits) return;
        m_run.ParameterDigits = parameters;
        if (!m_problem.Deviations.empty())
            m_run.DeviationDigits = Worst(m_problem.Deviations, [this](std::size_t i) {
                return m_run.Result.StandardError(m_order[i]);
            });
    }

    template <class TValue>
    static double Worst(const std::vector<double>& certified, TValue&& value) {
        double worst = kCertifiedDigits;
        for (std::size_t i = 0; i < certified.size(); ++i)
            worst = std::min(worst, CorrectDigits(value(i), certified[i]));
        return worst;
    }

    static std::size_t Place(int number) { return static_cast<std::size_t>(number) - 1; }

    const TCertifiedProblem& m_problem;
    const TCurFit& m_fit;
    TCertifiedRun& m_run;
    std::vector<std::size_t> m_order;
};

} // namespace

std::vector<TCertifiedProblem> ReadCertifiedProblems(std::string_view table) {
    std::vector<TCertifiedProblem> problems;
    for (const std::string& line : LinesBelowHeader(table)) problems.push_back(ProblemOf(line));
    return problems;
}

TCertifiedData ReadCertifiedData(std::string_view text) {
    TCertifiedData data;
    for (const std::string& line : LinesBelowHeader(text)) {
        const std::size_t comma = std::min(line.find(','), line.size());
        data.X.push_back(ParseFloat(line.substr(0, comma)));
        data.Y.push_back(ParseFloat(line.substr(std::min(comma + 1, line.size()))));
    }
    return data;
}

double CorrectDigits(double value, double certified) {
    if (value == certified) return kCertifiedDigits;
    const double digits = std::log10(std::abs(certified) / std::abs(value - certified));
    return std::isfinite(digits) ? std::clamp(digits, 0.0, kCertifiedDigits) : 0;
}

TCertifiedRun RunCertified(const TCertifiedProblem& problem, const TCertifiedData& data, int start,
                           TFitProcedure procedure, int iterMax) {
    TCurFit fit;
    fit.SetExpression(problem.Equation);
    fit.SetProcType(procedure);
    fit.SetIterMax(iterMax);
    for (const double value : problem.Starts.at(static_cast<std::size_t>(start))) {
        auto parameter = std::make_unique<TDBLParameter>();
        parameter->SetName('b' + std::to_string(fit.NParams() + 1));
        parameter->SetValue(value);
        parameter->SetVary(true);
        fit.AddParameter(std::move(parameter));
    }
    TCertifiedRun run{RunFit(fit, data.X, data.Y, {nullptr, {}, TFitStarts::Given})};
    TAgreement(problem, fit, run).FindBest();
    return run;
}

} // namespace lumoplot
