#include "picture.hpp"

#include "canvas.hpp"
#include "diagram.hpp"
#include "palette.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

constexpr double page_width = 1400.0, page_height = 800.0;
constexpr double panel_width = 665.0, panel_height = 580.0, panel_top = 122.0;
constexpr double left_panel = 25.0, right_panel = page_width - left_panel - panel_width;
constexpr double margin = 62.0; // between the chain and its panel, where the closure leads out
constexpr double legend_top = panel_top + panel_height + 46.0;
constexpr double halo = 2.6;       // white on both sides of a strand that passes over another
constexpr double least_sine = 0.3; // strands that cross at smaller angles get no longer gaps

constexpr double closure_width = 2.4;
constexpr double splinter = 4.0; // a visible part that is shorter only disturbs

constexpr const char* ink = "#222222";
constexpr const char* grey = "#8a8a8a";
constexpr const char* ghost = "#e3e3e3";
constexpr const char* label_halo =
    "stroke=\"#ffffff\" stroke-width=\"4\" stroke-linejoin=\"round\" paint-order=\"stroke\"";

/// Turns and scales a view so that the open chains fill a panel.
class Camera {
  public:
    explicit Camera(const std::vector<PointR3>& points) {
        turn_along_longest(points);
        double low_x = INFINITY, low_y = INFINITY, high_x = -INFINITY, high_y = -INFINITY;
        for (const PointR3& point : points) {
            const Spot spot = turned(point);
            low_x = std::min(low_x, spot.x);
            high_x = std::max(high_x, spot.x);
            low_y = std::min(low_y, spot.y);
            high_y = std::max(high_y, spot.y);
        }
        middle_ = {0.5 * (low_x + high_x), 0.5 * (low_y + high_y)};
        constexpr double least_size = 1.0;
        scale_ = std::min((panel_width - 2.0 * margin) / std::max(high_x - low_x, least_size),
                          (panel_height - 2.0 * margin) / std::max(high_y - low_y, least_size));
    }

    Spot operator()(PointR3 point) const {
        const Spot spot = turned(point);
        return {0.5 * panel_width + scale_ * (spot.x - middle_.x),
                0.5 * panel_height - scale_ * (spot.y - middle_.y)};
    }

  private:
    void turn_along_longest(const std::vector<PointR3>& points) {
        double x = 0.0, y = 0.0, xx = 0.0, xy = 0.0, yy = 0.0;
        for (const PointR3& point : points) {
            x += point.x / static_cast<double>(points.size());
            y += point.y / static_cast<double>(points.size());
        }
        for (const PointR3& point : points) {
            xx += (point.x - x) * (point.x - x);
            xy += (point.x - x) * (point.y - y);
            yy += (point.y - y) * (point.y - y);
        }
        const double angle = 0.5 * std::atan2(2.0 * xy, xx - yy);
        cosine_ = std::cos(angle);
        sine_ = std::sin(angle);
    }

    Spot turned(PointR3 point) const {
        return {cosine_ * point.x + sine_ * point.y, cosine_ * point.y - sine_ * point.x};
    }

    double cosine_ = 1.0, sine_ = 0.0, scale_ = 1.0;
    Spot middle_;
};

/// One loop of a diagram on its panel. Places along it are measured in pixels from its first atom.
struct Path {
    const Loop& loop;
    std::vector<Edge> edges;
    std::vector<Spot> spots;    ///< of the atoms, and the first again
    std::vector<double> places; ///< of the atoms, and of the first again
    std::vector<double> shades; ///< where in the whole chain the atoms are, 0 to 1
    std::vector<std::pair<double, double>> gaps;

    bool closes(std::size_t edge) const { return edge + 1 >= loop.own(); }
    double depth(std::size_t edge) const { return 0.5 * (edges[edge].start.z + edges[edge].end.z); }
};

struct Style {
    double width;
    bool gradual; ///< the colour changes along a stick, for few and long ones
};

/// What is drawn, with its depth: the nearest comes last.
struct Piece {
    double depth;
    std::string svg;
};

