#include "sources/link/link_stream.h"
#include "support/errors.h"

#if defined(LUMOPLOT_HAVE_SerialPort)
#include <QSerialPort>
#endif

namespace lumoplot {

#if defined(LUMOPLOT_HAVE_SerialPort)
namespace {

class TSerialStream final : public TLinkStream {
public:
    explicit TSerialStream(const TLinkPlace& place) : m_place(place) {
        m_port.setPortName(QString::fromStdString(place.name));
        m_port.setBaudRate(place.number);
    }

    TLinkEvent Read(std::string& bytes, std::size_t most) override {
        if (!m_port.isOpen() && !m_port.open(QIODevice::ReadOnly)) GiveUp();
        const QByteArray more = m_port.read(static_cast<qint64>(most));
        bytes.append(more.constData(), static_cast<std::size_t>(more.size()));
        if (!more.isEmpty()) return TLinkEvent::Bytes;
        const auto error = m_port.error();
        if (error != QSerialPort::NoError && error != QSerialPort::TimeoutError) GiveUp();
        return TLinkEvent::Nothing;
    }

private:
    [[noreturn]] void GiveUp() {
        const std::string reason = m_port.errorString().toStdString();
        m_port.close();
        m_port.clearError();
        throw EFileError("Serial line " + m_place.name + ": " + reason);
    }

    TLinkPlace m_place;
    QSerialPort m_port;
};

} // namespace

std::unique_ptr<TLinkStream> MakeSerialStream(const TLinkPlace& place) {
    return std::make_unique<TSerialStream>(place);
}
#else
std::unique_ptr<TLinkStream> MakeSerialStream(const TLinkPlace& place) {
    throw EFileError("Serial line " + place.name +
                     ": this program was built without serial lines (Debian: libqt6serialport6-dev)");
}
#endif

} // namespace lumoplot
