#include "fit/many/fit_report.h"

#include "fit/run/fit_statistics.h"
#include "support/number_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace lumoplot {
namespace {

constexpr std::size_t kMostHtmlColumns = 10;
constexpr int kValueDigits = 8;
constexpr int kFigureDigits = 4;
constexpr int kIntervalDigits = 6;
constexpr std::size_t kLongCell = 48; // bytes; shorter figures and words stay in one line
constexpr double kReportConfidence = 0.95;
constexpr double kNotKnownFigure = std::numeric_limits<double>::quiet_NaN();
constexpr std::array kProcedureTexts = {"Maximum Gradient (Powell)", "Downhill Simplex Method",
                                        "Conjugate Gradient", "Variable Metric Method (Newton)"};

using TRows = std::vector<std::vector<std::string>>;

std::string Number(double value, int digits = kFigureDigits) {
    return std::isnan(value) ? "" : FormatGeneral(value, digits);
}

std::string ProcedureText(TFitProcedure procedure) {
    const auto number = static_cast<std::size_t>(procedure);
    return number < kProcedureTexts.size() ? kProcedureTexts[number] : kProcedureTexts.back();
}

std::string RobustText(TRobust robust) {
    switch (robust) {
    case TRobust::Huber: return "Huber's weights";
    case TRobust::Cauchy: return "Cauchy's weights";
    case TRobust::Tukey: return "Tukey's weights";
    case TRobust::None: break;
    }
    return {};
}

std::string IntervalText(const TInterval& interval) {
    const auto text = [](double end) {
        return std::isinf(end) ? std::string("open") : Number(end, kIntervalDigits);
    };
    if (std::isnan(interval.Low) && std::isnan(interval.High)) return {};
    return text(interval.Low) + " … " + text(interval.High);
}

std::string BoundsOf(const TDBLParameter& parameter) {
    if (!parameter.IsBounded()) return "";
    return (std::isfinite(parameter.Min()) ? FormatGeneral(parameter.Min(), kValueDigits) : "") + " … " +
           (std::isfinite(parameter.Max()) ? FormatGeneral(parameter.Max(), kValueDigits) : "");
}

void AddWeighting(TRows& rows, const TFitWeighting& weighting) {
    if (weighting.ByYErrors) rows.push_back({"Weights", "1/σ², from the errors of the points"});
    if (weighting.Robust != TRobust::None) rows.push_back({"Robust", RobustText(weighting.Robust)});
}

TFitReportSection ModelOf(const TCurFit& fit, const std::string& dataName) {
    TFitReportSection section{"Model", {}, {{"", ""}}};
    TRows& rows = section.Table;
    rows.push_back({"Data", dataName});
    rows.push_back({"Equation", "y = " + fit.Expression()});
    rows.push_back({"Variable", fit.XVarName()});
    for (int i = 1; i <= fit.NTemplates(); ++i)
        rows.push_back({fit.Template(i)->Name + " stands for", fit.Template(i)->Text});
    if (fit.UseLeftMargin()) rows.push_back({"From x =", Number(fit.LeftMargin(), kValueDigits)});
    if (fit.UseRightMargin()) rows.push_back({"To x =", Number(fit.RightMargin(), kValueDigits)});
    for (int i = 1; i <= fit.NParams(); ++i)
        if (fit.Parameter(i)->IsTied())
            rows.push_back({fit.Parameter(i)->Name() + " follows", fit.Parameter(i)->Tie()});
    rows.push_back({"Procedure", ProcedureText(fit.ProcType())});
    AddWeighting(rows, fit.Weighting());
    return section;
}

// A model that is linear in all that it varies needs no iteration.
std::string EndSentence(const TFitResult& result) {
    if (result.End != TFitEnd::Converged) return "The fit has not converged: " + TextOf(result.End) + ".";
    if (result.Iterations == 0) return "The fit has converged at once.";
    return "The fit has converged after " + std::to_string(result.Iterations) +
           (result.Iterations == 1 ? " iteration." : " iterations.");
}

TFitReportSection EndOf(const TFitResult& result, const TFitWeighting& weighting) {
    TFitReportSection section{"How it ended", {}, {}};
    section.Sentences.push_back(EndSentence(result));
    section.Sentences.insert(section.Sentences.end(), result.Remarks.begin(), result.Remarks.end());
    if (weighting.ByYErrors) section.Sentences.push_back(ErrorSourceText(weighting));
    return section;
}

std::vector<std::string> ParameterRow(const TCurFit& fit, int number) {
    const TDBLParameter& parameter = *fit.Parameter(number);
    const TFitResult& result = *fit.Result();
    std::vector<std::string> row = {parameter.Name(), Number(parameter.Value(), kValueDigits)};
    const auto varied = std::ranges::find(result.Varied, number);
    if (varied == result.Varied.end()) {
        const bool hasError = parameter.IsTied() && parameter.FinalDeviation > 0;
        const double error = hasError ? parameter.FinalDeviation : kNotKnownFigure;
        row.insert(row.end(), {hasError             ? Number(error)
                               : parameter.IsTied() ? "tied"
                                                    : "held",
                               Number(100 * std::abs(error / parameter.Value())), "", "", "", ""});
    } else {
        const double error = result.StandardError(static_cast<std::size_t>(varied - result.Varied.begin()));
        const double half = StudentQuantile(kReportConfidence, FreedomOfErrors(fit)) * error;
        const double t = parameter.Value() / error;
        row.push_back(std::isnan(error) && parameter.IsOnBound() ? "on its bound" : Number(error));
        row.push_back(Number(100 * std::abs(error / parameter.Value())));
        row.push_back(IntervalText({parameter.Value() - half, parameter.Value() + half}));
        row.push_back(Number(t));
        row.push_back(Number(StudentProbability(t, FreedomOfErrors(fit))));
        row.push_back(BoundsOf(parameter));
    }
    row.push_back(parameter.Units);
    const bool saysNothing = parameter.Description == TDBLParameter().Description ||
                             parameter.Description == "Parameter " + parameter.Name();
    row.push_back(saysNothing ? "" : parameter.Description);
    return row;
}

TFitReportSection ParametersOf(const TCurFit& fit) {
    TFitReportSection section{"Parameters", {}, {}};
    section.Table.push_back({"Name", "Value", "Standard error", "Error in %", "95 % interval", "t",
                             "Probability", "Bounds", "Units", "Description"});
    for (int i = 1; i <= fit.NParams(); ++i) section.Table.push_back(ParameterRow(fit, i));
    return section;
}

TFitReportSection CorrelationsOf(const TCurFit& fit, const TFitResult& result) {
    TFitReportSection section{"Correlations", {}, {}};
    const TMatrix& correlations = result.Correlations;
    if (correlations.Size() < 2) return section;
    std::vector<std::string> head = {""};
    for (const int number : result.Varied) head.push_back(fit.Parameter(number)->Name());
    section.Table.push_back(head);
    for (int i = 0; i < correlations.Size(); ++i) {
        std::vector<std::string> row = {head[static_cast<std::size_t>(i) + 1]};
        for (int j = 0; j < correlations.Size(); ++j) row.push_back(Number(correlations(i, j)));
        section.Table.push_back(row);
    }
    return section;
}

TFitReportSection QualitySection(const TFitResult& result) {
    const TFitQuality& quality = result.Quality;
    const bool hasErrors = !std::isnan(quality.ChiSquareProbability);
    TFitReportSection section{"Quality", {}, {{"", ""}}};
    const auto add = [&](const char* name, const std::string& figure) {
        if (!figure.empty()) section.Table.push_back({name, figure});
    };
    add("Points used", std::to_string(result.PointsUsed));
    if (result.PointsLeftOut > 0) add("Points left out", std::to_string(result.PointsLeftOut));
    if (result.Outliers > 0) add("Outliers", std::to_string(result.Outliers));
    add("Degrees of freedom", std::to_string(quality.Freedom));
    add(hasErrors ? "χ²" : "Residual sum of squares", Number(result.Rss, kValueDigits));
    if (hasErrors && quality.Freedom > 0) add("Reduced χ²", Number(result.Rss / quality.Freedom));
    add("Probability of χ²", Number(quality.ChiSquareProbability));
    add("Residual standard deviation", Number(result.ResidualSD, kValueDigits));
    add("R²", Number(result.RSquared, kValueDigits));
    add("Adjusted R²", Number(quality.AdjustedRSquared, kValueDigits));
    add("AIC", Number(quality.Aic, kValueDigits));
    add("AICc", Number(quality.Aicc, kValueDigits));
    add("BIC", Number(quality.Bic, kValueDigits));
    add("Runs test, probability", Number(quality.RunsProbability));
    add("Durbin-Watson", Number(quality.DurbinWatson));
    section.Sentences = ResidualWords(result);
    return section;
}

// Of UTF-8, the bytes that begin a character.
std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

// Columns in which no row has anything take no place.
TRows WithoutEmptyColumns(const TRows& table) {
    TRows rows(table.size());
    for (std::size_t column = 0; !table.empty() && column < table.front().size(); ++column) {
        const bool isEmpty =
            std::all_of(table.begin() + 1, table.end(), [&](const auto& row) { return row[column].empty(); });
        if (isEmpty) continue;
        for (std::size_t i = 0; i < table.size(); ++i) rows[i].push_back(table[i][column]);
    }
    return rows;
}

std::string AlignedText(const TRows& table) {
    std::vector<std::size_t> widths;
    for (const auto& row : table) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], WidthOf(row[i]));
    }
    std::string text;
    for (const auto& row : table) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(widths[i] - WidthOf(row[i]) + 2, ' ');
        line.erase(line.find_last_not_of(' ') + 1);
        if (!line.empty()) text += "  " + line + '\n';
    }
    return text;
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&')
            escaped += "&amp;";
        else if (c == '<')
            escaped += "&lt;";
        else if (c == '>')
            escaped += "&gt;";
        else if (c == '"')
            escaped += "&quot;";
        else
            escaped += c;
    }
    return escaped;
}

