#include "common/fit_parameters.h"
#include "common/thrown_text.h"
#include "stream/reader.h"
#include "stream/section.h"
#include "stream/writer.h"

#include <cmath>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

std::string Hex(const TBytes& bytes) {
    std::string text;
    char buffer[4];
    for (const auto byte : bytes) {
        std::snprintf(buffer, sizeof buffer, "%02X ", byte);
        text += buffer;
    }
    return text;
}

TBytes Written(TEncoding encoding, const std::function<void(TxyWriter&)>& write) {
    TBytes bytes;
    TxyWriter writer(bytes, encoding);
    write(writer);
    return bytes;
}

/// What `read` makes of the bytes.
template <class TRead>
auto Read(const TBytes& bytes, TRead read) {
    TByteSource source(bytes);
    TxyReader reader(source);
    return read(reader);
}

/// What the reader makes of the value of the first item.
template <class TValue>
TValue ValueOf(const TBytes& bytes, TValue (TxyReader::*read)()) {
    return Read(bytes, [&](TxyReader& reader) {
        reader.ReadKey();
        return (reader.*read)();
    });
}

std::string StringOf(const TBytes& bytes) {
    return Read(bytes, [](TxyReader& reader) {
        std::string text;
        reader.ReadKey();
        reader.ReadAsString(text);
        return text;
    });
}

std::string ErrorOf(const TBytes& bytes, const std::function<void(TxyReader&)>& read) {
    return ThrownText([&] { Read(bytes, read); });
}

TEST(StreamWriter, CompactItemsHaveTheseBytes) {
    const TBytes bytes = Written(TEncoding::Compact, [](TxyWriter& writer) {
        writer.WriteString(1, "SeriesName", "Run 1");
        writer.WriteInteger(7, "Value", 100);
        writer.WriteInteger(42, "Value", -300);
        writer.WriteInteger(8, "Value", 70000);
        writer.WriteBoolean(3, "Flag", true);
        writer.WriteFloat(5, "ZeroValue", 1.0);
        writer.WriteEndOfSection();
    });
    EXPECT_EQ(Hex(bytes), "06 03 20 31 53 06 05 52 75 6E 20 31 "
                          "06 03 20 37 49 02 64 "
                          "06 03 34 32 49 03 D4 FE "
                          "06 03 20 38 49 04 70 11 01 00 "
                          "06 03 20 33 42 09 "
                          "06 03 20 35 44 05 00 00 00 00 00 00 00 80 FF 3F "
                          "06 03 20 30 42 08 ");
}

TEST(StreamWriter, TextEncodingWritesNamesAndStrings) {
    const TBytes bytes = Written(TEncoding::Text, [](TxyWriter& writer) {
        writer.WriteFloat(2, "NumericalTolerance", 0.001);
        writer.WriteEndOfSection();
        writer.WritePointHeader(1);
        writer.WritePoint(1, 2.5);
    });
    TByteSource source(bytes);
    TxyReader reader(source);
    for (const char* expected : {"NumericalTolerance 2S", "0.001", "EndOfSection 0S", "false",
                                 "NumberOfPoints 1S", "1", "EntriesPerPoint 2S", "2", "S", "1", "2.5"})
        EXPECT_EQ(reader.ReadBareString(), expected);
    EXPECT_EQ(source.Remaining(), 0u);
}

TEST(StreamWriter, EachFormReachesAsFarAsItsWidth) {
    for (const auto& [value, size] :
         {std::pair(-128, 2u), {127, 2u}, {128, 3u}, {-32768, 3u}, {-32769, 5u}}) {
        const TBytes bytes =
            Written(TEncoding::Compact, [number = value](TxyWriter& w) { w.WriteBareInteger(number); });
        EXPECT_EQ(bytes.size(), size) << value;
    }
    for (const auto& [length, start] : {std::pair(255u, "06 FF "), {256u, "0C 00 01 00 00 "}}) {
        const TBytes text = Written(TEncoding::Compact, [length = length](TxyWriter& w) {
            w.WriteBareString(std::string(length, 'x'));
        });
        EXPECT_EQ(Hex(text).substr(0, std::strlen(start)), start);
        EXPECT_EQ(text.size(), length + std::strlen(start) / 3);
    }
}

