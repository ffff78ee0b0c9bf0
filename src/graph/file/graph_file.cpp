#include "graph/file/graph_file.h"

#include "graph/file/graph_content.h"
#include "graph/model/child_graph.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "support/replace_file.h"
#include "support/update_hold.h"

namespace lumoplot {
namespace {

constexpr const char* kSignature = "xygg06.01";
constexpr int kLargestCount = 65535;

template <class T>
void WriteSection(TxyWriter& writer, const char* header, const char* name,
                  std::span<const TSectionRow<T>> rows, const T& object,
                  TRowOf section = TRowOf::EverySection) {
    writer.WriteString(kSectionHeader, header, name);
    WriteEntries(writer, rows, object, section);
}

void WriteCount(TxyWriter& writer, std::size_t count) {
    if (count > kLargestCount) throw EGraphFileError("A graph can hold at most 65535 data sets and marks");
    const int value = static_cast<int>(count);
    if (writer.Encoding() == TEncoding::Compact) {
        writer.WriteBareString("I");
        writer.WriteBareInteger(value);
    } else {
        writer.WriteBareString("S");
        writer.WriteBareString(std::to_string(value));
    }
}

constexpr char kChooseAnother[] = ". Choose a file that a graph was saved to (.ltp)";

[[noreturn]] void ThrowNoGraphFile() {
    throw EGraphFileError("Not a valid graph file");
}

int ReadCount(TxyReader& reader) {
    const int count =
        reader.ReadBareString() == "I" ? reader.ReadBareInteger() : ParseInteger(reader.ReadBareString());
    if (count < 0 || count > kLargestCount) ThrowNoGraphFile();
    return count;
}

void CheckSignature(TxyReader& reader) {
    std::string signature;
    try {
        signature = reader.ReadBareString();
    } catch (const EStreamError&) {
        ThrowNoGraphFile();
    }
    if (!signature.starts_with("xygg")) ThrowNoGraphFile();
    if (signature.size() < 5 || signature[4] != '0') throw EGraphFileError("Wrong Graph version");
}

void CheckNesting(const TxyGraph& graph, int depth, std::int64_t& count) {
    count += graph.ChildGraphCount();
    if (graph.ChildGraphCount() > 0 && depth >= TxyGraph::kMaxNesting)
        throw EGraphFileError("Graphs can be nested at most 64 deep in a file");
    if (count > TxyGraph::kMaxChildGraphs)
        throw EGraphFileError("A graph file can hold at most 4096 child graphs");
    for (const auto& child : graph.ChildGraphs()) CheckNesting(*child, depth + 1, count);
}

} // namespace

void WriteSeries(TxyWriter& writer, const TSeries& series, TPoints points) {
    const bool withPoints = points == TPoints::Include;
    WriteSection(writer, "", "Series", SeriesRows(), series,
                 withPoints ? TRowOf::SectionsWithPoints : TRowOf::EverySection);
    series.WriteToStream(writer, withPoints);
}

void ReadSeries(TxyReader& reader, TSeries& series) {
    ReadEntries(reader, SeriesRows(), series);
    series.ReadFromStream(reader);
}

TBytes SeriesBytes(const TSeries& series) {
    TBytes bytes;
    TxyWriter writer(bytes);
    WriteSeries(writer, series, TPoints::Include);
    return bytes;
}

void LoadSeriesFromFile(TSeries& series, const std::string& name) {
    LoadSeriesFromBytes(series, ReadWholeFile(name), name);
}

void LoadSeriesFromBytes(TSeries& series, const TBytes& bytes, const std::string& name) {
    TByteSource source(bytes);
    TxyReader reader(source);
    TSeries loaded(series.Graph(), series.SeriesIndex());
    loaded.BeginUpdate(); // nobody hears of it
    try {
        ReadSeries(reader, loaded);
    } catch (const EStreamError&) {
        throw EStreamError(name + " is not a data-set file. Choose one that was exported as .lds");
    } catch (const EConvertError&) {
        throw EStreamError(name + " is not a data-set file. Choose one that was exported as .lds");
    }
    series.CopyFrom(loaded);
}

/// One loading or saving of a graph file, child graphs included.
class TGraphFile {
public:
    static void Save(TBytes& bytes, const TxyGraph& graph, TPoints points) {
        SaveSettings(bytes, graph, points);
        TxyWriter writer(bytes);
        for (const auto& series : graph.Series()) WriteSeries(writer, *series, points);
        for (const auto& [id, mark] : graph.Marks().Marks())
            WriteSection(writer, "Section:", "Mark", MarkRows(), mark);
        AppendInteger(bytes, graph.ChildGraphCount(), 4);
        for (const auto& child : graph.ChildGraphs()) Save(bytes, *child, points);
    }

    explicit TGraphFile(TByteSource& source) : m_source(source) {}

