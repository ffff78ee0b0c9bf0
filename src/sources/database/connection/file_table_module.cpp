#include "sources/database/connection/file_table_module.h"

#ifdef LUMOPLOT_HAVE_SQLITE

#include "support/errors.h"

#include <new>
#include <sqlite3.h>

namespace lumoplot {
namespace {

constexpr const char* kModule = "filetable";

// What SQLite keeps of a table and of a pass over its rows; both begin with the library's own part.
struct TVirtualTable : sqlite3_vtab {
    const TFileTable* table;
};

struct TVirtualCursor : sqlite3_vtab_cursor {
    std::unique_ptr<TFileRows> rows;
    bool isAtEnd = true;
    std::int64_t row = 0;
};

std::string QuotedName(const std::string& name) {
    std::string quoted = "\"";
    for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string Declaration(const TFileTable& table) {
    std::string text;
    for (const TFileColumn& column : table.Columns())
        text += (text.empty() ? "" : ", ") + QuotedName(column.name) + " " + column.type;
    return "CREATE TABLE x(" + text + ")";
}

// No exception may pass through the library.
template <class TWork>
int Answered(sqlite3_vtab* table, TWork&& work) {
    try {
        work();
        return SQLITE_OK;
    } catch (const std::exception& error) {
        sqlite3_free(table->zErrMsg);
        table->zErrMsg = sqlite3_mprintf("%s", error.what());
        return SQLITE_ERROR;
    }
}

int Connect(sqlite3* database, void* tables, int argc, const char* const* argv, sqlite3_vtab** result,
            char** problem) {
    const auto& all = *static_cast<const TFileTables*>(tables);
    const std::size_t place = argc > 3 ? std::stoul(argv[3]) : 0;
    if (place >= all.size()) return SQLITE_ERROR;
    if (const int declared = sqlite3_declare_vtab(database, Declaration(*all[place]).c_str());
        declared != SQLITE_OK) {
        *problem = sqlite3_mprintf("%s", sqlite3_errmsg(database));
        return declared;
    }
    auto* table = new (std::nothrow) TVirtualTable();
    if (!table) return SQLITE_NOMEM;
    table->table = all[place].get();
    *result = table;
    return SQLITE_OK;
}

int Disconnect(sqlite3_vtab* table) {
    delete static_cast<TVirtualTable*>(table);
    return SQLITE_OK;
}

int BestIndex(sqlite3_vtab*, sqlite3_index_info*) {
    return SQLITE_OK;
}

int Open(sqlite3_vtab*, sqlite3_vtab_cursor** result) {
    *result = new (std::nothrow) TVirtualCursor();
    return *result ? SQLITE_OK : SQLITE_NOMEM;
}

int Close(sqlite3_vtab_cursor* cursor) {
    delete static_cast<TVirtualCursor*>(cursor);
    return SQLITE_OK;
}

int Next(sqlite3_vtab_cursor* base) {
    auto& cursor = *static_cast<TVirtualCursor*>(base);
    return Answered(cursor.pVtab, [&] {
        cursor.isAtEnd = !cursor.rows->Next();
        ++cursor.row;
    });
}

int Filter(sqlite3_vtab_cursor* base, int, const char*, int, sqlite3_value**) {
    auto& cursor = *static_cast<TVirtualCursor*>(base);
    const int result = Answered(cursor.pVtab, [&] {
        cursor.rows = static_cast<TVirtualTable*>(cursor.pVtab)->table->Rows();
        cursor.row = 0;
    });
    return result == SQLITE_OK ? Next(base) : result;
}

int IsAtEnd(sqlite3_vtab_cursor* cursor) {
    return static_cast<TVirtualCursor*>(cursor)->isAtEnd ? 1 : 0;
}

struct TGiveResult {
    sqlite3_context* context;

    void operator()(std::monostate) const { sqlite3_result_null(context); }
    void operator()(std::int64_t value) const { sqlite3_result_int64(context, value); }
    void operator()(double value) const { sqlite3_result_double(context, value); }
    void operator()(const std::string& value) const {
        sqlite3_result_text(context, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    }
};

int Column(sqlite3_vtab_cursor* base, sqlite3_context* context, int column) {
    auto& cursor = *static_cast<TVirtualCursor*>(base);
    return Answered(cursor.pVtab, [&] { std::visit(TGiveResult{context}, cursor.rows->Cell(column)); });
}

int RowId(sqlite3_vtab_cursor* cursor, sqlite3_int64* row) {
    *row = static_cast<TVirtualCursor*>(cursor)->row;
    return SQLITE_OK;
}

const sqlite3_module& Module() {
    static const sqlite3_module module = [] {
        sqlite3_module calls{};
        calls.xCreate = Connect;
        calls.xConnect = Connect;
        calls.xBestIndex = BestIndex;
        calls.xDisconnect = Disconnect;
        calls.xDestroy = Disconnect;
        calls.xOpen = Open;
        calls.xClose = Close;
        calls.xFilter = Filter;
        calls.xNext = Next;
        calls.xEof = IsAtEnd;
        calls.xColumn = Column;
        calls.xRowid = RowId;
        return calls;
    }();
    return module;
}

} // namespace

void AddFileTables(sqlite3* database, TFileTables tables) {
    auto* owned = new TFileTables(std::move(tables));
    const auto release = [](void* all) { delete static_cast<TFileTables*>(all); };
    if (sqlite3_create_module_v2(database, kModule, &Module(), owned, release) != SQLITE_OK)
        throw EFileError(sqlite3_errmsg(database));
    for (std::size_t i = 0; i < owned->size(); ++i) {
        const std::string statement = "CREATE VIRTUAL TABLE " + QuotedName((*owned)[i]->Name()) + " USING " +
                                      kModule + "(" + std::to_string(i) + ")";
        if (sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw EFileError(sqlite3_errmsg(database));
    }
}

} // namespace lumoplot

#endif
