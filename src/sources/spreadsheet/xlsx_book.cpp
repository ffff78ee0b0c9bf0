#include "sources/spreadsheet/serial_text.h"
#include "sources/spreadsheet/sheet_book.h"
#include "sources/spreadsheet/xml_part.h"
#include "support/errors.h"

#include <QByteArrayView>
#include <algorithm>
#include <map>

namespace lumoplot {
namespace {

using TToken = QXmlStreamReader::TokenType;

struct TPlacedSheet {
    TBookSheet sheet;
    std::string part;
};

// "xl" and "worksheets/sheet1.xml" make "xl/worksheets/sheet1.xml".
std::string PartName(const std::string& folder, const std::string& target) {
    if (target.starts_with('/')) return target.substr(1);
    return folder.empty() ? target : folder + '/' + target;
}

std::string FolderOf(const std::string& part) {
    const std::size_t slash = part.rfind('/');
    return slash == std::string::npos ? std::string() : part.substr(0, slash);
}

struct TRelation {
    std::string type; ///< behind its last slash: "worksheet"
    std::string part;
};

// By their ids, of a part or, for an empty name, of the whole file.
std::map<std::string, TRelation> RelationsOf(const TZipArchive& archive, const std::string& part) {
    const std::string folder = FolderOf(part);
    const std::string name =
        PartName(folder, "_rels/" + part.substr(folder.empty() ? 0 : folder.size() + 1) + ".rels");
    std::map<std::string, TRelation> relations;
    if (!archive.Find(name)) return relations;
    TXmlPart xml(archive, name);
    while (!xml.IsAtEnd()) {
        if (xml.Next() != TToken::StartElement || xml.Name() != u"Relationship") continue;
        const std::string type = xml.Attribute(QLatin1String("Type"));
        relations[xml.Attribute(QLatin1String("Id"))] = {
            type.substr(type.rfind('/') + 1), PartName(folder, xml.Attribute(QLatin1String("Target")))};
    }
    return relations;
}

std::string PartOfType(const std::map<std::string, TRelation>& relations, std::string_view type) {
    const auto found =
        std::ranges::find_if(relations, [type](const auto& r) { return r.second.type == type; });
    return found == relations.end() ? std::string() : found->second.part;
}

// What numbers are shown as, by the number of a cell's format.
std::vector<TSerialKind> ReadStyles(const TZipArchive& archive, const std::string& part) {
    constexpr std::size_t kMost = 100000;
    std::vector<TSerialKind> kinds;
    if (part.empty() || !archive.Find(part)) return kinds;
    std::map<std::int64_t, TSerialKind> codes;
    bool isInCells = false;
    TXmlPart xml(archive, part);
    while (!xml.IsAtEnd() && kinds.size() < kMost) {
        const TToken token = xml.Next();
        if (xml.Name() == u"cellXfs") isInCells = token == TToken::StartElement;
        if (token != TToken::StartElement) continue;
        const std::int64_t format = xml.Number(QLatin1String("numFmtId"), 0);
        if (xml.Name() == u"numFmt" && codes.size() < kMost)
            codes[format] = SerialKindOf(xml.Attribute(QLatin1String("formatCode")));
        if (!isInCells || xml.Name() != u"xf") continue;
        const auto code = codes.find(format);
        kinds.push_back(code == codes.end() ? SerialKindOf(static_cast<int>(format)) : code->second);
    }
    return kinds;
}

// "_x000D_" stands for a character that XML does not have.
std::string WithoutEscapes(std::string text) {
    for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
        if (at + 7 > text.size() || text[at + 6] != '_') continue;
        bool isNumber = false;
        const int code = QByteArrayView(text).sliced(static_cast<qsizetype>(at) + 2, 4).toInt(&isNumber, 16);
        if (isNumber && code > 0 && code < 0x80) text.replace(at, 7, 1, static_cast<char>(code));
    }
    return text;
}

// The text in an element that has begun, with its runs of other looks and without how it is pronounced.
std::string RichText(TXmlPart& xml) {
    std::string text;
    for (int depth = 1; depth > 0;) {
        const TToken token = xml.Next();
        if (token == TToken::StartElement && xml.Name() == u"rPh")
            xml.SkipElement();
        else if (token == TToken::StartElement && xml.Name() == u"t")
            TXmlPart::Append(text, xml.ElementText());
        else if (token == TToken::StartElement)
            ++depth;
        else if (token == TToken::EndElement)
            --depth;
    }
    return WithoutEscapes(std::move(text));
}

// The texts that cells name by number; read as far as they have been asked for.
class TSharedTexts {
public:
    TSharedTexts(const TZipArchive& archive, const std::string& part) {
        if (!part.empty() && archive.Find(part)) m_xml = std::make_unique<TXmlPart>(archive, part);
    }

