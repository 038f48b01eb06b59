#include "Csv.h"

#include "TextFile.h"
#include "corvane/base/Failure.h"

#include <gtest/gtest.h>
#include <string>

using namespace studies;

namespace {

// "name:type[a|b]" for each column, "-" for a missing value.
std::string Shape(const Table& oTable) {
    std::string sShape;
    for (const Column& oColumn : oTable.aColumns) {
        sShape += (sShape.empty() ? "" : " ") + oColumn.sName + ":" + std::string(NameOf(oColumn.eType)) + "[";
        for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow)
            sShape += (iRow > 0 ? "|" : "") + (oColumn.IsMissing(iRow) ? "-" : oColumn.Text(iRow));
        sShape += "]";
    }
    return sShape;
}

std::string FailureOf(std::string_view sText) {
    try {
        return Shape(ReadCsv(sText).oTable);
    } catch (const corvane::Failure& oFailure) {
        return oFailure.Description;
    }
}

TEST(Csv, ReadsWhatProgramsWrite) {
    const struct {
        const char* sWhat;
        const char* sText;
        const char* sShape;
    } aCases[] = {
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
        {"whole numbers that no double holds", "a\n9007199254740993\n", "a:number[9007199254740992]"},
        {"names: missing, doubled in another case", "a,,A\n1,2,3\n",
         "a:whole number[1] column 2:whole number[2] A (2):whole number[3]"},
        {"blank lines and blanks around fields", "\n a , b \n\n 1 , x \n  \n", "a:whole number[1] b:text[x]"},
        {"a header alone", "a,b\n", "a:text[] b:text[]"},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(FailureOf(oCase.sText), oCase.sShape) << oCase.sWhat;
}

TEST(Csv, BadRowsNameTheirLine) {
    const struct {
        const char* sText;
        const char* sFailure;
    } aCases[] = {
        {"", "There is no data: the text is empty."},
        {"a,b\n1,2\n\n3\n", "Line 4: 1 field where the first row has 2."},
        {"a,b\n\"x\ny\",2\n1,2,3\n", "Line 4: 3 fields where the first row has 2."},
        {"a,b\n1,\"x\n2,y\n", "Line 2: a quote isn't closed."},
        {"a,b\n\"x\"y,2\n", "Line 2: text follows a closing quote."},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(FailureOf(oCase.sText), oCase.sFailure);
}

TEST(Csv, BadRowsCanBeLeftOut) {
    const CsvResult oResult = ReadCsv("a,b\n1,2\n3\n4,5\n6,7,8\n", {0, true});
    EXPECT_EQ(Shape(oResult.oTable), "a:whole number[1|4] b:whole number[2|5]");
    ASSERT_EQ(oResult.aSkipped.size(), 2U);
    EXPECT_EQ(oResult.aSkipped[1], "Line 5: 3 fields where the first row has 2.");
}

TEST(Csv, TheDelimiterIsTheOneThatDividesEvenly) {
    EXPECT_EQ(DetectDelimiter("name;note\nA;x, y, z\nB;u\n"), ';');
    EXPECT_EQ(DetectDelimiter("price\n1\n2\n"), ',');
    EXPECT_EQ(DetectDelimiter("a,\"b;c;d\"\n1,\"2;3;4\"\n"), ',');
    EXPECT_EQ(ReadCsv("a;b\n1;2\n", {',', false}).oTable.aColumns.size(), 1U) << "a given delimiter isn't questioned";
}

TEST(Csv, WhatIsWrittenReadsTheSame) {
    const Table oTable = ReadCsv("a;b;c\n1,25;\"x;\"\"y\"\"\";\"two\nlines\"\n;;z\n").oTable;
    EXPECT_EQ(Shape(ReadCsv(WriteCsv(oTable)).oTable), Shape(oTable));
}

TEST(TextFile, TextIsReadInTheEncodingThatItHas) {
    using namespace std::string_literals;
    const struct {
        const char* sWhat;
        std::string sBytes;
        std::string sText;
    } aCases[] = {
        {"UTF-8", "K\u00f6ln \u20ac", "K\u00f6ln \u20ac"},
        {"UTF-8 with a mark", "\xEF\xBB\xBFK\u00f6ln", "K\u00f6ln"},
        {"Latin-1", "L\xE4nge;\xC6r\xF8", "L\u00e4nge;\u00c6r\u00f8"},
        {"Windows-1252", "\x80 5, \x84so\x93", "\u20ac 5, \u201eso\u201c"},
        {"cut off within a character", "K\xC3", "K\u00c3"},
        {"UTF-16",
         "\xFF\xFE"
         "K\0\xF6\0\x3D\xD8\x27\xDC"s,
         "K\u00f6\U0001F427"},
        {"UTF-16, high bytes first", "\xFE\xFF\0K\0\xF6"s, "K\u00f6"},
        {"UTF-16, half a character", "\xFF\xFE\x3D\xD8K\0"s, "\uFFFDK"},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(DecodeText(oCase.sBytes, "x.csv"), oCase.sText) << oCase.sWhat;
    try {
        (void)DecodeText("PK\3\4\0\0"s, "x.xlsx");
        FAIL() << "a workbook is no text";
    } catch (const corvane::Failure& oFailure) {
        EXPECT_EQ(oFailure.Description.find("x.xlsx isn't a text file. Save the table"), 0U) << oFailure.Description;
    }
}

TEST(Csv, FilesAreNamedInFailures) {
    const CsvResult oGentoo = ReadCsvFile(STUDIES_DATA "/gentoo.csv");
    EXPECT_EQ(oGentoo.cDelimiter, ';');
    EXPECT_EQ(oGentoo.oTable.nRows, 124U);
    EXPECT_THROW((void)ReadCsvFile(STUDIES_DATA "/nothing.csv"), corvane::Failure);
    EXPECT_THROW((void)ReadCsvFile(STUDIES_DATA), corvane::Failure) << "a folder is no file";
}

} // namespace
