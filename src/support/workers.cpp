#include "support/workers.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace lumoplot {

namespace {
constexpr int kMostWorkers = 8;
}

struct TWorkers::TShared {
    std::mutex Mutex;
    std::condition_variable Begin;
    std::condition_variable End;
    const TWork* Work = nullptr;
    std::size_t Parts = 0;
    std::atomic<std::size_t> Next = 0;
    int Piece = 0; ///< number of the piece of work
    int Busy = 0;  ///< threads that have not ended it
    bool IsOver = false;
    std::exception_ptr Trouble;
    std::vector<std::thread> Threads;

    void DoParts(int worker) {
        try {
            for (std::size_t part; (part = Next.fetch_add(1)) < Parts;) (*Work)(part, worker);
        } catch (...) {
            const std::lock_guard lock(Mutex);
            if (!Trouble) Trouble = std::current_exception();
            Next = Parts;
        }
    }

    void Serve(int worker) {
        for (int done = 0;;) {
            {
                std::unique_lock lock(Mutex);
                Begin.wait(lock, [&] { return IsOver || Piece != done; });
                if (IsOver) return;
                done = Piece;
            }
            DoParts(worker);
            const std::lock_guard lock(Mutex);
            if (--Busy == 0) End.notify_one();
        }
    }
};

int ProcessorCount() {
    return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostWorkers);
}

TWorkers::TWorkers(int count) : m_count(std::max(count, 1)), m_shared(std::make_unique<TShared>()) {
    for (int worker = 1; worker < m_count; ++worker)
        m_shared->Threads.emplace_back([this, worker] { m_shared->Serve(worker); });
}

TWorkers::~TWorkers() {
    {
        const std::lock_guard lock(m_shared->Mutex);
        m_shared->IsOver = true;
    }
    m_shared->Begin.notify_all();
    for (std::thread& thread : m_shared->Threads) thread.join();
}

void TWorkers::Run(std::size_t parts, const TWork& work) {
    TShared& shared = *m_shared;
    {
        const std::lock_guard lock(shared.Mutex);
        shared.Work = &work;
        shared.Parts = parts;
        shared.Next = 0;
        shared.Trouble = nullptr;
        shared.Busy = m_count - 1;
        ++shared.Piece;
    }
    shared.Begin.notify_all();
    shared.DoParts(0);
    std::unique_lock lock(shared.Mutex);
    shared.End.wait(lock, [&] { return shared.Busy == 0; });
    if (shared.Trouble) std::rethrow_exception(shared.Trouble);
}

} // namespace lumoplot
