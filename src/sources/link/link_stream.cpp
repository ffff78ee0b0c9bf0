#include "sources/link/link_stream.h"

namespace lumoplot {

std::unique_ptr<TLinkStream> MakeLinkStream(const TLinkPlace& place) {
    switch (place.kind) {
    case TLinkKind::Pipe:
    case TLinkKind::StandardInput: return MakePipeStream(place);
    case TLinkKind::Tcp:
    case TLinkKind::TcpListen: return MakeTcpStream(place);
    case TLinkKind::Serial: return MakeSerialStream(place);
    case TLinkKind::Dde:
    case TLinkKind::DdeWarm: return MakeDdeStream(place);
    case TLinkKind::File: break;
    }
    return MakeFileStream(place);
}

} // namespace lumoplot
