// Files that tests pack themselves.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <zlib.h>

namespace lumoplot {

/// By zlib with that window: 15 + 16 for gzip, -15 for what a zip archive holds.
inline std::string Deflated(std::string text, int windowBits) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, text.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

} // namespace lumoplot
