// Reads sections of keyed values from bytes, in either encoding, and trusts nothing: lengths and counts are
// checked against what is left before anything is allocated. Errors are EStreamError with the texts "reading
// error 1" (a key while a value is unread), "reading error 2" (a value without a key), "conversion error",
// "Stream read Error" (a truncated stream, or no point block), "Stream Read Error"; a text that is no number
// throws EConvertError.
#pragma once

#include "stream/items.h"
#include "support/look.h"

#include <string>

namespace lumoplot {

class TxyReader {
public:
    /// Reads on from the position of `source`, which must outlive the reader.
    explicit TxyReader(TByteSource& source) : m_source(source) {}

    /// The number of the next key; 0 at the end of the section, whose value is then read as well.
    int ReadKey();
    /// The type letter of the current key: S, I, D, B, F or C.
    char KeyLetter() const { return m_letter; }

    // The value of the current key, converted from its stored type. ReadAsString leaves `value` as it is for
    // a letter that has no text form of its own.
    void ReadAsString(std::string& value);
    int ReadAsInteger();
    double ReadAsFloat();
    /// A stored float gives false and stays unread, so that the next read fails.
    bool ReadAsBoolean();
    TFontSpec ReadFont();
    /// Drops the value. A composite record cannot be skipped: its owner must read it.
    void SkipValue();

    /// Takes the current key's value as a composite record; its items are read by the calls below, each of
    /// which accepts the typed and the text form.
    void BeginComposite();
    std::string ReadStringItem();
    int ReadIntegerItem();
    double ReadFloatItem();
    bool ReadBooleanItem();

    /// What the third entries of the points mean, if they have one. None at first.
    void SetThirdEntry(TThirdEntry entry) { m_thirdEntry = entry; }
    /// The number of points that follow, checked against what is left. Points with fewer entries than two
    /// have X and Y all the same.
    int ReadPointHeader();
    void ReadPoint(double& x, double& y);
    /// Also the standard error of Y: 0 where the third entry is another one, missing, or no number.
    void ReadPoint(double& x, double& y, double& yError);
    /// As ReadPoint for each place; `xs` and `ys` have the same size, and `yErrors` too, or it is empty.
    void ReadPoints(std::span<double> xs, std::span<double> ys, std::span<double> yErrors = {});

    /// A string item without a key, as bytes.
    std::string ReadBareString();
    int ReadBareInteger();

private:
    void ConsumeValue();
    double ReadExtended();
    bool ReadTypedBoolean();
    TItemTag TakeTag() { return static_cast<TItemTag>(m_source.TakeByte()); }
    TItemTag PeekTag() const;
    std::string TakeString(TItemTag tag);
    int TakeInteger(TItemTag tag);
    double ReadCoordinate();

    TByteSource& m_source;
    char m_letter = 'S';
    bool m_valueConsumed = true;
    bool m_pointsAreFloats = true;
    int m_entriesPerPoint = 2;
    TThirdEntry m_thirdEntry = TThirdEntry::None;
};

} // namespace lumoplot
