#include "sources/link/dde_setup.h"
#include "sources/link/link_stream.h"
#include "support/errors.h"

#if defined(_WIN32)
#include <QString>
#include <chrono>
#include <map>
#include <optional>
#include <windows.h>

#include <ddeml.h>
#endif

namespace lumoplot {

#if defined(_WIN32)
namespace {

constexpr auto kDdeAnswer = std::chrono::seconds(10);

// A name as the system knows it, for as long as the object lives.
class TDdeName {
public:
    TDdeName(DWORD instance, const std::string& name)
        : m_instance(instance),
          m_handle(DdeCreateStringHandleW(instance, QString::fromStdString(name).toStdWString().c_str(),
                                          CP_WINUNICODE)) {}
    ~TDdeName() { DdeFreeStringHandle(m_instance, m_handle); }
    TDdeName(const TDdeName&) = delete;
    TDdeName& operator=(const TDdeName&) = delete;

    HSZ Handle() const { return m_handle; }

private:
    DWORD m_instance;
    HSZ m_handle;
};

// Up to the zero that ends it, if there is one; nothing where there is no text.
std::optional<std::string> TextOfDde(HDDEDATA data) {
    DWORD size = 0;
    const auto* bytes = reinterpret_cast<const char*>(DdeAccessData(data, &size));
    if (!bytes) return std::nullopt;
    std::string text(bytes, size);
    DdeUnaccessData(data);
    return text.substr(0, text.find('\0'));
}

// This process's part of all conversations. Messages of the event loop bring the answers, so that nothing
// waits; it ends with what is given to it.
class TDdeInstance {
public:
    explicit TDdeInstance(PFNCALLBACK callback) {
        if (DdeInitializeW(&m_id, callback, APPCMD_CLIENTONLY, 0) != DMLERR_NO_ERROR)
            throw EFileError("This system can not talk to other programs by DDE");
    }
    ~TDdeInstance() { DdeUninitialize(m_id); }
    TDdeInstance(const TDdeInstance&) = delete;
    TDdeInstance& operator=(const TDdeInstance&) = delete;

    DWORD Id() const { return m_id; }

private:
    DWORD m_id = 0;
};

// A conversation with the other program: asks for the item once and to be told of its changes.
class TDdeTalk {
public:
    TDdeTalk(const TDdeSetup& setup, bool isWarm)
        : m_name(setup.service + "|" + setup.topic), m_itemName(setup.item), m_instance(&TDdeTalk::Called),
          m_item(m_instance.Id(), setup.item) {
        const TDdeName service(m_instance.Id(), setup.service), topic(m_instance.Id(), setup.topic);
        m_talk = DdeConnect(m_instance.Id(), service.Handle(), topic.Handle(), nullptr);
        if (!m_talk) throw EFileError("No program answers to " + m_name);
        Talks()[m_talk] = this;
        m_isAsked = true;
        Begin(TAwaited::Advice, static_cast<UINT>(XTYP_ADVSTART) | (isWarm ? UINT{XTYPF_NODATA} : 0));
    }
    ~TDdeTalk() {
        Talks().erase(m_talk);
        DdeDisconnect(m_talk);
    }
    TDdeTalk(const TDdeTalk&) = delete;
    TDdeTalk& operator=(const TDdeTalk&) = delete;

    /// Asks for the value when it has changed. Throws EFileError when the other program has gone or refuses.
    void GoOn() {
        if (!m_trouble.empty()) throw EFileError(m_trouble);
        if (!IsConnected()) throw EFileError(m_name + " has ended the conversation");
        const bool isWaiting = m_awaited != TAwaited::Nothing;
        if (isWaiting && TClock::now() - m_since > kDdeAnswer) throw EFileError(m_name + " does not answer");
        if (!m_isAsked || isWaiting) return;
        m_isAsked = false;
        Begin(TAwaited::Value, XTYP_REQUEST);
    }
    /// The newest value, once.
    std::optional<std::string> TakeValue() { return std::exchange(m_value, std::nullopt); }

private:
    using TClock = std::chrono::steady_clock;
    enum class TAwaited { Nothing, Advice, Value };

    static std::map<HCONV, TDdeTalk*>& Talks() {
        static std::map<HCONV, TDdeTalk*> talks;
        return talks;
    }

