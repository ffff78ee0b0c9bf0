// A gzip or Zstandard file as the text in it, decompressed while it is read: from front to end, and from the
// front again. Holds a piece of the file and the state of the decompression, whatever the size.
#pragma once

#include "sources/packed/packed_text.h"

#include <QFile>
#include <cstddef>
#include <memory>
#include <vector>

namespace lumoplot {

/// Decompresses pieces one after the other.
class TDecompressor {
public:
    struct TStep {
        std::size_t taken = 0; ///< of the input
        std::size_t given = 0; ///< of the output
        bool isWrong = false;
        bool isWhole = false; ///< a part of the file has come to its end here; another one may follow
    };

    virtual ~TDecompressor() = default;
    virtual void Restart() = 0;
    virtual TStep Step(const char* input, std::size_t size, char* output, std::size_t capacity) = 0;
};

class TCompressedFile final : public TPackedText {
public:
    /// The file as what is in it when its first bytes are those of a compressed file, else null. The file is
    /// open; it is taken in the first case only.
    static std::unique_ptr<TCompressedFile> Open(std::unique_ptr<QFile>& file);

    qint64 RawPosition() const override { return m_isAtEnd ? RawSize() : m_file->pos(); }
    qint64 RawSize() const override { return m_file->size(); }
    /// Anywhere, by reading on from the front.
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* data, qint64 capacity) override;

private:
    TCompressedFile(std::unique_ptr<QFile> file, std::unique_ptr<TDecompressor> decompressor);

    std::unique_ptr<QFile> m_file;
    std::unique_ptr<TDecompressor> m_decompressor;
    std::vector<char> m_input;
    std::size_t m_begin = 0; ///< of the input that is not decompressed yet
    std::size_t m_end = 0;
    bool m_isBetween = true; ///< no part of the file is open
    bool m_isAtEnd = false;
};

} // namespace lumoplot
