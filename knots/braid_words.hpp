// The prime knots to ten crossings and the prime links of two and three loops to eight, in the order of Rolfsen's table
// ("Knots and links", 1976), as closed braids (braid.hpp).
#pragma once

#include <array>
#include <string_view>

namespace loopwise::knots {

/// Words, determinants and exponents as published in the Knot Atlas (The Rolfsen Knot Table).
struct BraidRow {
    short crossings, number; ///< the name: 5_2
    signed char strands;
    std::string_view word;
    short determinant;
    signed char lowest, highest; ///< exponents of the Jones polynomial in t
};

/// Short words of the links that Conway's notation gives ("An enumeration of knots and links, and some of their
/// algebraic properties", 1970).
struct LinkRow {
    signed char crossings, number, loops; ///< the name: 5^2_1
    signed char strands;
    std::string_view word;
};

// clang-format off
inline constexpr std::array<BraidRow, 249> braid_rows{{
    {3, 1, 2, "AAA", 3, -4, -1}, {4, 1, 3, "AbAb", 5, -2, 2}, {5, 1, 2, "AAAAA", 5, -7, -2},
    {5, 2, 3, "AAABaB", 7, -6, -1}, {6, 1, 4, "AABacBc", 9, -4, 2}, {6, 2, 3, "AAAbAb", 11, -5, 1},
    {6, 3, 3, "AAbAbb", 13, -3, 3}, {7, 1, 2, "AAAAAAA", 7, -10, -3}, {7, 2, 4, "AAABaBCbC", 11, -8, -1},
    {7, 3, 3, "aaaaabAb", 13, 2, 9}, {7, 4, 4, "aabAbbcBc", 15, 1, 8}, {7, 5, 3, "AAAABaBB", 17, -9, -2},
    {7, 6, 4, "AAbACbC", 19, -6, 1}, {7, 7, 4, "aBaBcBc", 21, -3, 4}, {8, 1, 5, "AABaBCbdCd", 13, -6, 2},
    {8, 2, 3, "AAAAAbAb", 17, -8, 0}, {8, 3, 5, "AABacBcdCd", 17, -4, 4}, {8, 4, 4, "AAAbAbcBc", 19, -5, 3},
    {8, 5, 3, "aaaBaaaB", 21, 0, 8}, {8, 6, 4, "AAAABacBc", 23, -7, 1}, {8, 7, 3, "aaaaBaBB", 23, -2, 6},
    {8, 8, 4, "aaabACbCC", 25, -3, 5}, {8, 9, 3, "AAAbAbbb", 25, -4, 4}, {8, 10, 3, "aaaBaaBB", 27, -2, 6},
    {8, 11, 4, "AABaBBcBc", 27, -7, 1}, {8, 12, 5, "AbACbdCd", 29, -4, 4}, {8, 13, 4, "AAbAbbcBc", 29, -3, 5},
    {8, 14, 4, "AAABaBcBc", 31, -7, 1}, {8, 15, 4, "AAbACBBBC", 33, -10, -2},
    {8, 16, 3, "AAbAAbAb", 35, -6, 2}, {8, 17, 3, "AAbAbAbb", 37, -4, 4}, {8, 18, 3, "AbAbAbAb", 45, -4, 4},
    {8, 19, 3, "aaabaaab", 3, 3, 8}, {8, 20, 3, "aaaBAAAB", 9, -5, 1}, {8, 21, 3, "AAABaaBB", 15, -7, -1},
    {9, 1, 2, "AAAAAAAAA", 9, -13, -4}, {9, 2, 5, "AAABaBCbCDcD", 15, -10, -1},
    {9, 3, 3, "aaaaaaabAb", 19, 3, 12}, {9, 4, 4, "AAAAABaBCbC", 21, -11, -2},
    {9, 5, 5, "aabAbbcBcdCd", 23, 1, 10}, {9, 6, 3, "AAAAAABaBB", 27, -12, -3},
    {9, 7, 4, "AAAABaBCbCC", 29, -11, -2}, {9, 8, 5, "AAbAbcBDcD", 31, -6, 3},
    {9, 9, 3, "AAAAABaBBB", 31, -12, -3}, {9, 10, 4, "aabAbbbbcBc", 33, 2, 11},
    {9, 11, 4, "aaaaBacBc", 33, 0, 9}, {9, 12, 5, "AAbACbCDcD", 35, -8, 1},
    {9, 13, 4, "aaaabAbbcBc", 37, 2, 11}, {9, 14, 5, "aabACbCdCd", 37, -3, 6},
    {9, 15, 5, "aaabACbdCd", 39, -1, 8}, {9, 16, 3, "aaaabbAbbb", 39, 3, 12},
    {9, 17, 4, "aBaBBBcBc", 39, -6, 3}, {9, 18, 4, "AAABaBBBCbC", 41, -11, -2},
    {9, 19, 5, "aBaBBCbdCd", 41, -5, 4}, {9, 20, 4, "AAAbACbCC", 41, -9, 0},
    {9, 21, 5, "aabAbCbdCd", 43, -1, 8}, {9, 22, 4, "AbAbCbbbC", 43, -3, 6},
    {9, 23, 4, "AAABaBBCbCC", 45, -11, -2}, {9, 24, 4, "AAbACbbbC", 45, -5, 4},
    {9, 25, 5, "AAbACBBdCd", 47, -8, 1}, {9, 26, 4, "aaaBaBcBc", 47, -2, 7},
    {9, 27, 4, "AAbAbbCbC", 49, -5, 4}, {9, 28, 4, "AAbACbbCC", 51, -7, 2},
    {9, 29, 4, "aBBcBaBcB", 51, -6, 3}, {9, 30, 4, "AAbbAbCbC", 53, -5, 4},
    {9, 31, 4, "AAbAbCbCC", 55, -7, 2}, {9, 32, 4, "aaBaBacBc", 59, -2, 7},
    {9, 33, 4, "AbAbbACbC", 61, -5, 4}, {9, 34, 4, "AbAbCbAbC", 69, -5, 4},
    {9, 35, 5, "AABaBBCbbDcBDC", 27, -10, -1}, {9, 36, 4, "aaaBaacBc", 37, 0, 9},
    {9, 37, 5, "AAbACbadCbCd", 45, -5, 4}, {9, 38, 4, "AABBcBaBCCB", 57, -11, -2},
    {9, 39, 5, "aabACBadcBcd", 55, -1, 8}, {9, 40, 4, "AbACbACbC", 75, -7, 2},
    {9, 41, 5, "AABacbbDCbCD", 49, -6, 3}, {9, 42, 4, "aaaBAAcBc", 7, -3, 3},
    {9, 43, 4, "aaabaaCbC", 13, 0, 7}, {9, 44, 4, "AAABaacBc", 17, -5, 2},
    {9, 45, 4, "AABaBACbC", 23, -8, -1}, {9, 46, 4, "AbAbCBaBC", 9, -6, 0},
    {9, 47, 4, "AbAbcbAbc", 27, -2, 5}, {9, 48, 4, "aabAbaCbAbC", 27, -1, 6},
    {9, 49, 4, "aabaaCbAbcc", 25, 2, 9}, {10, 1, 6, "AABaBCbCDceDe", 17, -8, 2},
    {10, 2, 3, "AAAAAAAbAb", 23, -11, -1}, {10, 3, 6, "AABaBCbdCdeDe", 25, -6, 4},
    {10, 4, 5, "AAAbAbcBcdCd", 27, -5, 5}, {10, 5, 3, "aaaaaaBaBB", 33, -1, 9},
    {10, 6, 4, "AAAAAABacBc", 37, -10, 0}, {10, 7, 5, "AABaBCbCCdCd", 43, -9, 1},
    {10, 8, 4, "AAAAAbAbcBc", 29, -8, 2}, {10, 9, 3, "aaaaaBaBBB", 39, -3, 7},
    {10, 10, 5, "AAbAbbcBcdCd", 45, -3, 7}, {10, 11, 5, "AAAABacBcdCd", 43, -7, 3},
    {10, 12, 4, "aaaaabACbCC", 47, -2, 8}, {10, 13, 6, "AABacBDceDe", 53, -6, 4},
    {10, 14, 4, "AAAAABaBcBc", 57, -10, 0}, {10, 15, 4, "aaaaBaBCbCC", 43, -4, 6},
    {10, 16, 5, "aabAbbCbCDcD", 47, -3, 7}, {10, 17, 3, "AAAAbAbbbb", 41, -5, 5},
    {10, 18, 5, "AAABaBcBcdCd", 55, -7, 3}, {10, 19, 4, "AAAAbAbbcBc", 51, -6, 4},
    {10, 20, 5, "AAAABaBCbdCd", 35, -9, 1}, {10, 21, 4, "AABaBBBBcBc", 45, -10, 0},
    {10, 22, 4, "aaaabACbCCC", 49, -4, 6}, {10, 23, 4, "AAbAbbbbcBc", 59, -2, 8},
    {10, 24, 5, "AABaBBBCbdCd", 55, -9, 1}, {10, 25, 4, "AAAABaBBcBc", 65, -10, 0},
    {10, 26, 4, "AAAbAbbbcBc", 61, -4, 6}, {10, 27, 4, "AAAABaBcBcc", 71, -8, 2},
    {10, 28, 5, "aabAbbcBDcDD", 53, -3, 7}, {10, 29, 5, "AAAbACbdCd", 63, -7, 3},
    {10, 30, 5, "AABaBBCbCdCd", 67, -9, 1}, {10, 31, 5, "AAABacBccdCd", 57, -5, 5},
    {10, 32, 4, "aaaBaBBCbCC", 69, -6, 4}, {10, 33, 5, "AABaBcBccdCd", 65, -5, 5},
    {10, 34, 5, "aaabAbcBDcDD", 37, -3, 7}, {10, 35, 6, "AbAbcBDceDe", 49, -4, 6},
    {10, 36, 5, "AAABaBCbCdCd", 51, -9, 1}, {10, 37, 5, "AAABacBcdCdd", 53, -5, 5},
    {10, 38, 5, "AAABaBBCbdCd", 59, -9, 1}, {10, 39, 4, "AAABaBBBcBc", 61, -10, 0},
    {10, 40, 4, "aaabAbbCbCC", 75, -2, 8}, {10, 41, 5, "aBaBBcBDcD", 71, -7, 3},
    {10, 42, 5, "AAbAbCbdCd", 81, -5, 5}, {10, 43, 5, "AAbACbdCdd", 73, -5, 5},
    {10, 44, 5, "AAbACbCdCd", 79, -7, 3}, {10, 45, 5, "AbAbCbCdCd", 89, -5, 5},
    {10, 46, 3, "aaaaaBaaaB", 31, 1, 11}, {10, 47, 3, "aaaaaBaaBB", 41, -1, 9},
    {10, 48, 3, "AAAAbbAbbb", 49, -5, 5}, {10, 49, 4, "AAAAbACBBBC", 59, -13, -3},
    {10, 50, 4, "aabAbbCbbbC", 53, 0, 10}, {10, 51, 4, "aabAbbCbbCC", 67, -2, 8},
    {10, 52, 4, "aaaBaaBBCbC", 59, -4, 6}, {10, 53, 5, "AABaBcBDCCCD", 73, -12, -2},
    {10, 54, 4, "aaaBaaBCbCC", 47, -4, 6}, {10, 55, 5, "AAABacBDCCCD", 61, -12, -2},
    {10, 56, 4, "aaabAbCbbbC", 65, 0, 10}, {10, 57, 4, "aaabAbCbbCC", 79, -2, 8},
    {10, 58, 6, "aBacBDCCeDe", 65, -6, 4}, {10, 59, 5, "AbAbCbbdCd", 75, -3, 7},
    {10, 60, 5, "AbAbbCbCBDcD", 85, -6, 4}, {10, 61, 4, "aaaBaaaBCbC", 33, -2, 8},
    {10, 62, 3, "aaaaBaaaBB", 45, -1, 9}, {10, 63, 5, "AAbACBBBCDcD", 57, -12, -2},
    {10, 64, 3, "aaaBaaaBBB", 51, -3, 7}, {10, 65, 4, "aabAbCbbbCC", 63, -2, 8},
    {10, 66, 4, "AAAbACBBBCC", 75, -13, -3}, {10, 67, 5, "AAABaBCbbdCBdC", 63, -9, 1},
    {10, 68, 5, "aaBaBBCbbDcBDC", 57, -7, 3}, {10, 69, 5, "aabACbadCbCd", 87, -2, 8},
    {10, 70, 5, "AbACbbbdCd", 67, -3, 7}, {10, 71, 5, "AAbACbbdCd", 77, -5, 5},
    {10, 72, 4, "aaaabbAbCbC", 73, 0, 10}, {10, 73, 5, "AABaBAcBcDcD", 83, -8, 2},
    {10, 74, 5, "AABaBBCbbdCBdC", 63, -9, 1}, {10, 75, 5, "aBaBcBBdCbdc", 81, -4, 6},
    {10, 76, 4, "aaaabACbbbC", 57, 0, 10}, {10, 77, 4, "aaaabACbbCC", 63, -2, 8},
    {10, 78, 5, "AABaBAcBDcDD", 69, -10, 0}, {10, 79, 3, "AAAbbAAbbb", 61, -5, 5},
    {10, 80, 4, "AAAbAACBBBC", 71, -13, -3}, {10, 81, 5, "aaBacbbDCCCD", 85, -5, 5},
    {10, 82, 3, "AAAAbAbAbb", 63, -7, 3}, {10, 83, 4, "aabAbCbbCbC", 83, -2, 8},
    {10, 84, 4, "aaabACbbCbC", 87, -2, 8}, {10, 85, 3, "AAAAbAAbAb", 57, -9, 1},
    {10, 86, 4, "AAbAbAbbcBc", 85, -4, 6}, {10, 87, 4, "aaabACbCbCC", 81, -4, 6},
    {10, 88, 5, "AbACbCbdCd", 101, -5, 5}, {10, 89, 5, "AbAbcBADCbCD", 99, -8, 2},
    {10, 90, 4, "AAbAbcBAcbb", 77, -4, 6}, {10, 91, 3, "AAAbAbbAbb", 73, -5, 5},
    {10, 92, 4, "aaabbCbAbCb", 89, 0, 10}, {10, 93, 4, "AAbAAbAbcBc", 67, -6, 4},
    {10, 94, 3, "aaaBaaBBaB", 71, -3, 7}, {10, 95, 4, "AAbbCbAbccb", 91, -2, 8},
    {10, 96, 5, "AbaCbaCdCbCd", 93, -4, 6}, {10, 97, 5, "aabAbaCbAbcDcD", 87, -1, 9},
    {10, 98, 4, "AABBcBaBBcB", 81, -10, 0}, {10, 99, 3, "AAbAAbbAbb", 81, -5, 5},
    {10, 100, 3, "AAAbAAbAAb", 65, -9, 1}, {10, 101, 5, "aaabAcBacbbdCd", 85, 2, 12},
    {10, 102, 4, "AAbACbAbbcc", 73, -4, 6}, {10, 103, 4, "AABacBBcBBc", 75, -8, 2},
    {10, 104, 3, "AAAbbAbAbb", 77, -5, 5}, {10, 105, 5, "aaBacbbDCbCD", 91, -3, 7},
    {10, 106, 3, "aaaBaBaaBB", 75, -3, 7}, {10, 107, 5, "AAbAcbbDcBcD", 93, -5, 5},
    {10, 108, 4, "aaBaacBaBCC", 63, -4, 6}, {10, 109, 3, "AAbAbbAAbb", 85, -5, 5},
    {10, 110, 5, "AbACBBBdcBcd", 83, -7, 3}, {10, 111, 4, "aabbCbbAbCb", 77, 0, 10},
    {10, 112, 3, "AAAbAbAbAb", 87, -7, 3}, {10, 113, 4, "aaabCbAbCbC", 111, -2, 8},
    {10, 114, 4, "AABacBcBcBc", 93, -6, 4}, {10, 115, 5, "aBacbbDCbCCD", 109, -5, 5},
    {10, 116, 3, "AAbAAbAbAb", 95, -7, 3}, {10, 117, 4, "aabbCbAbCbC", 103, -2, 8},
    {10, 118, 3, "aaBaBaBBaB", 97, -5, 5}, {10, 119, 4, "AAbACbAbccb", 101, -4, 6},
    {10, 120, 5, "AABacbADCBBCCD", 105, -12, -2}, {10, 121, 4, "AABcBaBcBcB", 115, -8, 2},
    {10, 122, 4, "aabCbACbCbC", 105, -4, 6}, {10, 123, 3, "AbAbAbAbAb", 121, -5, 5},
    {10, 124, 3, "aaaaabaaab", 1, 4, 10}, {10, 125, 3, "aaaaaBAAAB", 11, -4, 4},
    {10, 126, 3, "AAAAABaaaB", 19, -8, 0}, {10, 127, 3, "AAAAABaaBB", 29, -10, -2},
    {10, 128, 4, "aaabaabbcBc", 11, 3, 10}, {10, 129, 4, "aaaBAAcBAcB", 25, -5, 3},
    {10, 130, 4, "aaaBAABBCbC", 17, -7, 1}, {10, 131, 4, "AAABaaBBCbC", 31, -9, -1},
    {10, 132, 4, "aaaBAABCbCC", 5, -7, -2}, {10, 133, 4, "AAABaaBCbCC", 19, -9, -1},
    {10, 134, 4, "aaabaabcBcc", 23, 3, 11}, {10, 135, 4, "aaabAbCBBBC", 37, -5, 3},
    {10, 136, 5, "aBaBCbbdCd", 15, -3, 4}, {10, 137, 5, "AbAbCBBdCd", 25, -6, 2},
    {10, 138, 5, "AbAbcbbDcD", 35, -3, 5}, {10, 139, 3, "aaaabaaabb", 3, 4, 12},
    {10, 140, 4, "aaaBAAABCbC", 9, -7, 0}, {10, 141, 3, "aaaaBAAABB", 21, -6, 2},
    {10, 142, 4, "aaabaaabcBc", 15, 3, 10}, {10, 143, 3, "AAAABaaaBB", 27, -8, 0},
    {10, 144, 4, "AABaBAcBAcb", 39, -7, 1}, {10, 145, 4, "AABaBACBaBC", 3, -10, -2},
    {10, 146, 4, "AAbAbaCbAbC", 33, -5, 3}, {10, 147, 4, "aaaBaBCbAbC", 27, -3, 5},
    {10, 148, 3, "AAAABaaBaB", 31, -8, 0}, {10, 149, 3, "AAAABaBaBB", 41, -10, -2},
    {10, 150, 4, "aaaBaacBAcb", 29, 0, 8}, {10, 151, 4, "aaabAAcBacB", 43, -2, 6},
    {10, 152, 3, "AAABBAABBB", 11, -13, -4}, {10, 153, 4, "AAABAAcbbbc", 1, -5, 4},
    {10, 154, 4, "aabAbacbbbc", 13, 3, 12}, {10, 155, 3, "aaabAAbAAb", 25, -2, 6},
    {10, 156, 4, "AAAbaaCBaBC", 35, -6, 2}, {10, 157, 3, "aaabbAbAbb", 49, 2, 10},
    {10, 158, 4, "AAABaacbAbc", 45, -4, 4}, {10, 159, 3, "AAABaBaaBB", 39, -8, 0},
    {10, 160, 4, "aaabaaCbAbC", 21, 0, 7}, {10, 161, 3, "AAABaBAABB", 5, -11, -3},
    {10, 162, 4, "AABaaBBAcBc", 35, -7, 1}, {10, 163, 4, "aaBAAcbAbbc", 51, -2, 6},
    {10, 164, 4, "aaBaBBCbAbC", 45, -5, 3}, {10, 165, 4, "aabACbAbccb", 39, 1, 9},
}};

inline constexpr std::array<LinkRow, 44> link_rows{{
    {2, 1, 2, 2, "aa"}, {4, 1, 2, 2, "aaaa"}, {5, 1, 2, 3, "aBaBB"}, {6, 1, 2, 2, "aaaaaa"},
    {6, 2, 2, 3, "aBAAAAB"}, {6, 3, 2, 4, "acBcaB"}, {7, 1, 2, 3, "BaBaBBB"}, {7, 2, 2, 3, "BaBaaBB"},
    {7, 3, 2, 4, "cBCCaBBa"}, {7, 4, 2, 3, "aBBBaBB"}, {7, 5, 2, 3, "BBaaBaa"}, {7, 6, 2, 3, "BaBaBBa"},
    {7, 7, 2, 3, "AABaaaB"}, {7, 8, 2, 3, "AABaaBB"}, {8, 1, 2, 2, "aaaaaaaa"}, {8, 2, 2, 3, "BBBBaBAAB"},
    {8, 3, 2, 3, "BAbAABBBB"}, {8, 4, 2, 3, "aaaBaaabb"}, {8, 5, 2, 4, "cccBcaBa"}, {8, 6, 2, 5, "cbDAbcBAD"},
    {8, 7, 2, 4, "cBcBBaBa"}, {8, 8, 2, 4, "BcaBcBaa"}, {8, 9, 2, 4, "aaBacaBc"}, {8, 10, 2, 4, "acBaBcBB"},
    {8, 11, 2, 4, "BBcaBcaB"}, {8, 12, 2, 4, "BaccBBca"}, {8, 13, 2, 4, "caBacBaB"},
    {8, 14, 2, 4, "cBaBcBaB"}, {8, 15, 2, 4, "BCaCBacc"}, {8, 16, 2, 4, "cBBABcBA"}, {6, 1, 3, 3, "BBaBBa"},
    {6, 2, 3, 3, "BaBaBa"}, {6, 3, 3, 3, "aBAABa"}, {7, 1, 3, 4, "BcaBcaB"}, {8, 1, 3, 3, "aaBaaaaB"},
    {8, 2, 3, 3, "BBBaaBaa"}, {8, 3, 3, 4, "BCCaCBBca"}, {8, 4, 3, 3, "aBBaaBBa"}, {8, 5, 3, 3, "aaaBaBaB"},
    {8, 6, 3, 3, "aBaBBaBa"}, {8, 7, 3, 3, "BABBBBAB"}, {8, 8, 3, 3, "abbaaaBB"}, {8, 9, 3, 3, "aabbaaBB"},
    {8, 10, 3, 3, "ABBAABBA"},
}};
// clang-format on

} // namespace loopwise::knots
