// Reads a text file piece by piece in a thread of its own, the next one while the last is used.
#pragma once

#include "sources/text/text_file.h"

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace lumoplot {

/// A piece of a file's text with room for the end of the one before in front of it.
struct TTextPiece {
    static constexpr std::size_t kRoom = 4096;

    std::vector<char> text;    ///< kRoom characters, the piece, kNumberPadding that are zero
    std::size_t end = kRoom;   ///< of the piece; kRoom at the end of the file
    std::int64_t position = 0; ///< of the file behind it
    bool hasQuotes = false;

    std::size_t Size() const { return end - kRoom; }
};

/// Reads as much as has room in `size` characters. Throws as TTextFile::Read does.
void ReadPiece(TTextFile& file, std::size_t size, const std::string& quotes, TTextPiece& piece);

class TReadAhead {
public:
    /// Begins to read. Nobody else may use the file, which is borrowed, before this is gone.
    TReadAhead(TTextFile& file, std::size_t size, std::string quotes);
    ~TReadAhead();
    TReadAhead(const TReadAhead&) = delete;
    TReadAhead& operator=(const TReadAhead&) = delete;

    /// Waits for the next piece, gives it in exchange for the old one, and begins to read the one behind it.
    /// Throws what reading it has thrown.
    void Exchange(TTextPiece& piece);

private:
    void Serve();

    TTextFile& m_file;
    std::size_t m_size;
    std::string m_quotes;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    TTextPiece m_piece;
    bool m_isRead = false;
    bool m_isOver = false;
    std::exception_ptr m_trouble;
    std::thread m_thread; ///< last: it uses the others
};

} // namespace lumoplot
