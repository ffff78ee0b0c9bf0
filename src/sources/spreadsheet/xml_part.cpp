#include "sources/spreadsheet/xml_part.h"

#include "support/errors.h"

namespace lumoplot {
namespace {

constexpr const char* kLongCell = "holds a cell of more than 16 MB";

} // namespace

/// Counts what is read of the part, and what of it since the last token.
class TXmlPart::TMeter final : public QIODevice {
public:
    explicit TMeter(std::unique_ptr<QIODevice> part) : m_part(std::move(part)) {
        QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    void BeginToken() { m_ofToken = 0; }
    std::int64_t Count() const { return m_count; }
    const std::string& Problem() const { return m_problem; }

protected:
    qint64 readData(char* data, qint64 capacity) override {
        if (!m_problem.empty()) return -1;
        const qint64 count = m_part->read(data, capacity);
        if (count < 0) m_problem = m_part->errorString().toStdString();
        m_count += std::max<qint64>(count, 0);
        m_ofToken += std::max<qint64>(count, 0);
        if (m_ofToken > kMostToken) m_problem = kLongCell;
        return m_problem.empty() ? count : -1;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::unique_ptr<QIODevice> m_part;
    std::string m_problem;
    std::int64_t m_count = 0;
    std::int64_t m_ofToken = 0;
};

namespace {

const TZipEntry& EntryOf(const TZipArchive& archive, const std::string& name) {
    const TZipEntry* entry = archive.Find(name);
    if (!entry) throw EFileError("is damaged: it has no " + name);
    return *entry;
}

} // namespace

TXmlPart::TXmlPart(const TZipArchive& archive, const std::string& name)
    : m_meter(std::make_unique<TMeter>(archive.Open(EntryOf(archive, name)))), m_reader(m_meter.get()) {
}

TXmlPart::~TXmlPart() = default;

QXmlStreamReader::TokenType TXmlPart::Next() {
    m_meter->BeginToken();
    const auto token = m_reader.readNext();
    if (token == QXmlStreamReader::DTD) throw EFileError("is damaged: a sheet with a document type");
    if (token != QXmlStreamReader::Invalid) return token;
    if (!m_meter->Problem().empty()) throw EFileError(m_meter->Problem());
    throw EFileError("is damaged: " + m_reader.errorString().toStdString());
}

std::string TXmlPart::Attribute(QLatin1String name) const {
    const QXmlStreamAttributes attributes = m_reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes)
        if (attribute.name() == name) return attribute.value().toUtf8().toStdString();
    return {};
}

std::int64_t TXmlPart::Number(QLatin1String name, std::int64_t other) const {
    const std::string text = Attribute(name);
    bool isNumber = false;
    const int number = QByteArrayView(text).toInt(&isNumber);
    return isNumber && number >= 0 ? number : other;
}

void TXmlPart::Append(std::string& text, std::string_view more) {
    if (text.size() + more.size() > kMostToken) throw EFileError(kLongCell);
    text += more;
}

std::string TXmlPart::ElementText() {
    std::string text;
    for (int depth = 1; depth > 0;) {
        const auto token = Next();
        if (token == QXmlStreamReader::StartElement) ++depth;
        if (token == QXmlStreamReader::EndElement) --depth;
        if (token == QXmlStreamReader::Characters) Append(text, Text());
    }
    return text;
}

void TXmlPart::SkipElement() {
    for (int depth = 1; depth > 0;) {
        const auto token = Next();
        if (token == QXmlStreamReader::StartElement) ++depth;
        if (token == QXmlStreamReader::EndElement) --depth;
    }
}

std::int64_t TXmlPart::Unpacked() const {
    return m_meter->Count();
}

} // namespace lumoplot
