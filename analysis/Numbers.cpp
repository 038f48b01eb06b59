#include "analysis/Numbers.h"

#include "corvane/base/Text.h"
#include "corvane/base/Variant.h"

#include <algorithm>
#include <array>
#include <string>

namespace corvane::check {

namespace {

constexpr std::int64_t wholeOrder = 100;
constexpr std::int64_t noOrder = std::numeric_limits<std::int64_t>::min();

// What is compared; of hundredths the factor takes the place of 100.
std::int64_t RankOf(const NumberedPlace& place, std::int64_t order) {
    return place.factor == wholeOrder ? order : order / wholeOrder;
}

bool Fits(const NumberedPlace& place, std::int64_t order) {
    return order >= place.least && order <= place.most && (!place.isWhole || order % wholeOrder == 0) &&
           !(order % wholeOrder == 0 && place.taken.contains(order / wholeOrder));
}

// Which places keep their numbers: those of the largest weight that ascend, the fixed ones among them.
std::optional<std::vector<bool>> Kept(const std::vector<NumberedPlace>& places, const std::vector<bool>& isBarred) {
    constexpr std::int64_t fixedWeight = 1000000;
    std::vector<std::int64_t> best(places.size(), 0);
    std::vector<std::size_t> from(places.size(), places.size());
    std::int64_t largest = 0;
    std::size_t last = places.size();
    std::int64_t needed = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const NumberedPlace& place = places[i];
        needed += place.isFixed ? 1 : 0;
        if (!place.isFixed && (!place.isKeepable || isBarred[i] || !Fits(place, place.order)))
            continue;
        const std::int64_t own = place.isFixed ? fixedWeight : place.weight;
        best[i] = own;
        for (std::size_t j = 0; j < i; ++j)
            if (best[j] > 0 && RankOf(places[j], places[j].order) < RankOf(place, place.order) &&
                best[j] + own > best[i]) {
                best[i] = best[j] + own;
                from[i] = j;
            }
        if (best[i] > largest) {
            largest = best[i];
            last = i;
        }
    }
    if (largest / fixedWeight < needed)
        return std::nullopt;
    std::vector<bool> kept(places.size(), false);
    for (; last < places.size(); last = from[last])
        kept[last] = true;
    return kept;
}

// Numbers for the places between two that keep theirs; whether there is room.
bool Fill(const std::vector<NumberedPlace>& places, std::size_t begin, std::size_t end,
          std::vector<std::int64_t>& orders) {
    const bool hasEnd = end < places.size();
    const std::int64_t above = hasEnd ? RankOf(places[end], orders[end]) : std::numeric_limits<std::int64_t>::max();
    for (const std::int64_t step : {1000, 500, 200, 100, 50, 20, 10, 5, 2, 1}) {
        std::int64_t below = begin == 0 ? noOrder : RankOf(places[begin - 1], orders[begin - 1]);
        if (below == noOrder)
            below = above > 0 ? 0 : above - static_cast<std::int64_t>(end - begin + 1) * step;
        bool hasRoom = true;
        for (std::size_t i = begin; i < end && hasRoom; ++i) {
            const NumberedPlace& place = places[i];
            const std::int64_t unit = place.factor == wholeOrder ? 1 : wholeOrder;
            const std::int64_t stride = place.isWhole ? std::max(step, wholeOrder) : step;
            const std::int64_t low = std::max(below * unit, place.least == noOrder ? below * unit : place.least - 1);
            std::int64_t order = (low / stride + (low >= 0 || low % stride == 0 ? 1 : 0)) * stride;
            while (!Fits(place, order) && order <= place.most)
                order += stride;
            hasRoom = order <= place.most && RankOf(place, order) > below && RankOf(place, order) < above;
            orders[i] = order;
            below = RankOf(place, order);
        }
        if (hasRoom)
            return true;
    }
    return false;
}

} // namespace

std::optional<std::vector<std::int64_t>> NumberPlaces(const std::vector<NumberedPlace>& places) {
    std::vector<bool> isBarred(places.size(), false);
    for (;;) {
        const auto kept = Kept(places, isBarred);
        if (!kept)
            return std::nullopt;
        std::vector<std::int64_t> orders(places.size(), 0);
        for (std::size_t i = 0; i < places.size(); ++i)
            if ((*kept)[i])
                orders[i] = places[i].order;
        bool isDone = true;
        for (std::size_t begin = 0; begin < places.size() && isDone;) {
            if ((*kept)[begin]) {
                ++begin;
                continue;
            }
            std::size_t end = begin;
            while (end < places.size() && !(*kept)[end])
                ++end;
            isDone = Fill(places, begin, end, orders);
            if (!isDone) { // without one of both neighbours there is more
                const std::size_t other = end < places.size() && !places[end].isFixed ? end
                                          : begin > 0 && !places[begin - 1].isFixed   ? begin - 1
                                                                                      : places.size();
                if (other == places.size())
                    return std::nullopt;
                isBarred[other] = true;
            }
            begin = end;
        }
        if (isDone)
            return orders;
    }
}

std::optional<std::vector<std::int64_t>> NumberTexts(const std::vector<NumberedPlace>& places) {
    const auto Text = [](std::int64_t order) {
        return ToText(static_cast<Single>(static_cast<double>(order) / static_cast<double>(wholeOrder)));
    };
    std::vector<std::int64_t> orders;
    bool isRight = true;
    for (const NumberedPlace& place : places) {
        isRight =
            isRight && place.isKeepable && (orders.empty() || CompareText(Text(orders.back()), Text(place.order)) < 0);
        orders.push_back(place.order);
    }
    if (isRight)
        return orders;
    // Those with the digits that most have keep theirs where that does.
    auto numbered = NumberPlaces(places);
    const auto Ascends = [&](const std::vector<std::int64_t>& texts) {
        for (std::size_t i = 1; i < texts.size(); ++i)
            if (CompareText(Text(texts[i - 1]), Text(texts[i])) >= 0)
                return false;
        return true;
    };
    if (numbered && Ascends(*numbered))
        return numbered;
    if (std::any_of(places.begin(), places.end(), [](const NumberedPlace& place) { return place.isFixed; }))
        return std::nullopt;
    constexpr std::size_t few = 9;
    constexpr std::size_t many = 90;
    std::int64_t order = places.size() <= few ? 0 : places.size() <= many ? 90 : 10000;
    for (std::int64_t& each : orders)
        each = (order += places.size() <= many ? 10 : 1) * wholeOrder;
    return orders;
}

} // namespace corvane::check
