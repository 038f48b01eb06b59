// Memory for what an application has tens of thousands of: objects and shared texts. It costs no more than their size
// and is taken and returned in a few steps. Every thread has its own.
#pragma once

#include <cstddef>

namespace corvane::SmallMemory {

// As operator new does it. Aligned for any type that isn't aligned beyond std::max_align_t.
[[nodiscard, gnu::visibility("default")]] void* Take(std::size_t nBytes);
// With the number of bytes that it was taken with.
[[gnu::visibility("default")]] void GiveBack(void* pMemory, std::size_t nBytes) noexcept;

} // namespace corvane::SmallMemory