TEST(StreamReader, EveryCoordinateOfAPointHasItsTag) {
    const TBytes whole = Written(TEncoding::Compact, [](TxyWriter& writer) {
        writer.WritePointHeader(1);
        writer.WritePoint(1, 2.5);
    });
    for (const std::size_t fromEnd : {11u, 22u}) {
        TBytes bytes = whole;
        bytes[bytes.size() - fromEnd] = 0x06;
        const std::string error = ErrorOf(bytes, [](TxyReader& reader) {
            double x = 0, y = 0;
            reader.ReadPointHeader();
            reader.ReadPoints({&x, 1}, {&y, 1});
        });
        EXPECT_EQ(error, "conversion error") << fromEnd;
    }
}

TEST(StreamWriter, KeysHaveTwoDigits) {
    TBytes bytes;
    TxyWriter writer(bytes);
    EXPECT_THROW(writer.WriteInteger(100, "", 1), EStreamError);
    EXPECT_THROW(writer.WriteInteger(-1, "", 1), EStreamError);
}

using TWrite = std::function<void(TxyWriter&)>;

struct TConversionCase {
    TWrite write;
    std::string asString;
    int asInteger;
    double asFloat;
    bool asBoolean;
};

TEST(StreamReader, ConvertsStoredTypes) {
    const TConversionCase cases[] = {
        {[](TxyWriter& w) { w.WriteBoolean(1, "", true); }, "true", 1, 1.0, true},
        {[](TxyWriter& w) { w.WriteInteger(1, "", 2); }, "2", 2, 2.0, false},
        {[](TxyWriter& w) { w.WriteInteger(1, "", 1); }, "1", 1, 1.0, true},
        {[](TxyWriter& w) { w.WriteString(1, "", "12"); }, "12", 12, 12.0, false},
    };
    for (const auto& c : cases) {
        const TBytes bytes = Written(TEncoding::Compact, c.write);
        EXPECT_EQ(StringOf(bytes), c.asString);
        EXPECT_EQ(ValueOf(bytes, &TxyReader::ReadAsInteger), c.asInteger);
        EXPECT_EQ(ValueOf(bytes, &TxyReader::ReadAsFloat), c.asFloat);
        EXPECT_EQ(ValueOf(bytes, &TxyReader::ReadAsBoolean), c.asBoolean);
    }
}

TEST(StreamReader, FloatsAreTruncatedTowardZeroAndOnlyLowerCaseTrueIsTrue) {
    const auto number = [](double value) {
        return Written(TEncoding::Compact, [&](TxyWriter& w) { w.WriteFloat(1, "", value); });
    };
    EXPECT_EQ(ValueOf(number(2.7), &TxyReader::ReadAsInteger), 2);
    EXPECT_EQ(ValueOf(number(-2.7), &TxyReader::ReadAsInteger), -2);
    EXPECT_EQ(ThrownText([&] { ValueOf(number(1e10), &TxyReader::ReadAsInteger); }), "conversion error");
    for (const auto& [text, value] : {std::pair{"True", false}, {"true", true}, {"1", false}}) {
        const TBytes bytes =
            Written(TEncoding::Compact, [text = text](TxyWriter& w) { w.WriteString(1, "", text); });
        EXPECT_EQ(ValueOf(bytes, &TxyReader::ReadAsBoolean), value) << text;
    }
}

TEST(StreamReader, ProtocolFaultsHaveTheirOwnTexts) {
    const TBytes number = Written(TEncoding::Compact, [](TxyWriter& w) {
        w.WriteFloat(1, "", 2);
        w.WriteFloat(2, "", 3);
    });
    const auto readKey = [](TxyReader& r) { r.ReadKey(); };
    const TBytes font = Written(TEncoding::Compact, [](TxyWriter& w) { w.WriteFont(1, "", {}); });
    const TBytes text = Written(TEncoding::Compact, [](TxyWriter& w) { w.WriteString(1, "", "x1"); });
    EXPECT_EQ(ErrorOf(number, [&](TxyReader& r) { readKey(r), readKey(r); }), "reading error 1");
    EXPECT_EQ(ErrorOf(number, [](TxyReader& r) { r.ReadAsFloat(); }), "reading error 2");
    EXPECT_EQ(ErrorOf(number, [&](TxyReader& r) { readKey(r), r.ReadFont(); }), "conversion error");
    // A float that was asked for as Boolean stays in the stream.
    EXPECT_EQ(ErrorOf(number, [&](TxyReader& r) { readKey(r), r.ReadAsBoolean(), readKey(r); }),
              "conversion error");
    EXPECT_EQ(ErrorOf(font, [&](TxyReader& r) { readKey(r), r.ReadAsInteger(); }), "conversion error");
    EXPECT_EQ(ErrorOf(text, [&](TxyReader& r) { readKey(r), r.ReadAsFloat(); }),
              "'x1' is not a valid floating point value");
}

