// The rows of the manual grid while a user edits them: the points of a data set, in which rows are replaced,
// inserted and removed. A row that nobody touched stays a number in its chain; only edited rows are texts.
// Copies are cheap, they share points and texts. Knows neither numbers' formats nor windows.
#pragma once

#include "data/points/point_chain.h"

#include <QString>
#include <algorithm>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

namespace lumoplot {

/// A row of the grid. A null text stands for the value of the point.
struct TManualRow {
    static constexpr std::size_t kNew = std::numeric_limits<std::size_t>::max();

    std::size_t Point = kNew; ///< place of the row's point among all points, kNew without one
    QString X;
    QString Y;
    QString YError = {}; ///< the standard error of Y; an empty text for none

    bool IsEmpty() const {
        return Point == kNew && X.trimmed().isEmpty() && Y.trimmed().isEmpty() && YError.trimmed().isEmpty();
    }
};

class TManualRows {
public:
    /// Shows these points (null for none) and drops all edits. They are borrowed until the first edit, which
    /// copies them: whoever changes them before calls Show again.
    void Show(const TPointChain* points);

    std::size_t Count() const { return m_ends.empty() ? 0 : m_ends.back(); }
    /// Some row differs from the points in its text or its place.
    bool IsEdited() const;
    TManualRow Row(std::size_t row) const;
    /// The point at that place of the chain.
    TSeriesPoint Point(std::size_t place) const;
    std::size_t PointCount() const { return m_blockEnds.empty() ? 0 : m_blockEnds.back(); }

    /// Puts `rows` in the place of `removed` rows, which there are from `row` on.
    void Replace(std::size_t row, std::size_t removed, std::vector<TManualRow> rows);
    /// Shows points of its own, and no row; AppendPoints and Replace then add rows.
    void StartWith(TPointChain points);
    /// Adds untouched rows for `count` points of those, from `place` on.
    void AppendPoints(std::size_t place, std::size_t count);
    /// The points of its own that its rows belong to; null without edits.
    std::shared_ptr<const TPointChain> OwnPoints() const { return m_copy; }
    /// The first row that differs from those that another copy shows of the same points, or Count().
    std::size_t FirstDifference(const TManualRows& other) const;
    /// Bytes of its own, and of what it shares unless `earlier` (may be null) shares it, too.
    std::size_t BytesBeside(const TManualRows* earlier) const;

    /// Calls `edited(row, const TManualRow&)` for each edited row and `points(row, place, count)` for each
    /// run of untouched points, in the order of the grid.
    template <class TEdited, class TRun>
    void Visit(TEdited edited, TRun points) const;
    /// The same for a copy that another thread has, with runs of edited rows: `edited(vector of rows)` and
    /// `points(place, count)`.
    template <class TEdited, class TRun>
    void VisitRuns(TEdited edited, TRun points) const;
    std::size_t RunCount() const;

private:
    static constexpr std::size_t kLongestRun = 1024; ///< that the guard is held for

    /// Rows that follow each other in the points or among the edited rows.
    struct TPiece {
        std::size_t Start = 0;
        std::size_t Count = 0;
        bool Edited = false;

        bool operator==(const TPiece&) const = default;
    };
    using TPieces = std::vector<TPiece>;

    void CopyPoints();
    void IndexBlocks();
    void SetPieces(TPieces pieces);
    void AppendRange(TPieces& pieces, std::size_t from, std::size_t to) const;

    const TPointChain* m_points = nullptr;
    std::shared_ptr<const TPointChain> m_copy; ///< what m_points refers to once there are edits
    std::vector<std::size_t> m_blockEnds;
    TPieces m_pieces;
    std::vector<std::size_t> m_ends; ///< number of rows up to and with each piece
    /// Only grows, so that the pieces of older copies stay valid; with the guard, as another thread may read
    /// these meanwhile.
    struct TEditedRows {
        std::mutex Guard;
        std::vector<TManualRow> Rows;

        std::vector<TManualRow> Copy(std::size_t start, std::size_t count);
        void Append(std::vector<TManualRow> rows);
    };
    std::shared_ptr<TEditedRows> m_edited = std::make_shared<TEditedRows>();
    std::size_t m_editedCount = 0; ///< so many of them are of this copy
};

template <class TEdited, class TRun>
void TManualRows::Visit(TEdited edited, TRun points) const {
    std::size_t row = 0;
    for (const TPiece& piece : m_pieces) {
        if (!piece.Edited) points(row, piece.Start, piece.Count);
        for (std::size_t i = 0; piece.Edited && i < piece.Count; ++i)
            edited(row + i, m_edited->Rows[piece.Start + i]);
        row += piece.Count;
    }
}

template <class TEdited, class TRun>
void TManualRows::VisitRuns(TEdited edited, TRun points) const {
    for (const TPiece& piece : m_pieces) {
        if (!piece.Edited) points(piece.Start, piece.Count);
        for (std::size_t i = 0; piece.Edited && i < piece.Count; i += kLongestRun)
            edited(m_edited->Copy(piece.Start + i, std::min(kLongestRun, piece.Count - i)));
    }
}

} // namespace lumoplot
