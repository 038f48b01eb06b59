// Rows of a table that live in a process: the application asks for them in pages, as they come into sight.
#pragma once

#include "corvane/base/Object.h"
#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class ProcessObject;

class ProcessRows {
public:
    static constexpr std::size_t PageSize = 200;
    static constexpr std::size_t MostPages = 50;

    struct Page {
        std::vector<std::string> columns;
        std::vector<std::vector<Variant>> rows; // a value for each column
    };
    // Asks the process for rows, from 0; fewer come where there are no more.
    using AskFunction = std::function<Page(std::size_t first, std::size_t count)>;

    ProcessRows(std::size_t count, AskFunction ask) : m_count(count), m_ask(std::move(ask)) {}

    [[nodiscard]] std::size_t Count() const { return m_count; }
    // Row from 0. Nothing for a column that the rows don't have; fails with 9 for a row beyond the end.
    [[nodiscard]] Variant Cell(std::size_t row, std::string_view column);
    // Whether it has been asked for already.
    [[nodiscard]] bool Has(std::size_t row) const { return m_pages.contains(row / PageSize); }
    void Forget(std::size_t row) { m_pages.erase(row / PageSize); }

private:
    std::size_t m_count;
    AskFunction m_ask;
    std::map<std::size_t, Page> m_pages;
};

// A row, for the time that a form looks at it.
class ProcessRow final : public virtual Object {
public:
    ProcessRow(Ref<ProcessObject> rows, std::size_t row);
    ~ProcessRow() override;

    // A column's value; a value that is written goes to the process at once.
    Variant Invoke(std::string_view name, std::span<const Variant> arguments) override;
    void Put(std::string_view name, const Variant& value) override;
    std::string_view TypeName() const override { return "Row"; }

private:
    Ref<ProcessObject> m_rows;
    std::size_t m_row;
};

} // namespace corvane
