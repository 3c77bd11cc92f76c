#include "draw/palette.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace loopwise::draw {
namespace {

// Blue to red through green in OKLCH (B. Ottosson, "A perceptual color space for image processing",
// 2020): equal steps look equal, no colour is lost on white paper, and the middle is the lightest.
constexpr double first_hue = 264.0, last_hue = 25.0;
constexpr double end_lightness = 0.53, middle_lightness = 0.73, chroma = 0.16;

int to_byte(double linear) {
    const double held = std::clamp(linear, 0.0, 1.0);
    const double encoded = held <= 0.0031308 ? 12.92 * held : 1.055 * std::pow(held, 1.0 / 2.4) - 0.055;
    return static_cast<int>(std::lround(255.0 * encoded));
}

double cube(double value) { return value * value * value; }

struct Colour {
    double hue, lightness, chroma; // the hue in degrees
};

Colour of_chain_alone(double place) {
    return {first_hue + place * (last_hue - first_hue),
            end_lightness + (middle_lightness - end_lightness) * std::sin(place * std::numbers::pi), chroma};
}

Colour of_one_of(double place, std::size_t chain, std::size_t chains) {
    constexpr std::size_t most_even = 12; // hues that are easily told apart
    constexpr double golden_angle = 137.50776, turn = 360.0, dark = 0.45, light = 0.8;
    const double step = chains <= most_even ? turn / static_cast<double>(chains) : golden_angle;
    return {first_hue + step * static_cast<double>(chain), dark + place * (light - dark), 0.13};
}

} // namespace

std::string colour_along(double place, std::size_t chain, std::size_t chains) {
    const Colour colour = chains < 2 ? of_chain_alone(place) : of_one_of(place, chain, chains);
    const double hue = colour.hue * std::numbers::pi / 180.0, lightness = colour.lightness;
    const double a = colour.chroma * std::cos(hue), b = colour.chroma * std::sin(hue);
    const double l = cube(lightness + 0.3963377774 * a + 0.2158037573 * b);
    const double m = cube(lightness - 0.1055613458 * a - 0.0638541728 * b);
    const double s = cube(lightness - 0.0894841775 * a - 1.2914855480 * b);
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x",
                  static_cast<unsigned>(to_byte(4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s)) & 0xffU,
                  static_cast<unsigned>(to_byte(-1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s)) & 0xffU,
                  static_cast<unsigned>(to_byte(-0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)) & 0xffU);
    return text;
}

} // namespace loopwise::draw
