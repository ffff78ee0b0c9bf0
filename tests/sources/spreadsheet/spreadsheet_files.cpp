#include "sources/spreadsheet/spreadsheet_files.h"

#include "sources/packed/deflated.h"

#include <cstdint>

namespace lumoplot {
namespace {

std::string Bytes(std::uint64_t number, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

// What the entry and its line in the directory have in common.
std::string Description(const std::string& name, const std::string& text, const std::string& packed) {
    const uLong checksum = crc32(crc32(0, nullptr, 0), reinterpret_cast<const Bytef*>(text.data()),
                                 static_cast<uInt>(text.size()));
    return Bytes(20, 2) + Bytes(0, 2) + Bytes(8, 2) + Bytes(0, 4) + Bytes(checksum, 4) +
           Bytes(packed.size(), 4) + Bytes(text.size(), 4) + Bytes(name.size(), 2) + Bytes(0, 2);
}

constexpr const char* kRelations = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
                                   "relationships\">";
constexpr const char* kType = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string Relation(const std::string& id, const std::string& type, const std::string& target) {
    return "<Relationship Id=\"" + id + "\" Type=\"" + kType + type + "\" Target=\"" + target + "\"/>";
}

} // namespace

std::string Zip(const TZipParts& parts) {
    std::string archive;
    std::string directory;
    for (const auto& [name, text] : parts) {
        const std::string packed = Deflated(text, -15);
        const std::string description = Description(name, text, packed);
        directory += "PK\1\2" + Bytes(20, 2) + description + Bytes(0, 2) + Bytes(0, 2) + Bytes(0, 2) +
                     Bytes(0, 4) + Bytes(archive.size(), 4) + name;
        archive += "PK\3\4" + description + name + packed;
    }
    const std::size_t place = archive.size();
    return archive + directory + "PK\5\6" + Bytes(0, 4) + Bytes(parts.size(), 2) + Bytes(parts.size(), 2) +
           Bytes(directory.size(), 4) + Bytes(place, 4) + Bytes(0, 2);
}

TZipParts XlsxParts(const std::vector<TSheetXml>& sheets, const std::string& texts, const std::string& styles,
                    const std::string& properties) {
    const std::string main = "xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
    std::string list;
    std::string relations =
        Relation("t", "sharedStrings", "/xl/sharedStrings.xml") + Relation("s", "styles", "styles.xml");
    TZipParts parts = {{"_rels/.rels", kRelations + Relation("r", "officeDocument", "xl/workbook.xml") +
                                           "</Relationships>"}};
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        const std::string id = std::to_string(i + 1);
        list += "<sheet name=\"" + sheets[i].name + "\" sheetId=\"" + id + "\" r:id=\"r" + id + "\" " +
                sheets[i].attributes + "/>";
        relations += Relation("r" + id, "worksheet", "worksheets/sheet" + id + ".xml");
        parts.emplace_back("xl/worksheets/sheet" + id + ".xml", "<worksheet " + main + "><sheetData>" +
                                                                    sheets[i].rows +
                                                                    "</sheetData></worksheet>");
    }
    parts.emplace_back(
        "xl/workbook.xml",
        "<workbook " + main +
            " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">" + properties +
            "<sheets>" + list + "</sheets></workbook>");
    parts.emplace_back("xl/_rels/workbook.xml.rels", kRelations + relations + "</Relationships>");
    parts.emplace_back("xl/sharedStrings.xml", "<sst " + main + ">" + texts + "</sst>");
    parts.emplace_back("xl/styles.xml", "<styleSheet " + main + ">" + styles + "</styleSheet>");
    return parts;
}

TZipParts OdsParts(const std::vector<TSheetXml>& sheets, const std::string& styles) {
    std::string content = "<office:document-content";
    for (const char* space : {"office", "table", "text", "style", "drawing"})
        content +=
            std::string(" xmlns:") + space + "=\"urn:oasis:names:tc:opendocument:xmlns:" + space + ":1.0\"";
    content += "><office:automatic-styles>" + styles +
               "</office:automatic-styles><office:body>"
               "<office:spreadsheet>";
    for (const TSheetXml& sheet : sheets)
        content += "<table:table table:name=\"" + sheet.name + "\" " + sheet.attributes + ">" + sheet.rows +
                   "</table:table>";
    content += "</office:spreadsheet></office:body></office:document-content>";
    return {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", content}};
}

} // namespace lumoplot
