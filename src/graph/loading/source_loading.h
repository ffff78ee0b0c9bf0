// Fills the data sets of a graph from their sources. How is said by a value; nothing of the graph is switched
// for it.
#pragma once

#include "graph/model/graph.h"
#include "sources/text/loading/text_loader.h"
#include "sources/text/loading/text_preview.h"
#include "support/progress.h"

#include <limits>
#include <optional>

namespace lumoplot {

/// A budget of points that no source exceeds.
inline constexpr int kEveryRow = std::numeric_limits<int>::max();

/// Of a source with at most so many rows every row is read while nobody says otherwise.
inline constexpr std::int64_t kMostRowsUnasked = 5'000'000;

enum class TLoadedName { AsSourceSays, Kept };
/// FromColumn: the X axis of a graph with one data set is called like the column of X, where nobody has
/// written a title yet.
enum class TLoadedXTitle { Kept, FromColumn };

struct TLoadOptions {
    /// While the description leaves the row sampling to us, so many points at most are read; without one the
    /// PointBudget of the graph, or every row where the data set shows results of them.
    std::optional<int> Budget = std::nullopt;
    /// A source with more rows switches AutoRowHitFreq on, unless somebody has chosen the sampling; the
    /// report says so.
    std::int64_t MostRowsUnasked = kMostRowsUnasked;
    TLoadedName Name = TLoadedName::AsSourceSays;
    TLoadedXTitle XTitle = TLoadedXTitle::Kept; ///< changed with a Report alone
    /// Takes what became of the rows of a text.
    TTextReport* Report = nullptr;
};

/// Reads the points of a data set from the source that it describes and puts them in the place of its points;
/// a manual data set is left as it is. False when the user cancelled. On false and on an error (EFileError
/// and the texts of the source's format) the data set keeps its points.
XYGRAPH_EXPORT bool LoadFromSource(TSeries& series, TProgress& progress, const TLoadOptions& options = {});

/// Reads all rows of the source of a data set that holds only some of them; its name and what is known of its
/// reading stay. False when the user cancelled. Throws as LoadFromSource; the data set keeps its points then.
XYGRAPH_EXPORT bool LoadEveryRow(TSeries& series, TProgress& progress);

/// The first rows of the text file or sheet that the data set's source is, read as its description says.
/// Throws EFileError.
XYGRAPH_EXPORT TTextPreview PreviewSource(const TSeries& series, int maxRows);

/// Reads again, with the budget of `graph`, the data sets of which `edited` (a copy of it, the same data sets
/// in the same order) read fewer points for its preview. What cannot be read is told through the message sink
/// and keeps the points that it has, as does what the user cancels.
XYGRAPH_EXPORT void LoadThinnedAgain(TxyGraph& graph, const TxyGraph& edited, TProgress& progress);

/// The source's file, with its sheet where one is named ("book.xlsx#Sheet"): its name as it is when it is
/// absolute or exists, else in the graph's data directory.
XYGRAPH_EXPORT std::string SourceFileOf(const TSeries& series);

/// The connection of a data set that a database feeds; a file's name is completed as SourceFileOf does.
XYGRAPH_EXPORT std::string ConnectionOf(const TSeries& series);

} // namespace lumoplot
