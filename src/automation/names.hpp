// Lookups by name: without regard to (ASCII) case, of UTF-8 or UTF-16 text, without an allocation.
#pragma once

#include "text/letter_case.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace quill1xml::automation {

/// A row of a table of names, whose rows stand in the order of their hashes.
struct NameRow {
    std::uint32_t hash = 0;
    std::uint32_t index = 0;  ///< of what has the name
};

using NameTable = std::span<const NameRow>;

template <class Character>
constexpr std::uint32_t hashOfName(std::basic_string_view<Character> name) {
    std::uint32_t hash = 2166136261;
    for (const Character c : name) hash = (hash ^ static_cast<std::uint32_t>(asciiLower(c))) * 16777619;
    return hash;
}

/// The table of the names of things.
template <std::size_t size, class Things>
consteval std::array<NameRow, size> tableOfNames(const Things& things) {
    std::array<NameRow, size> table{};
    for (std::uint32_t i = 0; i < size; ++i) table[i] = {hashOfName(things[i].name), i};
    std::ranges::sort(table, {}, &NameRow::hash);
    return table;
}

template <class Thing, std::size_t size>
consteval std::array<NameRow, size> tableOfNames(const Thing (&things)[size]) {
    return tableOfNames<size, Thing[size]>(things);
}

/// The index of the thing of that name, or -1.
template <class Thing, class Character>
int indexOf(std::span<const Thing> things, NameTable table, std::basic_string_view<Character> name) {
    const std::uint32_t hash = hashOfName(name);
    auto row = std::ranges::lower_bound(table, hash, {}, &NameRow::hash);
    for (; row != table.end() && row->hash == hash; ++row) {
        const std::string_view known = things[row->index].name;
        if (std::ranges::equal(known, name, {}, asciiLower<char>, asciiLower<Character>)) {
            return static_cast<int>(row->index);
        }
    }
    return -1;
}

}  // namespace quill1xml::automation
