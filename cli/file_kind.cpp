#include "cli/file_kind.h"

#include "cli/database_input.h"
#include "sources/database/connection/connection.h"
#include "sources/spreadsheet/sheet_place.h"
#include "support/errors.h"

#include <QFile>
#include <array>
#include <cctype>
#include <map>
#include <string_view>

namespace lumoplot {
namespace {

// What files of the kinds begin with: the signature or the first key, a string item with its tag and length.
constexpr std::pair<std::string_view, TFileKind> kBeginnings[] = {{"\x06\x09xygg", TFileKind::Graph},
                                                                  {"\x06\x03"
                                                                   "99S\x06\x06Series",
                                                                   TFileKind::DataSet},
                                                                  {"\x06\x03"
                                                                   "39C",
                                                                   TFileKind::Function},
                                                                  {"\x06\x09"
                                                                   "CurFit39S",
                                                                   TFileKind::Function}};

std::string FirstBytes(const std::string& name) {
    QFile file(QString::fromStdString(name));
    if (!file.open(QIODevice::ReadOnly))
        throw EFileError("Can not open file " + name + ": check its name, its folder and its permissions");
    return file.read(16).toStdString();
}

} // namespace

std::string Extension(const std::string& name) {
    const std::size_t dot = name.find_last_of("./\\");
    if (dot == std::string::npos || name[dot] != '.') return "";
    std::string extension = name.substr(dot);
    for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return extension;
}

std::optional<TFileKind> KindByExtension(const std::string& name) {
    static const std::map<std::string, TFileKind> kKinds = {
        {".ltp", TFileKind::Graph}, {".lds", TFileKind::DataSet}, {".lfn", TFileKind::Function},
        {".dat", TFileKind::Text},  {".csv", TFileKind::Text},    {".txt", TFileKind::Text}};
    const auto kind = kKinds.find(Extension(name));
    return kind == kKinds.end() ? std::nullopt : std::optional(kind->second);
}

TFileKind KindOfFile(const std::string& name) {
    const auto kind = KindByExtension(name);
    if (kind && kind != TFileKind::Text) return *kind;
    if (IsConnection(name)) return TFileKind::Database;
    const std::string file = SheetPlaceOf(name).file;
    const std::string bytes = FirstBytes(file);
    for (const auto& [beginning, found] : kBeginnings)
        if (bytes.starts_with(beginning)) return found;
    return IsDatabaseFile(file) ? TFileKind::Database : TFileKind::Text;
}

} // namespace lumoplot
