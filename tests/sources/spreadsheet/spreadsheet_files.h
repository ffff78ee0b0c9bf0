// Spreadsheet files for tests, made of the XML of their sheets.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lumoplot {

struct TSheetXml {
    std::string name;
    std::string rows;            ///< "<row>…" of .xlsx, "<table:table-row>…" of .ods
    std::string attributes = {}; ///< of the sheet in the list of sheets
};

using TZipParts = std::vector<std::pair<std::string, std::string>>;

/// A zip archive of parts by their names, deflated.
std::string Zip(const TZipParts& parts);

/// What the parts of a spreadsheet are; `texts` are its shared strings ("<si>…") and `styles` the cell
/// formats and number formats in "<styleSheet>".
TZipParts XlsxParts(const std::vector<TSheetXml>& sheets, const std::string& texts = {},
                    const std::string& styles = {}, const std::string& properties = {});
TZipParts OdsParts(const std::vector<TSheetXml>& sheets, const std::string& styles = {});

inline std::string Xlsx(const std::string& rows, const std::string& texts = {},
                        const std::string& styles = {}) {
    return Zip(XlsxParts({{"Data", rows}}, texts, styles));
}
inline std::string Ods(const std::string& rows) {
    return Zip(OdsParts({{"Data", rows}}));
}

} // namespace lumoplot
