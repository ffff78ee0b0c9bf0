// Points on their way from a thread that reads a database to the one that takes them.
#pragma once

#include "sources/database/connection/sql_session.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace lumoplot {

struct TReadPoints {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<double> yErrors; ///< empty where no column of them was asked for; 0 for none
    std::int64_t rowsSeen = 0;   ///< since the beginning
};

/// What both threads share. It outlives the one that takes when the other one can not be stopped.
class TRowStream {
public:
    /// Of the reading thread. Waits while the other one is behind; false when no more is wanted.
    bool Push(TReadPoints block);
    void Expect(std::int64_t rows);
    bool IsStopped() const;
    /// What Stop interrupts; null for nothing.
    void SetSession(TSqlSession* session);

    /// Of the taking thread: the next block; nothing after the time, and behind the last one.
    std::optional<TReadPoints> Take(std::chrono::milliseconds time);
    bool IsDone() const;
    /// Rows that are to be expected, 0 while that is not known.
    std::int64_t Expected() const;
    void Stop();
    /// Throws what the reading thread has ended with.
    void Rethrow() const;

    /// Runs the work and notes its end.
    void Run(const std::function<void()>& work);

private:
    static constexpr std::size_t kMostWaiting = 8;

    mutable std::mutex m_lock;
    std::condition_variable m_changed;
    std::deque<TReadPoints> m_blocks;
    std::exception_ptr m_error;
    TSqlSession* m_session = nullptr;
    std::int64_t m_expected = 0;
    bool m_isDone = false;
    bool m_isStopped = false;
};

} // namespace lumoplot
