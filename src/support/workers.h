// Threads that share the parts of one piece of work. They wait between the pieces, so that a piece of a
// millisecond is worth sharing.
#pragma once

#include "support/export.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace lumoplot {

/// How many threads the processor can run at once, at most 8.
int ProcessorCount();

class TWorkers {
public:
    /// `part` counts from 0, `worker` from 0 to Count() − 1; parts of different workers run at once.
    using TWork = std::function<void(std::size_t part, int worker)>;

    /// The caller is one of the workers: `count` − 1 threads are started.
    explicit TWorkers(int count);
    ~TWorkers();
    TWorkers(const TWorkers&) = delete;
    TWorkers& operator=(const TWorkers&) = delete;

    int Count() const { return m_count; }
    /// Does the parts 0 to `parts` − 1, the calling thread as worker 0, and returns when no part runs any
    /// more. After an exception of the work no further part is begun, and the first one is thrown here.
    void Run(std::size_t parts, const TWork& work);

private:
    struct TShared;

    int m_count;
    std::unique_ptr<TShared> m_shared;
};

} // namespace lumoplot
