#include "draw/picture.hpp"

#include "draw/canvas.hpp"
#include "draw/drawing.hpp"
#include "draw/palette.hpp"
#include "draw/strands.hpp"
#include "words/numbers.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <cmath>

namespace loopwise::draw {
namespace {

using words::counted;

constexpr double page_width = 1400.0, page_height = 800.0, panel_top = 122.0;
constexpr double left_panel = 25.0, right_panel = page_width - left_panel - panel_width;
constexpr double narrow_page_width = panel_width + 2.0 * left_panel;
constexpr double legend_top = panel_top + panel_height + 46.0;
constexpr double strand_thickness = 0.6; // in the unit of the chain
constexpr double thinnest_strand = 3.0, thickest_strand = 6.0;
constexpr double stick_width = 8.0, thin_stick_width = 5.0;
constexpr std::size_t most_labels = 30; // more only pile up

constexpr const char* ink = "#222222";
constexpr const char* label_halo =
    "stroke=\"#ffffff\" stroke-width=\"4\" stroke-linejoin=\"round\" paint-order=\"stroke\"";

Labels labels_around(const std::vector<Path>& paths) {
    Labels labels(panel_width, panel_height);
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.edges.size(); ++i)
            if (path.bonds[i] != Bond::none) labels.avoid(path.spots[i], path.spots[i + 1]);
    return labels;
}

/// What tells the labels of several chains apart.
std::string prefix_of(const Path& path, const survey::Result& result) {
    if (result.components.size() < 2) return "";
    return result.components[path.chain()].name + ":";
}

std::string label_of(const Path& path, std::size_t bead, const survey::Result& result) {
    return label_of(path.loop, bead, result.components[path.chain()]);
}

std::pair<const char*, const char*> names_of_ends(polymer::BeadKind kind) {
    switch (kind) {
    case polymer::BeadKind::amino_acids: return {"N ", "C "};
    case polymer::BeadKind::nucleotides: return {"5' ", "3' "};
    case polymer::BeadKind::any: break;
    }
    return {"first ", "last "};
}

std::string labelled_end(Labels& labels, const Path& path, std::size_t atom, const std::string& name,
                         const survey::Result& result) {
    constexpr double radius = 7.0, size = 20.0, smaller_size = 15.0;
    const std::string colour = path.colour(path.shades[atom]);
    return disc(path.spots[atom], radius, "fill=\"" + colour + "\" stroke=\"#ffffff\" stroke-width=\"2\"") +
           labels.beside(path.spots[atom], radius, prefix_of(path, result) + name + label_of(path, atom, result),
                         result.components.size() > 2 ? smaller_size : size,
                         "font-weight=\"bold\" fill=\"" + colour + "\" " + label_halo);
}

/// Both ends of every chain, each with a disc and its label; a ring has none but a first bead.
std::string ends(const std::vector<Path>& paths, const survey::Result& result) {
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths) {
        if (path.loop.own == 0) continue;
        const auto [first, last] = names_of_ends(result.components[path.chain()].kind);
        const bool ring = !result.plan.method->closes;
        svg += labelled_end(labels, path, 0, ring ? "" : first, result);
        if (!ring) svg += labelled_end(labels, path, path.loop.own - 1, last, result);
    }
    return svg;
}

/// Every how manieth of so many beads gets a label.
std::size_t step_of_labels(std::size_t beads) { return beads <= most_labels ? 1 : (beads - 1) / most_labels + 1; }

/// Every bead that is left, with its label as long as there is room.
std::string beads(const std::vector<Path>& paths, const survey::Result& result, std::size_t left) {
    constexpr double radius = 8.0, smaller_radius = 5.0, size = 17.0;
    const double shown_radius = left <= most_labels ? radius : smaller_radius;
    const std::size_t step = step_of_labels(left);
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.loop.beads.size(); ++i) {
            const bool own = i < path.loop.own;
            const Spot spot = path.spots[i];
            if (spot.x < 0.0 || spot.y < 0.0 || spot.x > panel_width || spot.y > panel_height) continue;
            svg += disc(spot, shown_radius,
                        "fill=\"" + (own ? path.colour(path.shades[i]) : std::string(grey)) +
                            "\" stroke=\"#ffffff\" stroke-width=\"2.2\"");
            if (i % step != 0) continue;
            svg += labels.beside(spot, shown_radius, prefix_of(path, result) + label_of(path, i, result), size,
                                 "font-weight=\"600\" fill=\"" + std::string(ink) + "\" " + label_halo);
        }
    return svg;
}

