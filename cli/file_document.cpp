#include "cli/file_document.h"

#include "data/series/series_record.h"
#include "fit/definition/cur_fit.h"
#include "graph/file/graph_file.h"
#include "graph/model/child_graph.h"
#include "support/number_text.h"

namespace lumoplot {
namespace {

struct TValueDocument {
    TDocument operator()(const TFontSpec& font) const {
        return {{"Name", font.Name},          {"Size", font.Size},     {"Color", font.Color},
                {"Bold", font.Bold},          {"Italic", font.Italic}, {"Underline", font.Underline},
                {"StrikeOut", font.StrikeOut}};
    }
    template <class TValue>
    TDocument operator()(const TValue& value) const {
        return value;
    }
};

// The composite records of a data series are those of its curve fit. What files no longer carry is not shown.
template <class T>
void AppendSection(TDocument& section, std::span<const TSectionRow<T>> rows, const T& object) {
    for (const auto& row : rows) {
        const std::string label(Trimmed(row.label));
        if (row.get) section[label] = std::visit(TValueDocument{}, row.get(object));
        if constexpr (std::is_same_v<T, TDataSeries>)
            if (!row.get && row.write) section[label] = CurveFitDocument(object.CurveFit());
    }
}

template <class T>
TDocument SectionDocument(std::span<const TSectionRow<T>> rows, const T& object) {
    TDocument section = TDocument::object();
    AppendSection(section, rows, object);
    return section;
}

TDocument ParametersDocument(const TCurFit& fit) {
    TDocument parameters = TDocument::array();
    for (int i = 1; i <= fit.NParams(); ++i) {
        const TDBLParameter& parameter = *fit.Parameter(i);
        parameters.push_back({{"Name", parameter.Name()},
                              {"Value", parameter.Value()},
                              {"StartDeviation", parameter.StartDeviation},
                              {"FinalDeviation", parameter.FinalDeviation},
                              {"Vary", parameter.Vary()},
                              {"ShowInLegend", parameter.ShowInLegend},
                              {"Description", parameter.Description},
                              {"Units", parameter.Units}});
    }
    return parameters;
}

TDocument TemplatesDocument(const TCurFit& fit) {
    TDocument templates = TDocument::array();
    for (int i = 1; i <= fit.NTemplates(); ++i) {
        const TDBLFunction& function = *fit.Template(i);
        templates.push_back(
            {{"Name", function.Name}, {"Text", function.Text}, {"Description", function.Description}});
    }
    return templates;
}

} // namespace

TDocument CurveFitDocument(const TCurFit& fit) {
    return {{"Status", static_cast<int>(fit.Status())},
            {"XVarName", fit.XVarName()},
            {"Expression", fit.Expression()},
            {"NPoints", fit.NPoints()},
            {"ShowCurve", fit.ShowCurve()},
            {"CurveColor", fit.CurveColor()},
            {"CurveStyle", fit.CurveStyle()},
            {"CurveWidth", fit.CurveWidth()},
            {"Tolerance", fit.Tolerance()},
            {"UseLeftMargin", fit.UseLeftMargin()},
            {"UseRightMargin", fit.UseRightMargin()},
            {"LeftMargin", fit.LeftMargin()},
            {"RightMargin", fit.RightMargin()},
            {"IterMax", fit.IterMax()},
            {"ProcType", static_cast<int>(fit.ProcType())},
            {"NParams", fit.NParams()},
            {"Parameters", ParametersDocument(fit)},
            {"NTemplates", fit.NTemplates()},
            {"Templates", TemplatesDocument(fit)}};
}

void AppendPoints(TDocument& document, const TDataSeries& series) {
    document["NumberOfPoints"] = series.Count();
    if (series.Count() > 0)
        document["Extents"] = {{"MinX", series.MinX()},
                               {"MaxX", series.MaxX()},
                               {"MinY", series.MinY()},
                               {"MaxY", series.MaxY()}};
}

TDocument SeriesDocument(const TSeries& series) {
    TDocument document = TDocument::object();
    AppendSection(document, SeriesRows(), series);
    AppendSection<TDataSeries>(document, SeriesRecordRows(), series);
    AppendPoints(document, series);
    return document;
}

TDocument GraphDocument(const TxyGraph& graph) {
    TDocument document = TDocument::object();
    document["Appearance"] = SectionDocument(AppearanceRows(), *graph.Appearance());
    document["Dimensions"] = SectionDocument(DimensionsRows(), *graph.Dimensions());
    document["XAxis"] = SectionDocument(AxisRows(), *graph.XAxis());
    document["YAxis"] = SectionDocument(AxisRows(), *graph.YAxis());
    document["YAxis_Second"] = SectionDocument(AxisRows(), *graph.YAxis_Second());
    document["Legend"] = SectionDocument(LegendRows(), *graph.Legend());
    document["Series"] = TDocument::array();
    for (const auto& series : graph.Series()) document["Series"].push_back(SeriesDocument(*series));
    document["Marks"] = TDocument::array();
    for (const auto& [id, mark] : graph.Marks().Marks())
        document["Marks"].push_back(SectionDocument(MarkRows(), mark));
    document["ChildGraphs"] = TDocument::array();
    for (const auto& child : graph.ChildGraphs()) document["ChildGraphs"].push_back(GraphDocument(*child));
    return document;
}

} // namespace lumoplot