    const std::string& At(std::size_t index) {
        while (m_texts.size() <= index && ReadOne()) {
        }
        if (index >= m_texts.size()) throw EFileError("is damaged: a text of a cell is missing");
        return m_texts[index];
    }

private:
    static constexpr std::size_t kMostBytes = std::size_t{512} << 20;

    bool ReadOne() {
        while (m_xml && !m_xml->IsAtEnd()) {
            if (m_xml->Next() != TToken::StartElement || m_xml->Name() != u"si") continue;
            m_texts.push_back(RichText(*m_xml));
            m_bytes += m_texts.back().size() + sizeof(std::string);
            if (m_bytes > kMostBytes) throw EFileError("holds more than 512 MB of texts");
            return true;
        }
        m_xml.reset();
        return false;
    }

    std::unique_ptr<TXmlPart> m_xml;
    std::vector<std::string> m_texts;
    std::size_t m_bytes = 0;
};

// "AB12" is column 27; `next` where there is no name.
std::size_t ColumnOf(const std::string& name, std::size_t next) {
    std::size_t column = 0;
    for (const char c : name) {
        if (c < 'A' || c > 'Z') break;
        column = std::min(column * 26 + static_cast<std::size_t>(c - 'A') + 1, kMostSheetColumns + 1);
    }
    return column == 0 ? next : column - 1;
}

/// What the cells of all sheets share.
struct TXlsxCells {
    TXlsxCells(const TZipArchive& archive, const std::map<std::string, TRelation>& relations)
        : texts(archive, PartOfType(relations, "sharedStrings")),
          kinds(ReadStyles(archive, PartOfType(relations, "styles"))) {}

    TSharedTexts texts;
    std::vector<TSerialKind> kinds;
    double firstDay = 0; ///< of the sheet's calendar, as days since 1899-12-30
};

class TXlsxRows final : public TSheetRows {
public:
    TXlsxRows(const TZipArchive& archive, const std::string& part, TXlsxCells& shared)
        : m_xml(archive, part), m_shared(shared) {}

    bool Next(std::vector<TSheetCell>& cells, std::int64_t& number, std::int64_t& repeats) override {
        cells.clear();
        m_nextColumn = 0;
        m_ofText = 0;
        repeats = 1;
        bool isInRow = false;
        while (!m_isAtEnd && !m_xml.IsAtEnd()) {
            const TToken token = m_xml.Next();
            if (token == TToken::StartElement && m_xml.Name() == u"row") {
                isInRow = true;
                m_row = std::max(m_row + 1, m_xml.Number(QLatin1String("r"), 0));
                if (m_row > kMostSheetRows) throw EFileError("is damaged: it has more rows than a sheet");
            } else if (token == TToken::StartElement && isInRow && m_xml.Name() == u"c") {
                ReadCell(cells);
            } else if (token == TToken::EndElement && m_xml.Name() == u"row") {
                number = m_row;
                while (!cells.empty() && cells.back().text.empty()) cells.pop_back();
                return true;
            } else if (token == TToken::EndElement && m_xml.Name() == u"sheetData") {
                m_isAtEnd = true;
            }
        }
        return false;
    }

    std::int64_t Unpacked() const override { return m_xml.Unpacked(); }

private:
    void ReadCell(std::vector<TSheetCell>& cells) {
        const std::size_t column = ColumnOf(m_xml.Attribute(QLatin1String("r")), m_nextColumn);
        m_nextColumn = column + 1;
        const std::string type = m_xml.Attribute(QLatin1String("t"));
        const std::int64_t style = m_xml.Number(QLatin1String("s"), 0);
        std::string value;
        std::string formula;
        for (TToken token = m_xml.Next(); token != TToken::EndElement; token = m_xml.Next()) {
            if (token != TToken::StartElement) continue;
            if (m_xml.Name() == u"v")
                value = m_xml.ElementText();
            else if (m_xml.Name() == u"f")
                formula = m_xml.ElementText();
            else if (m_xml.Name() == u"is")
                value = RichText(m_xml);
            else
                m_xml.SkipElement();
        }
        if (value.empty() && formula.empty()) return;
        if (column >= kMostSheetColumns) throw EFileError("is damaged: it has more columns than a sheet");
        if (cells.size() <= column) cells.resize(column + 1);
        cells[column] =
            value.empty() ? TSheetCell{"=" + formula, false} : CellOf(value, type, static_cast<int>(style));
        m_ofText += cells[column].text.size();
        if (m_ofText > kMostRowText) throw EFileError("holds a row of more than 4 MB");
    }

