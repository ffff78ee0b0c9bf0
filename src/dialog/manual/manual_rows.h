// The rows of the manual grid while a user edits them: the points of a data set, in which rows are replaced,
// inserted and removed. A row that nobody touched stays a number in its chain; only edited rows are texts.
// Every edit can be undone. Knows neither numbers' formats nor windows.
#pragma once

#include "data/points/point_chain.h"

#include <QString>
#include <limits>
#include <optional>
#include <vector>

namespace lumoplot {

/// A row of the grid. A null text stands for the value of the point.
struct TManualRow {
    static constexpr std::size_t kNew = std::numeric_limits<std::size_t>::max();

    std::size_t Point = kNew; ///< place of the row's point among all points, kNew without one
    QString X;
    QString Y;

    bool IsEmpty() const { return Point == kNew && X.trimmed().isEmpty() && Y.trimmed().isEmpty(); }
};

/// What an edit did to the rows: `Removed` of them gave way to `Inserted` others.
struct TRowChange {
    std::size_t Row = 0;
    std::size_t Removed = 0;
    std::size_t Inserted = 0;
};

class TManualRows {
public:
    static constexpr std::size_t kMaxUndo = 200;

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
    /// What taking the last edit back, or making it again, would do; nothing when there is none.
    std::optional<TRowChange> NextUndo() const { return NextStep(m_undo); }
    std::optional<TRowChange> NextRedo() const { return NextStep(m_redo); }
    void Undo() { Step(m_undo, m_redo); }
    void Redo() { Step(m_redo, m_undo); }

    /// Calls `edited(row, const TManualRow&)` for each edited row and `points(row, place, count)` for each
    /// run of untouched points, in the order of the grid.
    template <class TEdited, class TRun>
    void Visit(TEdited edited, TRun points) const;

private:
    /// Rows that follow each other in the points or among the edited rows.
    struct TPiece {
        std::size_t Start = 0;
        std::size_t Count = 0;
        bool Edited = false;
    };
    using TPieces = std::vector<TPiece>;
    struct TUndoStep {
        TPieces Pieces;
        TRowChange Change; ///< that leads to these pieces
    };

    void CopyPoints();
    void IndexBlocks();
    void SetPieces(TPieces pieces);
    void AppendRange(TPieces& pieces, std::size_t from, std::size_t to) const;
    static std::optional<TRowChange> NextStep(const std::vector<TUndoStep>& steps) {
        return steps.empty() ? std::nullopt : std::optional(steps.back().Change);
    }
    void Step(std::vector<TUndoStep>& from, std::vector<TUndoStep>& to);

    const TPointChain* m_points = nullptr;
    std::optional<TPointChain> m_copy; ///< what m_points refers to once there are edits
    std::vector<std::size_t> m_blockEnds;
    TPieces m_pieces;
    std::vector<std::size_t> m_ends;  ///< number of rows up to and with each piece
    std::vector<TManualRow> m_edited; ///< only grows, so that older pieces stay valid
    std::vector<TUndoStep> m_undo;
    std::vector<TUndoStep> m_redo;
};

template <class TEdited, class TRun>
void TManualRows::Visit(TEdited edited, TRun points) const {
    std::size_t row = 0;
    for (const TPiece& piece : m_pieces) {
        if (!piece.Edited) points(row, piece.Start, piece.Count);
        for (std::size_t i = 0; piece.Edited && i < piece.Count; ++i)
            edited(row + i, m_edited[piece.Start + i]);
        row += piece.Count;
    }
}

} // namespace lumoplot
