#include "draw/picture.hpp"

#include "draw/canvas.hpp"
#include "draw/drawing.hpp"
#include "draw/palette.hpp"
#include "draw/strands.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace loopwise {
namespace {

constexpr double page_width = 1400.0, page_height = 800.0, panel_top = 122.0;
constexpr double left_panel = 25.0, right_panel = page_width - left_panel - panel_width;
constexpr double legend_top = panel_top + panel_height + 46.0;
constexpr double strand_thickness = 0.6; // in the unit of the chain
constexpr double thinnest_strand = 3.0, thickest_strand = 6.0;
constexpr double stick_width = 8.0;

constexpr const char* ink = "#222222";
constexpr const char* label_halo =
    "stroke=\"#ffffff\" stroke-width=\"4\" stroke-linejoin=\"round\" paint-order=\"stroke\"";

Labels labels_around(const std::vector<Path>& paths) {
    Labels labels(panel_width, panel_height);
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.edges.size(); ++i) labels.avoid(path.spots[i], path.spots[i + 1]);
    return labels;
}

/// What tells the labels of several chains apart.
std::string prefix_of(const Path& path, const Result& result) {
    if (result.components.size() < 2) return "";
    return result.components[static_cast<std::size_t>(path.edges.front().tag)].name + ":";
}

std::string label_of(const Path& path, std::size_t bead, const Result& result) {
    return label_of(path.loop, bead, result.components[static_cast<std::size_t>(path.edges.front().tag)]);
}

/// Both ends of every chain, each with a disc and its residue.
std::string ends(const std::vector<Path>& paths, const Result& result) {
    constexpr double radius = 7.0, size = 20.0;
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths) {
        if (path.loop.own == 0) continue;
        const std::string chain = prefix_of(path, result);
        for (const auto& [atom, name] : {std::pair{std::size_t{0}, "N "}, {path.loop.own - 1, "C "}}) {
            const std::string colour = colour_along(path.shades[atom]);
            svg += disc(path.spots[atom], radius,
                        "fill=\"" + colour + "\" stroke=\"#ffffff\" stroke-width=\"2\"");
            svg += labels.beside(path.spots[atom], radius, chain + name + label_of(path, atom, result), size,
                                 "font-weight=\"bold\" fill=\"" + colour + "\" " + label_halo);
        }
    }
    return svg;
}

/// Every bead that is left, with its residue.
std::string beads(const std::vector<Path>& paths, const Result& result) {
    constexpr double radius = 8.0, size = 17.0;
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.loop.beads.size(); ++i) {
            const bool own = i < path.loop.own;
            const Spot spot = path.spots[i];
            if (spot.x < 0.0 || spot.y < 0.0 || spot.x > panel_width || spot.y > panel_height) continue;
            svg += disc(spot, radius,
                        "fill=\"" + (own ? colour_along(path.shades[i]) : std::string(grey)) +
                            "\" stroke=\"#ffffff\" stroke-width=\"2.2\"");
            svg += labels.beside(spot, radius, prefix_of(path, result) + label_of(path, i, result), size,
                                 "font-weight=\"600\" fill=\"" + std::string(ink) + "\" " + label_halo);
        }
    return svg;
}