Path path_of(const Loop& loop, const std::vector<Edge>& edges, const Camera& camera, const Loop& whole) {
    Path path{loop, edges, {}, {0.0}, {}, {}};
    for (const Edge& edge : edges) path.spots.push_back(camera(edge.start));
    path.spots.push_back(path.spots.front());
    for (std::size_t i = 0; i < edges.size(); ++i)
        path.places.push_back(path.places[i] + std::hypot(path.spots[i + 1].x - path.spots[i].x,
                                                          path.spots[i + 1].y - path.spots[i].y));
    const double last = static_cast<double>(std::max<std::size_t>(whole.own(), 2) - 1);
    for (const std::size_t place : loop.places) path.shades.push_back(static_cast<double>(place) / last);
    return path;
}

std::vector<Path> paths_of(const Diagram& diagram, const std::vector<Loop>& loops,
                           const std::vector<Loop>& whole, const Camera& camera) {
    std::vector<Path> paths;
    auto from = diagram.edges.begin();
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const auto to = std::find_if(from, diagram.edges.end(), [&](const Edge& edge) {
            return edge.tag != static_cast<std::int32_t>(i);
        });
        if (from != to) paths.push_back(path_of(loops[i], {from, to}, camera, whole[i]));
        from = to;
    }
    return paths;
}

/// The sine of the angle at which two edges cross on the panel.
double sine_between(const Edge& a, const Edge& b) {
    const double ux = a.end.x - a.start.x, uy = a.end.y - a.start.y;
    const double vx = b.end.x - b.start.x, vy = b.end.y - b.start.y;
    return std::abs(ux * vy - uy * vx) / (std::hypot(ux, uy) * std::hypot(vx, vy));
}

/// Cuts a path wherever it passes under another. Gaps that leave but a splinter between them merge.
void find_gaps(Path& path, const Diagram& diagram, double width) {
    std::vector<std::pair<double, double>> gaps;
    for (std::size_t i = 0; i < path.edges.size(); ++i) {
        const double length = path.places[i + 1] - path.places[i];
        for (const EdgeAnnotation& pass : path.edges[i].annotations) {
            const auto over = static_cast<std::size_t>(pass.label);
            const double needed = 0.5 * (diagram.closing[over] ? closure_width : width) + halo;
            const double half =
                needed / std::max(least_sine, sine_between(path.edges[i], diagram.edges[over]));
            const double at = path.places[i] + pass.position * length;
            gaps.emplace_back(at - half, at + half);
        }
    }
    std::sort(gaps.begin(), gaps.end());
    for (const auto& gap : gaps) {
        if (path.gaps.empty() || gap.first > path.gaps.back().second + splinter)
            path.gaps.push_back(gap);
        else
            path.gaps.back().second = std::max(path.gaps.back().second, gap.second);
    }
}

/// The parts of the stretch between two places that no gap covers.
std::vector<std::pair<double, double>> visible(const Path& path, double from, double to) {
    std::vector<std::pair<double, double>> parts;
    for (const auto& [start, end] : path.gaps) {
        if (end <= from) continue;
        if (start >= to) break;
        if (start > from) parts.emplace_back(from, start);
        from = std::max(from, end);
    }
    if (from < to) parts.emplace_back(from, to);
    return parts;
}

bool is_visible(const Path& path, double place) {
    return std::none_of(path.gaps.begin(), path.gaps.end(),
                        [&](const auto& gap) { return gap.first < place && place < gap.second; });
}

Spot spot_at(const Path& path, std::size_t edge, double place) {
    const double length = path.places[edge + 1] - path.places[edge];
    const double part = length > 0.0 ? (place - path.places[edge]) / length : 0.0;
    const Spot &from = path.spots[edge], &to = path.spots[edge + 1];
    return {from.x + part * (to.x - from.x), from.y + part * (to.y - from.y)};
}

