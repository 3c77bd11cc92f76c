#include "draw/canvas.hpp"

#include "words/numbers.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace loopwise::draw {
namespace {

constexpr double sampling = 4.0;     // pixels between the points that stand for a drawn line
constexpr double letter_width = 0.6; // of the font size
// Of covering another label, against 1 for a point of a line, or leaving the frame: rather no label then.
constexpr double overlap_cost = 10000.0, outside_cost = 10000.0;
constexpr int places_around = 24;

double overlap(double a, double half_a, double b, double half_b) {
    return std::max(0.0, half_a + half_b - std::abs(a - b));
}

} // namespace

std::string number(double value) { return words::fixed(value, 1); }

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : ::loopwise::words::valid_utf8(text)) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += static_cast<unsigned char>(c) < ' ' ? '?' : c;
        }
    }
    return out;
}

std::string line(Spot from, Spot to, const std::string& attributes) {
    return "<line x1=\"" + number(from.x) + "\" y1=\"" + number(from.y) + "\" x2=\"" + number(to.x) + "\" y2=\"" +
           number(to.y) + "\" " + attributes + "/>\n";
}

std::string disc(Spot centre, double radius, const std::string& attributes) {
    return "<circle cx=\"" + number(centre.x) + "\" cy=\"" + number(centre.y) + "\" r=\"" + number(radius) + "\" " +
           attributes + "/>\n";
}

std::string words(Spot at, const std::string& text, const std::string& attributes) {
    return "<text x=\"" + number(at.x) + "\" y=\"" + number(at.y) + "\" " + attributes + ">" + escaped(text) +
           "</text>\n";
}

void Labels::avoid(Spot from, Spot to) {
    // A closing line may be very long: only what is near the frame counts.
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const double reach = 4.0 * (width_ + height_);
    const double steps = std::ceil(std::min(length, reach) / sampling);
    for (double step = 0.0; step <= steps; ++step) {
        const double part = length > 0.0 ? step * sampling / length : 0.0;
        const Spot start{from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
        const Spot end{to.x - part * (to.x - from.x), to.y - part * (to.y - from.y)};
        drawn_.insert(drawn_.end(), {start, end});
    }
}

void Labels::keep_off(Spot upper_left, Spot lower_right) {
    placed_.push_back({{0.5 * (upper_left.x + lower_right.x), 0.5 * (upper_left.y + lower_right.y)},
                       0.5 * (lower_right.x - upper_left.x),
                       0.5 * (lower_right.y - upper_left.y)});
}

double Labels::cost(const Box& box) const {
    double sum = 0.0;
    for (const Spot& spot : drawn_)
        if (std::abs(spot.x - box.centre.x) < box.half_width && std::abs(spot.y - box.centre.y) < box.half_height)
            sum += 1.0;
    for (const Box& other : placed_)
        if (overlap(box.centre.x, box.half_width, other.centre.x, other.half_width) > 0.0 &&
            overlap(box.centre.y, box.half_height, other.centre.y, other.half_height) > 0.0)
            sum += overlap_cost;
    if (box.centre.x < box.half_width || box.centre.x > width_ - box.half_width || box.centre.y < box.half_height ||
        box.centre.y > height_ - box.half_height)
        sum += outside_cost;
    return sum;
}

std::string Labels::beside(Spot spot, double radius, const std::string& text, double size,
                           const std::string& attributes) {
    const double half_width = 0.5 * letter_width * size * static_cast<double>(text.size());
    Box best{};
    double least = std::numeric_limits<double>::max();
    for (const double away : {4.0, 14.0, 26.0}) {
        for (int place = 0; place < places_around; ++place) {
            const double turn = 2.0 * std::numbers::pi * (place + 0.5) / places_around;
            const double dx = (radius + away + half_width) * std::cos(turn);
            const double dy = (radius + away + 0.5 * size) * std::sin(turn);
            const Box box{{spot.x + dx, spot.y + dy}, half_width + 2.0, 0.5 * size + 1.0};
            const double price = cost(box) + away / 10.0;
            if (price < least) {
                least = price;
                best = box;
            }
        }
    }
    if (least >= overlap_cost) return "";
    placed_.push_back(best);
    constexpr double baseline = 0.36; // below the middle of the letters, of the font size
    return words({best.centre.x, best.centre.y + baseline * size}, text,
                 "text-anchor=\"middle\" font-size=\"" + number(size) + "\" " + attributes);
}

} // namespace loopwise::draw
