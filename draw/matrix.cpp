#include "draw/matrix.hpp"

#include "draw/canvas.hpp"
#include "draw/palette.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>

namespace loopwise::draw {
namespace {

constexpr double page_width = 1000.0, page_height = 980.0;
constexpr double plot_left = 110.0, plot_top = 100.0, plot_side = 780.0;
constexpr double plot_right = plot_left + plot_side, plot_bottom = plot_top + plot_side;
constexpr std::size_t most_dots = 390; // along a side: two pixels each

constexpr const char* ink = "#222222";
constexpr const char* unknot_colour = "#eceef2";
constexpr const char* unnamed_colour = "#8a909c";
constexpr int shades = 5;
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

constexpr std::size_t longest_knot = 30;
std::string shown(const knots::KnotType& knot) { return short_text(knot, longest_knot); }

/// Where stretches are in the picture.
class Frame {
  public:
    explicit Frame(std::size_t beads) : beads_(static_cast<double>(beads)) {}
    /// The left, or lower, side of a bead; its other side is that of the next one.
    double across(std::size_t bead) const {
        return plot_left + plot_side * static_cast<double>(bead) / beads_;
    }
    double up(std::size_t bead) const { return plot_bottom - plot_side * static_cast<double>(bead) / beads_; }

  private:
    double beads_;
};

std::size_t dot_side(std::size_t beads) { return (beads + most_dots - 1) / most_dots; }

/// All dots that are knots, a path for each colour: rows of equal neighbours are one piece.
std::string dots(const fingerprint::ChainFingerprint& of) {
    const std::size_t beads = of.matrix.beads(), side = dot_side(beads);
    const Frame frame(beads);
    std::map<std::string, std::string> paths;
    for (std::size_t last = 0; last < beads; last += side) {
        std::string colour;
        std::size_t start = 0;
        const auto end_piece = [&](std::size_t end) {
            if (colour.empty()) return;
            std::string& path = paths[colour];
            for (const std::string& part :
                 {std::string("M"), number(frame.across(start)), std::string(" "), number(frame.up(last)),
                  std::string("H"), number(frame.across(end)), std::string("V"),
                  number(frame.up(std::min(last + side, beads))), std::string("H"),
                  number(frame.across(start)), std::string("z")})
                path += part;
        };
        for (std::size_t first = 0; first < std::min(last + side, beads); first += side) {
            const fingerprint::FingerprintMatrix::Cell cell = strongest_cell(of, first, last, side);
            std::string now = cell.knot == 0 ? "" : knot_colour(of, cell.knot, of.share_of(cell));
            if (now == colour) continue;
            end_piece(first);
            colour = std::move(now);
            start = first;
        }
        end_piece(std::min(last + side, beads));
    }
    std::string svg = "<g shape-rendering=\"crispEdges\">\n";
    for (const auto& [colour, path] : paths) svg += "<path fill=\"" + colour + "\" d=\"" + path + "\"/>\n";
    return svg + "</g>\n";
}

std::string triangle() {
    return "<path fill=\"" + std::string(unknot_colour) + "\" d=\"M" + number(plot_left) + " " +
           number(plot_bottom) + "V" + number(plot_top) + "H" + number(plot_right) + "z\"/>\n";
}

/// 1, 2 or 5 times a power of ten, so that there are some eight ticks.
int tick_distance(std::size_t beads) {
    constexpr double ticks = 8.0;
    const double wanted = std::max(1.0, static_cast<double>(beads) / ticks);
    const double power = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= wanted) return static_cast<int>(factor * power);
    return static_cast<int>(10.0 * power);
}

std::string axes(const fingerprint::ChainFingerprint& of) {
    const std::size_t beads = of.matrix.beads();
    const Frame frame(beads);
    const int distance = tick_distance(beads);
    const std::string small = "font-size=\"15\" fill=\"#444444\"",
                      thin = "stroke=\"#888888\" stroke-width=\"1\"";
    std::string svg = line({plot_left, plot_bottom}, {plot_right, plot_bottom}, thin) +
                      line({plot_left, plot_bottom}, {plot_left, plot_top}, thin);
    for (std::size_t bead = 0; bead < beads; ++bead) {
        const polymer::ResidueId& residue = of.residues[bead];
        if (!residue.is_number() || *residue.number() % distance != 0) continue;
        const std::string label = residue.text();
        const double x = 0.5 * (frame.across(bead) + frame.across(bead + 1));
        const double y = 0.5 * (frame.up(bead) + frame.up(bead + 1));
        svg += line({x, plot_bottom}, {x, plot_bottom + 6.0}, thin) +
               words({x, plot_bottom + 23.0}, label, small + " text-anchor=\"middle\"") +
               line({plot_left - 6.0, y}, {plot_left, y}, thin) +
               words({plot_left - 10.0, y + 5.0}, label, small + " text-anchor=\"end\"");
    }
    const double middle_x = 0.5 * (plot_left + plot_right), middle_y = 0.5 * (plot_top + plot_bottom);
    svg += words({middle_x, plot_bottom + 52.0}, "first residue of the stretch",
                 "font-size=\"17\" text-anchor=\"middle\" fill=\"#444444\"");
    svg += "<g transform=\"rotate(-90 " + number(plot_left - 66.0) + " " + number(middle_y) + ")\">" +
           words({plot_left - 66.0, middle_y}, "last residue of the stretch",
                 "font-size=\"17\" text-anchor=\"middle\" fill=\"#444444\"") +
           "</g>\n";
    return svg;
}

/// Every core: the stretches that hold it are up and to the left of it.
std::string cores(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places,
                  Labels& labels) {
    const Frame frame(of.matrix.beads());
    const std::string dashes =
        "stroke=\"" + std::string(ink) + "\" stroke-width=\"1.5\" stroke-dasharray=\"5 5\"";
    std::string svg;
    for (const fingerprint::KnotPlace& place : places) {
        if (!place.core) continue;
        const Spot spot{0.5 * (frame.across(place.core->first) + frame.across(place.core->first + 1)),
                        0.5 * (frame.up(place.core->last) + frame.up(place.core->last + 1))};
        svg += line(spot, {plot_left, spot.y}, dashes) + line(spot, {spot.x, plot_top}, dashes) +
               disc(spot, 7.0,
                    "fill=\"" + knot_colour(of, number_of(place, of), 1.0) + "\" stroke=\"" + ink +
                        "\" stroke-width=\"2\"");
        labels.avoid(spot, {plot_left, spot.y});
        labels.avoid(spot, {spot.x, plot_top});
    }
    for (const fingerprint::KnotPlace& place : places) {
        if (!place.core) continue;
        const Spot spot{0.5 * (frame.across(place.core->first) + frame.across(place.core->first + 1)),
                        0.5 * (frame.up(place.core->last) + frame.up(place.core->last + 1))};
        svg += labels.beside(spot, 9.0,
                             shown(place.knot) + (place.slipknot ? " slipknot " : " core ") +
                                 words::range(of.residues[place.core->first], of.residues[place.core->last]),
                             17.0,
                             "font-weight=\"600\" fill=\"" + std::string(ink) +
                                 "\" stroke=\"#ffffff\" stroke-width=\"4\" stroke-linejoin=\"round\" "
                                 "paint-order=\"stroke\"");
    }
    return svg;
}

/// In the half of the square that holds no stretch: the knots by area, each with its shades. Labels keep off.
std::string legend(const fingerprint::ChainFingerprint& of, Labels& labels) {
    constexpr double right = plot_right, box = 22.0, row = 30.0, widest = 190.0, letter = 9.6, above = 26.0;
    constexpr std::size_t most_rows = 10;
    std::vector<std::size_t> area(of.knots.size());
    of.matrix.for_each_tested(
        [&](fingerprint::Subchain, const fingerprint::FingerprintMatrix::Cell& cell) { ++area[cell.knot]; });
    std::vector<std::size_t> listed;
    for (std::size_t knot = 1; knot < area.size(); ++knot) listed.push_back(knot);
    std::stable_sort(listed.begin(), listed.end(),
                     [&](std::size_t a, std::size_t b) { return area[a] > area[b]; });
    const bool more = listed.size() > most_rows;
    if (more) listed.resize(most_rows);

    const std::string text = "font-size=\"16\" fill=\"#222222\"", small = "font-size=\"14\" fill=\"#666666\"";
    const double left = right - widest - shades * box, bottom = plot_bottom - 24.0;
    double y = bottom - row * static_cast<double>(listed.size() + (more ? 2 : 1));
    std::string svg = words({left, y - 10.0}, "share:  0", small) +
                      words({left + shades * box, y - 10.0}, "1", small + " text-anchor=\"end\"");
    const double top = y - above;
    std::size_t longest = 0;
    const auto entry = [&](std::size_t knot) {
        longest = std::max(longest, shown(of.knots[knot]).size());
        for (int i = 0; i < shades; ++i)
            svg += "<rect x=\"" + number(left + i * box) + "\" y=\"" + number(y) + "\" width=\"" +
                   number(box) + "\" height=\"" + number(box) + "\" fill=\"" +
                   knot_colour(of, knot, (i + 0.5) / shades) + "\"/>\n";
        svg += words({left + shades * box + 12.0, y + 16.0}, shown(of.knots[knot]), text);
        y += row;
    };
    for (const std::size_t knot : listed) entry(knot);
    if (more) {
        svg += words({left, y + 16.0}, "and others", small);
        y += row;
    }
    entry(0);
    labels.keep_off({left, top}, {left + shades * box + 12.0 + letter * static_cast<double>(longest), y});
    return svg;
}

std::string heading(const fingerprint::ChainFingerprint& of) {
    const std::string title = words::file_title(of.file) + (of.chain.empty() ? "" : ", chain " + of.chain);
    const std::string below = std::to_string(of.matrix.beads()) + " residues; the whole chain is " +
                              shown(of.knot) + " in " + number(100.0 * of.share) + " % of " +
                              std::to_string(of.closures) + " closures; " + of.way();
    // As large as usual, or so that it fits.
    constexpr double usual_size = 17.0, margins = 40.0, letter_width = 0.56;
    const double size =
        std::min(usual_size, (page_width - margins) / (letter_width * static_cast<double>(below.size())));
    return words({0.5 * page_width, 42.0}, title,
                 "text-anchor=\"middle\" font-size=\"26\" font-weight=\"bold\" fill=\"" + std::string(ink) +
                     "\"") +
           words({0.5 * page_width, 70.0}, below,
                 "text-anchor=\"middle\" font-size=\"" + number(size) + "\" fill=\"#666666\"");
}

} // namespace