    static HDDEDATA CALLBACK Called(UINT type, UINT, HCONV talk, HSZ, HSZ, HDDEDATA data, ULONG_PTR,
                                    ULONG_PTR) {
        const auto found = Talks().find(talk);
        if (found == Talks().end()) return nullptr;
        TDdeTalk& self = *found->second;
        if (type == XTYP_ADVDATA) return self.Told(data);
        if (type == XTYP_XACT_COMPLETE) self.Answered(data);
        return nullptr;
    }

    HDDEDATA Told(HDDEDATA data) {
        if (!data) m_isAsked = true;
        if (data) m_value = TextOfDde(data);
        if (data && m_awaited == TAwaited::Value) m_awaited = TAwaited::Nothing;
        return reinterpret_cast<HDDEDATA>(DDE_FACK);
    }

    // One question waits at a time. A value that was asked for may come as if it were a change, with no
    // answer or an empty one behind it.
    void Answered(HDDEDATA data) {
        const TAwaited answered = std::exchange(m_awaited, TAwaited::Nothing);
        if (!data && answered == TAwaited::Advice)
            m_trouble = m_name + " does not tell of changes of " + m_itemName;
        if (!data && answered == TAwaited::Value) m_trouble = m_name + " has no text " + m_itemName;
        if (data && answered == TAwaited::Value) m_value = TextOfDde(data);
    }

    // Not every program says good-bye.
    bool IsConnected() const {
        CONVINFO info = {};
        info.cb = sizeof info;
        return DdeQueryConvInfo(m_talk, static_cast<DWORD>(QID_SYNC), &info) != 0 &&
               (info.wStatus & ST_CONNECTED) != 0;
    }

    void Begin(TAwaited awaited, UINT type) {
        m_awaited = awaited;
        m_since = TClock::now();
        DWORD transaction = 0;
        if (!DdeClientTransaction(nullptr, 0, m_talk, m_item.Handle(), CF_TEXT, type, TIMEOUT_ASYNC,
                                  &transaction))
            m_trouble = m_name + " takes no questions";
    }

    std::string m_name;
    std::string m_itemName;
    TDdeInstance m_instance;
    TDdeName m_item;
    HCONV m_talk = nullptr;
    TAwaited m_awaited = TAwaited::Nothing;
    TClock::time_point m_since;
    bool m_isAsked = false; ///< the value is to be asked for
    std::optional<std::string> m_value;
    std::string m_trouble;
};

// Each value takes the place of the one before it.
class TDdeStream final : public TLinkStream {
public:
    explicit TDdeStream(const TLinkPlace& place)
        : m_setup(ParseDde(place.name).value_or(TDdeSetup())), m_isWarm(place.kind == TLinkKind::DdeWarm) {}

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        if (m_position < m_text.size()) return Give(bytes, most);
        try {
            if (!m_talk) m_talk.emplace(m_setup, m_isWarm);
            m_talk->GoOn();
        } catch (...) {
            m_talk.reset();
            throw;
        }
        std::optional<std::string> value = m_talk->TakeValue();
        if (!value) return TLinkEvent::Nothing;
        m_text = std::move(*value);
        if (!m_text.empty() && m_text.back() != '\n') m_text += '\n';
        m_position = 0;
        return TLinkEvent::StartsAnew;
    }

private:
    TLinkEvent Give(std::string& bytes, std::size_t most) {
        const std::size_t before = bytes.size();
        bytes.append(m_text, m_position, most);
        m_position += bytes.size() - before;
        return TLinkEvent::Bytes;
    }

    TDdeSetup m_setup;
    bool m_isWarm;
    std::optional<TDdeTalk> m_talk;
    std::string m_text; ///< a value, of which what lies behind m_position has not been given yet
    std::size_t m_position = 0;
};

} // namespace

std::unique_ptr<TLinkStream> MakeDdeStream(const TLinkPlace& place) {
    return std::make_unique<TDdeStream>(place);
}
#else
std::unique_ptr<TLinkStream> MakeDdeStream(const TLinkPlace& place) {
    throw EFileError(LinkText(place) +
                     ": DDE links lead to other programs of Windows, and this system is none");
}
#endif

} // namespace lumoplot
