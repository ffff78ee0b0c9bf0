// Passes over the points of a fit, in parts that threads share. What a pass computes is kept part by part and
// put together in the order of the parts, so that it does not depend on how many threads there are.
#pragma once

#include "fit/procedures/fit_rows.h"
#include "support/workers.h"

#include <functional>
#include <memory>

namespace lumoplot {

/// Neighbouring points of a part, with room for what is computed of them.
struct TFitChunk {
    std::size_t Part;
    std::size_t Start; ///< number of the first point
    TFitRows& Rows;    ///< the thread's own
    std::span<double> Residuals;
    std::span<double> Columns; ///< as many as asked for, one behind the other
};

class TFitPasses {
public:
    /// The fit is compiled; `rows` are of it. All borrowed.
    TFitPasses(TCurFit& fit, TFitRows& rows);
    ~TFitPasses();

    std::size_t PartCount() const { return (PointCount() + kPart - 1) / kPart; }
    /// For work that shares the processor's cores itself.
    void UseOneThread() { m_mayShare = false; }

    /// Does the work for all points, with the parameters as they are: the chunks of a part in their order, by
    /// one thread. `check` is called before chunks in the calling thread, and may throw to end the pass.
    void ForEachChunk(std::size_t columns, const std::function<void()>& check,
                      const std::function<void(TFitChunk&)>& work);

private:
    static constexpr std::size_t kChunk = 512; // with eight columns it stays in the nearest cache
    static constexpr std::size_t kPart = 1 << 14;

    /// What a thread works with.
    struct TPlace;

    std::size_t PointCount() const { return m_rows.Points().X.size(); }
    bool MayShare() const;
    void SetUp();
    void DoPart(std::size_t part, TPlace& place, std::size_t columns, const std::function<void()>& check,
                const std::function<void(TFitChunk&)>& work);

    TCurFit& m_fit;
    TFitRows& m_rows;
    bool m_mayShare = true;
    std::vector<std::unique_ptr<TPlace>> m_places;
    std::unique_ptr<TWorkers> m_workers; ///< null for one thread
};

} // namespace lumoplot
