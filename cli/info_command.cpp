#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/data_input.h"
#include "cli/database_input.h"
#include "cli/file_document.h"
#include "cli/text_document.h"
#include "fit/definition/cur_fit.h"
#include "sources/spreadsheet/sheet_place.h"

#include <memory>

namespace lumoplot {
namespace {

struct TInfoCommand {
    TDataOptions data;
    TOutputForm form = TOutputForm::Outline;

    TDocument Document() const {
        switch (KindOfFile(data.file)) {
        case TFileKind::Graph: return WithKind("graph", GraphDocument(LoadGraph(data)->Graph()));
        case TFileKind::DataSet:
            return WithKind("data set",
                            {{"Series", SeriesDocument(*LoadGraph(data)->Graph().FirstSeries())}});
        case TFileKind::Function:
            return WithKind("function", {{"CurveFit", CurveFitDocument(*LoadFunction(data.file))}});
        case TFileKind::Database: return WithKind("database", DatabaseFileDocument());
        case TFileKind::Text: break;
        }
        return WithKind("text", TextFileDocument());
    }

private:
    TDocument TextFileDocument() const {
        TDataSeries series;
        TDocument document = TextDocument(LoadTextData(series, data.file, data.text));
        for (const TBookSheet& sheet : SheetsOf(SheetPlaceOf(data.file).file))
            document["Sheets"].push_back(sheet.name + (sheet.isHidden ? " (hidden)" : ""));
        AppendPoints(document, series);
        return document;
    }

    // Without a table or a SELECT what there is to choose from.
    TDocument DatabaseFileDocument() const {
        TDocument document = DatabaseDocument(data);
        if (data.text.table.empty() && data.text.query.empty()) return document;
        const auto graph = LoadGraph(data);
        AppendPoints(document, *graph->Graph().FirstSeries());
        return document;
    }

    static TDocument WithKind(const char* kind, const TDocument& content) {
        TDocument document = {{"kind", kind}};
        document.update(content);
        return document;
    }
};

} // namespace

void AddInfoCommand(CLI::App& program) {
    const auto info = std::make_shared<TInfoCommand>();
    CLI::App& command = *program.add_subcommand("info", "Show what a file holds, every section and key");
    command.add_option("FILE", info->data.file, "Graph, data set, function or text file, or database")
        ->required();
    AddTextOptions(command, info->data.text);
    AddJson(command, info->form);
    command.callback([info] { Print(info->Document(), info->form); });
}

} // namespace lumoplot
