// Sets of small numbers, one bit each.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace loopwise::bits {

constexpr std::size_t per_word = 64;

inline std::uint64_t mask(std::size_t i) { return std::uint64_t{1} << i % per_word; }
inline bool has(const std::uint64_t* set, std::size_t i) { return (set[i / per_word] & mask(i)) != 0; }
inline void add(std::uint64_t* set, std::size_t i) { set[i / per_word] |= mask(i); }
inline void remove(std::uint64_t* set, std::size_t i) { set[i / per_word] &= ~mask(i); }

/// Adds all from `from` up to and without `end`.
inline void add(std::uint64_t* set, std::size_t from, std::size_t end) {
    for (std::size_t i = from; i < end;) {
        const std::size_t next = std::min(end, (i / per_word + 1) * per_word);
        const std::uint64_t up_to_next = next % per_word == 0 ? ~std::uint64_t{0} : mask(next) - 1;
        set[i / per_word] |= up_to_next & ~(mask(i) - 1);
        i = next;
    }
}

/// The smallest element at or after `from` and before `end`; `end` when there is none.
inline std::size_t first(const std::uint64_t* set, std::size_t from, std::size_t end) {
    if (from >= end) return end;
    std::uint64_t word = set[from / per_word] & (~std::uint64_t{0} << from % per_word);
    for (std::size_t w = from / per_word;; word = set[w]) {
        if (word != 0) {
            const std::size_t found = w * per_word + static_cast<std::size_t>(std::countr_zero(word));
            return found < end ? found : end;
        }
        if (++w * per_word >= end) return end;
    }
}

/// The smallest number at or after `from` and before `end` that is no element; `end` when there is none.
inline std::size_t first_missing(const std::uint64_t* set, std::size_t from, std::size_t end) {
    while (from < end) {
        const std::uint64_t missing = ~set[from / per_word] & (~std::uint64_t{0} << from % per_word);
        const std::size_t word_end = (from / per_word + 1) * per_word;
        const std::size_t found =
            missing == 0 ? word_end
                         : word_end - per_word + static_cast<std::size_t>(std::countr_zero(missing));
        if (missing != 0) return std::min(found, end);
        from = found;
    }
    return end;
}

/// The largest element before `from` and not below `begin`; `from` when there is none.
inline std::size_t last_before(const std::uint64_t* set, std::size_t from, std::size_t begin) {
    if (from <= begin) return from;
    std::size_t w = (from - 1) / per_word;
    std::uint64_t word = set[w] & (~std::uint64_t{0} >> (per_word - 1 - (from - 1) % per_word));
    for (;; word = set[--w]) {
        if (word != 0) {
            const std::size_t found =
                w * per_word + per_word - 1 - static_cast<std::size_t>(std::countl_zero(word));
            return found >= begin ? found : from;
        }
        if (w * per_word <= begin) return from;
    }
}

} // namespace loopwise::bits
