#include "sources/spreadsheet/sheet_book.h"
#include "sources/spreadsheet/xml_part.h"
#include "support/errors.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace lumoplot {
namespace {

using TToken = QXmlStreamReader::TokenType;

constexpr const char* kContent = "content.xml";

// "PT36H05M07.5S" as "36:05:07.5"; what is written otherwise stays.
std::string DurationText(const std::string& text) {
    int hours = 0;
    int minutes = 0;
    char seconds[24] = "";
    char end = 0;
    const int found =
        std::sscanf(text.c_str(), "PT%9dH%9dM%20[0-9.,]%c", &hours, &minutes, seconds, &end); // NOLINT
    if (found != 4 || end != 'S' || hours < 0 || minutes < 0) return text;
    char result[64];
    std::snprintf(result, sizeof result, "%02d:%02d:%s%s", hours, minutes,
                  seconds[0] != 0 && (seconds[1] == 0 || seconds[1] == '.') ? "0" : "", seconds);
    std::string whole = result;
    std::ranges::replace(whole, ',', '.');
    if (whole.find('.') == std::string::npos) return whole;
    whole.resize(whole.find_last_not_of('0') + 1);
    return whole.ends_with('.') ? whole.substr(0, whole.size() - 1) : whole;
}

bool IsTable(const TXmlPart& xml) {
    return xml.Name() == u"table" && xml.Namespace().contains(u":table:");
}

// Behind the beginning of the table that so many others stand in front of.
std::unique_ptr<TXmlPart> OpenTable(const TZipArchive& archive, std::size_t table) {
    auto xml = std::make_unique<TXmlPart>(archive, kContent);
    for (std::size_t tables = 0; tables <= table;) {
        if (xml->IsAtEnd()) throw EFileError("is damaged: a sheet is missing");
        if (xml->Next() != TToken::StartElement || !IsTable(*xml)) continue;
        if (tables++ < table) xml->SkipElement();
    }
    return xml;
}

class TOdsRows final : public TSheetRows {
public:
    /// From the beginning of a table on.
    explicit TOdsRows(std::unique_ptr<TXmlPart> table) : m_xml(std::move(table)) {}

    bool Next(std::vector<TSheetCell>& cells, std::int64_t& number, std::int64_t& repeats) override {
        cells.clear();
        while (!m_isAtEnd && !m_xml->IsAtEnd()) {
            const TToken token = m_xml->Next();
            if (token == TToken::EndElement && IsTable(*m_xml)) m_isAtEnd = true;
            if (token != TToken::StartElement) continue;
            if (IsTable(*m_xml) || m_xml->Name() == u"shapes" || m_xml->Name() == u"forms") {
                m_xml->SkipElement();
            } else if (m_xml->Name() == u"table-row") {
                number = m_row + 1;
                repeats = Repeats(QLatin1String("number-rows-repeated"));
                m_row += repeats;
                ReadRow(cells);
                while (!cells.empty() && cells.back().text.empty()) cells.pop_back();
                if (m_row > kMostSheetRows && !cells.empty())
                    throw EFileError("is damaged: it has more rows than a sheet");
                return true;
            }
        }
        return false;
    }

    std::int64_t Unpacked() const override { return m_xml->Unpacked(); }

private:
    std::int64_t Repeats(QLatin1String attribute) const {
        return std::max<std::int64_t>(1, m_xml->Number(attribute, 1));
    }

    void ReadRow(std::vector<TSheetCell>& cells) {
        std::size_t column = 0;
        std::size_t ofText = 0;
        for (TToken token = m_xml->Next(); token != TToken::EndElement; token = m_xml->Next()) {
            if (token != TToken::StartElement) continue;
            if (m_xml->Name() != u"table-cell" && m_xml->Name() != u"covered-table-cell") {
                m_xml->SkipElement();
                continue;
            }
            const auto repeats = static_cast<std::size_t>(Repeats(QLatin1String("number-columns-repeated")));
            const TSheetCell cell = ReadCell();
            const std::size_t end = std::min(column + repeats, kMostSheetColumns);
            ofText += cell.text.size() * (end - column);
            if (ofText > kMostRowText) throw EFileError("holds a row of more than 4 MB");
            if (!cell.text.empty() && end > column) {
                cells.resize(std::max(cells.size(), end));
                std::fill(cells.begin() + static_cast<std::ptrdiff_t>(column),
                          cells.begin() + static_cast<std::ptrdiff_t>(end), cell);
            }
            column = end;
        }
    }

    TSheetCell ReadCell() {
        const std::string type = m_xml->Attribute(QLatin1String("value-type"));
        const std::string formula = m_xml->Attribute(QLatin1String("formula"));
        std::string value;
        if (type == "float" || type == "percentage" || type == "currency")
            value = m_xml->Attribute(QLatin1String("value"));
        else if (type == "date")
            value = m_xml->Attribute(QLatin1String("date-value"));
        else if (type == "time")
            value = DurationText(m_xml->Attribute(QLatin1String("time-value")));
        else if (type == "boolean")
            value = m_xml->Attribute(QLatin1String("boolean-value")) == "true" ? "TRUE" : "FALSE";
        const bool isValue = !value.empty() && type != "boolean";
        const std::string shown = CellText();
        if (value.empty()) value = shown;
        if (value.empty() && type.empty() && !formula.empty()) value = "=" + formula;
        return {value, isValue};
    }

