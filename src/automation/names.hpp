// Lookups by name: without regard to (ASCII) case, of UTF-8 or UTF-16 text, without an allocation.
#pragma once

#include "text/letter_case.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <span>
#include <string_view>

namespace quill1xml::automation {

/// The order of names in tables: shorter ones first, as lengths are the cheaper thing to compare.
struct NameOrder {
    template <class A, class B>
    constexpr bool operator()(std::basic_string_view<A> a, std::basic_string_view<B> b) const {
        if (a.size() != b.size()) return a.size() < b.size();
        return std::ranges::lexicographical_compare(a, b, {}, asciiLower<A>, asciiLower<B>);
    }
};

/// The indexes of named things in the order of their names.
template <std::size_t size, class Things>
consteval std::array<std::uint8_t, size> orderOfNames(const Things& things) {
    static_assert(size <= 256);
    std::array<std::uint8_t, size> order{};
    std::iota(order.begin(), order.end(), std::uint8_t{0});
    std::ranges::sort(order, NameOrder{}, [&](std::uint8_t i) { return things[i].name; });
    return order;
}

template <class Thing, std::size_t size>
consteval std::array<std::uint8_t, size> orderOfNames(const Thing (&things)[size]) {
    return orderOfNames<size, Thing[size]>(things);
}

/// The index of the thing of that name, or -1.
template <class Thing, class Character>
int indexOf(std::span<const Thing> things, std::span<const std::uint8_t> order,
            std::basic_string_view<Character> name) {
    const auto named = [&](std::uint8_t i) { return things[i].name; };
    const auto place = std::ranges::partition_point(order, [&](std::uint8_t i) { return NameOrder{}(named(i), name); });
    return place == order.end() || NameOrder{}(name, named(*place)) ? -1 : *place;
}

}  // namespace quill1xml::automation