std::string panel(double left, const std::string& heading, const std::string& content) {
    const std::string size = "width=\"" + number(panel_width) + "\" height=\"" + number(panel_height) + "\"";
    return words({left + 0.5 * panel_width, panel_top - 12.0}, heading,
                 "text-anchor=\"middle\" font-size=\"19\" fill=\"#444444\"") +
           "<rect x=\"" + number(left) + "\" y=\"" + number(panel_top) + "\" " + size +
           " rx=\"10\" fill=\"none\" stroke=\"#dddddd\"/>\n<svg x=\"" + number(left) + "\" y=\"" +
           number(panel_top) + "\" " + size + ">\n" + content + "</svg>\n";
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The verdict on a single chain, or on the two of a structure.
std::string knot_shown(const Result& result) {
    const Tally& tally = result.components.size() == 1 ? result.components.front() : result.whole;
    if (tally.knots.empty()) return "";
    const KnotCount& most = tally.knots.front();
    return ", " + most.knot + " in " +
           std::to_string((200 * most.closures + result.counted()) / (2 * result.counted())) +
           " % of closures";
}

std::string title(const Result& result) {
    std::filesystem::path file = std::filesystem::path(result.file).filename();
    if (file.extension() == ".gz") file = file.stem();
    const char* const noun = result.components.size() > 1 ? ", chains " : ", chain ";
    const std::string chains = result.whole.name.empty() ? "" : noun + result.whole.name;
    return words(
        {0.5 * page_width, 38.0},
        file.stem().string() + chains + ": " + counted(result.whole.beads, "residue") + knot_shown(result),
        "text-anchor=\"middle\" font-size=\"26\" font-weight=\"bold\" fill=\"" + std::string(ink) + "\"");
}

std::string subtitle(const Result& result, const Plan& plan, int view) {
    const Specimen& shown = *result.typical();
    const std::size_t held = result.counted() - result.whole.bare;
    const bool bare = &shown == (result.first_bare ? &*result.first_bare : nullptr);
    return words({0.5 * page_width, 67.0},
                 std::to_string(held) + " of " + counted(result.counted(), "closure") + " (" +
                     name_of(plan.method) + ") leave more than three beads; shown: closure " +
                     std::to_string(shown.closure) +
                     (bare ? ", the first that comes down to three" : ", the smallest core") + ", view " +
                     std::to_string(view),
                 "text-anchor=\"middle\" font-size=\"17\" fill=\"#666666\"");
}

/// The colours from the first residue to the last.
std::string colour_bar(const std::vector<ComponentTally>& components) {
    constexpr double width = 420.0, height = 14.0, left = 130.0;
    constexpr int stops = 24, ticks = 4;
    std::string svg = "<linearGradient id=\"along\">";
    for (int i = 0; i <= stops; ++i) {
        const double part = static_cast<double>(i) / stops;
        svg += "<stop offset=\"" + number(part * 100.0) + "%\" stop-color=\"" + colour_along(part) + "\"/>";
    }
    svg += "</linearGradient>\n<rect x=\"" + number(left) + "\" y=\"" + number(legend_top - height) +
           "\" width=\"" + number(width) + "\" height=\"" + number(height) +
           "\" rx=\"7\" fill=\"url(#along)\"/>\n";
    const std::string small = "text-anchor=\"middle\" font-size=\"15\" fill=\"#444444\"";
    svg += words({left - 40.0, legend_top - 2.0}, "residue", small);
    const std::vector<std::string>& labels = components.front().labels;
    for (int i = 0; components.size() == 1 && i <= ticks; ++i) {
        const std::size_t atom = (labels.size() - 1) * static_cast<std::size_t>(i) / ticks;
        svg += words({left + width * i / ticks, legend_top + 18.0}, labels[atom], small);
    }
    if (components.size() > 1)
        svg += words({left, legend_top + 18.0}, "first", small) +
               words({left + width, legend_top + 18.0}, "last", small);
    return svg;
}

std::string keys() {
    const double y = legend_top - 7.0;
    const std::string text = "font-size=\"15\" fill=\"#444444\"";
    const std::string pale = "stroke=\"" + std::string(ghost) + "\" stroke-width=\"3\"";
    return line({730.0, y}, {786.0, y}, dashed()) +
           words({796.0, y + 5.0}, "closure, outside of the chain", text) +
           line({1040.0, y}, {1090.0, y}, pale) + words({1100.0, y + 5.0}, "before", text) +
           disc({1186.0, y}, 8.0, "fill=\"" + colour_along(0.4) + "\"") +
           words({1202.0, y + 5.0}, "bead left, its residue", text);
}

std::string head() {
    const std::string width = number(page_width), height = number(page_height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height +
           "\" font-family=\"Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\">\n"
           "<defs>\n<filter id=\"blur\"><feGaussianBlur stdDeviation=\"16\"/></filter>\n"
           "<mask id=\"fade\" maskUnits=\"userSpaceOnUse\" x=\"0\" y=\"0\" width=\"" +
           number(panel_width) + "\" height=\"" + number(panel_height) +
           "\"><rect x=\"24\" y=\"24\" width=\"" + number(panel_width - 48.0) + "\" height=\"" +
           number(panel_height - 48.0) +
           "\" fill=\"#ffffff\" filter=\"url(#blur)\"/></mask>\n</defs>\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
}

} // namespace

std::string picture(const Result& result, const Plan& plan, std::optional<int> asked_view) {
    const Specimen& shown = *result.typical();
    const int view = asked_view ? *asked_view : clearest_view(shown);
    const Drawing before = drawing_of(shown.closed, view), after = drawing_of(shown.reduced, view);
    const Camera camera(before, shown.closed);
    std::vector<Path> chain = paths_of(before, shown.closed, shown.closed, camera);
    std::vector<Path> core = paths_of(after, shown.reduced, shown.closed, camera);

    const double strand_width = std::clamp(camera.pixels(strand_thickness), thinnest_strand, thickest_strand);
    std::size_t left = 0;
    for (const Loop& loop : shown.reduced) left += loop.beads.size();
    const std::string given = "as given, closed: " + counted(before.crossings, "crossing");
    const std::string reduced =
        "reduced: " + counted(left, "bead") + ", " + counted(after.crossings, "crossing");
    const std::string before_svg = strands(before, chain, {strand_width, false}) + ends(chain, result);
    const std::string after_svg =
        shadow(chain) + strands(after, core, {stick_width, true}) + beads(core, result);
    return head() + title(result) + subtitle(result, plan, view) + panel(left_panel, given, before_svg) +
           panel(right_panel, reduced, after_svg) + colour_bar(result.components) + keys() + "</svg>\n";
}

} // namespace loopwise