std::string gradient(const Path& path, std::size_t edge, const std::string& id) {
    constexpr int stops = 4;
    const Spot &from = path.spots[edge], &to = path.spots[edge + 1];
    std::string text = "<linearGradient id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\" x1=\"" +
                       number(from.x) + "\" y1=\"" + number(from.y) + "\" x2=\"" + number(to.x) + "\" y2=\"" +
                       number(to.y) + "\">";
    for (int i = 0; i <= stops; ++i) {
        const double part = static_cast<double>(i) / stops;
        text += "<stop offset=\"" + number(part * 100.0) + "%\" stop-color=\"" +
                colour_along(path.shades[edge] + part * (path.shades[edge + 1] - path.shades[edge])) + "\"/>";
    }
    return text + "</linearGradient>\n";
}

/// The strands of the chain itself, and a disc at every atom: a round join, or a bead.
void draw_chain(std::vector<Piece>& pieces, const Path& path, const Style& style) {
    const std::string width = "stroke-width=\"" + number(style.width) + "\"";
    for (std::size_t i = 0; i + 1 < path.loop.own(); ++i) {
        std::string svg, stroke = colour_along(0.5 * (path.shades[i] + path.shades[i + 1]));
        if (style.gradual) {
            const std::string id = "s" + std::to_string(path.edges[i].tag) + "-" + std::to_string(i);
            svg = gradient(path, i, id);
            stroke = "url(#" + id + ")";
        }
        for (const auto& [from, to] : visible(path, path.places[i], path.places[i + 1]))
            svg += line(spot_at(path, i, from), spot_at(path, i, to), "stroke=\"" + stroke + "\" " + width);
        pieces.push_back({path.depth(i), svg});
    }
    for (std::size_t i = 0; i < path.loop.own(); ++i) {
        const std::string fill = "fill=\"" + colour_along(path.shades[i]) + "\"";
        if (is_visible(path, path.places[i]))
            pieces.push_back({path.edges[i].start.z, disc(path.spots[i], 0.5 * style.width, fill)});
    }
}

std::string dashed() {
    return "stroke=\"" + std::string(grey) + "\" stroke-width=\"" + number(closure_width) +
           "\" stroke-dasharray=\"7 5\"";
}

std::string closure_of(const Path& path) {
    std::string svg;
    for (std::size_t i = 0; i < path.edges.size(); ++i) {
        if (!path.closes(i)) continue;
        for (const auto& [from, to] : visible(path, path.places[i], path.places[i + 1]))
            svg += line(spot_at(path, i, from), spot_at(path, i, to), "");
    }
    return "<g " + dashed() + " mask=\"url(#fade)\">\n" + svg + "</g>\n";
}

std::string strands(const Diagram& diagram, std::vector<Path>& paths, const Style& style) {
    std::string svg;
    std::vector<Piece> pieces;
    for (Path& path : paths) {
        find_gaps(path, diagram, style.width);
        svg += closure_of(path);
        draw_chain(pieces, path, style);
    }
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.depth < b.depth; });
    for (const Piece& piece : pieces) svg += piece.svg;
    return svg;
}

Labels labels_around(const std::vector<Path>& paths) {
    Labels labels(panel_width, panel_height);
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.edges.size(); ++i) labels.avoid(path.spots[i], path.spots[i + 1]);
    return labels;
}

/// Both ends of every chain, each with a disc and its residue.
std::string ends(const std::vector<Path>& paths, const Result& result) {
    constexpr double radius = 7.0, size = 20.0;
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths) {
        if (path.loop.own() == 0) continue;
        const auto component = static_cast<std::size_t>(path.edges.front().tag);
        const std::string chain = paths.size() > 1 ? result.components[component].name + ":" : "";
        for (const auto& [atom, name] : {std::pair{std::size_t{0}, "N "}, {path.loop.own() - 1, "C "}}) {
            const std::string colour = colour_along(path.shades[atom]);
            svg += disc(path.spots[atom], radius,
                        "fill=\"" + colour + "\" stroke=\"#ffffff\" stroke-width=\"2\"");
            svg += labels.beside(path.spots[atom], radius,
                                 chain + name + std::to_string(path.loop.atoms[atom].id), size,
                                 "font-weight=\"bold\" fill=\"" + colour + "\" " + label_halo);
        }
    }
    return svg;
}

