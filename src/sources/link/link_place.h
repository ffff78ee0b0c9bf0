// What a link follows, as the user writes it in one line: a file, a named pipe, the standard input, a TCP
// line, a serial line or what another Windows program offers by DDE.
#pragma once

#include "support/export.h"

#include <string>

namespace lumoplot {

enum class TLinkKind { File, Pipe, StandardInput, Tcp, TcpListen, Serial, Dde, DdeWarm };

struct TLinkPlace {
    TLinkKind kind = TLinkKind::File;
    std::string name; ///< of a file, pipe, line, host or DDE item; empty for the standard input
    int number = 0;   ///< TCP port, or bits in a second of a serial line

    bool IsDde() const { return kind == TLinkKind::Dde || kind == TLinkKind::DdeWarm; }
    /// What has come before can be had once more: a line does not keep it.
    bool CanBeReadAgain() const { return kind == TLinkKind::File || IsDde(); }
    bool operator==(const TLinkPlace&) const = default;
};

inline constexpr int kUsualBitRate = 9600;

/// "-" is the standard input, "tcp://HOST:PORT" a server that is called, "tcp-listen://[ADDRESS]:PORT" a line
/// that others call (from this machine alone while no address is named), "serial:NAME[@RATE]" a serial line,
/// "pipe:NAME" a named pipe, "dde:SERVICE|TOPIC!ITEM" an item whose text another program sends whenever it
/// changes (a hot link), "dde-warm:SERVICE|TOPIC!ITEM" one that is asked for when the other program says that
/// it has changed; anything else is a file. An IPv6 address stands in brackets. Throws EFileError
/// "'TEXT' names no …" for a port or a rate that is none, and for a name that is missing.
XYGRAPH_EXPORT TLinkPlace ParseLink(const std::string& text);

/// Something that is followed and is no file.
XYGRAPH_EXPORT bool IsLine(const std::string& text);

/// As ParseLink reads it.
XYGRAPH_EXPORT std::string LinkText(const TLinkPlace& place);

/// For messages: "log.csv", "tcp://host:5000", "the standard input".
XYGRAPH_EXPORT std::string LinkName(const TLinkPlace& place);

} // namespace lumoplot
