// Settings by their rows, whatever their types: what a row holds is put into an object, or copied from
// another one.
#pragma once

#include "graph/model/setting_rows.h"
#include "stream/reader.h"
#include "stream/writer.h"

namespace lumoplot {

/// Gives the setting of a row a value, through its setter; the value has the type that the row gets.
template <class T>
void SetSetting(const TSectionRow<T>& row, T& object, const TFieldValue& value) {
    TBytes bytes;
    TxyWriter writer(bytes, TEncoding::Compact);
    std::visit(section::TValueWriter{writer, row.key, "value"}, value);
    TByteSource source(bytes);
    TxyReader reader(source);
    reader.ReadKey();
    row.read(reader, object);
}

/// Makes those settings that `isTaken` names by their rows as they are in another object. Setters run in the
/// order of the rows, and only where values differ.
template <class T, class TPredicate>
void CopySettings(std::span<const TSectionRow<T>> rows, const T& from, T& to, TPredicate isTaken) {
    for (const TSectionRow<T>& row : rows)
        if (row.get && isTaken(row) && row.get(from) != row.get(to)) SetSetting(row, to, row.get(from));
}

} // namespace lumoplot
