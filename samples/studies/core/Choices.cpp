#include "Choices.h"

#include "Statistics.h"

namespace studies {

std::string ColumnChoices(const std::vector<Column>& columns, bool numbersOnly) {
    std::string choices;
    for (const Column& column : columns)
        if (!numbersOnly || column.IsNumeric())
            choices += column.name + "\t" + column.Label() + "\n";
    return choices;
}

std::string DividingChoices(const Table& table) {
    std::string choices;
    for (const std::string& name : GroupColumns(table))
        choices += name + "\t" + Column{name, ColumnType::Text, {}, {}, {}}.Label() + "\n";
    return choices;
}

void TableChoices::Follow(const SharedTable& table) {
    if (table != m_table)
        *this = {};
    m_table = table;
}

const std::string& TableChoices::Dividing(const SharedTable& table) {
    Follow(table);
    if (!m_dividing)
        m_dividing = DividingChoices(*table);
    return *m_dividing;
}

const std::string& TableChoices::Values(const SharedTable& table, const std::string& columnName) {
    Follow(table);
    const auto [values, isNew] = m_values.try_emplace(columnName);
    const Column* column = isNew ? table->Find(columnName) : nullptr;
    for (const std::string& value : column ? ValuesOf(*column) : std::vector<std::string>())
        values->second += value + "\n";
    return values->second;
}

} // namespace studies
