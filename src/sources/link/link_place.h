// What a link follows, as the user writes it in one line: a file, a named pipe, the standard input, a TCP
// line or a serial line.
#pragma once

#include "support/export.h"

#include <string>

namespace lumoplot {

enum class TLinkKind { File, Pipe, StandardInput, Tcp, TcpListen, Serial };

/// What it reads from has no file whose rows can be read again.
struct TLinkPlace {
    TLinkKind kind = TLinkKind::File;
    std::string name; ///< of the file, the pipe or the serial line, or the host; empty for the standard input
    int number = 0;   ///< TCP port, or bits in a second of a serial line

    bool CanBeReadAgain() const { return kind == TLinkKind::File; }
    bool operator==(const TLinkPlace&) const = default;
};

inline constexpr int kUsualBitRate = 9600;

/// "-" is the standard input, "tcp://HOST:PORT" a server that is called, "tcp-listen://[ADDRESS]:PORT" a line
/// that others call (from this machine alone while no address is named), "serial:NAME[@RATE]" a serial line,
/// "pipe:NAME" a named pipe; anything else is a file. An IPv6 address stands in brackets. Throws EFileError
/// "'TEXT' names no …" for a port or a rate that is none, and for a name that is missing.
XYGRAPH_EXPORT TLinkPlace ParseLink(const std::string& text);

/// Something that is followed and is no file.
XYGRAPH_EXPORT bool IsLine(const std::string& text);

/// As ParseLink reads it.
XYGRAPH_EXPORT std::string LinkText(const TLinkPlace& place);

/// For messages: "log.csv", "tcp://host:5000", "the standard input".
XYGRAPH_EXPORT std::string LinkName(const TLinkPlace& place);

} // namespace lumoplot
