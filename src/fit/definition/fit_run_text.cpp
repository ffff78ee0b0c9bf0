#include "fit/definition/fit_run_text.h"

#include "fit/definition/fit_result.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::size_t kHeadLength = 4; // "1 R "
constexpr int kMostVaried = 1000;

/// Words apart by blanks; after one that is no such number all others are missing too.
class TWords {
public:
    explicit TWords(std::string_view text) : m_rest(text) {}

    bool IsWhole() const { return !m_failed && m_rest.empty(); }
    bool HasFailed() const { return m_failed; }

    int Whole(int most = std::numeric_limits<int>::max()) {
        const std::string_view word = Next();
        int value = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        m_failed |= error != std::errc() || end != word.data() + word.size() || value < 0 || value > most;
        return m_failed ? 0 : value;
    }

    double Number() {
        const std::optional<double> value = TryParseFloat(Next());
        m_failed |= !value;
        return value.value_or(0);
    }

private:
    std::string_view Next() {
        const std::size_t end = std::min(m_rest.find(' '), m_rest.size());
        const std::string_view word = m_rest.substr(0, end);
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        return word;
    }

    std::string_view m_rest;
    bool m_failed = false;
};

// Of a constant result or another one.
auto FiguresOf(auto& result) {
    auto& quality = result.Quality;
    return std::array{&result.Rss,
                      &result.ResidualSD,
                      &result.RSquared,
                      &quality.AdjustedRSquared,
                      &quality.Aic,
                      &quality.Aicc,
                      &quality.Bic,
                      &quality.ChiSquareProbability,
                      &quality.RunsDeviation,
                      &quality.RunsProbability,
                      &quality.DurbinWatson};
}

std::string ResultText(const TFitResult& result) {
    std::string text;
    const auto add = [&](const std::string& word) { text += (text.empty() ? "" : " ") + word; };
    add(std::to_string(static_cast<int>(result.End)));
    add(std::to_string(result.Iterations));
    add(std::to_string(result.Evaluations));
    add(std::to_string(result.PointsUsed));
    add(std::to_string(result.PointsLeftOut));
    add(std::to_string(result.Outliers));
    add(std::to_string(result.Quality.Freedom));
    for (const double* figure : FiguresOf(result)) add(FormatShortest(*figure));
    add(std::to_string(result.Varied.size()));
    for (const int number : result.Varied) add(std::to_string(number));
    for (const double error : result.Errors) add(FormatShortest(error));
    for (int i = 0; i < result.Correlations.Size(); ++i)
        for (const double value : result.Correlations.Column(i)) add(FormatShortest(value));
    for (const std::string& remark : result.Remarks) text += "\n" + remark;
    return text;
}

std::shared_ptr<const TFitResult> ResultOf(std::string_view text) {
    const std::size_t figures = std::min(text.find('\n'), text.size());
    TWords words(text.substr(0, figures));
    auto result = std::make_shared<TFitResult>();
    result->End = static_cast<TFitEnd>(words.Whole(static_cast<int>(TFitEnd::RunsAway)));
    result->Iterations = words.Whole();
    result->Evaluations = words.Whole();
    result->PointsUsed = static_cast<std::size_t>(words.Whole());
    result->PointsLeftOut = static_cast<std::size_t>(words.Whole());
    result->Outliers = static_cast<std::size_t>(words.Whole());
    result->Quality.Freedom = words.Whole();
    for (double* figure : FiguresOf(*result)) *figure = words.Number();
    result->Varied.resize(static_cast<std::size_t>(words.Whole(kMostVaried)));
    for (int& number : result->Varied) number = words.Whole();
    if (words.HasFailed()) return nullptr;
    result->Errors.resize(result->Varied.size());
    for (double& error : result->Errors) error = words.Number();
    result->Correlations = TMatrix(static_cast<int>(result->Varied.size()));
    for (int i = 0; i < result->Correlations.Size(); ++i)
        for (double& value : result->Correlations.Column(i)) value = words.Number();
    for (std::size_t at = figures; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at + 1), text.size());
        result->Remarks.emplace_back(text.substr(at + 1, end - at - 1));
        at = end;
    }
    return words.IsWhole() ? result : nullptr;
}

} // namespace

std::string FitRunText(const TFitRunState& state) {
    const std::string age = !state.Stale ? "1 " : state.Held ? "2 " : "0 ";
    if (!state.Error.empty()) return age + "F " + state.Error;
    if (state.Result) return age + "R " + ResultText(*state.Result);
    return state.Stale && !state.Held ? std::string() : age + "N";
}

TFitRunState FitRunOf(std::string_view text) {
    TFitRunState state;
    state.Stale = true;
    const char age = text.size() > 2 && text[1] == ' ' ? text[0] : ' ';
    if (age < '0' || age > '2') return state;
    const std::string_view rest = text.substr(std::min(kHeadLength, text.size()));
    if (text.substr(2).starts_with("F ")) state.Error = rest;
    if (text.substr(2).starts_with("R ")) state.Result = ResultOf(rest);
    if (state.Error.empty() && !state.Result && text.substr(2) != "N") return state;
    state.Stale = age != '1';
    state.Held = age == '2';
    return state;
}

} // namespace lumoplot