    /// Fills a new graph.
    void Load(TxyGraph& graph, int depth) {
        LoadSettings(graph);
        LoadSeries(graph);
        LoadMarks(graph);
        LoadChildren(graph, depth);
        graph.Appearance()->ApplyHeldIndices();
        graph.SelectMark(1);
    }

private:
    static void SaveSettings(TBytes& bytes, const TxyGraph& graph, TPoints points) {
        const TRowOf section = points == TPoints::Include ? TRowOf::SectionsWithPoints : TRowOf::EverySection;
        TxyWriter writer(bytes);
        writer.WriteBareString(kSignature);
        WriteSection(writer, "Section", "Appearance", AppearanceRows(), *graph.Appearance(), section);
        WriteSection(writer, "Section:", "Dimensions", DimensionsRows(), *graph.Dimensions());
        for (const TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
            WriteSection(writer, "Section:", "Axis", AxisRows(), *axis);
        WriteSection(writer, "Section:", "Legend", LegendRows(), *graph.Legend());
        WriteCount(writer, graph.Series().size());
        WriteCount(writer, graph.Marks().Marks().size());
    }

    void LoadSettings(TxyGraph& graph) {
        TxyReader reader(m_source);
        CheckSignature(reader);
        ReadEntries(reader, AppearanceRows(), *graph.Appearance());
        ReadEntries(reader, DimensionsRows(), *graph.Dimensions());
        for (TAxis* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()})
            ReadEntries(reader, AxisRows(), *axis);
        ReadEntries(reader, LegendRows(), *graph.Legend());
        m_seriesCount = ReadCount(reader);
        m_markCount = ReadCount(reader);
    }

    void LoadSeries(TxyGraph& graph) {
        TxyReader reader(m_source);
        for (int number = 1; number <= m_seriesCount; ++number) {
            TSeries& series = *graph.AddSeriesNumbered(number);
            series.RestoreUseXAxisSeries(true); // unless its record says otherwise
            ReadSeries(reader, series);
        }
    }

    void LoadMarks(TxyGraph& graph) {
        TxyReader reader(m_source);
        for (int i = 0; i < m_markCount; ++i) {
            TGraphMark mark;
            ReadEntries(reader, MarkRows(), mark);
            graph.SetMark(mark);
        }
    }

    void LoadChildren(TxyGraph& graph, int depth) {
        const int count = m_source.TakeInteger(4);
        m_childGraphs += count;
        const bool possible =
            count >= 0 && count <= TxyGraph::kMaxChildGraphs && m_childGraphs <= TxyGraph::kMaxChildGraphs;
        if (!possible || (count > 0 && depth >= TxyGraph::kMaxNesting)) ThrowNoGraphFile();
        for (int i = 0; i < count; ++i) {
            TxyChildGr* child = graph.AddChildGraph();
            Load(*child, depth + 1);
            child->FollowParent();
        }
    }

    TByteSource& m_source;
    int m_seriesCount = 0;
    int m_markCount = 0;
    std::int64_t m_childGraphs = 0;
};

void WriteGraph(TBytes& bytes, const TxyGraph& graph, TPoints points) {
    std::int64_t childGraphs = 0;
    CheckNesting(graph, 0, childGraphs);
    TGraphFile::Save(bytes, graph, points);
}

void TxyGraph::SaveToStream(TBytes& bytes, TPoints points) const {
    WriteGraph(bytes, *this, points);
}

void TxyGraph::LoadFromStream(TByteSource& source) {
    TxyGraph loaded;
    loaded.resize(size()); // which defaults depend on
    TGraphFile(source).Load(loaded, 0);
    ReplaceContent(*this, TGraphContent(loaded));
}

void TxyGraph::SaveTemplate(const std::string& name, TPoints points) const {
    TBytes bytes;
    try {
        SaveToStream(bytes, points);
    } catch (const EGraphFileError& error) {
        throw EGraphFileError("Can not save to file " + name + ": " + error.what());
    }
    ReplaceFile(name, bytes);
}

void TxyGraph::LoadFromFile(const std::string& name) {
    const TBytes bytes = ReadWholeFile(name);
    TByteSource source(bytes);
    try {
        LoadFromStream(source);
    } catch (const EGraphFileError& error) {
        throw EGraphFileError(error.what() + (": " + name) + kChooseAnother);
    } catch (const EStreamError&) {
        throw EGraphFileError("Not a valid graph file: " + name + kChooseAnother);
    } catch (const EConvertError&) {
        throw EGraphFileError("Not a valid graph file: " + name + kChooseAnother);
    }
}

void TxyGraph::CopyFrom(const TxyGraph& source) {
    if (&source != this) ReplaceContent(*this, TGraphContent(source));
}

void TSeries::CopyFrom(const TSeries& other) {
    if (&other == this) return;
    TSeriesContent(other).MoveInto(*this);
    RestoreUseXAxisSeries(other.UseXAxisSeries());
    const bool hasOwnX = XSource() == nullptr;
    if (hasOwnX != (other.XSource() == nullptr)) XSourceChanged();
    m_graph.Appearance()->DropUnusableXSeries();
}

} // namespace lumoplot