std::string HtmlTable(const TRows& table) {
    std::string html = "<table>\n";
    for (std::size_t i = 0; i < table.size(); ++i) {
        const bool isBlank = std::ranges::all_of(table[i], &std::string::empty);
        if (isBlank) continue;
        const std::string tag = i == 0 ? "th" : "td";
        html += "<tr>";
        for (const std::string& cell : table[i]) {
            const bool isOneWord = cell.find(' ') == std::string::npos || cell.find("…") != std::string::npos;
            // A class, as some readers take a style of its own for all that a cell has.
            const bool isOneLine = i == 0 || (isOneWord && cell.size() < kLongCell);
            html += '<' + tag + (isOneLine ? " class=\"line\">" : ">") + Escaped(cell) + "</" + tag + '>';
        }
        html += "</tr>\n";
    }
    return html + "</table>\n";
}

/// Tables that fit on a page, one below the other, each with the first column of the whole.
std::vector<TRows> PageWide(const TRows& table) {
    const std::size_t columns = table.front().size();
    if (columns <= kMostHtmlColumns) return {table};
    std::vector<TRows> parts;
    for (std::size_t from = 1; from < columns; from += kMostHtmlColumns - 1) {
        const std::size_t end = std::min(columns, from + kMostHtmlColumns - 1);
        TRows& part = parts.emplace_back();
        for (const auto& row : table) {
            part.push_back({row.front()});
            for (std::size_t i = from; i < std::min(end, row.size()); ++i) part.back().push_back(row[i]);
        }
    }
    return parts;
}

} // namespace

