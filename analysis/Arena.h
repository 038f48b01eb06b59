// The memory of a model: it goes as a whole, and is had in few large blocks.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

namespace corvane::check {

// What is filled once and then read. Nothing that is given back is used again, but for the end of the last piece: so
// what is read can be put where it stays without knowing before how much it will be.
class Arena final : public std::pmr::memory_resource {
public:
    Arena() = default;
    ~Arena() override;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    // Room for so many, none of which is made yet. No more than the alignment of any object.
    template <class T>
    [[nodiscard]] T* RoomFor(std::size_t count) {
        return static_cast<T*>(allocate(count * sizeof(T), alignof(T)));
    }
    // Of the piece that was allocated last, what is behind that place is free again.
    void FreeFrom(const void* place) noexcept;

private:
    void* do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void* piece, std::size_t bytes, std::size_t alignment) override;
    [[nodiscard]] bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        return this == &other;
    }

    std::vector<void*> m_blocks;
    std::byte* m_next = nullptr; // in the last block
    std::size_t m_left = 0;
    std::size_t m_lastBlock = 0; // its size
};

} // namespace corvane::check