TEST(StreamReader, UnknownEntriesAreSkipped) {
    const TBytes bytes = Written(TEncoding::Compact, [](TxyWriter& w) {
        w.WriteInteger(30, "", 5);
        w.WriteFont(31, "", {.Name = "Serif", .Size = 12});
        w.WriteString(32, "", "text");
        w.WriteEndOfSection();
    });
    TByteSource source(bytes);
    TxyReader reader(source);
    TCurFit fit;
    ReadEntries(reader, CurFitRows(), fit);
    EXPECT_EQ(source.Remaining(), 0u);
}

TEST(StreamReader, PointBlocksAreChecked) {
    const auto header = [](int key1, int count, int key2) {
        return Written(TEncoding::Compact, [=](TxyWriter& w) {
            w.WriteInteger(key1, "", count);
            w.WriteInteger(key2, "", 2);
            w.WriteBareString("D");
        });
    };
    const auto read = [](TxyReader& r) { r.ReadPointHeader(); };
    EXPECT_EQ(ErrorOf(header(2, 0, 2), read), "Stream read Error");
    EXPECT_EQ(ErrorOf(header(1, 0, 1), read), "Stream Read Error");
    EXPECT_EQ(ErrorOf(header(1, -1, 2), read), "Stream read Error");
    EXPECT_EQ(ErrorOf(header(1, 1000000000, 2), read), "Stream read Error"); // more than the stream holds
    EXPECT_EQ(Read(header(1, 0, 2), [](TxyReader& r) { return r.ReadPointHeader(); }), 0);
}

TEST(StreamReader, FurtherEntriesOfAPointAreDropped) {
    const TBytes bytes = Written(TEncoding::Text, [](TxyWriter& w) {
        w.WriteInteger(1, "NumberOfPoints", 2);
        w.WriteInteger(2, "EntriesPerPoint", 3);
        for (const char* item : {"S", "1", "10", "x", "2", "20", "y"}) w.WriteBareString(item);
    });
    double xs[2], ys[2];
    Read(bytes, [&](TxyReader& reader) {
        EXPECT_EQ(reader.ReadPointHeader(), 2);
        reader.ReadPoints(xs, ys);
    });
    EXPECT_EQ(ys[0], 10);
    EXPECT_EQ(xs[1], 2);
    EXPECT_EQ(ys[1], 20);
}

TEST(SectionStream, AThirdEntryIsAStringThatOthersPassOver) {
    for (const TEncoding encoding : {TEncoding::Compact, TEncoding::Text}) {
        const TBytes bytes = Written(encoding, [](TxyWriter& w) {
            w.SetThirdEntry(TThirdEntry::YError);
            w.WritePointHeader(3);
            const double x[] = {1, 2, 3}, y[] = {10, 20, 30}, errors[] = {0.5, 0, 1e-300};
            w.WritePoints(x, y, errors);
        });
        for (const TThirdEntry entry : {TThirdEntry::None, TThirdEntry::YError}) {
            double xs[3], ys[3], errors[3];
            Read(bytes, [&](TxyReader& reader) {
                reader.SetThirdEntry(entry);
                EXPECT_EQ(reader.ReadPointHeader(), 3);
                reader.ReadPoints(xs, ys, errors);
            });
            const bool isKnown = entry == TThirdEntry::YError;
            EXPECT_EQ(xs[2], 3);
            EXPECT_EQ(ys[1], 20);
            EXPECT_EQ(errors[0], isKnown ? 0.5 : 0);
            EXPECT_EQ(errors[1], 0);
            EXPECT_EQ(errors[2], isKnown ? 1e-300 : 0);
        }
    }
}