std::string knot_colour(const fingerprint::ChainFingerprint& of, std::size_t knot, double share) {
    if (knot == 0) return unknot_colour;
    if (!of.is_knot(knot)) return unnamed_colour;
    const double turns = first_place + golden_part * static_cast<double>(knot - 1);
    const double shade = std::ceil(std::clamp(share, 1e-9, 1.0) * shades) / shades;
    return mixed(unknot_colour, colour_along(turns - std::floor(turns)), palest + (1.0 - palest) * shade);
}

fingerprint::FingerprintMatrix::Cell strongest_cell(const fingerprint::ChainFingerprint& of,
                                                    std::size_t first, std::size_t last, std::size_t side) {
    fingerprint::FingerprintMatrix::Cell best = of.matrix.at({first, std::max(first, last)});
    const std::size_t beads = of.matrix.beads();
    for (std::size_t f = first; f < std::min(first + side, beads); ++f)
        for (std::size_t l = std::max(f, last); l < std::min(last + side, beads); ++l) {
            const fingerprint::FingerprintMatrix::Cell& cell = of.matrix.at({f, l});
            if (cell.knot != 0 && (best.knot == 0 || cell.closures > best.closures)) best = cell;
        }
    return best;
}

std::size_t number_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& of) {
    return static_cast<std::size_t>(std::find(of.knots.begin(), of.knots.end(), place.knot) -
                                    of.knots.begin());
}

std::string matrix_picture(const fingerprint::ChainFingerprint& of,
                           const std::vector<fingerprint::KnotPlace>& places) {
    Labels labels(page_width, page_height);
    labels.keep_off({0.0, 0.0}, {plot_left, page_height});
    labels.keep_off({0.0, plot_bottom}, {page_width, page_height});
    const std::string key = legend(of, labels);
    const std::string size = "width=\"" + number(page_width) + "\" height=\"" + number(page_height) + "\"";
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + " viewBox=\"0 0 " + number(page_width) +
           " " + number(page_height) +
           "\" font-family=\"Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\">\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           heading(of) + triangle() + dots(of) + axes(of) + key + cores(of, places, labels) + "</svg>\n";
}

} // namespace loopwise::draw