/// Every bead that is left, with its residue.
std::string beads(const std::vector<Path>& paths) {
    constexpr double radius = 8.0, size = 17.0;
    Labels labels = labels_around(paths);
    std::string svg;
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.loop.atoms.size(); ++i) {
            const bool own = i < path.loop.own();
            const Spot spot = path.spots[i];
            if (spot.x < 0.0 || spot.y < 0.0 || spot.x > panel_width || spot.y > panel_height) continue;
            svg += disc(spot, radius,
                        "fill=\"" + (own ? colour_along(path.shades[i]) : std::string(grey)) +
                            "\" stroke=\"#ffffff\" stroke-width=\"2.2\"");
            svg += labels.beside(spot, radius, std::to_string(path.loop.atoms[i].id) + (own ? "" : "*"), size,
                                 "font-weight=\"600\" fill=\"" + std::string(ink) + "\" " + label_halo);
        }
    return svg;
}

/// The open chains, pale, behind what is left of them.
std::string shadow(const std::vector<Path>& paths) {
    std::string svg;
    for (const Path& path : paths) {
        svg += "<polyline fill=\"none\" stroke=\"" + std::string(ghost) +
               "\" stroke-width=\"2.5\" stroke-linejoin=\"round\" points=\"";
        for (std::size_t i = 0; i < path.loop.own(); ++i)
            svg += number(path.spots[i].x) + "," + number(path.spots[i].y) + " ";
        svg += "\"/>\n";
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

std::string title(const Result& result) {
    const std::string file = std::filesystem::path(result.file).stem().string();
    const std::string chains = result.whole.name.empty() ? "" : ", chain " + result.whole.name;
    return words({0.5 * page_width, 38.0}, file + chains + ": " + counted(result.whole.beads, "residue"),
                 "text-anchor=\"middle\" font-size=\"26\" font-weight=\"bold\" fill=\"" + std::string(ink) +
                     "\"");
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
std::string colour_bar(const std::vector<Loop>& loops) {
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
    const Loop& loop = loops.front();
    for (int i = 0; loops.size() == 1 && i <= ticks; ++i) {
        const std::size_t atom = (loop.own() - 1) * static_cast<std::size_t>(i) / ticks;
        svg +=
            words({left + width * i / ticks, legend_top + 18.0}, std::to_string(loop.atoms[atom].id), small);
    }
    if (loops.size() > 1)
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

std::vector<PointR3> open_points(const Diagram& diagram, const std::vector<Loop>& loops) {
    std::vector<PointR3> points;
    std::vector<std::size_t> seen(loops.size(), 0);
    for (const Edge& edge : diagram.edges) {
        const auto loop = static_cast<std::size_t>(edge.tag);
        if (seen[loop]++ < loops[loop].own()) points.push_back(edge.start);
    }
    return points;
}

} // namespace

std::string picture(const Result& result, const Plan& plan, std::optional<int> asked_view) {
    const Specimen& shown = *result.typical();
    const int view = asked_view ? *asked_view : clearest_view(shown);
    const Diagram before = diagram_of(shown.closed, view), after = diagram_of(shown.reduced, view);
    const Camera camera(open_points(before, shown.closed));
    std::vector<Path> chain = paths_of(before, shown.closed, shown.closed, camera);
    std::vector<Path> core = paths_of(after, shown.reduced, shown.closed, camera);

    std::size_t left = 0;
    for (const Loop& loop : shown.reduced) left += loop.atoms.size();
    const std::string given = "as given, closed: " + counted(before.crossings, "crossing");
    const std::string reduced =
        "reduced: " + counted(left, "bead") + ", " + counted(after.crossings, "crossing");
    const std::string before_svg = strands(before, chain, {6.0, false}) + ends(chain, result);
    const std::string after_svg = shadow(chain) + strands(after, core, {8.0, true}) + beads(core);
    return head() + title(result) + subtitle(result, plan, view) + panel(left_panel, given, before_svg) +
           panel(right_panel, reduced, after_svg) + colour_bar(shown.closed) + keys() + "</svg>\n";
}