std::string panel(double left, const std::string& heading, const std::string& content) {
    const std::string size = "width=\"" + number(panel_width) + "\" height=\"" + number(panel_height) + "\"";
    return words({left + 0.5 * panel_width, panel_top - 12.0}, heading,
                 "text-anchor=\"middle\" font-size=\"19\" fill=\"#444444\"") +
           "<rect x=\"" + number(left) + "\" y=\"" + number(panel_top) + "\" " + size +
           " rx=\"10\" fill=\"none\" stroke=\"#dddddd\"/>\n<svg x=\"" + number(left) + "\" y=\"" + number(panel_top) +
           "\" " + size + ">\n" + content + "</svg>\n";
}

/// What the beads are called.
std::string noun(const survey::Result& result) {
    const bool any =
        std::any_of(result.components.begin(), result.components.end(),
                    [](const survey::ComponentTally& chain) { return chain.kind == polymer::BeadKind::any; });
    return any ? "bead" : "residue";
}

std::string chains_in_title(const survey::Result& result) {
    constexpr std::size_t most_named = 12;
    const std::size_t chains = result.components.size();
    if (chains > most_named) return ", " + counted(chains, "chain");
    return result.whole.name.empty() ? "" : (chains > 1 ? ", chains " : ", chain ") + result.whole.name;
}

/// The verdict on a single chain, or on all chains of a structure.
std::string knot_shown(const survey::Result& result) {
    const survey::Tally& tally = result.components.size() == 1 ? result.components.front() : result.whole;
    if (tally.knots.empty()) return "";
    const survey::KnotCount& most = tally.knots.front();
    constexpr std::size_t longest = 60;
    return ", " + short_text(most.knot, longest) + " in " +
           std::to_string((200 * most.closures + result.counted()) / (2 * result.counted())) + " % of closures";
}

std::string title(const survey::Result& result, double width) {
    const std::string model = result.model.empty() ? "" : ", model " + result.model;
    return words({0.5 * width, 38.0},
                 words::file_title(result.file) + model + chains_in_title(result) + ": " +
                     counted(result.whole.beads, noun(result)) + knot_shown(result),
                 "text-anchor=\"middle\" font-size=\"26\" font-weight=\"bold\" fill=\"" + std::string(ink) + "\"");
}

std::string what_is_shown(const survey::Result& result) {
    if (!result.plan.method->closes) return result.components.size() == 1 ? "a ring, as it is" : "rings, as they are";
    const survey::ClosureResult& shown = *result.typical();
    const std::size_t held = result.counted() - result.whole.fully_reduced;
    const bool fully_reduced = &shown == (result.first_fully_reduced ? &*result.first_fully_reduced : nullptr);
    return std::to_string(held) + " of " + counted(result.counted(), "closure") + " (" + result.plan.method->name +
           ") leave more than three beads; shown: closure " + std::to_string(shown.closure) +
           (fully_reduced ? ", the first that comes down to three" : ", which leaves the fewest of them");
}

std::string subtitle(const std::string& shown, int view, double width) {
    return words({0.5 * width, 67.0}, shown + ", view " + std::to_string(view),
                 "text-anchor=\"middle\" font-size=\"17\" fill=\"#666666\"");
}

constexpr double bar_width = 420.0, bar_height = 14.0, bar_left = 130.0;
constexpr const char* small_text = "text-anchor=\"middle\" font-size=\"15\" fill=\"#444444\"";

