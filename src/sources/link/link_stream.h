// The bytes of what a link follows. A stream is asked again and again and never waits; when it breaks it can
// be asked again later and begins anew where it can.
#pragma once

#include "sources/link/link_place.h"

#include <cstddef>
#include <memory>
#include <string>

namespace lumoplot {

enum class TLinkEvent {
    Nothing,    ///< new; more may come
    Bytes,      ///< some were appended
    StartsAnew, ///< what came before is void: another file has the name now
    Cut,        ///< who wrote has gone; a line that it has not ended will not go on
    Ended       ///< nothing more will come
};

class TLinkStream {
public:
    TLinkStream() = default;
    virtual ~TLinkStream() = default;
    TLinkStream(const TLinkStream&) = delete;
    TLinkStream& operator=(const TLinkStream&) = delete;

    /// Appends at most `most` bytes of what has come. Throws EFileError while there is nothing to read from;
    /// the next call tries again.
    virtual TLinkEvent Read(std::string& bytes, std::size_t most) = 0;
};

/// Opens nothing yet. Throws EFileError "… is not in this build: install …" where a library is missing.
std::unique_ptr<TLinkStream> MakeLinkStream(const TLinkPlace& place);

// One function a kind, which MakeLinkStream chooses from.
std::unique_ptr<TLinkStream> MakeFileStream(const TLinkPlace& place);
std::unique_ptr<TLinkStream> MakePipeStream(const TLinkPlace& place);
std::unique_ptr<TLinkStream> MakeTcpStream(const TLinkPlace& place);
std::unique_ptr<TLinkStream> MakeSerialStream(const TLinkPlace& place);
std::unique_ptr<TLinkStream> MakeDdeStream(const TLinkPlace& place);

} // namespace lumoplot
