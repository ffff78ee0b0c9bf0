// Data files as data sets of a graph: adding one, reading them again with another budget of points, and how
// many of their rows the graph shows.
#pragma once

#include "data/series/ds_info.h"
#include "graph/model/graph.h"
#include "support/progress.h"

#include <QStringList>
#include <string>
#include <vector>

namespace lumoplot {

struct TTextReport;

/// A source with its Y columns, each of which becomes a data set; without any the source says which.
struct TDataChoice {
    TDSInfo Source;
    TTextWishes Wishes;
    std::vector<std::string> YColumns;
    std::vector<TYErrorRule> YErrors = {}; ///< one a Y column, or none
};

class TDataFiles {
public:
    /// The graph is borrowed.
    explicit TDataFiles(TxyGraph& graph) : m_graph(graph) {}

    /// Adds a data set that is fed from the file, named and styled, and makes it the current one; the first
    /// one also gives the graph and its X axis their titles, the second one shows the legend. Points with
    /// equal X are all kept. False when the user cancelled; throws what reading throws. The graph is then as
    /// it was.
    bool Add(const QString& fileName, TProgress& progress);

    /// The same for what a database gives, named `name`.
    bool AddDatabase(const TDSInfo& source, const std::string& name, TProgress& progress);

    /// As above for what has been chosen. What was read before the user cancelled stays.
    bool Add(const TDataChoice& choice, TProgress& progress);

    /// The description of a file that has been named only.
    static TDSInfo SourceOf(const QString& fileName);

    /// How the text that was loaded last was read, in one line; empty when it was none.
    const QString& Explanation() const { return m_explanation; }
    /// It could be read in another way as well.
    bool IsReadingOpen() const { return m_isReadingOpen; }

    /// Reads every data set again that has a source, and points from there, with the graph's budget. False
    /// when the user cancelled.
    /// Data sets that can not be read keep the points that they have.
    bool ReloadAll(TProgress& progress);

    /// Tells which rows and sources could not be read since the last call; for when no progress window is
    /// open.
    void TellNotes();

    /// "1 data set, drawn from 5,000 of 120,000 rows" and the like, for the whole graph.
    QString Summary() const;

private:
    bool AddColumn(const TDataChoice& choice, std::size_t column, TProgress& progress);
    bool Load(TSeries& series, TProgress& progress);
    void TakeDatabaseReport(const TSeries& series, const TTextReport& report);
    void TakeMixedX(const TSeries& series, const TTextReport& report);

    TxyGraph& m_graph;
    QStringList m_notes;
    QString m_explanation;
    bool m_isReadingOpen = false;
};

} // namespace lumoplot