/// The colours of a chain from its first bead to its last.
std::string colour_bar(std::size_t chain, std::size_t chains, double left, double width) {
    constexpr int stops = 24;
    const std::string id = "along" + std::to_string(chain);
    std::string svg = "<linearGradient id=\"" + id + "\">";
    for (int i = 0; i <= stops; ++i) {
        const double part = static_cast<double>(i) / stops;
        svg +=
            "<stop offset=\"" + number(part * 100.0) + "%\" stop-color=\"" + colour_along(part, chain, chains) + "\"/>";
    }
    return svg + "</linearGradient>\n<rect x=\"" + number(left) + "\" y=\"" + number(legend_top - bar_height) +
           "\" width=\"" + number(width) + "\" height=\"" + number(bar_height) + "\" rx=\"7\" fill=\"url(#" + id +
           ")\"/>\n";
}

std::string bar_of_one(const survey::Result& result) {
    constexpr int ticks = 4;
    std::string svg =
        words({bar_left - 45.0, legend_top - 2.0}, noun(result), small_text) + colour_bar(0, 1, bar_left, bar_width);
    const std::vector<polymer::ResidueId>& residues = result.components.front().residues;
    for (int i = 0; i <= ticks; ++i) {
        const std::size_t atom = (residues.size() - 1) * static_cast<std::size_t>(i) / ticks;
        svg += words({bar_left + bar_width * i / ticks, legend_top + 18.0}, residues[atom].text(), small_text);
    }
    return svg;
}

/// A bar for each of the first chains.
std::string bars_of_many(const survey::Result& result) {
    constexpr std::size_t most_bars = 12;
    constexpr double between = 6.0;
    const std::size_t chains = result.components.size(), bars = std::min(chains, most_bars);
    const double step = bar_width / static_cast<double>(bars);
    std::string svg = words({bar_left - 45.0, legend_top - 2.0}, "chain", small_text);
    for (std::size_t i = 0; i < bars; ++i) {
        const double left = bar_left + step * static_cast<double>(i);
        svg += colour_bar(i, chains, left, step - between) +
               words({left + 0.5 * (step - between), legend_top + 18.0}, result.components[i].name, small_text);
    }
    const std::string more = chains > bars ? "and " + std::to_string(chains - bars) + " more; " : "";
    return svg + words({bar_left + 0.5 * bar_width, legend_top + 38.0}, more + "first bead dark, last bead light",
                       small_text);
}

std::string colours(const survey::Result& result) {
    return result.components.size() == 1 ? bar_of_one(result) : bars_of_many(result);
}

bool has_gaps(const survey::Result& result) {
    return std::any_of(result.components.begin(), result.components.end(),
                       [](const survey::ComponentTally& chain) { return !chain.bonds.gaps.empty(); });
}

constexpr double keys_middle = legend_top - 7.0;
constexpr const char* key_text = "font-size=\"15\" fill=\"#444444\"";

std::string key_of_gaps(double x) {
    return line({x, keys_middle}, {x + 50.0, keys_middle}, dotted(colour_along(0.4), 3.0)) +
           words({x + 60.0, keys_middle + 5.0}, "gap", key_text);
}

std::string keys(const survey::Result& result) {
    const double y = keys_middle;
    const std::string text = key_text;
    const std::string pale = "stroke=\"" + std::string(ghost) + "\" stroke-width=\"3\"";
    std::string svg;
    if (result.plan.method->closes)
        svg += line({640.0, y}, {696.0, y}, dashed()) + words({706.0, y + 5.0}, "closure: added to the chain", text);
    if (has_gaps(result)) svg += key_of_gaps(916.0);
    return svg + line({1026.0, y}, {1076.0, y}, pale) + words({1086.0, y + 5.0}, "before", text) +
           disc({1172.0, y}, 8.0, "fill=\"" + colour_along(0.4) + "\"") +
           words({1188.0, y + 5.0}, "bead left, its " + (noun(result) == "bead" ? std::string("label") : "residue"),
                 text);
}

