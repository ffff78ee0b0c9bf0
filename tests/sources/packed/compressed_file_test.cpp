#include "common/thrown_text.h"
#include "sources/packed/deflated.h"
#include "sources/text/text_fixture.h"

#if __has_include(<zstd.h>)
#include <zstd.h>
#endif

namespace lumoplot {
namespace {

class CompressedText : public TTextFiles {};

using TCompress = std::string (*)(const std::string&);

std::string Gzip(const std::string& text) {
    return Deflated(text, 15 + 16);
}

#if __has_include(<zstd.h>)
// With a checksum, without which damage may go unseen.
std::string Zstandard(const std::string& text) {
    ZSTD_CCtx* context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    std::string packed(ZSTD_compressBound(text.size()), '\0');
    packed.resize(ZSTD_compress2(context, packed.data(), packed.size(), text.data(), text.size()));
    ZSTD_freeCCtx(context);
    return packed;
}

constexpr TCompress kCompressions[] = {&Gzip, &Zstandard};
#else
constexpr TCompress kCompressions[] = {&Gzip};
#endif

std::string RowsOfText(int count) {
    std::string text = "t;v\n";
    for (int i = 0; i < count; ++i)
        text += std::to_string(i) + ";" + std::to_string(i * 7919 % 1000) + ",5\n";
    return text;
}

TEST_F(CompressedText, IsReadAsWhatIsInIt) {
    const std::string text = RowsOfText(50000);
    LoadThis(text);
    const TPoints plain = points;
    for (const TCompress compress : kCompressions) {
        EXPECT_EQ(LoadThis(compress(text)).yName, "v");
        EXPECT_EQ(points, plain);
        // Parts that were compressed one by one are one text.
        const std::size_t middle = text.find('\n', text.size() / 2) + 1;
        LoadThis(compress(text.substr(0, middle)) + compress(text.substr(middle)));
        EXPECT_EQ(points, plain);
    }
}

TEST_F(CompressedText, ThatEndsEarlyOrIsDamagedIsRefused) {
    const std::string text = RowsOfText(50000);
    for (const TCompress compress : kCompressions) {
        const std::string packed = compress(text);
        for (const std::size_t kept : {std::size_t{5}, packed.size() / 2, packed.size() - 1}) {
            SCOPED_TRACE(kept);
            EXPECT_NE(ErrorOf(Write(packed.substr(0, kept))), "");
        }
        std::string damaged = packed;
        for (std::size_t i = damaged.size() / 2; i < damaged.size() / 2 + 64; ++i)
            damaged[i] = static_cast<char>(~damaged[i]);
        EXPECT_NE(ErrorOf(Write(damaged)).find("damaged"), std::string::npos) << ErrorOf(Write(damaged));
    }
}

// A megabyte that becomes half a gigabyte is neither held in memory nor waited for.
TEST_F(CompressedText, OfOneEndlessRowIsRefusedAtOnce) {
    const std::string part(std::size_t{1} << 26, '7');
    for (const TCompress compress : kCompressions) {
        std::string packed = compress("x,y\n1,2\n3,4\n");
        const std::string endless = compress(part);
        for (int i = 0; i < 8; ++i) packed += endless;
        EXPECT_EQ(ErrorOf(Write(packed)), "File data.txt: row 4 is longer than 4 MB");
    }
}

} // namespace
} // namespace lumoplot