std::string ErrorSourceText(const TFitWeighting& weighting) {
    if (!weighting.ByYErrors) return {};
    return weighting.Errors == TErrorSource::Points
               ? "Standard errors are absolute: the errors of the points are what they say."
               : "Standard errors are scaled by the residual deviation.";
}

std::vector<TFitReportSection> FitReport(const TCurFit& fit, const std::string& dataName) {
    const TFitResult& result = *fit.Result();
    std::vector<TFitReportSection> sections = {ModelOf(fit, dataName), EndOf(result, fit.Weighting()),
                                               ParametersOf(fit), CorrelationsOf(fit, result),
                                               QualitySection(result)};
    std::erase_if(sections, [](const TFitReportSection& section) {
        return section.Table.empty() && section.Sentences.empty();
    });
    for (TFitReportSection& section : sections) section.Table = WithoutEmptyColumns(section.Table);
    return sections;
}

TFitReportSection UncertaintySection(const TCurFit& fit, const TKnownUncertainty& known) {
    TFitReportSection section{"Uncertainty", {}, {}};
    section.Table.push_back(
        {"Name", "Value", "Std. error", "Asymptotic", "Profile", "Bootstrap", "Its error"});
    const TFitResult& result = *fit.Result();
    const std::vector<TInterval> asymptotic = AsymptoticIntervals(fit, kReportConfidence);
    for (std::size_t i = 0; i < result.Varied.size(); ++i) {
        const TDBLParameter& parameter = *fit.Parameter(result.Varied[i]);
        const bool hasProfile = i < known.Profiles.size() && !known.Profiles[i].WasCancelled;
        const bool hasSample = i < known.Bootstrap.Intervals.size();
        section.Table.push_back({parameter.Name(), Number(parameter.Value(), kIntervalDigits),
                                 Number(result.StandardError(i)), IntervalText(asymptotic[i]),
                                 hasProfile ? IntervalText(known.Profiles[i].Interval) : "",
                                 hasSample ? IntervalText(known.Bootstrap.Intervals[i]) : "",
                                 hasSample ? Number(known.Bootstrap.StandardErrors[i]) : ""});
    }
    section.Sentences.push_back("Intervals of 95 % in three ways.");
    if (!known.Bootstrap.Values.empty())
        section.Sentences.front() +=
            " The bootstrap has " + std::to_string(known.Bootstrap.Values.front().size()) + " resamples.";
    return section;
}

