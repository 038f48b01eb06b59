#include "analysis/Arena.h"

#include <algorithm>
#include <memory>
#include <new>

namespace corvane::check {

namespace {

constexpr std::size_t firstBlock = std::size_t{64} * 1024;
constexpr std::size_t largestBlock = std::size_t{16} * 1024 * 1024;

} // namespace

Arena::~Arena() {
    for (void* block : m_blocks)
        ::operator delete(block);
}

void* Arena::do_allocate(std::size_t bytes, std::size_t alignment) {
    void* place = m_next;
    if (!m_next || !std::align(alignment, bytes, place, m_left)) {
        const std::size_t usual = m_blocks.empty() ? firstBlock : std::min(m_lastBlock * 2, largestBlock);
        m_lastBlock = std::max(bytes, usual);
        m_blocks.reserve(m_blocks.size() + 1);
        place = ::operator new(m_lastBlock);
        m_blocks.push_back(place);
        m_left = m_lastBlock;
    }
    m_next = static_cast<std::byte*>(place) + bytes;
    m_left -= bytes;
    return place;
}

void Arena::do_deallocate(void*, std::size_t, std::size_t) {}

void Arena::FreeFrom(const void* place) noexcept {
    const auto unused = static_cast<std::size_t>(m_next - static_cast<const std::byte*>(place));
    m_next -= unused;
    m_left += unused;
}

} // namespace corvane::check