    // The paragraphs of a cell as lines, without notes and drawings.
    std::string CellText() {
        std::string text;
        bool hasParagraph = false;
        int ofParagraph = 0; ///< elements open in the paragraph, itself counted
        for (int depth = 1; depth > 0;) {
            const TToken token = m_xml->Next();
            if (token == TToken::StartElement) {
                const bool isSkipped = m_xml->Name() == u"annotation" || m_xml->Name() == u"table" ||
                                       m_xml->Namespace().contains(u":drawing:");
                if (isSkipped) {
                    m_xml->SkipElement();
                    continue;
                }
                ++depth;
                if (ofParagraph > 0) {
                    ++ofParagraph;
                    TXmlPart::Append(text, Spacing());
                } else if (m_xml->Name() == u"p") {
                    if (hasParagraph) text += '\n';
                    hasParagraph = true;
                    ofParagraph = 1;
                }
            } else if (token == TToken::EndElement) {
                --depth;
                if (ofParagraph > 0) --ofParagraph;
            } else if (token == TToken::Characters && ofParagraph > 0) {
                TXmlPart::Append(text, m_xml->Text());
            }
        }
        return text;
    }

    std::string Spacing() const {
        constexpr std::int64_t kMost = 1000;
        if (m_xml->Name() == u"s")
            return std::string(
                static_cast<std::size_t>(std::min(kMost, m_xml->Number(QLatin1String("c"), 1))), ' ');
        if (m_xml->Name() == u"tab") return "\t";
        return m_xml->Name() == u"line-break" ? "\n" : "";
    }

    std::unique_ptr<TXmlPart> m_xml;
    std::int64_t m_row = 0;
    bool m_isAtEnd = false;
};

class TOdsBook final : public TSpreadsheetBook {
public:
    explicit TOdsBook(std::shared_ptr<TZipArchive> archive)
        : m_archive(std::move(archive)), m_mostSheets(CountedSheets(m_archive->Read("meta.xml"))),
          m_list(std::make_unique<TXmlPart>(*m_archive, kContent)) {
        if (!Sheet(0)) throw EFileError("is a spreadsheet without a sheet of cells");
    }

    const TBookSheet* Sheet(std::size_t index) override {
        while (index >= m_sheets.size() && !m_isComplete) FindSheet();
        return index < m_sheets.size() ? &m_sheets[index] : nullptr;
    }
    std::unique_ptr<TSheetRows> Rows(std::size_t sheet) override {
        // What is in front of the last sheet that is known has been unpacked.
        const bool isLast = m_list && sheet + 1 == m_sheets.size();
        return std::make_unique<TOdsRows>(isLast ? std::move(m_list) : OpenTable(*m_archive, sheet));
    }
    std::int64_t Size(std::size_t) const override { return m_archive->Find(kContent)->size; }

private:
    // What the file counts itself spares unpacking the last sheet to find the end.
    static std::size_t CountedSheets(const QByteArray& statistics) {
        constexpr std::size_t kMost = 10000;
        const QByteArrayView mark("table-count=\"");
        const qsizetype place = statistics.indexOf(mark);
        if (place < 0) return kMost;
        const qsizetype begin = place + mark.size();
        const uint count = statistics.mid(begin, statistics.indexOf('"', begin) - begin).toUInt();
        return count > 0 ? std::min<std::size_t>(count, kMost) : kMost;
    }

    void FindSheet() {
        m_isComplete = m_sheets.size() >= m_mostSheets;
        if (m_isComplete) return m_list.reset();
        if (!m_list) m_list = OpenTable(*m_archive, m_sheets.size() - 1);
        if (!m_sheets.empty()) m_list->SkipElement();
        while (!m_list->IsAtEnd()) {
            if (m_list->Next() != TToken::StartElement) continue;
            if (m_list->Name() == u"style") m_style = m_list->Attribute(QLatin1String("name"));
            if (m_list->Name() == u"table-properties" &&
                m_list->Attribute(QLatin1String("display")) == "false")
                m_hidden.insert(m_style);
            if (!IsTable(*m_list)) continue;
            m_sheets.push_back({m_list->Attribute(QLatin1String("name")),
                                m_hidden.contains(m_list->Attribute(QLatin1String("style-name")))});
            return;
        }
        m_list.reset();
        m_isComplete = true;
    }

    std::shared_ptr<TZipArchive> m_archive;
    std::size_t m_mostSheets;
    std::unique_ptr<TXmlPart> m_list; ///< within the last sheet that is known; null when it reads that
    bool m_isComplete = false;
    std::set<std::string> m_hidden; ///< styles of hidden sheets
    std::string m_style;
    std::vector<TBookSheet> m_sheets;
};

} // namespace

std::unique_ptr<TSpreadsheetBook> OpenOds(std::shared_ptr<TZipArchive> archive) {
    constexpr const char* kProtected = "is protected with a password: save it without one and open that";
    if (!archive->Read("mimetype").contains("opendocument.spreadsheet")) return nullptr;
    const QByteArray manifest = archive->Read("META-INF/manifest.xml");
    if (manifest.contains("encryption-data") || archive->Find("encrypted-package"))
        throw EFileError(kProtected);
    return std::make_unique<TOdsBook>(std::move(archive));
}

} // namespace lumoplot
