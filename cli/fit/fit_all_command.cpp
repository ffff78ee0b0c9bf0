#include "cli/commands.h"
#include "cli/fit/fit_definition.h"
#include "cli/fit/fit_document.h"
#include "cli/fit/fit_weights.h"
#include "fit/many/fit_batch.h"
#include "fit/many/fit_report.h"
#include "fit/run/fit_statistics.h"
#include "support/errors.h"

#include <algorithm>
#include <memory>
#include <set>

namespace lumoplot {
namespace {

bool HasConverged(const TBatchFit& fit) {
    return fit.Error.empty() && fit.Fit->Result()->End == TFitEnd::Converged;
}

struct TFitAllCommand {
    std::vector<std::string> files;
    TTextOptions text;
    TFitDefinition definition;
    TFitWeights weights;
    std::vector<std::string> shared;
    TFitStarts starts = TFitStarts::Scattered;
    bool allowsUnconverged = false;
    TOutputForm form = TOutputForm::Outline;

    void Run() const {
        std::vector<std::unique_ptr<TDataInput>> inputs;
        for (const std::string& file : files) Load(file, inputs);
        TCurFit fit;
        definition.Define(fit, &inputs.front()->Series().CurveFit());
        weights.Define(fit);
        const std::vector<std::string> names = NamesOf(inputs);
        std::vector<std::vector<double>> errors;
        for (const auto& input : inputs) errors.push_back(weights.ErrorsOf(*input));
        std::vector<TBatchData> data;
        for (std::size_t i = 0; i < inputs.size(); ++i)
            data.push_back({names[i], inputs[i]->X(), inputs[i]->CorrectedY(), errors[i]});
        TFitRun run;
        run.Starts = starts;
        if (shared.empty())
            Show(FitEach(fit, data, run), nullptr);
        else {
            const TGlobalFit global = FitTogether(fit, data, shared, run);
            Show(global.Fits, &global);
        }
    }

private:
    // Each data set of a graph, each Y column of a text file.
    void Load(const std::string& file, std::vector<std::unique_ptr<TDataInput>>& inputs) const {
        TDataOptions data{file, {}, text};
        const TFileKind kind = KindOfFile(file);
        std::vector<TDataOptions> sets;
        if (kind == TFileKind::Graph) {
            const auto document = LoadGraph(data);
            for (const auto& series : document->Graph().Series())
                sets.push_back({file, series->SeriesIndex(), text});
        } else {
            sets.push_back(data);
            for (const std::string& column : text.moreYColumns) {
                if (kind != TFileKind::Text) break;
                sets.push_back(data);
                sets.back().text.yColumn = column;
            }
        }
        for (TDataOptions& set : sets) {
            weights.TakeColumn(set);
            inputs.push_back(std::make_unique<TDataInput>(set));
            m_fileOf.push_back(file);
        }
        if (sets.empty()) throw EFileError(file + " holds no data set");
    }

    std::vector<std::string> NamesOf(const std::vector<std::unique_ptr<TDataInput>>& inputs) const {
        std::vector<std::string> names;
        for (const auto& input : inputs) names.push_back(input->Series().SeriesName());
        if (std::set(names.begin(), names.end()).size() == names.size()) return names;
        for (std::size_t i = 0; i < names.size(); ++i) names[i] = m_fileOf[i] + ": " + names[i];
        return names;
    }

    static TDocument DocumentOf(const TBatchFit& fit) {
        TDocument document = fit.Error.empty() ? FitDocument(*fit.Fit) : TDocument::object();
        if (!fit.Error.empty()) {
            document["converged"] = false;
            document["end"] = fit.Error;
        }
        TDocument named = TDocument::object();
        named["name"] = fit.Name;
        named.update(document);
        return named;
    }

