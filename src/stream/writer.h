// Writes sections of keyed values to a byte buffer, in the compact or the text encoding
// (docs/stream-format.md). Texts are UTF-8 here and leave in the 8-bit code page.
#pragma once

#include "stream/items.h"
#include "support/look.h"

#include <string_view>

namespace lumoplot {

class TxyWriter {
public:
    /// Appends to `bytes`, which must outlive the writer.
    explicit TxyWriter(TBytes& bytes,
                       TEncoding encoding = CompactStreams() ? TEncoding::Compact : TEncoding::Text)
        : m_bytes(bytes), m_encoding(encoding) {}

    TEncoding Encoding() const { return m_encoding; }

    // Keyed values. Key numbers are 0 to 99; a longer one throws EStreamError "illegal call in savetofile".
    void WriteString(int key, std::string_view name, std::string_view value);
    void WriteInteger(int key, std::string_view name, int value);
    void WriteFloat(int key, std::string_view name, double value);
    void WriteBoolean(int key, std::string_view name, bool value);
    void WriteFont(int key, std::string_view name, const TFontSpec& font);
    void WriteEndOfSection(std::string_view name = "EndOfSection");

    /// The key of a composite record; its fields follow as items, in an order that their owner fixes.
    void WriteCompositeKey(int key, std::string_view name);
    void WriteStringItem(std::string_view value);
    void WriteIntegerItem(int value);
    void WriteFloatItem(double value);
    void WriteBooleanItem(bool value);

    /// Whether the next points have a third entry, until the last of them is written. None at first.
    void SetThirdEntry(TThirdEntry entry) { m_thirdEntry = entry; }
    void WritePointHeader(int count);
    /// The third entry is empty for an error of 0.
    void WritePoint(double x, double y, double yError = 0);
    /// As WritePoint for each place; `xs` and `ys` have the same size, and `yErrors` too, or it is empty.
    void WritePoints(std::span<const double> xs, std::span<const double> ys,
                     std::span<const double> yErrors = {});

    /// A string item without a key, always typed (signatures, the point block's letter).
    void WriteBareString(std::string_view bytes);
    /// An integer item without a key, always typed.
    void WriteBareInteger(int value);

private:
    void WriteKey(int key, std::string_view name, char letter);
    void AppendTag(TItemTag tag) { m_bytes.push_back(static_cast<std::uint8_t>(tag)); }
    void AppendExtended(double value);

    TBytes& m_bytes;
    TEncoding m_encoding;
    TThirdEntry m_thirdEntry = TThirdEntry::None;
};

} // namespace lumoplot
