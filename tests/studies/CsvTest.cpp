#include "Csv.h"

#include "Statistics.h"
#include "TextFile.h"
#include "corvane/base/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>

using namespace studies;

namespace {

// "name:type[a|b]" for each column, "-" for a missing value.
std::string Shape(const Table& table) {
    std::string shape;
    for (const Column& column : table.columns) {
        shape += (shape.empty() ? "" : " ") + column.name + ":" + std::string(NameOf(column.type)) + "[";
        for (std::size_t row = 0; row < table.rows; ++row)
            shape += (row > 0 ? "|" : "") + (column.IsMissing(row) ? "-" : column.Text(row));
        shape += "]";
    }
    return shape;
}

std::string FailureOfReading(std::string_view text) {
    try {
        return Shape(ReadCsv(text).table);
    } catch (const corvane::Failure& failure) {
        return failure.Description;
    }
}

TEST(Csv, ReadsWhatProgramsWrite) {
    const struct {
        const char* what;
        const char* text;
        const char* shape;
    } cases[] = {
        {"commas and LF", "a,b\n1,x\n2,y\n", "a:whole number[1|2] b:text[x|y]"},
        {"CRLF, no line end at the end", "a,b\r\n1,x\r\n2,y", "a:whole number[1|2] b:text[x|y]"},
        {"byte order mark",
         "\xEF\xBB\xBF"
         "a\n1\n",
         "a:whole number[1]"},
        {"semicolons with a decimal comma", "a;b\n1,5;x\n2;y,z\n", "a:number[1.5|2] b:text[x|y,z]"},
        {"tabs, empty fields at both ends", "a\tb\tc\n\t2\t\n1\t\t3\n",
         "a:whole number[-|1] b:whole number[2|-] c:whole number[-|3]"},
        {"quotes", "a,b\n\"x, y\",\"say \"\"hi\"\"\"\n\"two\nlines\",z\n",
         "a:text[x, y|two\nlines] b:text[say \"hi\"|z]"},
        {"missing values", "a,b\nNA,null\nn/a,x\n3,\n#N/A,NaN\n", "a:whole number[-|-|3|-] b:text[-|x|-|-]"},
        {"a column without values", "a,b\n1,\n2,\n", "a:whole number[1|2] b:text[-|-]"},
        {"numbers", "a,b,c\n+1,1e3,0x10\n-2,-.5,inf\n", "a:whole number[1|-2] b:number[1000|-0.5] c:text[0x10|inf]"},
        {"one odd value makes a column text", "a\n1\n2 mm\n", "a:text[1|2 mm]"},
        {"identifiers of digits", "a,b,c\n12345678901234567,01234,0.10\n12345678901234568,7,0\n",
         "a:text[12345678901234567|12345678901234568] b:text[01234|7] c:number[0.1|0]"},
        {"numbers come back as they were read", "a,b,c\n100000,43.90,1e5\n-2000000,-7.00,1e-7\n",
         "a:whole number[100000|-2000000] b:number[43.90|-7.00] c:number[100000|1e-07]"},
        {"names: missing, doubled in another case", "a,,A\n1,2,3\n",
         "a:whole number[1] column 2:whole number[2] A (2):whole number[3]"},
        {"blank lines and blanks around fields", "\n a , b \n\n 1 , x \n  \n", "a:whole number[1] b:text[x]"},
        {"a header alone", "a,b\n", "a:text[] b:text[]"},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(FailureOfReading(testCase.text), testCase.shape) << testCase.what;
}

TEST(Csv, BadRowsNameTheirLine) {
    const struct {
        const char* text;
        const char* failure;
    } cases[] = {
        {"", "There is no data: the text is empty."},
        {"a,b\n1,2\n\n3\n", "Line 4: 1 field where the first row has 2."},
        {"a,b\n\"x\ny\",2\n1,2,3\n", "Line 4: 3 fields where the first row has 2."},
        {"a,b\n1,\"x\n2,y\n", "Line 2: a quote isn't closed."},
        {"a,b\n\"x\"y,2\n", "Line 2: text follows a closing quote."},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(FailureOfReading(testCase.text), testCase.failure);
}

TEST(Csv, SaysWhyAColumnOfDigitsStaysText) {
    const std::string text = "id;zip;n\n12345678901234567;01234;1,50\n;;2\n";
    EXPECT_EQ(ReadCsv(text).notes,
              (std::vector<std::string>{"“id” stays text: “12345678901234567” has more digits than a number keeps.",
                                        "“zip” stays text: “01234” begins with a zero."}));
    const CsvResult wanted = ReadCsv(text, {.columns = {ColumnReading::Automatic, ColumnReading::Automatic,
                                                        ColumnReading::Text}}); // its letters stay
    EXPECT_EQ(Shape(wanted.table), "id:text[12345678901234567|-] zip:text[01234|-] n:text[1,50|2]");
    EXPECT_EQ(WriteCsv(ReadCsv("a,b\n1000000,43.90\n2,5.00\n").table), "a,b\n1000000,43.90\n2,5.00\n");
}

TEST(Csv, IsReadAsTheUserSays) {
    const std::string text = "a title; of two fields\n\nc;1,5;<0.5;3.4.2026;7\nd;-999;2,5;31.12.2025;8\n?;3;x;soon;7\n";
    CsvOptions options{.header = false, .skipLines = 2, .missing = {"-999", "?"}};
    EXPECT_EQ(Shape(ReadCsv(text, options).table),
              "column 1:text[c|d|-] column 2:number[1.5|-|3] column 3:text[<0.5|2,5|x] "
              "column 4:text[3.4.2026|31.12.2025|soon] column 5:whole number[7|8|7]");
    using enum ColumnReading;
    options.columns = {Automatic, Automatic, Number, Date, Category};
    const CsvResult forced = ReadCsv(text, options);
    EXPECT_EQ(Shape(forced.table), "column 1:text[c|d|-] column 2:number[1.5|-|3] column 3:number[-|2.5|-] "
                                   "column 4:date[2026-04-03|2025-12-31|-] column 5:category[7|8|7]");
    EXPECT_EQ(forced.notes, (std::vector<std::string>{
                                "“column 3”: values that aren't numbers become missing (2), the first is “<0.5”.",
                                "“column 4”: values that aren't dates become missing (1), the first is “soon”."}));
    EXPECT_EQ(GroupColumns(forced.table), std::vector<std::string>{"column 5"});
    options.point = '.';
    EXPECT_EQ(Shape(ReadCsv("x;y\n1,5;2.5\n", {.point = '.'}).table), "x:text[1,5] y:number[2.5]");
    EXPECT_EQ(ReadCsv("n\n1\n2\n3\n4\n<0.5\n").notes.size(), 1U) << "a few texts among numbers are named";
    for (const char* date : {"2026-02-29", "2026-1", "1.2.26", "2026-01-01x", "12026-01-01"})
        EXPECT_EQ(DateOf(date), std::nullopt) << date;
}

TEST(Csv, BadRowsCanBeLeftOut) {
    const CsvResult result = ReadCsv("a,b\n1,2\n3\n4,5\n6,7,8\n", {0, true});
    EXPECT_EQ(Shape(result.table), "a:whole number[1|4] b:whole number[2|5]");
    ASSERT_EQ(result.skipped.size(), 2U);
    EXPECT_EQ(result.skipped[1], "Line 5: 3 fields where the first row has 2.");
}

TEST(Csv, TheDelimiterIsTheOneThatDividesEvenly) {
    EXPECT_EQ(DetectDelimiter("name;note\nA;x, y, z\nB;u\n"), ';');
    EXPECT_EQ(DetectDelimiter("price\n1\n2\n"), ',');
    EXPECT_EQ(DetectDelimiter("a,\"b;c;d\"\n1,\"2;3;4\"\n"), ',');
    EXPECT_EQ(ReadCsv("a;b\n1;2\n", {',', false}).table.columns.size(), 1U) << "a given delimiter isn't questioned";
}

TEST(Csv, WhatIsWrittenReadsTheSame) {
    const Table table = ReadCsv("a;b;c\n1,25;\"x;\"\"y\"\"\";\"two\nlines\"\n;;z\n").table;
    EXPECT_EQ(Shape(ReadCsv(WriteCsv(table)).table), Shape(table));
}

TEST(Csv, FilesAreNamedInFailures) {
    const CsvResult gentoo = ReadCsvFile(STUDIES_DATA "/gentoo.csv");
    EXPECT_EQ(gentoo.delimiter, ';');
    EXPECT_EQ(gentoo.table.rows, 124U);
    EXPECT_THROW((void)ReadCsvFile(STUDIES_DATA "/nothing.csv"), corvane::Failure);
    EXPECT_THROW((void)ReadCsvFile(STUDIES_DATA), corvane::Failure) << "a folder is no file";
    const corvane::test::TemporaryFolder folder;
    const auto failure = [&](const std::string& bytes, corvane::TextEncoding encoding) {
        std::ofstream(folder.Path("x.csv"), std::ios::binary) << bytes;
        try {
            return ReadTextFile(folder.Path("x.csv"), encoding);
        } catch (const corvane::Failure& raised) {
            return raised.Description.substr(0, 30);
        }
    };
    EXPECT_EQ(failure(std::string("PK\3\4\0\0", 6), corvane::TextEncoding::Automatic),
              "x.csv isn't a text file. Save ");
    EXPECT_EQ(failure("K\xC3", corvane::TextEncoding::Utf8), "x.csv isn't in that encoding.");
}

} // namespace