    static TDocument TogetherDocument(const TGlobalFit& global, const std::vector<std::string>& shared) {
        const TFitResult& result = global.Result;
        TDocument document = TDocument::object();
        for (std::size_t i = 0; i < shared.size(); ++i) {
            const std::string& name = global.Names[i];
            const TCurFit& fit = *global.Fits.front().Fit;
            for (int number = 1; number <= fit.NParams(); ++number)
                if (fit.Parameter(number)->Name() == name)
                    document["shared"][name] = {{"value", fit.Parameter(number)->Value()},
                                                {"error", result.StandardError(i)}};
        }
        document["rss"] = result.Rss;
        document["residual_sd"] = result.ResidualSD;
        document["r_squared"] = result.RSquared;
        document["degrees_of_freedom"] = result.Quality.Freedom;
        document["aic"] = result.Quality.Aic;
        document["aicc"] = result.Quality.Aicc;
        document["bic"] = result.Quality.Bic;
        document["points"] = result.PointsUsed;
        document["iterations"] = result.Iterations;
        document["converged"] = result.End == TFitEnd::Converged;
        document["end"] = TextOf(result.End);
        return document;
    }

    static std::vector<const TBatchFit*> PointersTo(const std::vector<TBatchFit>& fits) {
        std::vector<const TBatchFit*> pointers;
        for (const TBatchFit& fit : fits) pointers.push_back(&fit);
        return pointers;
    }

    static TDocument AgreementsDocument(const std::vector<TBatchFit>& fits) {
        TDocument document = TDocument::object();
        for (const TParameterAgreement& agreement : AgreementsOf(PointersTo(fits)))
            document[agreement.Name] = {
                {"mean", agreement.Mean}, {"error", agreement.Error}, {"probability", agreement.Probability}};
        return document;
    }

    void Show(const std::vector<TBatchFit>& fits, const TGlobalFit* global) const {
        TDocument together;
        if (global) together = TogetherDocument(*global, shared);
        if (form == TOutputForm::Json) {
            TDocument document = TDocument::object();
            document["fits"] = TDocument::array();
            for (const TBatchFit& fit : fits) document["fits"].push_back(DocumentOf(fit));
            if (global) document["together"] = together;
            if (!global) document["agreements"] = AgreementsDocument(fits);
            Print(document, form);
        } else {
            Print(TableText(BatchTable(fits)));
            if (global) Print("\n" + OutlineText(together));
            const std::string agreement =
                global ? std::string() : AgreementText(AgreementsOf(PointersTo(fits)));
            if (!agreement.empty()) PrintMessage(agreement + " See --share");
        }
        const auto failed = std::ranges::find_if_not(fits, HasConverged);
        if (failed == fits.end() || allowsUnconverged) return;
        throw EFitError(failed->Name + ": " +
                        (failed->Error.empty() ? TextOf(failed->Fit->Result()->End) : failed->Error));
    }

    mutable std::vector<std::string> m_fileOf;
};

} // namespace

void AddFitAllCommand(CLI::App& program) {
    const auto fit = std::make_shared<TFitAllCommand>();
    CLI::App& command = *program.add_subcommand("fit-all", "Fit one model to many data sets");
    command.add_option("DATA", fit->files, "Graphs (.ltp, all data sets), data sets (.lds), text files")
        ->required();
    AddTextOptions(command, fit->text, TYColumns::Several);
    AddDefinitionOptions(command, fit->definition);
    AddRunOptions(command, fit->definition, fit->starts, "The procedure, as of fit");
    AddWeightOptions(command, fit->weights);
    command.add_option("--share", fit->shared, "A parameter with one value for all data sets (repeatable)")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->group(kRunGroup);
    command
        .add_flag_callback(
            "--allow-unconverged", [fit] { fit->allowsUnconverged = true; },
            "Exit status 0 also where a fit has not converged")
        ->group("Results");
    AddJson(command, fit->form);
    command.footer("Prints a table of the parameters against the data sets.\n"
                   "Example:\n  xydata fit-all runs.csv --columns time,a,b,c --equation \"h*exp(-k*time)\" "
                   "--xvar time\n    --param h=1 --param k=0.1 --share k");
    command.callback([fit] { fit->Run(); });
}

} // namespace lumoplot
