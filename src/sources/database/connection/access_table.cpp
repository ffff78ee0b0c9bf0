#include "sources/database/connection/file_cell.h"
#include "sources/database/connection/file_table.h"
#include "support/errors.h"

#ifdef LUMOPLOT_HAVE_ACCESS

#include <mdbtools.h>

namespace lumoplot {
namespace {

constexpr std::size_t kBindSize = 4096;

struct TCloseMdb {
    void operator()(MdbHandle* file) const { mdb_close(file); }
};
using TMdb = std::unique_ptr<MdbHandle, TCloseMdb>;

struct TFreeDefinition {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TDefinition = std::unique_ptr<MdbTableDef, TFreeDefinition>;

TMdb OpenMdb(const std::string& name) {
    TMdb file(mdb_open(name.c_str(), MDB_NOFLAGS));
    if (!file || !mdb_read_catalog(file.get(), MDB_TABLE))
        throw EFileError("the Access database can not be read: it is damaged, encrypted or in use");
    mdb_set_bind_size(file.get(), kBindSize);
    mdb_set_date_fmt(file.get(), "%Y-%m-%d %H:%M:%S");
    mdb_set_shortdate_fmt(file.get(), "%Y-%m-%d");
    mdb_set_boolean_fmt_numbers(file.get());
    return file;
}

MdbColumn& ColumnOf(const MdbTableDef& table, unsigned place) {
    return *static_cast<MdbColumn*>(g_ptr_array_index(table.columns, place));
}

TDefinition ReadDefinition(MdbHandle* file, std::string name) {
    TDefinition table(mdb_read_table_by_name(file, name.data(), MDB_TABLE));
    if (!table || !mdb_read_columns(table.get()) || table->num_cols == 0)
        throw EFileError("table " + name + " can not be read: the database is damaged");
    return table;
}

bool IsNumber(int type) {
    switch (type) {
    case MDB_BOOL:
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_NUMERIC: return true;
    default: return false;
    }
}

const char* TypeOf(int type) {
    if (type == MDB_DATETIME) return "DATETIME";
    return IsNumber(type) ? "NUMERIC" : "TEXT";
}

class TMdbRows final : public TFileRows {
public:
    TMdbRows(const std::string& file, const std::string& table)
        : m_file(OpenMdb(file)), m_table(ReadDefinition(m_file.get(), table)) {
        mdb_rewind_table(m_table.get());
        m_cells.resize(m_table->num_cols, TBound{std::vector<char>(kBindSize), 0});
        for (unsigned i = 0; i < m_table->num_cols; ++i)
            mdb_bind_column(m_table.get(), static_cast<int>(i) + 1, m_cells[i].text.data(),
                            &m_cells[i].length);
    }

    bool Next() override {
        if (mdb_fetch_row(m_table.get())) return ++m_row != 0;
        if (m_row < m_table->num_rows)
            throw EFileError("row " + std::to_string(m_row + 1) +
                             ": the file ends here or is damaged; the table is to have " +
                             std::to_string(m_table->num_rows) + " rows");
        return false;
    }

    TFileCell Cell(int column) override {
        const TBound& cell = m_cells[static_cast<std::size_t>(column)];
        const int type = ColumnOf(*m_table, static_cast<unsigned>(column)).col_type;
        if (cell.length <= 0 || type == MDB_OLE || type == MDB_BINARY) return {};
        const std::string_view text(cell.text.data(), static_cast<std::size_t>(cell.length));
        return IsNumber(type) ? NumberCell(text) : TextCell(text);
    }

private:
    struct TBound {
        std::vector<char> text;
        int length = 0;
    };

    TMdb m_file;
    TDefinition m_table;
    std::vector<TBound> m_cells;
    unsigned m_row = 0;
};

class TMdbTable final : public TFileTable {
public:
    TMdbTable(MdbHandle* opened, const std::string& file, const std::string& name)
        : m_file(file), m_name(name) {
        const TDefinition table = ReadDefinition(opened, name);
        for (unsigned i = 0; i < table->num_cols; ++i) {
            const MdbColumn& column = ColumnOf(*table, i);
            m_columns.push_back({column.name, TypeOf(column.col_type)});
        }
    }

    const std::string& Name() const override { return m_name; }
    const std::vector<TFileColumn>& Columns() const override { return m_columns; }
    std::unique_ptr<TFileRows> Rows() const override { return std::make_unique<TMdbRows>(m_file, m_name); }

private:
    std::string m_file;
    std::string m_name;
    std::vector<TFileColumn> m_columns;
};

} // namespace

TFileTables AccessTables(const std::string& file) {
    const TMdb opened = OpenMdb(file);
    TFileTables tables;
    for (unsigned i = 0; i < opened->num_catalog; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(opened->catalog, i));
        if (!mdb_is_user_table(entry)) continue;
        try {
            tables.push_back(std::make_unique<TMdbTable>(opened.get(), file, entry->object_name));
        } catch (const EFileError&) {
            // The other tables can still be of use.
        }
    }
    if (tables.empty()) throw EFileError("the Access database has no table that can be read");
    return tables;
}

} // namespace lumoplot

#else

namespace lumoplot {

TFileTables AccessTables(const std::string&) {
    throw EFileError("this program was built without what reads Access databases (Debian: mdbtools-dev); "
                     "with its ODBC driver they open as odbc:DRIVER=…;DBQ=FILE");
}

} // namespace lumoplot

#endif
