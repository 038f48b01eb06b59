#include "Table.h"

#include "Errors.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace studies {
namespace {

std::string WithBlanks(std::string sName) {
    std::replace(sName.begin(), sName.end(), '_', ' ');
    return sName;
}

} // namespace

std::string_view NameOf(ColumnType eType) {
    switch (eType) {
    case ColumnType::Whole:
        return "whole number";
    case ColumnType::Number:
        return "number";
    case ColumnType::Text:
        break;
    }
    return "text";
}

ColumnType ColumnTypeOf(std::string_view sName) {
    for (const ColumnType eType : {ColumnType::Whole, ColumnType::Number, ColumnType::Text})
        if (sName == NameOf(eType))
            return eType;
    FailWith("“" + std::string(sName) + "” isn't a column type.");
}

bool Column::IsMissing(std::size_t iRow) const {
    return IsNumeric() ? std::isnan(aNumbers[iRow]) : aTexts[iRow].empty();
}

std::string Column::Text(std::size_t iRow) const {
    if (IsMissing(iRow))
        return {};
    return IsNumeric() ? TextOf(aNumbers[iRow]) : aTexts[iRow];
}

std::string Column::Label() const {
    const bool bUnitInName = !sUnit.empty() && UnitInName(sName) == sUnit;
    const std::string sLabel = bUnitInName ? SpokenName(sName) : WithBlanks(sName);
    return sUnit.empty() ? sLabel : sLabel + " (" + sUnit + ")";
}

const Column* Table::Find(std::string_view sName) const {
    for (const Column& oColumn : aColumns)
        if (corvane::EqualText(oColumn.sName, sName))
            return &oColumn;
    return nullptr;
}

Table Table::Rows(const std::vector<std::size_t>& aRows) const {
    Table oPart;
    oPart.nRows = aRows.size();
    for (const Column& oColumn : aColumns) {
        Column oCut{oColumn.sName, oColumn.eType, {}, {}, oColumn.sUnit};
        for (const std::size_t iRow : aRows) {
            if (oColumn.IsNumeric())
                oCut.aNumbers.push_back(oColumn.aNumbers[iRow]);
            else
                oCut.aTexts.push_back(oColumn.aTexts[iRow]);
        }
        oPart.aColumns.push_back(std::move(oCut));
    }
    return oPart;
}

std::string UnitInName(std::string_view sName) {
    static constexpr std::array<std::string_view, 22> aUnits{"mm", "cm", "m",   "km",  "mg", "g",  "kg", "t",
                                                             "s",  "ms", "min", "h",   "d",  "Hz", "V",  "A",
                                                             "W",  "K",  "Pa",  "hPa", "ml", "l"};
    const std::size_t iUnit = sName.rfind('_');
    if (iUnit == std::string_view::npos || iUnit == 0)
        return {};
    const std::string_view sUnit = sName.substr(iUnit + 1);
    return std::find(aUnits.begin(), aUnits.end(), sUnit) == aUnits.end() ? std::string() : std::string(sUnit);
}

std::string SpokenName(std::string_view sName) {
    const std::size_t nUnit = UnitInName(sName).size();
    return WithBlanks(std::string(nUnit > 0 ? sName.substr(0, sName.size() - nUnit - 1) : sName));
}

std::string TextOf(double dblValue) {
    std::array<char, 32> aText{};
    const auto oResult = std::to_chars(aText.data(), aText.data() + aText.size(), dblValue);
    return {aText.data(), oResult.ptr};
}

std::optional<double> NumberOf(std::string_view sText, char cPoint) {
    if (!sText.empty() && sText.front() == '+')
        sText.remove_prefix(1);
    std::string sPlain(sText);
    for (char& c : sPlain) {
        if (c == cPoint)
            c = '.';
        else if (!((c >= '0' && c <= '9') || c == '-' || c == '+' || c == 'e' || c == 'E'))
            return std::nullopt; // also keeps out the words "inf" and "nan" and hexadecimal numbers
    }
    double dblValue = 0;
    const char* pEnd = sPlain.data() + sPlain.size();
    const auto oResult = std::from_chars(sPlain.data(), pEnd, dblValue);
    if (oResult.ec != std::errc() || oResult.ptr != pEnd)
        return std::nullopt;
    return dblValue;
}

} // namespace studies
