#include "corvane/base/SmallMemory.h"

#include <array>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define CORVANE_DETAIL_ONE_BY_ONE
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVANE_DETAIL_ONE_BY_ONE
#endif
#endif

namespace corvane::SmallMemory {

#ifdef CORVANE_DETAIL_ONE_BY_ONE

// The sanitizer reports memory that is used wrongly only where each thing has memory of its own.
void* Take(std::size_t nBytes) {
    return ::operator new(nBytes);
}

void GiveBack(void* pMemory, std::size_t /*nBytes*/) noexcept {
    ::operator delete(pMemory);
}

#else

namespace {

constexpr std::size_t nUnit = 8;
constexpr std::size_t nLargest = 256; // in bytes; what is larger is rare
constexpr std::size_t nBlock = 32 * 1024;

struct Free {
    Free* pNext;
};

// Blocks are never returned: what has been free once will be taken again, unless its thread ends.
struct Store {
    std::array<Free*, nLargest / nUnit + 1> aFree{}; // by size in units
    char* pNext = nullptr;                           // in the current block
    std::size_t nLeft = 0;
};

// The library is loaded with the program, so its place is known from the start.
[[gnu::tls_model("initial-exec")]] constinit thread_local Store oStore;

std::size_t Units(std::size_t nBytes) {
    return nBytes == 0 ? 1 : (nBytes + nUnit - 1) / nUnit;
}

void* FromBlock(std::size_t nBytes) {
    // What may need the strictest alignment has a size that is a multiple of it.
    const std::size_t nWaste = nBytes % alignof(std::max_align_t) == 0 ? oStore.nLeft % alignof(std::max_align_t) : 0;
    if (oStore.nLeft < nBytes + nWaste) {
        oStore.pNext = static_cast<char*>(::operator new(nBlock));
        oStore.nLeft = nBlock;
    } else {
        oStore.pNext += nWaste;
        oStore.nLeft -= nWaste;
    }
    void* pMemory = oStore.pNext;
    oStore.pNext += nBytes;
    oStore.nLeft -= nBytes;
    return pMemory;
}

} // namespace

void* Take(std::size_t nBytes) {
    const std::size_t i = Units(nBytes);
    if (i >= oStore.aFree.size())
        return ::operator new(nBytes);
    if (Free* pFree = oStore.aFree[i]) {
        oStore.aFree[i] = pFree->pNext;
        return pFree;
    }
    return FromBlock(i * nUnit);
}

void GiveBack(void* pMemory, std::size_t nBytes) noexcept {
    const std::size_t i = Units(nBytes);
    if (i >= oStore.aFree.size())
        return ::operator delete(pMemory);
    auto* pFree = static_cast<Free*>(pMemory);
    pFree->pNext = oStore.aFree[i];
    oStore.aFree[i] = pFree;
}

#endif

} // namespace corvane::SmallMemory
