#include "sources/link/link_place.h"

#include "support/errors.h"

#include <gtest/gtest.h>

namespace lumoplot {
namespace {

struct TPlaceCase {
    const char* text;
    TLinkPlace place;
    const char* name; // for messages
};

const TPlaceCase kPlaces[] = {
    {"/var/log/run 1.csv", {TLinkKind::File, "/var/log/run 1.csv", 0}, "run 1.csv"},
    {R"(C:\data\a.txt)", {TLinkKind::File, R"(C:\data\a.txt)", 0}, "a.txt"},
    {"-", {TLinkKind::StandardInput, "", 0}, "the standard input"},
    {"pipe:/run/feed", {TLinkKind::Pipe, "/run/feed", 0}, "feed"},
    {"tcp://lab:5000", {TLinkKind::Tcp, "lab", 5000}, "tcp://lab:5000"},
    {"tcp://[::1]:5000", {TLinkKind::Tcp, "::1", 5000}, "tcp://[::1]:5000"},
    {"tcp-listen://:7", {TLinkKind::TcpListen, "", 7}, "tcp-listen://:7"},
    {"tcp-listen://0.0.0.0:7", {TLinkKind::TcpListen, "0.0.0.0", 7}, "tcp-listen://0.0.0.0:7"},
    {"serial:/dev/ttyUSB0@115200", {TLinkKind::Serial, "/dev/ttyUSB0", 115200}, "serial:/dev/ttyUSB0@115200"},
    {"dde:Lab|[run 1.xls]A!B!R1C1:R9C2",
     {TLinkKind::Dde, "Lab|[run 1.xls]A!B!R1C1:R9C2", 0},
     "dde:Lab|[run 1.xls]A!B!R1C1:R9C2"},
    {"dde-warm:Lab|data!table", {TLinkKind::DdeWarm, "Lab|data!table", 0}, "dde-warm:Lab|data!table"},
};

TEST(LinkPlace, TextsAreReadAndWritten) {
    for (const auto& [text, place, name] : kPlaces) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ParseLink(text), place);
        EXPECT_EQ(LinkText(place), text);
        EXPECT_EQ(LinkName(place), name);
    }
    EXPECT_EQ(ParseLink("serial:COM3").number, kUsualBitRate);
}

TEST(LinkPlace, WhatNamesNothingIsRefused) {
    for (const char* text : {"", "tcp://lab", "tcp://:5000", "tcp://lab:0", "tcp://lab:65536", "tcp://lab:5x",
                             "tcp-listen://", "serial:", "serial:@9600", "serial:COM3@fast",
                             "pipe:", "dde:Lab", "dde:Lab|data", "dde:Lab|!table", "dde-warm:Lab!data|table"})
        EXPECT_THROW(ParseLink(text), EFileError) << text;
}

} // namespace
} // namespace lumoplot
