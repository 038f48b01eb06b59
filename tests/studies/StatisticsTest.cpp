#include "Statistics.h"

#include "Csv.h"
#include "Report.h"
#include "corvane/base/Failure.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace studies;

namespace {

Table Penguins() {
    return ReadCsvFile(STUDIES_DATA "/penguins.csv").oTable;
}

// As R prints them, in seven significant digits: summary(), sd(), quantile() of the data of palmerpenguins.
TEST(Statistics, PenguinsAgreeWithR) {
    const struct {
        const char* sColumn;
        const char* sMean;
        const char* sDeviation;
        const char* sMin;
        const char* sQ1;
        const char* sMedian;
        const char* sQ3;
        const char* sMax;
    } aFigures[] = {
        {"bill_length_mm", "43.92193", "5.459584", "32.1", "39.225", "44.45", "48.5", "59.6"},
        {"bill_depth_mm", "17.15117", "1.974793", "13.1", "15.6", "17.3", "18.7", "21.5"},
        {"flipper_length_mm", "200.9152", "14.06171", "172", "190", "197", "213", "231"},
        {"body_mass_g", "4201.754", "801.9545", "2700", "3550", "4050", "4750", "6300"},
    };
    const Table oTable = Penguins();
    for (const auto& oFigures : aFigures) {
        const ColumnSummary oColumn = Summarize(*oTable.Find(oFigures.sColumn));
        EXPECT_EQ(oColumn.nCount, 342U);
        EXPECT_EQ(oColumn.nMissing, 2U);
        EXPECT_EQ(FigureText(oColumn.dblMean), oFigures.sMean) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblDeviation), oFigures.sDeviation) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblMin), oFigures.sMin) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblQ1), oFigures.sQ1) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblMedian), oFigures.sMedian) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblQ3), oFigures.sQ3) << oFigures.sColumn;
        EXPECT_EQ(FigureText(oColumn.dblMax), oFigures.sMax) << oFigures.sColumn;
    }
}

TEST(Statistics, PenguinsBySpeciesAgreeWithR) {
    std::string sMasses;
    for (const GroupSummary& oGroup : SummarizeByGroup(Penguins(), "Species"))
        for (const ColumnSummary& oColumn : oGroup.oSummary.aColumns)
            if (oColumn.sName == "body_mass_g")
                sMasses += oGroup.sGroup + " " + std::to_string(oGroup.oSummary.nRows) + " " +
                           FigureText(oColumn.dblMean) + " " + FigureText(oColumn.dblDeviation) + "\n";
    EXPECT_EQ(sMasses, "Adelie 152 3700.662 458.5661\nChinstrap 68 3733.088 384.3351\nGentoo 124 5076.016 504.1162\n");
    EXPECT_THROW((void)SummarizeByGroup(Penguins(), "weight"), corvane::Failure);
}

TEST(Statistics, TextIsCounted) {
    const Table oTable = Penguins();
    const ColumnSummary oSex = Summarize(*oTable.Find("sex"));
    EXPECT_EQ(oSex.nCount, 333U);
    EXPECT_EQ(oSex.nMissing, 11U);
    EXPECT_EQ(oSex.nDistinct, 2U);
    EXPECT_EQ(oSex.sMostFrequent, "male");
    EXPECT_EQ(oSex.nMostFrequent, 168U);
    EXPECT_EQ(GroupColumns(oTable), (std::vector<std::string>{"species", "island", "sex"}));
}

TEST(Statistics, GroupsStandInOrderOfTheirValuesAndMissingOnesLast) {
    std::string sGroups;
    for (const GroupSummary& oGroup : SummarizeByGroup(ReadCsv("g,x\n10,1\n9,2\n,3\n10,4\n").oTable, "g"))
        sGroups += oGroup.sGroup + "=" + FigureText(oGroup.oSummary.aColumns.at(0).dblMean) + ";";
    EXPECT_EQ(sGroups, "9=2;10=2.5;=3;");
}

TEST(Statistics, FewValues) {
    const ColumnSummary oOne = Summarize(ReadCsv("x\n7\n").oTable.aColumns[0]);
    EXPECT_EQ(oOne.dblMean, 7);
    EXPECT_TRUE(std::isnan(oOne.dblDeviation));
    EXPECT_EQ(oOne.dblQ1, 7);
    Column oNone{"x", ColumnType::Number, {}, {std::nan("")}};
    const ColumnSummary oSummary = Summarize(oNone);
    EXPECT_EQ(oSummary.nCount, 0U);
    EXPECT_EQ(oSummary.nMissing, 1U);
    EXPECT_EQ(FigureText(oSummary.dblMean) + FigureText(oSummary.dblMedian), "--");
}

// Squares of such values differ in digits that a double doesn't have.
TEST(Statistics, LargeValuesKeepTheirDeviation) {
    EXPECT_DOUBLE_EQ(Summarize(ReadCsv("x\n1000000001\n1000000002\n1000000003\n").oTable.aColumns[0]).dblDeviation, 1);
}

TEST(Report, OneLineNamesTheFirstColumns) {
    EXPECT_EQ(LineText(Summarize(Penguins())),
              "bill length 43.92 \u00b1 5.46, bill depth 17.15 \u00b1 1.975, flipper length 200.9 \u00b1 14.06, "
              "body mass 4202 \u00b1 802");
    EXPECT_EQ(LineText(Summarize(ReadCsv("a,b\nx,y\n").oTable)), "1 row, 2 columns");
}

} // namespace
