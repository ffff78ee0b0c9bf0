#include "sources/link/link_stream.h"
#include "support/errors.h"

#if defined(LUMOPLOT_HAVE_Network)
#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#endif

namespace lumoplot {

#if defined(LUMOPLOT_HAVE_Network)
namespace {

constexpr qint64 kReadAhead = 4 << 20; // what the system and we hold before who sends has to wait
constexpr qint64 kAnswerMs = 10'000;

TLinkEvent ReadSocket(QTcpSocket& socket, std::string& bytes, std::size_t most) {
    const QByteArray more = socket.read(static_cast<qint64>(most));
    bytes.append(more.constData(), static_cast<std::size_t>(more.size()));
    return more.isEmpty() ? TLinkEvent::Nothing : TLinkEvent::Bytes;
}

// Calls a server.
class TTcpCall final : public TLinkStream {
public:
    explicit TTcpCall(const TLinkPlace& place) : m_place(place) { m_socket.setReadBufferSize(kReadAhead); }

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        if (m_socket.bytesAvailable() > 0) return ReadSocket(m_socket, bytes, most);
        if (m_socket.state() == QAbstractSocket::ConnectedState) return TLinkEvent::Nothing;
        if (m_isCalling && m_socket.state() == QAbstractSocket::UnconnectedState)
            GiveUp(m_socket.errorString().toStdString());
        if (m_isCalling && m_since.elapsed() > kAnswerMs) GiveUp("it does not answer");
        if (!m_isCalling) Call();
        return TLinkEvent::Nothing;
    }

private:
    void Call() {
        m_isCalling = true;
        m_since.start();
        m_socket.connectToHost(QString::fromStdString(m_place.name), static_cast<quint16>(m_place.number),
                               QIODevice::ReadOnly);
    }
    [[noreturn]] void GiveUp(const std::string& reason) {
        m_isCalling = false;
        m_socket.abort();
        throw EFileError(LinkText(m_place) + ": " + reason);
    }

    TLinkPlace m_place;
    QTcpSocket m_socket;
    QElapsedTimer m_since;
    bool m_isCalling = false;
};

// Is called; those who call are heard one after the other, so that their lines do not mix.
class TTcpListener final : public TLinkStream {
public:
    explicit TTcpListener(const TLinkPlace& place) : m_place(place) {}

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        if (!m_server.isListening()) Listen();
        if (!m_caller) {
            m_caller.reset(m_server.nextPendingConnection());
            if (!m_caller) return TLinkEvent::Nothing;
            m_caller->setReadBufferSize(kReadAhead);
        }
        if (m_caller->bytesAvailable() > 0) return ReadSocket(*m_caller, bytes, most);
        if (m_caller->state() == QAbstractSocket::ConnectedState) return TLinkEvent::Nothing;
        m_caller.reset();
        return TLinkEvent::Cut;
    }

private:
    void Listen() {
        const QHostAddress address = m_place.name.empty()
                                         ? QHostAddress(QHostAddress::LocalHost)
                                         : QHostAddress(QString::fromStdString(m_place.name));
        if (address.isNull()) throw EFileError(LinkText(m_place) + ": there is no such address");
        if (!m_server.listen(address, static_cast<quint16>(m_place.number)))
            throw EFileError(LinkText(m_place) + ": " + m_server.errorString().toStdString());
    }

    TLinkPlace m_place;
    QTcpServer m_server;
    std::unique_ptr<QTcpSocket> m_caller; ///< goes before the server, whose child it is
};

} // namespace

std::unique_ptr<TLinkStream> MakeTcpStream(const TLinkPlace& place) {
    if (place.kind == TLinkKind::TcpListen) return std::make_unique<TTcpListener>(place);
    return std::make_unique<TTcpCall>(place);
}
#else
std::unique_ptr<TLinkStream> MakeTcpStream(const TLinkPlace& place) {
    throw EFileError(LinkText(place) +
                     ": this program was built without network lines (Debian: libqt6network6)");
}
#endif

} // namespace lumoplot
