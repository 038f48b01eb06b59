#include "corvane/base/SmallMemory.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <thread>
#include <vector>

namespace corvane {
namespace {

// Takes and gives back at random and looks whether another has written into what it holds.
void TakeAndGiveBack(unsigned uSeed) {
    struct Held {
        unsigned char* pMemory;
        std::size_t nBytes;
        unsigned char uMark;
    };
    std::mt19937 oRandom(uSeed);
    std::vector<Held> aHeld;
    const auto GiveBack = [&](std::size_t i) {
        const Held oHeld = aHeld[i];
        for (std::size_t n = 0; n < oHeld.nBytes; ++n)
            ASSERT_EQ(oHeld.pMemory[n], oHeld.uMark) << oHeld.nBytes;
        SmallMemory::GiveBack(oHeld.pMemory, oHeld.nBytes);
        aHeld[i] = aHeld.back();
        aHeld.pop_back();
    };
    for (int nStep = 0; nStep < 30000; ++nStep) {
        if (!aHeld.empty() && oRandom() % 5 < 2) {
            GiveBack(oRandom() % aHeld.size());
            continue;
        }
        const std::size_t nBytes = 1 + oRandom() % 300; // some of them larger than what comes from a block
        auto* pMemory = static_cast<unsigned char*>(SmallMemory::Take(nBytes));
        const std::size_t nAlign = nBytes % alignof(std::max_align_t) == 0 ? alignof(std::max_align_t) : 8;
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(pMemory) % nAlign, 0U) << nBytes;
        aHeld.push_back({pMemory, nBytes, static_cast<unsigned char>(oRandom())});
        std::memset(pMemory, aHeld.back().uMark, nBytes);
    }
    while (!aHeld.empty())
        GiveBack(aHeld.size() - 1);
}

TEST(SmallMemoryTest, WhatIsTakenBelongsToNobodyElse) {
    TakeAndGiveBack(1);
    TakeAndGiveBack(2); // of what has been given back
    std::thread oOther(&TakeAndGiveBack, 3U);
    TakeAndGiveBack(4);
    oOther.join();
}

} // namespace
} // namespace corvane
