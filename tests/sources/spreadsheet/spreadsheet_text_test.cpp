#include "sources/spreadsheet/spreadsheet_text.h"

#include "sources/spreadsheet/serial_text.h"
#include "sources/spreadsheet/spreadsheet_files.h"
#include "sources/text/text_fixture.h"

namespace lumoplot {
namespace {

class Spreadsheet : public TTextFiles {
protected:
    /// The text of a sheet as it is read, or the reason why it is not.
    std::string TextOf(const std::string& bytes, const std::string& sheet = {}) {
        auto file = std::make_unique<QFile>(QString::fromStdString(Write(bytes, "book.xlsx")));
        EXPECT_TRUE(file->open(QIODevice::ReadOnly));
        try {
            const auto text = TSpreadsheetText::Open(file, sheet);
            if (!text) return "no spreadsheet";
            const QByteArray all = text->readAll();
            text->seek(0);
            EXPECT_EQ(text->readAll(), all) << "once more";
            if (text->RawPosition() != text->RawSize()) return text->errorString().toStdString();
            return all.toStdString();
        } catch (const std::exception& error) {
            return error.what();
        }
    }
};

// Cell formats 0 to 7: general, a date, a date with time, a time, a duration, two decimals, codes of their
// own.
const char* const kStyles =
    "<numFmts><numFmt numFmtId=\"164\" formatCode=\"dd\\.mm\\.yy\\ hh:mm;@\"/>"
    "<numFmt numFmtId=\"165\" formatCode=\"0.00&quot; days&quot;\"/></numFmts>"
    "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs>"
    "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"22\"/><xf numFmtId=\"21\"/>"
    "<xf numFmtId=\"46\"/><xf numFmtId=\"2\"/><xf numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs>";

TEST_F(Spreadsheet, CellsOfXlsxBecomeTheTextOfTheirValues) {
    const std::string texts =
        "<si><t>Time</t></si><si><r><t>rich</t></r><r><t xml:space=\"preserve\"> text</t></r>"
        "<rPh><t>spoken</t></rPh></si><si><t>a_x000A_b</t></si>";
    constexpr std::pair<const char*, const char*> kCells[] = {
        {"<c t=\"s\"><v>0</v></c>", "Time"},
        {"<c t=\"s\"><v>1</v></c>", "rich text"},
        {"<c t=\"s\"><v>2</v></c>", "\"a\nb\""},
        {"<c t=\"inlineStr\"><is><t>say \"x\"</t></is></c>", "\"say \"\"x\"\"\""},
        {"<c><v>0.10000000000000001</v></c>", "0.10000000000000001"},
        {"<c><f>A1*2</f><v>-1.5E-10</v></c>", "-1.5E-10"},
        {"<c t=\"str\"><f>T(A1)</f><v>of a formula</v></c>", "of a formula"},
        {"<c><f>A1*2</f></c>", "=A1*2"}, // kept without its value
        {"<c t=\"e\"><f>1/0</f><v>#DIV/0!</v></c>", "#DIV/0!"},
        {"<c t=\"b\"><v>1</v></c>", "TRUE"},
        {"<c t=\"d\"><v>2024-01-31T12:30:00</v></c>", "2024-01-31T12:30:00"},
        {"<c s=\"1\"><v>45322</v></c>", "2024-01-31"},
        {"<c s=\"1\"><v>1</v></c>", "1900-01-01"},
        {"<c s=\"2\"><v>45322.520833333336</v></c>", "2024-01-31 12:30:00"},
        {"<c s=\"2\"><v>45322.5</v></c>", "2024-01-31 12:00:00"},
        {"<c s=\"6\"><v>45322.500002893516</v></c>", "2024-01-31 12:00:00.25"},
        {"<c s=\"3\"><v>0.521238425925926</v></c>", "12:30:35"},
        {"<c s=\"4\"><v>1.9791666666666667</v></c>", "47:30:00"},
        {"<c s=\"1\"><v>-5</v></c>", "-5"},
        {"<c s=\"5\"><v>1.239</v></c>", "1.239"},
        {"<c s=\"7\"><v>3.5</v></c>", "3.5"},
        {"<c s=\"99\"><v>7</v></c>", "7"},
        {"<c t=\"s\"><v>3</v></c>", "is damaged: a text of a cell is missing"},
    };
    for (const auto& [cell, text] : kCells) {
        const std::string found =
            TextOf(Xlsx("<row r=\"1\">" + std::string(cell) + "</row>", texts, kStyles));
        EXPECT_EQ(found, std::string(text).starts_with("is damaged") ? text : std::string(text) + "\n")
            << cell;
    }
    const TZipParts from1904 = XlsxParts({{"Data", "<row><c s=\"1\"><v>43860</v></c></row>"}}, {}, kStyles,
                                         "<workbookPr date1904=\"1\"/>");
    EXPECT_EQ(TextOf(Zip(from1904)), "2024-01-31\n");
}

TEST_F(Spreadsheet, CellsOfOdsBecomeTheTextOfTheirValues) {
    constexpr std::pair<const char*, const char*> kCells[] = {
        {"office:value-type=\"float\" office:value=\"0.1234567890123456\"><text:p>0,12</text:p>",
         "0.1234567890123456"},
        {"office:value-type=\"percentage\" office:value=\"0.25\"><text:p>25 %</text:p>", "0.25"},
        {"office:value-type=\"date\" office:date-value=\"2024-01-31T12:30:00\"><text:p>31.1.</text:p>",
         "2024-01-31T12:30:00"},
        {"office:value-type=\"time\" office:time-value=\"PT47H05M07.500000S\"><text:p>47</text:p>",
         "47:05:07.5"},
        {"office:value-type=\"boolean\" office:boolean-value=\"true\"><text:p>WAHR</text:p>", "TRUE"},
        {"office:value-type=\"string\"><text:p>two<text:s "
         "text:c=\"2\"/><text:span>words</text:span></text:p>",
         "two  words"},
        {"office:value-type=\"string\"><text:p>a</text:p><text:p>b</text:p>", "\"a\nb\""},
        {"office:value-type=\"string\"><office:annotation><text:p>a note</text:p></office:annotation>"
         "<text:p>cell</text:p>",
         "cell"},
        {"table:formula=\"of:=1/0\" office:value-type=\"string\" "
         "office:string-value=\"\"><text:p>#DIV/0!</text:p>",
         "#DIV/0!"},
        {"table:formula=\"of:=[.A1]\">", "=of:=[.A1]"},
    };
    for (const auto& [cell, text] : kCells)
        EXPECT_EQ(TextOf(Ods("<table:table-row><table:table-cell " + std::string(cell) +
                             "</table:table-cell></table:table-row>")),
                  std::string(text) + "\n")
            << cell;
}

TEST_F(Spreadsheet, HolesRepeatsAndMergedCellsStayInTheirPlaces) {
    // B2:C2 is merged; rows 3 and 4 are not in the file, row 5 is formatted and empty.
    EXPECT_EQ(
        TextOf(Xlsx("<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"C1\"><v>2</v></c></row>"
                    "<row r=\"2\"><c r=\"B2\"><v>3</v></c><c r=\"C2\" s=\"1\"/></row>"
                    "<row r=\"5\"><c r=\"A5\" s=\"1\"/></row><row r=\"6\"><c r=\"A6\"><v>4</v></c></row>"
                    "<row r=\"7\"><c r=\"A7\" s=\"1\"/></row>")),
        "1\t\t2\n\t3\t\n\n\n\n4\t\t\n");
    // Cells without a name follow each other.
    EXPECT_EQ(TextOf(Xlsx("<row><c><v>1</v></c><c/><c><v>3</v></c><c r=\"E1\"/><c><v>6</v></c></row>")),
              "1\t\t3\t\t\t6\n");
    const std::string one = "<table:table-cell office:value-type=\"float\" office:value=\"1\"/>";
    EXPECT_EQ(
        TextOf(Ods("<table:table-header-rows><table:table-row>" + one +
                   "<table:table-cell table:number-columns-repeated=\"2\"/>" + one +
                   "</table:table-row></table:table-header-rows>"
                   "<table:table-row table:number-rows-repeated=\"2\"><table:covered-table-cell/>" +
                   one +
                   "<table:table-cell table:number-columns-repeated=\"16000\"/></table:table-row>"
                   "<table:table-row table:number-rows-repeated=\"1\"><table:table-cell/></table:table-row>"
                   "<table:table-row>" +
                   one +
                   "</table:table-row>"
                   "<table:table-row table:number-rows-repeated=\"1048000\"><table:table-cell/>"
                   "</table:table-row>")),
        "1\t\t\t1\n\t1\t\t\n\t1\t\t\n\n1\t\t\t\n");
}

TEST_F(Spreadsheet, ASheetIsChosenByNameOrIsTheFirstWithNumbers) {
    const std::string numbers = "<row><c><v>1</v></c></row><row><c><v>2</v></c></row>";
    const std::string texts = "<row><c t=\"str\"><v>Notes</v></c></row>";
    const std::string hidden = "state=\"hidden\"";
    const std::string book = Zip(
        XlsxParts({{"About", texts}, {"Old", numbers, hidden}, {"Runs &amp; more", numbers}, {"Empty", ""}}));
    EXPECT_EQ(TextOf(book), "1\n2\n");
    EXPECT_EQ(TextOf(book, "About"), "Notes\n");
    EXPECT_EQ(TextOf(book, "Runs"),
              "has no sheet \"Runs\" but \"About\", \"Old\", \"Runs & more\", \"Empty\"");
    EXPECT_EQ(TextOf(Zip(XlsxParts({{"None", ""}, {"About", texts}}))), "Notes\n");
    const auto sheets = SheetsOf(Write(book, "book.xlsx"));
    ASSERT_EQ(sheets.size(), 4u);
    EXPECT_TRUE(sheets[1].isHidden && !sheets[2].isHidden);

    const std::string row =
        "<table:table-row><table:table-cell office:value-type=\"float\" office:value=\"1\"/>"
        "</table:table-row>";
    const std::string style =
        "<style:style style:name=\"ta2\"><style:table-properties table:display=\"false\"/>"
        "</style:style>";
    const std::string ods =
        Zip(OdsParts({{"Old", row + row, "table:style-name=\"ta2\""}, {"New", row + row + row}}, style));
    EXPECT_EQ(TextOf(ods), "1\n1\n1\n");
    EXPECT_EQ(TextOf(ods, "Old"), "1\n1\n");
    const std::string note =
        "<table:table-row><table:table-cell><text:p>Notes</text:p></table:table-cell></table:table-row>";
    const std::string noted = Zip(OdsParts({{"About", note}, {"Runs", row + row}, {"Last", row}}));
    EXPECT_EQ(TextOf(noted), "1\n1\n");
    EXPECT_EQ(TextOf(noted, "About"), "Notes\n");
    EXPECT_EQ(TextOf(noted, "Last"), "1\n");
    EXPECT_EQ(SheetsOf(Write(noted, "book.ods")).size(), 3u);
}

TEST_F(Spreadsheet, ItsPlaceIsPartOfTheName) {
    const std::string file = Write("", "with#one.xlsx#B");
    EXPECT_EQ(SheetPlaceOf(file).file, file);
    constexpr std::pair<const char*, std::pair<const char*, const char*>> kNames[] = {
        {"a/book.xlsx#Runs", {"a/book.xlsx", "Runs"}},
        {"book.ODS#a#b.c", {"book.ODS", "a#b.c"}},
        {"book.xlsx", {"book.xlsx", ""}},
        {"a#b.csv", {"a#b.csv", ""}},
        {"#1/book.xlsm#", {"#1/book.xlsm", ""}},
    };
    for (const auto& [name, place] : kNames) {
        EXPECT_EQ(SheetPlaceOf(name).file, place.first) << name;
        EXPECT_EQ(SheetPlaceOf(name).sheet, place.second) << name;
    }
    EXPECT_EQ(WithSheet("book.xlsx#Old", "New"), "book.xlsx#New");
}

// Numbers with three decimals throughout are no thousands: the cells are numbers.
TEST_F(Spreadsheet, IsReadAsATable) {
    const std::string head =
        "<row r=\"1\"><c r=\"A1\" t=\"str\"><v>Day</v></c><c r=\"B1\" t=\"str\"><v>U, V</v></c>"
        "</row>";
    std::string rows = head;
    for (int i = 2; i <= 9; ++i) {
        const std::string n = std::to_string(i);
        rows += "<row r=\"" + n + "\"><c r=\"A" + n + "\" s=\"1\"><v>" + std::to_string(45320 + i) +
                "</v></c><c r=\"B" + n + "\"><v>1.23" + n + "</v></c></row>";
    }
    const std::string other = head + "<row><c><v>5</v></c><c><v>7</v></c></row><row><c><v>6</v></c></row>"
                                     "<row><c><v>8</v></c><c t=\"e\"><v>#N/A</v></c></row>";
    const std::string name =
        Write(Zip(XlsxParts({{"Days", rows}, {"Few", other}}, {}, kStyles)), "book.xlsx");
    const TTextReport report = Load(name);
    EXPECT_EQ(report.yName, "U, V");
    ASSERT_EQ(points.size(), 8u);
    EXPECT_EQ(points[0], (TPoints::value_type{45322, 1.232}));
    EXPECT_EQ(Describe(report.readings.best.format), "sheet \"Days\", dates year-month-day, 1 header row");

    const TTextReport few = Load(name + "#Few");
    EXPECT_EQ(points, (TPoints{{5, 7}}));
    ASSERT_EQ(few.messages.size(), 2u);
    EXPECT_TRUE(few.messages[1].starts_with("row 4: ")) << few.messages[1];
    EXPECT_EQ(ErrorOf(name + "#Gone"), "File book.xlsx has no sheet \"Gone\" but \"Days\", \"Few\"");
}

TEST_F(Spreadsheet, WhatIsNoneSaysWhatItIs) {
    const std::string row = "<row><c><v>1</v></c></row>";
    const std::string whole = Xlsx(row + row);
    for (std::size_t length = 4; length < whole.size(); length += 37) {
        const std::string text = TextOf(whole.substr(0, length));
        EXPECT_TRUE(text.starts_with("is no whole zip archive: ")) << length << text;
    }
    EXPECT_EQ(TextOf("1,2\n3,4\n"), "no spreadsheet");
    EXPECT_EQ(TextOf(Zip({{"word/document.xml", "<a/>"}})), "no spreadsheet");
    EXPECT_EQ(TextOf(Zip(XlsxParts({}))), "is a spreadsheet without a sheet of cells");
    TZipParts locked = OdsParts({{"Data", ""}});
    locked.emplace_back("META-INF/manifest.xml", "<manifest:encryption-data/>");
    constexpr const char* kLocked = "is protected with a password: save it without one and open that";
    EXPECT_EQ(TextOf(Zip(locked)), kLocked);
    std::string container = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    container.resize(0x1E, '\0');
    container += std::string("\x09\0", 2);
    container.resize(0x30, '\0');
    container += '\1';
    container.resize(1024 + 128, '\0');
    for (const char c : std::string("EncryptedPackage")) container += {c, '\0'};
    EXPECT_EQ(TextOf(container), kLocked);
}

TEST_F(Spreadsheet, HostileFilesAreRefusedInLittleMemory) {
    const std::string full =
        "<table:table-cell table:number-columns-repeated=\"16384\" office:value-type=\"string\">"
        "<text:p>" +
        std::string(1000, 'x') + "</text:p></table:table-cell>";
    const std::string long1000 = "<si><t>" + std::string(1000, 'y') + "</t></si>";
    std::string cells;
    for (int i = 0; i < 5000; ++i) cells += "<c t=\"s\"><v>0</v></c>";
    std::string pieces; // each far shorter
    for (int i = 0; i < 17; ++i) pieces += std::string(1 << 20, 'z') + "<!---->";
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += "<a>";
    const std::pair<std::string, const char*> kCases[] = {
        {Ods("<table:table-row>" + full + "</table:table-row>"), "holds a row of more than 4 MB"},
        {Xlsx("<row>" + cells + "</row>", long1000), "holds a row of more than 4 MB"},
        {Xlsx("<row><c t=\"str\"><v>" + std::string(17 << 20, 'z') + "</v></c></row>"),
         "holds a cell of more than 16 MB"},
        {Xlsx("<row><c t=\"str\"><v>" + pieces + "</v></c></row>"), "holds a cell of more than 16 MB"},
        {Xlsx("<row r=\"2000000\"><c><v>1</v></c></row>"), "is damaged: it has more rows than a sheet"},
        {Xlsx("<row><c r=\"ZZZZ1\"><v>1</v></c></row>"), "is damaged: it has more columns than a sheet"},
        {Xlsx("<row><c t=\"s\"><v>4294967295</v></c></row>"), "is damaged: a text of a cell is missing"},
        {Xlsx("<row>" + deep), "is damaged: "},
        {Xlsx("<row><c><v>1</v></c></row>]]>&none;"), "is damaged: "},
    };
    for (const auto& [bytes, reason] : kCases)
        EXPECT_TRUE(TextOf(bytes).starts_with(reason)) << TextOf(bytes);
    // A hundred thousand rows of cells that are formatted and empty.
    std::string empty;
    for (int i = 1; i <= 100000; ++i) empty += "<row><c s=\"1\"/></row>";
    EXPECT_EQ(TextOf(Xlsx("<row><c><v>1</v></c></row>" + empty)).substr(0, 3), "1\n\n");
    // Bytes of the archive changed.
    const std::string whole = Xlsx("<row><c><v>1</v></c></row><row><c><v>2</v></c></row>");
    for (std::size_t i = 0; i < whole.size(); i += 5) {
        std::string changed = whole;
        changed[i] = static_cast<char>(changed[i] ^ 0x5A);
        TextOf(changed);
    }
}

TEST(SerialText, CodesOfFormatsTellDatesFromNumbers) {
    constexpr std::pair<const char*, TSerialKind> kCodes[] = {
        {"General", TSerialKind::Number},
        {"0.00E+00", TSerialKind::Number},
        {"#,##0 \"days\"", TSerialKind::Number},
        {"[Red]0.0;[Blue]-0.0", TSerialKind::Number},
        {"[$-409]d-mmm-yy;@", TSerialKind::Date},
        {"mmm", TSerialKind::Date},
        {"yyyy\\-mm\\-dd hh:mm", TSerialKind::DateTime},
        {"h:mm AM/PM", TSerialKind::Time},
        {"mm:ss.0", TSerialKind::Time},
        {"[h]:mm:ss", TSerialKind::Duration},
        {"[mm]:ss", TSerialKind::Duration},
        {"0.0\\h", TSerialKind::Number},
        {"@", TSerialKind::Number},
    };
    for (const auto& [code, kind] : kCodes) EXPECT_EQ(SerialKindOf(code), kind) << code;
}

} // namespace
} // namespace lumoplot
