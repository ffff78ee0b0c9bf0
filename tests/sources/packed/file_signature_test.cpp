#include "sources/packed/file_signature.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

using namespace std::string_view_literals;

TEST(FileSignature, MarkedUpAndWideTextIsNoTable) {
    constexpr std::pair<std::string_view, std::string_view> kCases[] = {
        {"{\"t\": 0, \"v\": 1.5}\n{\"t\": 1, \"v\": 2.5}\n", "JSON"},
        {"\xEF\xBB\xBF \n{ \"a\": [1] }", "JSON"},
        {"[\n  {\"t\": 0}]", "JSON"},
        {"[[0, 1], [2, 3]]", "JSON"},
        {"<?xml version=\"1.0\"?>", "marked up"},
        {"<!DOCTYPE html>", "marked up"},
        {"\xFF\xFE\0\0x\0\0\0"sv, "UTF-32"},
        {"\0\0\xFE\xFF\0\0\0x"sv, "UTF-32"},
        {"[Header]\nA=1\n", ""},
        {"[1] 2 3\n", ""},
        {"{1} 2\n", ""},
        {"<a>\n1 2\n", ""},
        {"\xFF\xFEx\0;\0"sv, ""},
    };
    for (const auto& [bytes, kind] : kCases) {
        const std::string found = KnownBinary(bytes);
        EXPECT_EQ(found.empty(), kind.empty()) << bytes;
        EXPECT_NE(found.find(kind), std::string::npos) << bytes;
    }
}

} // namespace
} // namespace lumoplot
