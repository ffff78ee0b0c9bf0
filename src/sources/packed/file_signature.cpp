#include "sources/packed/file_signature.h"

#include <algorithm>

namespace lumoplot {
namespace {

using namespace std::string_view_literals;

struct TSignature {
    std::string_view bytes;
    const char* what;
};

constexpr const char* kOtherSheet =
    "a spreadsheet of an unknown kind: save it as .xlsx or .ods and open that";

constexpr const char* kUtf32 = "text in UTF-32: save it as UTF-8 and open that";
constexpr const char* kMarkup = "marked up (XML, HTML): export its table as CSV and open that";

constexpr TSignature kSignatures[] = {
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv,
     "a document of an office program (.xls, .doc): save its table as .xlsx, .ods or CSV and open that"},
    {"SQLite format 3\0"sv, "a database (SQLite): open it as one"},
    {"\0\1\0\0Standard "sv, "a database (.mdb, .accdb): open it as one"},
    {"%PDF-"sv, "a document (PDF): copy its table into a text file and open that"},
    {"\x89PNG"sv, "a picture (PNG)"},
    {"\xFF\xD8\xFF"sv, "a picture (JPEG)"},
    {"GIF8"sv, "a picture (GIF)"},
    {"II*\0"sv, "a picture (TIFF)"},
    {"MM\0*"sv, "a picture (TIFF)"},
    {"BZh"sv, "compressed (bzip2): unpack it and open what is in it"},
    {"\xFD"
     "7zXZ"sv,
     "compressed (xz): unpack it and open what is in it"},
    {"7z\xBC\xAF"sv, "an archive (7z): unpack it and open what is in it"},
    {"Rar!"sv, "an archive (RAR): unpack it and open what is in it"},
    {"\x89HDF"sv, "a data file (HDF5): export the data as CSV and open that"},
    {"CDF\1"sv, "a data file (NetCDF): export the data as CSV and open that"},
    {"CDF\2"sv, "a data file (NetCDF): export the data as CSV and open that"},
    {"MATLAB 5.0 MAT-file"sv, "a data file (.mat): export the data as CSV and open that"},
    {"PAR1"sv, "a data file (Parquet): export the data as CSV and open that"},
    {"ARROW1"sv, "a data file (Arrow): export the data as CSV and open that"},
    {"TDSm"sv, "a data file (.tdms): export the data as CSV and open that"},
    {"\x7F"
     "ELF"sv,
     "a program"},
    {"{\\rtf"sv, "a document (RTF): save it as plain text and open that"},
    {"\xFF\xFE\0\0"sv, kUtf32},
    {"\0\0\xFE\xFF"sv, kUtf32},
    {"<?xml"sv, kMarkup},
    {"<!DOCTYPE"sv, kMarkup},
    {"<!doctype"sv, kMarkup},
    {"<html"sv, kMarkup},
};

std::string KindOfZip(std::string_view bytes) {
    const auto holds = [bytes](std::string_view name) { return bytes.find(name) != std::string_view::npos; };
    if (holds("opendocument.spreadsheet") || holds("xl/")) return kOtherSheet;
    if (holds("word/") || holds("opendocument.text"))
        return "a text document: copy its table into a text file and open that";
    return "an archive (zip): unpack it and open what is in it";
}

std::string_view WithoutBlanksInFront(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

// An object with a name in it, or a list of lists or objects.
bool IsJson(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    bytes = WithoutBlanksInFront(bytes);
    if (bytes.empty() || (bytes.front() != '{' && bytes.front() != '[')) return false;
    const bool isObject = bytes.front() == '{';
    bytes = WithoutBlanksInFront(bytes.substr(1));
    return isObject ? bytes.starts_with('"') : bytes.starts_with('{') || bytes.starts_with('[');
}

} // namespace

std::string KnownBinary(std::string_view firstBytes) {
    if (firstBytes.starts_with("PK\3\4")) return KindOfZip(firstBytes);
    for (const TSignature& signature : kSignatures)
        if (firstBytes.starts_with(signature.bytes)) return signature.what;
    if (IsJson(firstBytes)) return "JSON: export its table as CSV and open that";
    return {};
}

} // namespace lumoplot
