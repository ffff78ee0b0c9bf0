#include "sources/database/row_stream.h"

namespace lumoplot {

bool TRowStream::Push(TReadPoints block) {
    std::unique_lock lock(m_lock);
    m_changed.wait(lock, [this] { return m_isStopped || m_blocks.size() < kMostWaiting; });
    if (m_isStopped) return false;
    m_blocks.push_back(std::move(block));
    m_changed.notify_all();
    return true;
}

void TRowStream::Expect(std::int64_t rows) {
    const std::scoped_lock lock(m_lock);
    m_expected = rows;
}

bool TRowStream::IsStopped() const {
    const std::scoped_lock lock(m_lock);
    return m_isStopped;
}

void TRowStream::SetSession(TSqlSession* session) {
    const std::scoped_lock lock(m_lock);
    m_session = session;
}

std::optional<TReadPoints> TRowStream::Take(std::chrono::milliseconds time) {
    std::unique_lock lock(m_lock);
    m_changed.wait_for(lock, time, [this] { return m_isDone || !m_blocks.empty(); });
    if (m_blocks.empty()) return std::nullopt;
    TReadPoints block = std::move(m_blocks.front());
    m_blocks.pop_front();
    m_changed.notify_all();
    return block;
}

bool TRowStream::IsDone() const {
    const std::scoped_lock lock(m_lock);
    return m_isDone && m_blocks.empty();
}

std::int64_t TRowStream::Expected() const {
    const std::scoped_lock lock(m_lock);
    return m_expected;
}

void TRowStream::Stop() {
    const std::scoped_lock lock(m_lock);
    m_isStopped = true;
    if (m_session) m_session->Interrupt();
    m_changed.notify_all();
}

void TRowStream::Rethrow() const {
    const std::scoped_lock lock(m_lock);
    if (m_error) std::rethrow_exception(m_error);
}

void TRowStream::Run(const std::function<void()>& work) {
    std::exception_ptr error;
    try {
        work();
    } catch (...) {
        error = std::current_exception();
    }
    const std::scoped_lock lock(m_lock);
    m_error = error;
    m_isDone = true;
    m_changed.notify_all();
}

} // namespace lumoplot
