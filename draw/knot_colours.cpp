#include "draw/knot_colours.hpp"

#include "draw/palette.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace loopwise::draw {
namespace {

constexpr const char* unknot_colour = "#eceef2";
constexpr const char* unnamed_colour = "#8a909c";
constexpr double palest = 0.2; // the part of its full colour that a knot of no share has

/// From number to number the hues are as far apart as few numbers can be, however many there are.
constexpr double first_place = 0.97, golden_part = 0.6180339887498949;

int channel(const std::string& colour, std::size_t number) {
    int value = 0;
    std::from_chars(&colour[1 + 2 * number], &colour[3 + 2 * number], value, 16);
    return value;
}

std::string mixed(const std::string& from, const std::string& to, double part) {
    std::string text = "#";
    for (std::size_t i = 0; i < 3; ++i) {
        const double value = channel(from, i) + part * (channel(to, i) - channel(from, i));
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(std::lround(value)) & 0xffU);
        text += digits;
    }
    return text;
}

} // namespace

std::size_t shade_of(const fingerprint::ChainFingerprint& of, const fingerprint::Cell& cell) {
    if (!of.is_knot(cell.knot)) return 0;
    const double part = std::ceil(of.share_of(cell.closures) * static_cast<double>(shades));
    return std::clamp<std::size_t>(static_cast<std::size_t>(part), 1, shades) - 1;
}

std::string knot_colour(const fingerprint::ChainFingerprint& of, std::size_t knot, std::size_t shade) {
    if (knot == 0) return unknot_colour;
    if (!of.is_knot(knot)) return unnamed_colour;
    const double turns = first_place + golden_part * static_cast<double>(knot - 1);
    const double part = static_cast<double>(shade + 1) / static_cast<double>(shades);
    return mixed(unknot_colour, colour_along(turns - std::floor(turns)), palest + (1.0 - palest) * part);
}

std::size_t number_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    return static_cast<std::size_t>(std::find(of.knots.begin(), of.knots.end(), place.knot) - of.knots.begin());
}

std::string core_word(const fingerprint::KnotPlace& place) {
    return place.kind == fingerprint::PlaceKind::knot ? "core" : text(place.kind);
}

} // namespace loopwise::draw
