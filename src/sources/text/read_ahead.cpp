#include "sources/text/read_ahead.h"

#include "sources/cells/text_number.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace lumoplot {

void ReadPiece(TTextFile& file, std::size_t size, const std::string& quotes, TTextPiece& piece) {
    // What is decompressed comes in smaller parts; a rest of this size is not worth a read.
    constexpr std::size_t kLeastRest = 4096;
    piece.text.resize(TTextPiece::kRoom + size + kNumberPadding);
    char* text = piece.text.data() + TTextPiece::kRoom;
    std::size_t count = 0;
    for (std::size_t more = 1; more > 0 && (count == 0 || size - count >= kLeastRest); count += more)
        more = file.Read(text + count, size - count);
    std::memset(text + count, 0, kNumberPadding);
    piece.end = TTextPiece::kRoom + count;
    piece.position = file.Position();
    piece.hasQuotes = std::ranges::any_of(
        quotes, [text, count](char quote) { return std::memchr(text, quote, count) != nullptr; });
}

TReadAhead::TReadAhead(TTextFile& file, std::size_t size, std::string quotes)
    : m_file(file), m_size(size), m_quotes(std::move(quotes)), m_thread([this] { Serve(); }) {
}

TReadAhead::~TReadAhead() {
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

void TReadAhead::Exchange(TTextPiece& piece) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isRead; });
    if (m_trouble) std::rethrow_exception(m_trouble);
    std::swap(piece, m_piece);
    m_isRead = piece.Size() == 0;
    lock.unlock();
    m_changed.notify_all();
}

void TReadAhead::Serve() {
    std::unique_lock lock(m_mutex);
    while (!m_isOver) {
        lock.unlock();
        std::exception_ptr trouble;
        try {
            ReadPiece(m_file, m_size, m_quotes, m_piece);
        } catch (...) {
            trouble = std::current_exception();
        }
        lock.lock();
        m_trouble = trouble;
        m_isRead = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isOver || !m_isRead; });
    }
}

} // namespace lumoplot
