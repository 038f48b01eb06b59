#include "corvane/author/Rows.h"

namespace corvane {

Rows::~Rows() = default;

Long Rows::Count() const {
    return static_cast<Long>(m_aRows.size());
}

std::size_t Rows::Position(Long lIndex) const {
    if (lIndex < 1 || lIndex > Count())
        Fail(FailureNumber::Subscript);
    return static_cast<std::size_t>(lIndex - 1);
}

Ref<Object> Rows::Item(Long lIndex) const {
    return m_aRows[Position(lIndex)];
}

void Rows::Remove(Long lIndex) {
    m_aRows.erase(m_aRows.begin() + static_cast<std::ptrdiff_t>(Position(lIndex)));
}

} // namespace corvane
