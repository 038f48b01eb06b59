// Columns and values as the choices of a field of a form: a line each, with a tab in front of what is shown for it.
#pragma once

#include "Workspace.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace studies {

// By their labels; without those of texts if only numbers suit.
[[nodiscard]] std::string ColumnChoices(const std::vector<Column>& columns, bool numbersOnly);
// The columns that can divide the table, likewise.
[[nodiscard]] std::string DividingChoices(const Table& table);
// The choice of none of them, for which the form has a text.
inline constexpr const char* noneChoice = "\t\n";

// What a form asks for again and again, and all rows have to be looked at for.
class TableChoices {
public:
    [[nodiscard]] const std::string& Dividing(const SharedTable& table);
    // The values of a column; "" for no such column.
    [[nodiscard]] const std::string& Values(const SharedTable& table, const std::string& columnName);

private:
    void Follow(const SharedTable& table);

    SharedTable m_table;
    std::optional<std::string> m_dividing;
    std::map<std::string, std::string> m_values;
};

} // namespace studies
