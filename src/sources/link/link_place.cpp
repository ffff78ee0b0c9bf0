#include "sources/link/link_place.h"

#include "sources/link/dde_setup.h"
#include "support/errors.h"

#include <charconv>
#include <optional>
#include <string_view>

namespace lumoplot {
namespace {

constexpr std::string_view kTcp = "tcp://";
constexpr std::string_view kListen = "tcp-listen://";
constexpr std::string_view kSerial = "serial:";
constexpr std::string_view kPipe = "pipe:";
constexpr std::string_view kDde = "dde:";
constexpr std::string_view kDdeWarm = "dde-warm:";
constexpr int kLastPort = 65535;

std::optional<int> NumberUpTo(std::string_view text, int most) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && value > 0 && value <= most ? std::optional(value) : std::nullopt;
}

[[noreturn]] void Refuse(std::string_view text, const std::string& what) {
    throw EFileError("'" + std::string(text) + "' names no " + what);
}

// "HOST:PORT", "[ADDRESS]:PORT".
TLinkPlace TcpPlace(TLinkKind kind, std::string_view address, std::string_view text) {
    const std::size_t colon = address.rfind(':');
    const auto port =
        colon == std::string_view::npos ? std::nullopt : NumberUpTo(address.substr(colon + 1), kLastPort);
    if (!port) Refuse(text, "port between 1 and 65535: write host:port");
    std::string_view host = address.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
    if (host.empty() && kind == TLinkKind::Tcp) Refuse(text, "host: write host:port");
    return {kind, std::string(host), *port};
}

TLinkPlace SerialPlace(std::string_view line, std::string_view text) {
    const std::size_t at = line.rfind('@');
    const auto rate = at == std::string_view::npos ? std::optional(kUsualBitRate)
                                                   : NumberUpTo(line.substr(at + 1), 100'000'000);
    if (!rate) Refuse(text, "rate in bits per second: write serial:NAME@9600");
    if (at == 0 || line.empty()) Refuse(text, "serial line: write serial:NAME@9600");
    return {TLinkKind::Serial, std::string(line.substr(0, at)), *rate};
}

TLinkPlace DdePlace(TLinkKind kind, std::string_view address, std::string_view text) {
    if (!ParseDde(address)) Refuse(text, "item of another program: write dde:SERVICE|TOPIC!ITEM");
    return {kind, std::string(address), 0};
}

std::string InBrackets(const std::string& host) {
    return host.find(':') == std::string::npos ? host : "[" + host + "]";
}

} // namespace

TLinkPlace ParseLink(const std::string& text) {
    const std::string_view view = text;
    if (view.empty()) throw EFileError("There is nothing to follow: name a file, a pipe or a line");
    if (view == "-") return {TLinkKind::StandardInput, {}, 0};
    if (view.starts_with(kTcp)) return TcpPlace(TLinkKind::Tcp, view.substr(kTcp.size()), view);
    if (view.starts_with(kListen)) return TcpPlace(TLinkKind::TcpListen, view.substr(kListen.size()), view);
    if (view.starts_with(kSerial)) return SerialPlace(view.substr(kSerial.size()), view);
    if (view.starts_with(kDde)) return DdePlace(TLinkKind::Dde, view.substr(kDde.size()), view);
    if (view.starts_with(kDdeWarm)) return DdePlace(TLinkKind::DdeWarm, view.substr(kDdeWarm.size()), view);
    if (!view.starts_with(kPipe)) return {TLinkKind::File, text, 0};
    if (view.size() == kPipe.size()) Refuse(view, "pipe: write pipe:NAME");
    return {TLinkKind::Pipe, text.substr(kPipe.size()), 0};
}

bool IsLine(const std::string& text) {
    return text == "-" || text.starts_with(kTcp) || text.starts_with(kListen) || text.starts_with(kSerial) ||
           text.starts_with(kPipe) || text.starts_with(kDde) || text.starts_with(kDdeWarm);
}

std::string LinkText(const TLinkPlace& place) {
    const std::string number = std::to_string(place.number);
    switch (place.kind) {
    case TLinkKind::StandardInput: return "-";
    case TLinkKind::Tcp: return std::string(kTcp) + InBrackets(place.name) + ":" + number;
    case TLinkKind::TcpListen: return std::string(kListen) + InBrackets(place.name) + ":" + number;
    case TLinkKind::Serial: return std::string(kSerial) + place.name + "@" + number;
    case TLinkKind::Pipe: return std::string(kPipe) + place.name;
    case TLinkKind::Dde: return std::string(kDde) + place.name;
    case TLinkKind::DdeWarm: return std::string(kDdeWarm) + place.name;
    case TLinkKind::File: break;
    }
    return place.name;
}

std::string LinkName(const TLinkPlace& place) {
    if (place.kind == TLinkKind::StandardInput) return "the standard input";
    if (place.kind != TLinkKind::File && place.kind != TLinkKind::Pipe) return LinkText(place);
    const std::size_t slash = place.name.find_last_of("/\\");
    return slash == std::string::npos ? place.name : place.name.substr(slash + 1);
}

} // namespace lumoplot
