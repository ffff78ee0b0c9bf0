#include "sources/packed/compressed_file.h"

#include <algorithm>
// Input that is only read is const.
#define ZLIB_CONST
#include <zlib.h>
#if defined(LUMOPLOT_HAVE_ZSTD)
#include <zstd.h>
#endif

namespace lumoplot {
namespace {

constexpr std::size_t kInputSize = 131072;

class TGzip final : public TDecompressor {
public:
    TGzip() { m_isOpen = inflateInit2(&m_stream, kWindow + kGzipHeader) == Z_OK; }
    ~TGzip() override { inflateEnd(&m_stream); }
    TGzip(const TGzip&) = delete;
    TGzip& operator=(const TGzip&) = delete;

    void Restart() override { inflateReset(&m_stream); }
    TStep Step(const char* input, std::size_t size, char* output, std::size_t capacity) override {
        m_stream.next_in = reinterpret_cast<const Bytef*>(input);
        m_stream.avail_in = static_cast<uInt>(size);
        m_stream.next_out = reinterpret_cast<Bytef*>(output);
        m_stream.avail_out = static_cast<uInt>(capacity);
        const int result = m_isOpen ? inflate(&m_stream, Z_NO_FLUSH) : Z_MEM_ERROR;
        const bool isWhole = result == Z_STREAM_END;
        if (isWhole) inflateReset(&m_stream);
        const bool isWrong = !isWhole && result != Z_OK && result != Z_BUF_ERROR;
        return {size - m_stream.avail_in, capacity - m_stream.avail_out, isWrong, isWhole};
    }

private:
    static constexpr int kWindow = 15;
    static constexpr int kGzipHeader = 16;

    z_stream m_stream{};
    bool m_isOpen = false;
};

#if defined(LUMOPLOT_HAVE_ZSTD)
class TZstandard final : public TDecompressor {
public:
    TZstandard() : m_stream(ZSTD_createDStream()) {}
    ~TZstandard() override { ZSTD_freeDStream(m_stream); }
    TZstandard(const TZstandard&) = delete;
    TZstandard& operator=(const TZstandard&) = delete;

    void Restart() override { ZSTD_initDStream(m_stream); }
    TStep Step(const char* input, std::size_t size, char* output, std::size_t capacity) override {
        ZSTD_inBuffer in{input, size, 0};
        ZSTD_outBuffer out{output, capacity, 0};
        const std::size_t result = ZSTD_decompressStream(m_stream, &out, &in);
        return {in.pos, out.pos, ZSTD_isError(result) != 0, result == 0};
    }

private:
    ZSTD_DStream* m_stream;
};
#else
/// Stands for it in a build without that library.
class TZstandard final : public TDecompressor {
public:
    void Restart() override {}
    TStep Step(const char*, std::size_t, char*, std::size_t) override { return {.isWrong = true}; }
};
#endif

std::unique_ptr<TDecompressor> DecompressorFor(const QByteArray& firstBytes) {
    if (firstBytes.startsWith("\x1F\x8B\x08")) return std::make_unique<TGzip>();
    if (firstBytes.startsWith("\x28\xB5\x2F\xFD")) return std::make_unique<TZstandard>();
    return nullptr;
}

} // namespace

TCompressedFile::TCompressedFile(std::unique_ptr<QFile> file, std::unique_ptr<TDecompressor> decompressor)
    : m_file(std::move(file)), m_decompressor(std::move(decompressor)), m_input(kInputSize) {
    QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

std::unique_ptr<TCompressedFile> TCompressedFile::Open(std::unique_ptr<QFile>& file) {
    auto decompressor = DecompressorFor(file->peek(4));
    if (!decompressor) return nullptr;
    return std::unique_ptr<TCompressedFile>(new TCompressedFile(std::move(file), std::move(decompressor)));
}

bool TCompressedFile::seek(qint64 position) {
    if (!m_file->seek(0)) return false;
    m_decompressor->Restart();
    m_begin = m_end = 0;
    m_isBetween = true;
    m_isAtEnd = false;
    char skipped[256];
    while (position > 0) {
        const qint64 count = readData(skipped, std::min<qint64>(position, sizeof skipped));
        if (count <= 0) return false;
        position -= count;
    }
    return true;
}

qint64 TCompressedFile::readData(char* data, qint64 capacity) {
    while (!m_isAtEnd) {
        if (m_begin == m_end) {
            const qint64 count = m_file->read(m_input.data(), static_cast<qint64>(m_input.size()));
            if (count < 0) setErrorString(m_file->errorString());
            if (count < 0) return -1;
            m_begin = 0;
            m_end = static_cast<std::size_t>(count);
            if (count == 0 && !m_isBetween) {
                setErrorString(QStringLiteral("its compressed data end early"));
                return -1;
            }
            if (count == 0) break;
        }
        const auto step = m_decompressor->Step(m_input.data() + m_begin, m_end - m_begin, data,
                                               static_cast<std::size_t>(capacity));
        // What follows the compressed data is padding.
        if (step.isWrong && m_isBetween && step.given == 0 && m_file->pos() > static_cast<qint64>(m_end))
            break;
        if (step.isWrong) {
            setErrorString(QStringLiteral("its compressed data are damaged"));
            return -1;
        }
        m_begin += step.taken;
        m_isBetween = step.isWhole;
        if (step.given > 0) return static_cast<qint64>(step.given);
    }
    m_isAtEnd = true;
    return 0;
}

} // namespace lumoplot
