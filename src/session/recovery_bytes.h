// The values that a recovery file is made of, little-endian, one behind the other. The reader trusts no count
// and no length.
#pragma once

#include "stream/items.h"
#include "support/errors.h"

#include <QString>
#include <QtEndian>
#include <cstring>
#include <vector>

namespace lumoplot {

class TRecoveryBytesWriter {
public:
    explicit TRecoveryBytesWriter(TBytes& bytes) : m_bytes(bytes) {}

    template <class T>
    void Number(T value) {
        Numbers(std::span<const T>(&value, 1));
    }
    /// Without their count.
    template <class T>
    void Numbers(std::span<const T> values) {
        if (values.empty()) return;
        const std::size_t start = m_bytes.size();
        m_bytes.resize(start + values.size_bytes());
        qToLittleEndian<T>(values.data(), static_cast<qsizetype>(values.size()), m_bytes.data() + start);
    }
    void Flag(bool value) { Number<std::uint8_t>(value ? 1 : 0); }
    void Count(std::size_t count) { Number(static_cast<std::int32_t>(count)); }
    void Bytes(std::span<const std::uint8_t> bytes) {
        Count(bytes.size());
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }
    void Text(std::string_view text) {
        Bytes({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    }
    void Text(const QString& text) { Text(std::string_view(text.toStdString())); }

private:
    TBytes& m_bytes;
};

/// Throws EStreamError where the bytes end too early, or say what can not be.
class TRecoveryBytesReader {
public:
    explicit TRecoveryBytesReader(std::span<const std::uint8_t> bytes) : m_source(bytes) {}

    template <class T>
    T Number() {
        return qFromLittleEndian<T>(Take(sizeof(T)).data());
    }
    template <class T>
    std::vector<T> Numbers(std::size_t count) {
        if (count > m_source.Remaining() / sizeof(T)) Refuse();
        std::vector<T> values(count);
        const auto bytes = Take(count * sizeof(T));
        if (count > 0) qFromLittleEndian<T>(bytes.data(), static_cast<qsizetype>(count), values.data());
        return values;
    }
    bool Flag() { return Number<std::uint8_t>() != 0; }
    /// Of things that take at least `size` bytes each.
    std::size_t Count(std::size_t size) {
        const auto count = Number<std::int32_t>();
        if (count < 0 || static_cast<std::size_t>(count) > m_source.Remaining() / size) Refuse();
        return static_cast<std::size_t>(count);
    }
    std::span<const std::uint8_t> Bytes() { return Take(Count(1)); }
    std::string Text() {
        const auto bytes = Bytes();
        return {bytes.begin(), bytes.end()};
    }
    QString ShownText() { return QString::fromStdString(Text()); }
    bool IsAtEnd() const { return m_source.Remaining() == 0; }

    [[noreturn]] static void Refuse() { throw EStreamError("Stream read Error"); }

private:
    XYGRAPH_EXPORT std::span<const std::uint8_t> Take(std::size_t count);

    TByteSource m_source;
};

} // namespace lumoplot