std::vector<TFitReportSection> FitReport(const TCurFit& fit, const std::string& dataName,
                                         const TKnownUncertainty& known) {
    std::vector<TFitReportSection> sections = FitReport(fit, dataName);
    if (known.IsEmpty()) return sections;
    TFitReportSection section = UncertaintySection(fit, known);
    section.Table = WithoutEmptyColumns(section.Table);
    const auto parameters = std::ranges::find(sections, "Parameters", &TFitReportSection::Heading);
    sections.insert(parameters == sections.end() ? parameters : parameters + 1, std::move(section));
    return sections;
}

std::string ReportText(const std::vector<TFitReportSection>& sections) {
    std::string text;
    for (const TFitReportSection& section : sections) {
        text += (text.empty() ? "" : "\n") + section.Heading + '\n';
        for (const std::string& sentence : section.Sentences) text += "  " + sentence + '\n';
        text += AlignedText(section.Table);
    }
    return text;
}

std::string TableText(const std::vector<std::vector<std::string>>& table) {
    std::string text;
    for (const auto& row : table) {
        for (std::size_t i = 0; i < row.size(); ++i) text += (i == 0 ? "" : "\t") + row[i];
        text += '\n';
    }
    return text;
}

std::string ReportHtml(const std::string& title, const std::vector<TFitReportSection>& sections,
                       const std::string& picture) {
    std::string html = "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>" + Escaped(title) +
                       "</title>\n<style>\nbody { font-family: sans-serif; margin: 1em; }\n"
                       "table { border-collapse: collapse; }\n"
                       "th, td { border-bottom: 1px solid #ccc; padding: 2px 6px; text-align: left; }\n"
                       ".line { white-space: nowrap; }\n"
                       "img { max-width: 100%; }\n</style>\n</head>\n<body>\n<h1>" +
                       Escaped(title) + "</h1>\n";
    if (!picture.empty())
        html += "<p><img alt=\"The points and the curve\" src=\"" + Escaped(picture) + "\"></p>\n";
    for (const TFitReportSection& section : sections) {
        html += "<h2>" + Escaped(section.Heading) + "</h2>\n";
        for (const std::string& sentence : section.Sentences) html += "<p>" + Escaped(sentence) + "</p>\n";
        if (section.Table.empty()) continue;
        for (const TRows& part : PageWide(section.Table)) html += HtmlTable(part) + "<br>\n";
    }
    return html + "</body>\n</html>\n";
}

} // namespace lumoplot
