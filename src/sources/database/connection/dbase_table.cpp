#include "sources/database/connection/file_cell.h"
#include "sources/database/connection/file_table.h"
#include "support/errors.h"

#include <QFileInfo>

#ifdef LUMOPLOT_HAVE_DBASE

#include <cstring>
#include <shapefil.h>

namespace lumoplot {
namespace {

struct TCloseDbf {
    void operator()(DBFInfo* file) const { DBFClose(file); }
};
using TDbf = std::unique_ptr<DBFInfo, TCloseDbf>;

// What goes wrong is told by us, and not on standard error.
TDbf OpenDbf(const std::string& name) {
    SAHooks hooks;
    SASetupDefaultHooks(&hooks);
    hooks.Error = [](const char*) {};
    TDbf file(DBFOpenLL(name.c_str(), "rb", &hooks));
    if (!file) throw EFileError("the dBase table can not be read: it is damaged or can not be opened");
    return file;
}

template <class TValue>
TValue ValueAt(const char* bytes) {
    TValue value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// A Julian day and milliseconds.
TFileCell DateTimeCell(const char* bytes) {
    const auto day = ValueAt<std::int32_t>(bytes);
    const auto milliseconds = ValueAt<std::int32_t>(bytes + 4);
    if (day == 0) return {};
    const QDate date = QDate::fromJulianDay(day);
    const QTime time = QTime::fromMSecsSinceStartOfDay((milliseconds + 500) / 1000 * 1000 % 86'400'000);
    return (date.toString(Qt::ISODate) + QLatin1Char(' ') + time.toString(Qt::ISODate)).toStdString();
}

TFileCell DateCell(std::string_view text) {
    if (text.find_first_not_of(" \0") == std::string_view::npos || text.size() < 8) return {};
    return std::string(text.substr(0, 4)) + "-" + std::string(text.substr(4, 2)) + "-" +
           std::string(text.substr(6, 2));
}

TFileCell LogicalCell(char mark) {
    if (std::strchr("TtYy", mark) && mark) return std::int64_t{1};
    if (std::strchr("FfNn", mark) && mark) return std::int64_t{0};
    return {};
}

// What is in a field, by the letter of its type. Numbers are texts but for the types of FoxPro.
TFileCell FieldCell(char type, std::string_view field) {
    const char* bytes = field.data();
    switch (type) {
    case 'N':
    case 'F': return NumberCell(field);
    case 'I':
        if (field.size() == 4) return std::int64_t{ValueAt<std::int32_t>(bytes)};
        return NumberCell(field);
    case 'B':
        if (field.size() == 8) return ValueAt<double>(bytes);
        return {};
    case 'Y': return static_cast<double>(ValueAt<std::int64_t>(bytes)) / 10'000;
    case 'T': return field.size() == 8 ? DateTimeCell(bytes) : TextCell(field);
    case 'D': return DateCell(field);
    case 'L': return field.empty() ? TFileCell() : LogicalCell(field[0]);
    case 'M':
    case 'G': return {}; // texts in a file of their own
    default: return TextCell(field);
    }
}

const char* TypeOf(char type) {
    switch (type) {
    case 'N':
    case 'F':
    case 'B':
    case 'Y': return "NUMERIC";
    case 'I':
    case 'L': return "INTEGER";
    case 'D': return "DATE";
    case 'T': return "DATETIME";
    default: return "TEXT";
    }
}

class TDbfRows final : public TFileRows {
public:
    explicit TDbfRows(const std::string& name) : m_file(OpenDbf(name)) {}

    bool Next() override {
        while (++m_row < DBFGetRecordCount(m_file.get())) {
            m_tuple = DBFReadTuple(m_file.get(), m_row);
            if (!m_tuple)
                throw EFileError("row " + std::to_string(m_row + 1) +
                                 ": the file ends here, but is to have " +
                                 std::to_string(DBFGetRecordCount(m_file.get())) + " rows");
            if (m_tuple[0] != '*') return true; // rows that are deleted stay in the file
        }
        return false;
    }

    TFileCell Cell(int column) override {
        const auto offset = static_cast<std::size_t>(m_file->panFieldOffset[column]);
        const auto size = static_cast<std::size_t>(m_file->panFieldSize[column]);
        return FieldCell(DBFGetNativeFieldType(m_file.get(), column),
                         std::string_view(m_tuple + offset, size));
    }

private:
    TDbf m_file;
    int m_row = -1;
    const char* m_tuple = nullptr;
};

class TDbfTable final : public TFileTable {
public:
    explicit TDbfTable(const std::string& file)
        : m_file(file), m_name(QFileInfo(QString::fromStdString(file)).completeBaseName().toStdString()) {
        const TDbf opened = OpenDbf(file);
        for (int i = 0; i < DBFGetFieldCount(opened.get()); ++i) {
            char name[XBASE_FLDNAME_LEN_READ + 1] = {};
            DBFGetFieldInfo(opened.get(), i, name, nullptr, nullptr);
            const TFileCell shown = TextCell(name);
            const auto* text = std::get_if<std::string>(&shown);
            m_columns.push_back({text ? *text : "field " + std::to_string(i + 1),
                                 TypeOf(DBFGetNativeFieldType(opened.get(), i))});
        }
        if (m_columns.empty()) throw EFileError("the dBase table has no fields: it is damaged");
    }

    const std::string& Name() const override { return m_name; }
    const std::vector<TFileColumn>& Columns() const override { return m_columns; }
    std::unique_ptr<TFileRows> Rows() const override { return std::make_unique<TDbfRows>(m_file); }

private:
    std::string m_file;
    std::string m_name;
    std::vector<TFileColumn> m_columns;
};

} // namespace

TFileTables DBaseTables(const std::string& file) {
    TFileTables tables;
    tables.push_back(std::make_unique<TDbfTable>(file));
    return tables;
}

} // namespace lumoplot

#else

namespace lumoplot {

TFileTables DBaseTables(const std::string&) {
    throw EFileError("this program was built without what reads dBase tables (Debian: libshp-dev)");
}

} // namespace lumoplot

#endif
