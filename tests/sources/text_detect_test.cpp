#include "sources/text_preview.h"
#include "text_fixture.h"

namespace lumoplot {
namespace {

class TextFormat : public TTextFiles {};

struct TFormatCase {
    const char* name;
    std::string_view text;
    const char* description;
    TPoints points;
};

const TPoints kTwo = {{1.5, 2.5}, {3, -4}};

TEST_F(TextFormat, IsFoundFromTheText) {
    const TFormatCase cases[] = {
        {"comma", "1.5,2.5\n3,-4\n", "comma, decimal point, no header rows, UTF-8", kTwo},
        {"tab", "x\ty\n1.5\t2.5\n3\t-4\n", "tab, decimal point, 1 header row, UTF-8", kTwo},
        {"semicolon", "a;b\n1,5;2,5\n3;-4", "semicolon, decimal comma, 1 header row, UTF-8", kTwo},
        {"tab and comma", "1,5\t2,5\n3,0\t-4\n", "tab, decimal comma, no header rows, UTF-8", kTwo},
        {"blanks", "  1.5   2.5 \n 3\t-4\n", "blanks, decimal point, no header rows, UTF-8", kTwo},
        {"bar", "1.5|2.5\n3|-4\n", "vertical bar, decimal point, no header rows, UTF-8", kTwo},
        {"comma and blank", "1.5, 2.5\n3, -4\n", "comma, decimal point, no header rows, UTF-8", kTwo},
        {"quoted decimals", "\"1,5\",\"2,5\"\n\"3,0\",\"-4\"\n",
         "comma, decimal comma, no header rows, UTF-8", kTwo},
        {"CR", "a;b\r1.5;2.5\r3;-4\r", "semicolon, decimal point, 1 header row, UTF-8", kTwo},
        {"CRLF", "1.5;2.5\r\n3;-4\r\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"trailing separators", "1.5;2.5;\n3;-4;\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"comments", "# made by hand\n% t v\n// end\n1.5 2.5\n# pause\n3 -4\n",
         "blanks, decimal point, 3 header rows, UTF-8", kTwo},
        {"BOM", "\xEF\xBB\xBFt;v\n1.5;2.5\n3;-4\n", "semicolon, decimal point, 1 header row, UTF-8 with BOM",
         kTwo},
        {"code page", "t;\xB5V\n1.5;2.5\n3;-4\n", "semicolon, decimal point, 1 header row, Windows-1252",
         kTwo},
        {"prose in front", "Run 7 of 12\nOperator: A. B.\n\nt [s];U [V]\n1.5;2.5\n3;-4\n",
         "semicolon, decimal point, 4 header rows, UTF-8", kTwo},
        {"one column", "v\n7\n8\n", "one column, decimal point, 1 header row, UTF-8", {{1, 7}, {2, 8}}},
        {"text between", "1.5;abc;2.5\n3;def;-4\n", "semicolon, decimal point, no header rows, UTF-8", kTwo},
        {"named x and y", "Data:   y   x\n  2.5 1.5\n -4 3\n", "blanks, decimal point, 1 header row, UTF-8",
         kTwo},
        {"Fortran exponents", "1.5D0 25.D-1\n.3D+1 -4\n", "blanks, decimal point, no header rows, UTF-8",
         kTwo},
        {"row ends in quotes", "\"a\nb\";\"c;\"\"d\"\"\"\n1.5;2.5\n3;-4\n",
         "semicolon, decimal point, 1 header row, UTF-8", kTwo},
        {"empty rows", "\n\n1.5;2.5\n;\n\n3;-4\n\n", "semicolon, decimal point, 2 header rows, UTF-8", kTwo},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const TTextReport report = LoadThis(c.text);
        EXPECT_EQ(Describe(report.readings.best.format), c.description);
        EXPECT_EQ(points, c.points);
        EXPECT_EQ(report.rowsSkipped, 0);
    }
}

} // namespace
} // namespace lumoplot
