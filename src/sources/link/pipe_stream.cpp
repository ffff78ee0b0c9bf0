#include "sources/link/byte_pipe.h"
#include "sources/link/link_stream.h"

#include <optional>

namespace lumoplot {
namespace {

// The standard input ends once; a pipe waits for the next who writes.
class TPipeStream final : public TLinkStream {
public:
    explicit TPipeStream(const std::string& name) : m_name(name) {}

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        if (m_hasEnded) return TLinkEvent::Ended;
        if (!m_pipe) m_pipe.emplace(m_name);
        const std::size_t before = bytes.size();
        bytes.resize(before + most);
        std::optional<std::size_t> count = 0;
        try {
            count = m_pipe->Read(bytes.data() + before, most);
        } catch (...) {
            bytes.resize(before);
            m_pipe.reset();
            throw;
        }
        bytes.resize(before + count.value_or(0));
        if (count) return *count > 0 ? TLinkEvent::Bytes : TLinkEvent::Nothing;
        m_hasEnded = m_name.empty();
        m_pipe.reset();
        return m_hasEnded ? TLinkEvent::Ended : TLinkEvent::Cut;
    }

private:
    std::string m_name;
    std::optional<TBytePipe> m_pipe;
    bool m_hasEnded = false;
};

} // namespace

std::unique_ptr<TLinkStream> MakePipeStream(const TLinkPlace& place) {
    return std::make_unique<TPipeStream>(place.name);
}

} // namespace lumoplot
