#include "draw/matrix_picture.hpp"

#include "draw/canvas.hpp"

#include <algorithm>
#include <map>

namespace loopwise::draw {
namespace {

constexpr double page_width = 1000.0, page_height = 980.0;
constexpr double plot_left = svg_plot.left, plot_bottom = svg_plot.bottom, plot_side = svg_plot.side;
constexpr double heading_bottom = 78.0;
constexpr double plot_right = plot_left + plot_side, plot_top = plot_bottom - plot_side;
constexpr const char* ink = "#222222";

/// Where beads are in the picture.
class Frame {
  public:
    explicit Frame(std::size_t beads) : beads_(static_cast<double>(beads)) {}
    /// The left, or lower, side of a bead; its other side is that of the next one.
    double across(std::size_t bead) const { return plot_left + plot_side * static_cast<double>(bead) / beads_; }
    double up(std::size_t bead) const { return plot_bottom - plot_side * static_cast<double>(bead) / beads_; }
    Spot middle(std::size_t first, std::size_t last) const {
        return {0.5 * (across(first) + across(first + 1)), 0.5 * (up(last) + up(last + 1))};
    }

  private:
    double beads_;
};

/// All dots that are not the unknot, a path for each colour and in it a rectangle for each run.
std::string dots(const MatrixPicture& picture) {
    const Frame frame(picture.beads);
    std::map<std::string, std::string> paths;
    for (std::size_t row = 0; row < picture.rows.size(); ++row) {
        const std::size_t last = row * picture.dot, end = std::min(last + picture.dot, picture.beads);
        std::size_t dot = 0;
        for (const MatrixPicture::Run& run : picture.rows[row]) {
            const double left = frame.across(dot * picture.dot);
            dot += run.dots;
            if (run.knot == 0) continue;
            std::string& path = paths[picture.colours[run.knot][run.shade]];
            for (const std::string& part :
                 {std::string("M"), number(left), std::string(" "), number(frame.up(last)), std::string("H"),
                  number(frame.across(std::min(dot * picture.dot, picture.beads))), std::string("V"),
                  number(frame.up(end)), std::string("H"), number(left), std::string("z")})
                path += part;
        }
    }
    std::string svg = "<g shape-rendering=\"crispEdges\">\n";
    for (const auto& [colour, path] : paths) svg += "<path fill=\"" + colour + "\" d=\"" + path + "\"/>\n";
    return svg + "</g>\n";
}

std::string triangle(const MatrixPicture& picture) {
    return "<path fill=\"" + picture.colours[0][0] + "\" d=\"M" + number(plot_left) + " " + number(plot_bottom) + "V" +
           number(plot_top) + "H" + number(plot_right) + "z\"/>\n";
}

std::string axes(const MatrixPicture& picture) {
    const Frame frame(picture.beads);
    const std::string small = "font-size=\"15\" fill=\"#444444\"", thin = "stroke=\"#888888\" stroke-width=\"1\"",
                      large = "font-size=\"17\" text-anchor=\"middle\" fill=\"#444444\"";
    std::string svg = line({plot_left, plot_bottom}, {plot_right, plot_bottom}, thin) +
                      line({plot_left, plot_bottom}, {plot_left, plot_top}, thin);
    for (const MatrixPicture::Tick& tick : picture.ticks) {
        const auto [x, y] = frame.middle(tick.bead, tick.bead);
        svg += line({x, plot_bottom}, {x, plot_bottom + 6.0}, thin) +
               words({x, plot_bottom + 23.0}, tick.label, small + " text-anchor=\"middle\"") +
               line({plot_left - 6.0, y}, {plot_left, y}, thin) +
               words({plot_left - 10.0, y + 5.0}, tick.label, small + " text-anchor=\"end\"");
    }
    const Spot side{plot_left - 66.0, 0.5 * (plot_top + plot_bottom)};
    return svg + words({0.5 * (plot_left + plot_right), plot_bottom + 52.0}, picture.first_axis, large) +
           "<g transform=\"rotate(-90 " + number(side.x) + " " + number(side.y) + ")\">" +
           words(side, picture.last_axis, large) + "</g>\n";
}

/// The subchains that hold a core are up and to the left of it.
std::string cores(const MatrixPicture& picture, Labels& labels) {
    const Frame frame(picture.beads);
    const std::string dashes = "stroke=\"" + std::string(ink) + "\" stroke-width=\"1.5\" stroke-dasharray=\"5 5\"";
    std::string svg;
    for (const MatrixPicture::Core& core : picture.cores) {
        const Spot spot = frame.middle(core.subchain.first, core.subchain.last);
        svg += line(spot, {plot_left, spot.y}, dashes) + line(spot, {spot.x, plot_top}, dashes) +
               disc(spot, 7.0,
                    "fill=\"" + picture.colours[core.knot].back() + "\" stroke=\"" + ink + "\" stroke-width=\"2\"");
        labels.avoid(spot, {plot_left, spot.y});
        labels.avoid(spot, {spot.x, plot_top});
    }
    for (const MatrixPicture::Core& core : picture.cores)
        svg += labels.beside(frame.middle(core.subchain.first, core.subchain.last), 9.0, core.label, 17.0,
                             "font-weight=\"600\" fill=\"" + std::string(ink) +
                                 "\" stroke=\"#ffffff\" stroke-width=\"4\" stroke-linejoin=\"round\" "
                                 "paint-order=\"stroke\"");
    return svg;
}

/// In the half of the square that holds no subchain: the knots by area, each with its shades. Labels keep off.
std::string legend(const MatrixPicture& picture, Labels& labels) {
    constexpr double right = plot_right, box = 22.0, row = 30.0, widest = 190.0, letter = 9.6, above = 26.0;
    constexpr double all_boxes = box * static_cast<double>(shades), left = right - widest - all_boxes;
    const std::string text = "font-size=\"16\" fill=\"#222222\"", small = "font-size=\"14\" fill=\"#666666\"";
    double y =
        plot_bottom - 24.0 - row * static_cast<double>(picture.legend.size() + (picture.is_legend_complete ? 0 : 1));
    std::string svg = words({left, y - 10.0}, "share:  0", small) +
                      words({left + all_boxes, y - 10.0}, "1", small + " text-anchor=\"end\"");
    const double top = y - above;
    std::size_t longest = 0;
    const auto entry = [&](std::size_t knot) {
        const std::string& name = picture.knots[knot];
        longest = std::max(longest, name.size());
        for (std::size_t shade = 0; shade < shades; ++shade)
            svg += "<rect x=\"" + number(left + static_cast<double>(shade) * box) + "\" y=\"" + number(y) +
                   "\" width=\"" + number(box) + "\" height=\"" + number(box) + "\" fill=\"" +
                   picture.colours[knot][shade] + "\"/>\n";
        svg += words({left + all_boxes + 12.0, y + 16.0}, name, text);
        y += row;
    };
    for (const std::size_t knot : picture.legend) {
        if (knot == 0 && !picture.is_legend_complete) {
            svg += words({left, y + 16.0}, "and others", small);
            y += row;
        }
        entry(knot);
    }
    labels.keep_off({left, top}, {left + all_boxes + 12.0 + letter * static_cast<double>(longest), y});
    return svg;
}

std::string heading(const MatrixPicture& picture) {
    // As large as usual, or so that it fits.
    constexpr double usual_size = 17.0, margins = 40.0, letter_width = 0.56;
    const double size =
        std::min(usual_size, (page_width - margins) / (letter_width * static_cast<double>(picture.about.size())));
    return words({0.5 * page_width, 42.0}, picture.title,
                 "text-anchor=\"middle\" font-size=\"26\" font-weight=\"bold\" fill=\"" + std::string(ink) + "\"") +
           words({0.5 * page_width, 70.0}, picture.about,
                 "text-anchor=\"middle\" font-size=\"" + number(size) + "\" fill=\"#666666\"");
}

} // namespace

std::string matrix_svg(const MatrixPicture& picture, bool with_heading) {
    Labels labels(page_width, page_height);
    labels.keep_off({0.0, 0.0}, {plot_left, page_height});
    labels.keep_off({0.0, plot_bottom}, {page_width, page_height});
    labels.keep_off({0.0, 0.0}, {page_width, heading_bottom});
    const std::string key = legend(picture, labels);
    const double top = with_heading ? 0.0 : heading_bottom;
    const std::string width = number(page_width), height = number(page_height - top);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height + "\" viewBox=\"0 " +
           (with_heading ? "0" : number(top)) + " " + width + " " + height +
           "\" font-family=\"Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\">\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n" +
           (with_heading ? heading(picture) : "") + triangle(picture) + dots(picture) + axes(picture) + key +
           cores(picture, labels) + "</svg>\n";
}

} // namespace loopwise::draw
