// The XML in a file of a spreadsheet's archive, token by token while it is unpacked. Elements and attributes
// are told by their names without the namespace. Errors are EFileError with reasons that stand behind "File
// NAME".
#pragma once

#include "sources/packed/zip_archive.h"

#include <QXmlStreamReader>
#include <memory>
#include <string>

namespace lumoplot {

class TXmlPart {
public:
    /// One token, and the text of a cell out of many, is at most that long.
    static constexpr std::int64_t kMostToken = 16 << 20;
    /// Puts more of a cell behind its text. Throws "holds a cell of more than 16 MB".
    static void Append(std::string& text, std::string_view more);

    /// Throws "is damaged: it has no NAME" and as TZipArchive::Open.
    TXmlPart(const TZipArchive& archive, const std::string& name);
    ~TXmlPart();
    TXmlPart(const TXmlPart&) = delete;
    TXmlPart& operator=(const TXmlPart&) = delete;

    /// Goes on to the next token. Throws "is damaged: …", also for a document type, which no sheet has.
    QXmlStreamReader::TokenType Next();
    bool IsAtEnd() const { return m_reader.atEnd(); }
    bool IsStart() const { return m_reader.isStartElement(); }
    bool IsEnd() const { return m_reader.isEndElement(); }
    QStringView Name() const { return m_reader.name(); }
    QStringView Namespace() const { return m_reader.namespaceUri(); }
    std::string Text() const { return m_reader.text().toUtf8().toStdString(); }
    /// Empty without it.
    std::string Attribute(QLatin1String name) const;
    /// The whole number, or `other` where there is none of 0 to 2^31 - 1.
    std::int64_t Number(QLatin1String name, std::int64_t other) const;
    /// Everything in the element that has begun, markup left out, up to its end.
    std::string ElementText();
    void SkipElement();

    std::int64_t Unpacked() const;

private:
    class TMeter;

    std::unique_ptr<TMeter> m_meter;
    QXmlStreamReader m_reader;
};

} // namespace lumoplot
