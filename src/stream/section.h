// One table per section of a file: key number, name, kind, getter and setter of each entry. Writing walks the
// table, reading dispatches on it, and whoever shows a file's content prints from it.
#pragma once

#include "stream/reader.h"
#include "stream/writer.h"

#include <functional>
#include <span>
#include <string>
#include <type_traits>
#include <variant>

namespace lumoplot {

using TFieldValue = std::variant<std::string, int, double, bool, TFontSpec>;

/// Which sections have a row: all, or only those of a file that carries points.
enum class TRowOf { EverySection, SectionsWithPoints };

/// One entry of a section of objects of type T.
template <class T>
struct TSectionRow {
    int key;
    const char* name;             ///< as written in the text encoding; may be empty
    const char* label;            ///< what people are shown
    TFieldValue (*get)(const T&); ///< null: a composite record
    void (*write)(TxyWriter&, const TSectionRow&, const T&); ///< null: read but never written
    void (*read)(TxyReader&, T&);
    TRowOf rowOf = TRowOf::EverySection;
    void (*reset)(T&) = nullptr; ///< puts the default; null: there is none
};

namespace section {

template <class TValue>
TFieldValue ToFieldValue(const TValue& value) {
    using TPlain = std::remove_cvref_t<TValue>;
    if constexpr (std::is_same_v<TPlain, bool> || std::is_same_v<TPlain, TFontSpec> ||
                  std::is_same_v<TPlain, std::string> || std::is_floating_point_v<TPlain>)
        return value;
    else
        return static_cast<int>(value);
}

struct TValueWriter {
    TxyWriter& writer;
    int key;
    const char* name;
    void operator()(const std::string& value) const { writer.WriteString(key, name, value); }
    void operator()(int value) const { writer.WriteInteger(key, name, value); }
    void operator()(double value) const { writer.WriteFloat(key, name, value); }
    void operator()(bool value) const { writer.WriteBoolean(key, name, value); }
    void operator()(const TFontSpec& value) const { writer.WriteFont(key, name, value); }
};

template <class TPlain>
TPlain ReadValue(TxyReader& reader) {
    if constexpr (std::is_same_v<TPlain, bool>) {
        return reader.ReadAsBoolean();
    } else if constexpr (std::is_same_v<TPlain, TFontSpec>) {
        return reader.ReadFont();
    } else if constexpr (std::is_same_v<TPlain, std::string>) {
        std::string value;
        reader.ReadAsString(value);
        return value;
    } else if constexpr (std::is_floating_point_v<TPlain>) {
        return reader.ReadAsFloat();
    } else {
        return static_cast<TPlain>(reader.ReadAsInteger());
    }
}

} // namespace section

/// The row of a property that `Get` reads and `Set` stores (member functions, or lambdas that take the
/// object).
template <class T, auto Get, auto Set>
constexpr TSectionRow<T> Row(int key, const char* name, const char* label = nullptr,
                             TRowOf rowOf = TRowOf::EverySection) {
    using TPlain = std::remove_cvref_t<std::invoke_result_t<decltype(Get), const T&>>;
    return {
        key,
        name,
        label ? label : name,
        [](const T& object) { return section::ToFieldValue(std::invoke(Get, object)); },
        [](TxyWriter& writer, const TSectionRow<T>& row, const T& object) {
            std::visit(section::TValueWriter{writer, row.key, row.name}, row.get(object));
        },
        [](TxyReader& reader, T& object) { std::invoke(Set, object, section::ReadValue<TPlain>(reader)); },
        rowOf};
}

/// A row of a text that is written only where there is one.
template <class T, auto Get, auto Set>
constexpr TSectionRow<T> OptionalTextRow(int key, const char* name) {
    TSectionRow<T> row = Row<T, Get, Set>(key, name);
    row.write = [](TxyWriter& writer, const TSectionRow<T>& which, const T& object) {
        const std::string text = std::invoke(Get, object);
        if (!text.empty()) writer.WriteString(which.key, which.name, text);
    };
    return row;
}

/// A row that is read (into the property behind `Set`) but never written.
template <class T, class TValue, auto Set>
constexpr TSectionRow<T> ReadOnlyRow(int key, const char* label) {
    return {key,
            "",
            label,
            nullptr,
            nullptr,
            [](TxyReader& reader, T& object) { std::invoke(Set, object, section::ReadValue<TValue>(reader)); }};
}

/// A row whose value is a composite record, written and read item by item by the object behind it.
template <class T, auto Write, auto Read>
constexpr TSectionRow<T> CompositeRow(int key, const char* name) {
    return {key,
            name,
            name,
            nullptr,
            [](TxyWriter& writer, const TSectionRow<T>& row, const T& object) {
                writer.WriteCompositeKey(row.key, row.name);
                std::invoke(Write, object, writer);
            },
            [](TxyReader& reader, T& object) {
                reader.BeginComposite();
                std::invoke(Read, object, reader);
            }};
}

/// Writes the entries of the table that such a section has, in its order, and the end mark.
template <class T>
void WriteEntries(TxyWriter& writer, std::span<const TSectionRow<T>> rows, const T& object,
                  TRowOf section = TRowOf::EverySection) {
    for (const auto& row : rows)
        if (row.write && (row.rowOf == TRowOf::EverySection || row.rowOf == section))
            row.write(writer, row, object);
    writer.WriteEndOfSection();
}

/// Reads entries up to the end mark; those that the table does not know are skipped.
template <class T>
void ReadEntries(TxyReader& reader, std::span<const TSectionRow<T>> rows, T& object) {
    while (const int key = reader.ReadKey()) {
        const TSectionRow<T>* found = nullptr;
        for (const auto& row : rows)
            if (row.key == key) found = &row;
        if (found)
            found->read(reader, object);
        else
            reader.SkipValue();
    }
}

} // namespace lumoplot