TEST(StreamReader, AnyNumberOfEntriesIsReadOrRefused) {
    const auto points = [](int entries, int written) {
        return Written(TEncoding::Text, [=](TxyWriter& w) {
            w.WriteInteger(1, "NumberOfPoints", 1);
            w.WriteInteger(2, "EntriesPerPoint", entries);
            w.WriteBareString("S");
            for (int i = 1; i <= written; ++i) w.WriteBareString(std::to_string(i));
        });
    };
    const auto read = [](TxyReader& reader) {
        reader.SetThirdEntry(TThirdEntry::YError);
        double x = 0, y = 0, error = 0;
        reader.ReadPointHeader();
        reader.ReadPoints({&x, 1}, {&y, 1}, {&error, 1});
        EXPECT_EQ(x, 1);
        EXPECT_EQ(y, 2);
        EXPECT_TRUE(error == 0 || error == 3);
    };
    for (const int entries : {-2147483647 - 1, 0, 1, 2}) Read(points(entries, 2), read);
    for (const int entries : {3, 4, 255}) {
        Read(points(entries, entries), read);
        EXPECT_EQ(ErrorOf(points(entries, entries - 1), read), "Stream read Error");
    }
    EXPECT_EQ(ErrorOf(points(2147483647, 3), read), "Stream read Error");
}

TEST(StreamReader, LengthsBeyondTheStreamAreRefused) {
    TBytes bytes = {static_cast<std::uint8_t>(TItemTag::LongString), 0xFF, 0xFF, 0xFF, 0x7F, 'a'};
    EXPECT_EQ(ErrorOf(bytes, [](TxyReader& r) { r.ReadBareString(); }), "Stream read Error");
    bytes[4] = 0xFF;
    EXPECT_EQ(ErrorOf(bytes, [](TxyReader& r) { r.ReadBareString(); }), "Stream read Error");
}

TEST(SectionStream, FontsAreTypedInBothEncodings) {
    const TFontSpec font{"Sérif", 14, 0x123456, true, false, true, false};
    for (const TEncoding encoding : {TEncoding::Compact, TEncoding::Text}) {
        const TBytes bytes = Written(encoding, [&](TxyWriter& w) { w.WriteFont(16, "Font", font); });
        EXPECT_EQ(ValueOf(bytes, &TxyReader::ReadFont), font);
    }
}

TEST(CurFitRecord, ComesBackInBothEncodings) {
    TCurFit fit;
    fit.SetExpression("a*exp(-b*x)");
    fit.SetTolerance(1e-9);
    fit.SetUseLeftMargin(true);
    AddParameter(fit, "a", 1.25).Units = "s";
    AddParameter(fit, "b", -3).SetVary(true);
    fit.AddTemplate(std::make_unique<TDBLFunction>(TDBLFunction{"f", "a*x", "a line"}));
    for (const TEncoding encoding : {TEncoding::Compact, TEncoding::Text}) {
        const TBytes bytes = Written(encoding, [&](TxyWriter& w) { fit.SaveToStream(w); });
        TCurFit back;
        TByteSource source(bytes);
        TxyReader reader(source);
        back.LoadFromStream(reader, true);
        EXPECT_EQ(source.Remaining(), 0u);
        EXPECT_EQ(back.Expression(), fit.Expression());
        EXPECT_EQ(back.Tolerance(), fit.Tolerance());
        ASSERT_EQ(back.NParams(), 2);
        EXPECT_EQ(back.Parameter(2)->Value(), -3);
        EXPECT_TRUE(back.Parameter(2)->Vary());
        EXPECT_EQ(back.Parameter(1)->Units, "s");
        ASSERT_EQ(back.NTemplates(), 1);
        // The text encoding carries two strings a template, the compact one three.
        EXPECT_EQ(back.Template(1)->Description, encoding == TEncoding::Compact ? "a line" : "");
        EXPECT_FALSE(back.Modified());
    }
}

} // namespace
} // namespace lumoplot
