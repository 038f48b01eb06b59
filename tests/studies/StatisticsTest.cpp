#include "Statistics.h"

#include "Csv.h"
#include "Report.h"
#include "corvane/base/Failure.h"
#include "tests/studies/Penguins.h"

#include <array>
#include <charconv>
#include <cmath>
#include <gtest/gtest.h>

using namespace studies;

namespace {

// As R prints them, in seven significant digits: summary(), sd(), quantile() of the data of palmerpenguins.
TEST(Statistics, PenguinsAgreeWithR) {
    const std::pair<const char*, const char*> figureList[] = {
        {"bill_length_mm", "43.92193 5.459584 32.1 39.225 44.45 48.5 59.6 "},
        {"bill_depth_mm", "17.15117 1.974793 13.1 15.6 17.3 18.7 21.5 "},
        {"flipper_length_mm", "200.9152 14.06171 172 190 197 213 231 "},
        {"body_mass_g", "4201.754 801.9545 2700 3550 4050 4750 6300 "},
    };
    const Table table = Penguins();
    for (const auto& [name, figures] : figureList) {
        const ColumnSummary column = Summarize(*table.Find(name));
        EXPECT_EQ(column.count, 342U);
        EXPECT_EQ(column.missing, 2U);
        std::string found;
        for (const double figure :
             {column.mean, column.deviation, column.min, column.q1, column.median, column.q3, column.max})
            found += FigureText(figure) + " ";
        EXPECT_EQ(found, figures) << name;
    }
}

TEST(Statistics, PenguinsBySpeciesAgreeWithR) {
    std::string masses;
    for (const GroupSummary& group : SummarizeByGroup(Penguins(), "Species"))
        for (const ColumnSummary& column : group.summary.columns)
            if (column.name == "body_mass_g")
                masses += group.group + " " + std::to_string(group.summary.rows) + " " + FigureText(column.mean) + " " +
                          FigureText(column.deviation) + "\n";
    EXPECT_EQ(masses, "Adelie 152 3700.662 458.5661\nChinstrap 68 3733.088 384.3351\nGentoo 124 5076.016 504.1162\n");
    EXPECT_THROW((void)SummarizeByGroup(Penguins(), "weight"), corvane::Failure);
}

TEST(Statistics, TextIsCounted) {
    const Table table = Penguins();
    const ColumnSummary sex = Summarize(*table.Find("sex"));
    EXPECT_EQ(sex.count, 333U);
    EXPECT_EQ(sex.missing, 11U);
    EXPECT_EQ(sex.distinct, 2U);
    EXPECT_EQ(sex.mostFrequent, "male");
    EXPECT_EQ(sex.mostFrequentCount, 168U);
    EXPECT_EQ(GroupColumns(table), (std::vector<std::string>{"species", "island", "sex"}));
}

TEST(Statistics, GroupsStandInOrderOfTheirValuesAndMissingOnesLast) {
    std::string groups;
    for (const GroupSummary& group : SummarizeByGroup(ReadCsv("g,x\n10,1\n9,2\n,3\n10,4\n").table, "g"))
        groups += group.group + "=" + FigureText(group.summary.columns.at(0).mean) + ";";
    EXPECT_EQ(groups, "9=2;10=2.5;=3;");
}

TEST(Statistics, FewValues) {
    const ColumnSummary one = Summarize(ReadCsv("x\n7\n").table.columns[0]);
    EXPECT_EQ(one.mean, 7);
    EXPECT_TRUE(std::isnan(one.deviation));
    EXPECT_EQ(one.q1, 7);
    Column none{"x", ColumnType::Number, {}, {std::nan("")}};
    const ColumnSummary summary = Summarize(none);
    EXPECT_EQ(summary.count, 0U);
    EXPECT_EQ(summary.missing, 1U);
    EXPECT_EQ(FigureText(summary.mean) + FigureText(summary.median), "--");
}

// Squares of such values differ in digits that a double doesn't have.
TEST(Statistics, LargeValuesKeepTheirDeviation) {
    EXPECT_DOUBLE_EQ(Summarize(ReadCsv("x\n1000000001\n1000000002\n1000000003\n").table.columns[0]).deviation, 1);
}

TEST(Report, OneLineNamesTheFirstColumns) {
    EXPECT_EQ(LineText(Summarize(Penguins())),
              "bill length 43.92 \u00b1 5.46, bill depth 17.15 \u00b1 1.975, flipper length 200.9 \u00b1 14.06, "
              "body mass 4202 \u00b1 802");
    EXPECT_EQ(LineText(Summarize(ReadCsv("a,b\nx,y\n").table)), "1 row, 2 columns");
}

// The short way that most numbers take, beside the standard library's.
TEST(NumberText, IsTheShortestThatReadsAsTheNumber) {
    std::vector<double> values{0, 0.1 + 0.2, 1.0 / 3, -0.00005, 123456789.12345, 99999999999.9999, 1e11 + 0.25, -7e14};
    for (int i = -3000; i < 3000; ++i)
        values.push_back(i * 7919 / 1e4);
    for (const double value : values) {
        std::array<char, 64> letters{};
        char* const end =
            std::to_chars(letters.data(), letters.data() + letters.size(), value, std::chars_format::fixed).ptr;
        EXPECT_EQ(TextOf(value), std::string(letters.data(), end));
    }
    EXPECT_EQ(TextOf(-1.5, 3), "-1.500");
}

} // namespace
