#pragma once

#include <cstddef>

// Descriptor tables: one row per enumerator, in the enumeration's order, each
// row naming its enumerator in `key`. A lookup is an index, and the compiler
// checks that the rows cover the enumeration up to its last enumerator in
// order, where a switch per property would check each property apart.

template <typename Row, std::size_t N, typename Enum>
constexpr bool coversEnumeration(const Row (&rows)[N], Enum last)
{
    if (N != static_cast<std::size_t>(last) + 1)
        return false;
    for (std::size_t index = 0; index < N; ++index) {
        if (static_cast<std::size_t>(rows[index].key) != index)
            return false;
    }
    return true;
}

template <typename Row, std::size_t N, typename Enum>
constexpr const Row &enumRow(const Row (&rows)[N], Enum key)
{
    return rows[static_cast<std::size_t>(key)];
}
