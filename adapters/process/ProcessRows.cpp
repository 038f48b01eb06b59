#include "adapters/process/ProcessRows.h"

#include "adapters/process/ProcessObject.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

namespace corvane {

Variant ProcessRows::Cell(std::size_t row, std::string_view column) {
    const std::size_t number = row / PageSize;
    auto it = m_pages.find(number);
    if (it == m_pages.end()) {
        Page page = m_ask(number * PageSize, PageSize); // which may come back here
        if (m_pages.size() >= MostPages)
            m_pages.clear();
        it = m_pages.insert_or_assign(number, std::move(page)).first;
    }
    const Page& page = it->second;
    const std::size_t place = row % PageSize;
    if (place >= page.rows.size())
        Fail(FailureNumber::Subscript, "There is no row " + std::to_string(row + 1) + " of " + std::to_string(m_count));
    for (std::size_t i = 0; i < page.columns.size(); ++i)
        if (EqualText(page.columns[i], column))
            return page.rows[place][i];
    return {};
}

ProcessRow::ProcessRow(Ref<ProcessObject> rows, std::size_t row) : m_rows(std::move(rows)), m_row(row) {}

ProcessRow::~ProcessRow() = default;

Variant ProcessRow::Invoke(std::string_view name, std::span<const Variant> /*arguments*/) {
    return m_rows->RowCell(m_row, name);
}

void ProcessRow::Put(std::string_view name, const Variant& value) {
    m_rows->SetRowCell(m_row, name, value);
}

} // namespace corvane
