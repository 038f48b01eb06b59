// A list of objects by name, as a form asks it for the rows of a table or tree.
#pragma once

#include "corvane/base/Automation.h"

#include <utility>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) Rows final : public Automation<Rows> {
public:
    Rows() = default;
    ~Rows() override;

    [[nodiscard]] Long Count() const;
    // From 1. Fails with 9 outside of that.
    [[nodiscard]] Ref<Object> Item(Long lIndex) const;
    void Add(Ref<Object> oRow) { m_aRows.push_back(std::move(oRow)); }
    void Remove(Long lIndex); // likewise
    void Clear() { m_aRows.clear(); }

    static constexpr auto Members = MemberTable(Property("Count", &Rows::Count), Method("Item", &Rows::Item));

    std::string_view TypeName() const override { return "Rows"; }

private:
    [[nodiscard]] std::size_t Position(Long lIndex) const;

    std::vector<Ref<Object>> m_aRows;
};

} // namespace corvane
