// The points of a data series: a chain in ascending X as a person walks it, from First by Next, held in
// blocks with an index by X and one by Id. It knows how points are placed and merged, not what they mean:
// extents, baseline and notifications belong to TDataSeries. Filters and loaders build one beside a series
// and hand it over.
#pragma once

#include "data/points/point_block.h"
#include "support/export.h"

#include <optional>

namespace lumoplot {

/// Which points count as one.
struct TMergeRule {
    double Tolerance = 0;           ///< X distance within which two points have the same X
    bool DuplicatesAllowed = false; ///< points with the same X are kept side by side
};

/// Neighbouring points as one array a field; `Derived` is empty while all of it is 0, and `YErrors` (standard
/// errors of Y, 0 where a point has none) where none of the points was given one.
struct TPointSpans {
    std::span<const std::int32_t> Ids;
    std::span<const double> X;
    std::span<const double> Y;
    std::span<const double> Derived;
    std::span<const double> YErrors = {};
};

/// A place in a chain that walks to the next point, or no place. Any change of the chain but SetY, SetYError
/// and SetDerived makes it invalid.
class TPointCursor {
public:
    TPointCursor() = default;

    explicit operator bool() const { return m_block != m_end; }
    std::int32_t Id() const { return (*m_block)->Ids()[m_place]; }
    double X() const { return (*m_block)->X()[m_place]; }
    double Y() const { return (*m_block)->Y()[m_place]; }
    double Derived() const { return (*m_block)->Point(m_place).Derived; }
    double YError() const { return (*m_block)->Point(m_place).YError; }
    TSeriesPoint Point() const { return (*m_block)->Point(m_place); }
    TPointCursor Next() const {
        if (m_place + 1 < (*m_block)->Count()) return {m_block, m_end, m_place + 1};
        return {m_block + 1, m_end, 0};
    }

private:
    friend class TPointChain;
    using TBlockPointer = const std::unique_ptr<TPointBlock>*;

    TPointCursor(TBlockPointer block, TBlockPointer end, std::size_t place)
        : m_block(block), m_end(end), m_place(place) {}

    TBlockPointer m_block = nullptr;
    TBlockPointer m_end = nullptr;
    std::size_t m_place = 0;
};

class TPointChain {
public:
    TPointChain() = default;
    /// The points as the blocks of another chain had them, Ids and order included (their Derived is not
    /// looked at); the next point gets the Id behind `lastId`. No run is longer than a block.
    TPointChain(std::span<const TPointSpans> runs, std::int32_t lastId);
    XYGRAPH_EXPORT TPointChain(const TPointChain& other);
    TPointChain(TPointChain&& other) noexcept { Swap(other); }
    TPointChain& operator=(TPointChain other) noexcept {
        Swap(other);
        return *this;
    }
    ~TPointChain() = default;
    XYGRAPH_EXPORT void Swap(TPointChain& other) noexcept;

    int Count() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }
    /// The last Id handed out; a new chain starts with Id 1, and no Id is used twice.
    std::int32_t LastId() const { return m_ids.LastId(); }

    TPointCursor First() const { return {m_blocks.data(), m_blocks.data() + m_blocks.size(), 0}; }
    /// The last point's X; the chain is not empty.
    double LastX() const { return m_blocks.back()->X().back(); }
    /// The point with that Id.
    std::optional<TSeriesPoint> Find(std::int32_t id) const;

    /// The chain in order as runs of neighbouring points, none of them empty.
    std::size_t BlockCount() const { return m_blocks.size(); }
    TPointSpans Block(std::size_t index) const {
        const TPointBlock& block = *m_blocks[index];
        return {block.Ids(), block.X(), block.Y(), block.Derived(), block.YErrors()};
    }

    /// Places a point. At or behind the last one it overwrites that when duplicates are not allowed and
    /// x − tolerance <= its X, and is appended otherwise. In front of the last one it meets the first point
    /// in chain order whose X is at least x − tolerance: it overwrites that when duplicates are not allowed
    /// and the distance is within the tolerance, and is inserted before it otherwise (behind the last point
    /// when there is none, which takes a tolerance that is negative or not a number). An overwrite takes X,
    /// Y and the standard error of Y (none for 0 or what can be none) and leaves neighbours where they are,
    /// even when they are out of order then. False, and nothing done, for an X that is infinite or not a
    /// number, or when all Ids are used up.
    XYGRAPH_EXPORT bool Add(double x, double y, const TMergeRule& rule, double yError = 0);
    /// Adds points one after the other; those that ascend behind the last one take a fraction of the time of
    /// Add. `yErrors` has one value a point, or none. False when Add refuses one, which ends it; the points
    /// in front of that are there.
    XYGRAPH_EXPORT bool AddAll(std::span<const double> x, std::span<const double> y, const TMergeRule& rule,
                               std::span<const double> yErrors = {});
    /// Sets the point's Y, whose standard error stays, and returns its X; nothing for an unknown Id.
    XYGRAPH_EXPORT std::optional<double> SetY(std::int32_t id, double y);
    /// Some point has a standard error. Answered at once while none was ever given.
    XYGRAPH_EXPORT bool HasYErrors() const;
    /// Sets the standard error of a point's Y; none for 0 or what can be none. False for an unknown Id.
    XYGRAPH_EXPORT bool SetYError(std::int32_t id, double error);
    /// Takes one standard error a point, in chain order, or none at all, which drops them; 0 and what can be
    /// none are none. Throws std::invalid_argument for any other number of values.
    void SetYErrors(std::span<const double> errors);
    /// Removes the point and returns what it was.
    XYGRAPH_EXPORT std::optional<TSeriesPoint> Erase(std::int32_t id);
    /// From first to last, removes each point whose X is within `tolerance` of that of the point before it
    /// that stayed; returns how many.
    int EraseNeighbours(double tolerance);
    /// Takes one Derived value a point, in chain order, or none at all, which makes them 0.
    /// Throws std::invalid_argument for any other number of values.
    void SetDerived(std::span<const double> values);

private:
    struct TPlace {
        std::size_t Block;
        std::size_t Place;
    };

    TPlace FirstAtLeast(double key) const;
    void Insert(TPlace place, double x, double y, double yError);
    void Overwrite(TPlace place, double x, double y, double yError);
    void PutYError(TPointBlock& block, std::size_t place, double error);
    std::size_t CountAppended(std::span<const double> x, const TMergeRule& rule) const;
    void AppendRun(std::span<const double> x, std::span<const double> y, std::span<const double> yErrors);
    TPlace MakeRoom(TPlace place);
    TPlace Split(TPlace place);
    void InsertBlock(std::size_t position, std::unique_ptr<TPointBlock> block);
    void EraseBlock(std::size_t position);
    void MergeIfSmall(std::size_t position);
    void Merge(std::size_t position);
    std::size_t PositionOf(TPointBlock& block);
    void RaiseReach(std::size_t position, double x);
    void RenewReach(std::size_t position);

    std::vector<std::unique_ptr<TPointBlock>> m_blocks;
    /// The largest X of all blocks up to and with the one at the same position. It ascends even where points
    /// are out of order, so the first point that reaches a key is found by halving.
    std::vector<double> m_reach;
    TPointIdIndex m_ids;
    int m_count = 0;
    bool m_mayHaveYErrors = false; ///< one was given at some time
};

} // namespace lumoplot