    TSheetCell CellOf(const std::string& value, const std::string& type, int style) {
        if (type == "s") {
            bool isNumber = false;
            const uint index = QByteArrayView(value).trimmed().toUInt(&isNumber);
            if (!isNumber) throw EFileError("is damaged: a text of a cell is missing");
            return {m_shared.texts.At(index), false};
        }
        if (type == "b") return {value == "0" ? "FALSE" : "TRUE", false};
        if (type == "str") return {WithoutEscapes(value), false};
        if (type == "d") return {value, true};
        if (!type.empty() && type != "n") return {value, false};
        return {NumberText(value, style), true};
    }

    std::string NumberText(const std::string& value, int style) const {
        const auto index = static_cast<std::size_t>(style);
        const TSerialKind kind = index < m_shared.kinds.size() ? m_shared.kinds[index] : TSerialKind::Number;
        if (kind == TSerialKind::Number) return value;
        bool isNumber = false;
        const double days = QByteArrayView(value).toDouble(&isNumber);
        const bool isDay = kind == TSerialKind::Date || kind == TSerialKind::DateTime;
        const std::string text =
            isNumber ? SerialText(isDay ? days + m_shared.firstDay : days, kind) : std::string();
        return text.empty() ? value : text;
    }

    TXmlPart m_xml;
    TXlsxCells& m_shared;
    std::int64_t m_row = 0;
    std::size_t m_nextColumn = 0; ///< of a cell that does not name its own
    std::size_t m_ofText = 0;
    bool m_isAtEnd = false;
};

class TXlsxBook final : public TSpreadsheetBook {
public:
    TXlsxBook(std::shared_ptr<TZipArchive> archive, const std::string& workbook)
        : m_archive(std::move(archive)), m_relations(RelationsOf(*m_archive, workbook)),
          m_shared(*m_archive, m_relations) {
        ReadWorkbook(workbook);
    }

    const TBookSheet* Sheet(std::size_t index) override {
        return index < m_placed.size() ? &m_placed[index].sheet : nullptr;
    }
    std::unique_ptr<TSheetRows> Rows(std::size_t sheet) override {
        return std::make_unique<TXlsxRows>(*m_archive, m_placed[sheet].part, m_shared);
    }
    std::int64_t Size(std::size_t sheet) const override {
        const TZipEntry* entry = m_archive->Find(m_placed[sheet].part);
        return entry ? entry->size : 0;
    }

private:
    void ReadWorkbook(const std::string& workbook) {
        constexpr double kDaysTo1904 = 1462;
        constexpr std::size_t kMostSheets = 10000;
        TXmlPart xml(*m_archive, workbook);
        while (!xml.IsAtEnd() && m_placed.size() < kMostSheets) {
            if (xml.Next() != TToken::StartElement) continue;
            const std::string from1904 = xml.Attribute(QLatin1String("date1904"));
            if (from1904 == "1" || from1904 == "true") m_shared.firstDay = kDaysTo1904;
            if (xml.Name() != u"sheet") continue;
            // The relation's "r:id", not the sheet's own "sheetId".
            const auto relation = m_relations.find(xml.Attribute(QLatin1String("id")));
            if (relation == m_relations.end() || relation->second.type != "worksheet") continue;
            const std::string state = xml.Attribute(QLatin1String("state"));
            m_placed.push_back({{xml.Attribute(QLatin1String("name")), !state.empty() && state != "visible"},
                                relation->second.part});
        }
        if (m_placed.empty()) throw EFileError("is a spreadsheet without a sheet of cells");
    }

    std::shared_ptr<TZipArchive> m_archive;
    std::map<std::string, TRelation> m_relations;
    TXlsxCells m_shared;
    std::vector<TPlacedSheet> m_placed;
};

} // namespace

std::unique_ptr<TSpreadsheetBook> OpenXlsx(std::shared_ptr<TZipArchive> archive) {
    std::string workbook = PartOfType(RelationsOf(*archive, ""), "officeDocument");
    if (workbook.empty()) workbook = "xl/workbook.xml";
    if (!archive->Find(workbook) || !workbook.ends_with(".xml") || workbook.starts_with("word/") ||
        workbook.starts_with("ppt/"))
        return nullptr;
    return std::make_unique<TXlsxBook>(std::move(archive), workbook);
}

} // namespace lumoplot