std::string head(double wide) {
    const std::string width = number(wide), height = number(page_height);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
           "\" viewBox=\"0 0 " + width + " " + height +
           "\" font-family=\"Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\">\n"
           "<defs>\n<filter id=\"blur\"><feGaussianBlur stdDeviation=\"16\"/></filter>\n"
           "<mask id=\"fade\" maskUnits=\"userSpaceOnUse\" x=\"0\" y=\"0\" width=\"" +
           number(panel_width) + "\" height=\"" + number(panel_height) + "\"><rect x=\"24\" y=\"24\" width=\"" +
           number(panel_width - 48.0) + "\" height=\"" + number(panel_height - 48.0) +
           "\" fill=\"#ffffff\" filter=\"url(#blur)\"/></mask>\n</defs>\n"
           "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
}

/// As wide as the unit of the chain says, but neither a hair nor a beam.
double strand_width(const Camera& camera) {
    return std::clamp(camera.pixels(strand_thickness), thinnest_strand, thickest_strand);
}

/// What a picture shows of a chain that nothing was done with.
survey::Result result_of(const polymer::NamedChain& chain, survey::Method method) {
    survey::ComponentTally tally;
    tally.residues = chain.residues;
    tally.bonds = polymer::bonds_of(chain);
    tally.kind = chain.kind;
    survey::Result result;
    result.file = chain.name.empty() ? "chain" : chain.name;
    result.plan.method = method;
    result.whole.beads = chain.beads.size();
    result.components.push_back(std::move(tally));
    return result;
}

} // namespace

std::string picture(const survey::Result& result, std::optional<int> asked_view) {
    const survey::ClosureResult& shown = *result.typical();
    const int view = asked_view ? *asked_view : clearest_view(shown, result);
    const Drawing before = drawing_of(shown.closed, result, view);
    const Drawing after = drawing_of(shown.reduced, result, view);
    const Camera camera(before, shown.closed);
    std::vector<Path> chain = paths_of(before, shown.closed, shown.closed, camera);
    std::vector<Path> rest = paths_of(after, shown.reduced, shown.closed, camera);

    std::size_t left = 0;
    for (const survey::Loop& loop : shown.reduced) left += loop.beads.size();
    const std::string given = result.plan.method->closes ? "as given, closed: " : "as given: ";
    const std::string heading = "reduced: " + counted(left, "bead") + ", " + counted(after.crossings, "crossing") +
                                (left > most_labels ? ", not all labelled" : "");
    const double sticks = left > most_labels ? thin_stick_width : stick_width;
    const std::string before_svg = strands(before, chain, {strand_width(camera), false}) + ends(chain, result);
    const std::string after_svg =
        shadow(chain) + strands(after, rest, {sticks, left <= most_labels}) + beads(rest, result, left);
    return head(page_width) + title(result, page_width) + subtitle(what_is_shown(result), view, page_width) +
           panel(left_panel, given + counted(before.crossings, "crossing"), before_svg) +
           panel(right_panel, heading, after_svg) + colours(result) + keys(result) + "</svg>\n";
}

std::string picture(const polymer::NamedChain& given) {
    polymer::NamedChain chain = given;
    const bool ring = polymer::is_ring(chain);
    if (ring) polymer::drop_repeated_end(chain);
    const survey::Result result = result_of(chain, ring ? survey::Method::ring() : survey::Method::standard());
    const Ends joined_by = ring ? Ends::bond : Ends::nothing;
    std::vector<survey::Loop> loops{{chain.beads, chain.beads.size()}};
    polymer::number_by_position(loops.front().beads);

    const int view = clearest_view(loops, result, joined_by);
    const Drawing drawing = drawing_of(loops, result, view, joined_by);
    const Camera camera(drawing, loops);
    std::vector<Path> paths = paths_of(drawing, loops, loops, camera);
    const std::string svg = strands(drawing, paths, {strand_width(camera), false}) + ends(paths, result);
    return head(narrow_page_width) + title(result, narrow_page_width) +
           subtitle(ring ? what_is_shown(result) : "an open chain, as it is", view, narrow_page_width) +
           panel(left_panel, counted(drawing.crossings, "crossing"), svg) + colours(result) +
           (has_gaps(result) ? key_of_gaps(bar_left + bar_width + 40.0) : "") + "</svg>\n";
}

} // namespace loopwise::draw
