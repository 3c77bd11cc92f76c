#include "draw/strands.hpp"

#include <algorithm>
#include <cmath>

namespace loopwise::draw {
namespace {

constexpr double margin = 62.0;    // between the chain and its panel, where the closure leads out
constexpr double halo = 2.6;       // white on both sides of a strand that passes over another
constexpr double least_sine = 0.3; // strands that cross at smaller angles get no longer gaps
constexpr double splinter = 4.0;   // a visible part that is shorter only disturbs
constexpr double closure_width = 2.4;

/// What is drawn, with its depth: the nearest comes last.
struct Piece {
    double depth;
    std::string svg;
};

Path path_of(const survey::Loop& loop, const std::vector<Edge>& edges, const Camera& camera,
             const survey::Loop& whole) {
    Path path{loop, edges, {}, {0.0}, {}, {}, {}, 1};
    for (const Edge& edge : edges) path.spots.push_back(camera(edge.start));
    path.spots.push_back(path.spots.front());
    for (std::size_t i = 0; i < edges.size(); ++i)
        path.places.push_back(path.places[i] +
                              std::hypot(path.spots[i + 1].x - path.spots[i].x, path.spots[i + 1].y - path.spots[i].y));
    const double last = static_cast<double>(std::max<std::size_t>(whole.own, 2) - 1);
    for (std::size_t i = 0; i < loop.own; ++i)
        path.shades.push_back(static_cast<double>(index_of(loop.position(i))) / last);
    return path;
}

/// The sine of the angle at which two edges cross on the panel.
double sine_between(const Edge& a, const Edge& b) {
    const double ux = a.end.x - a.start.x, uy = a.end.y - a.start.y;
    const double vx = b.end.x - b.start.x, vy = b.end.y - b.start.y;
    return std::abs(ux * vy - uy * vx) / (std::hypot(ux, uy) * std::hypot(vx, vy));
}

/// Cuts a path wherever it passes under another. Gaps that leave but a splinter between them merge.
void find_gaps(Path& path, const Drawing& drawing, double width) {
    std::vector<std::pair<double, double>> gaps;
    for (std::size_t i = 0; i < path.edges.size(); ++i) {
        const double length = path.places[i + 1] - path.places[i];
        for (const EdgeAnnotation& pass : path.edges[i].annotations) {
            const auto over = static_cast<std::size_t>(pass.label);
            const double needed = 0.5 * (drawing.bonds[over] == Bond::closing ? closure_width : width) + halo;
            const double half = needed / std::max(least_sine, sine_between(path.edges[i], drawing.edges[over]));
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

/// Appended piece by piece: g++ 12 warns of a chain of + here, without reason.
std::string stick_id(const Path& path, std::size_t edge) {
    std::string id = "s";
    id += std::to_string(path.edges[edge].tag);
    id += '-';
    return id += std::to_string(edge);
}

/// A ring's last edge keeps the last colour.
double shade_after(const Path& path, std::size_t edge) {
    return path.shades[edge + 1 < path.shades.size() ? edge + 1 : edge];
}

std::string gradient(const Path& path, std::size_t edge, const std::string& id) {
    constexpr int stops = 4;
    const Spot &from = path.spots[edge], &to = path.spots[edge + 1];
    std::string text = "<linearGradient id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\" x1=\"" + number(from.x) +
                       "\" y1=\"" + number(from.y) + "\" x2=\"" + number(to.x) + "\" y2=\"" + number(to.y) + "\">";
    for (int i = 0; i <= stops; ++i) {
        const double part = static_cast<double>(i) / stops;
        text += "<stop offset=\"" + number(part * 100.0) + "%\" stop-color=\"" +
                path.colour(path.shades[edge] + part * (shade_after(path, edge) - path.shades[edge])) + "\"/>";
    }
    return text + "</linearGradient>\n";
}

/// The strands of the chain itself, and a disc at every atom: a round join, or a bead.
void draw_chain(std::vector<Piece>& pieces, const Path& path, const Style& style) {
    const std::string width = "stroke-width=\"" + number(style.width) + "\"";
    for (std::size_t i = 0; i < path.edges.size(); ++i) {
        if (path.bonds[i] == Bond::closing || path.bonds[i] == Bond::none) continue;
        const bool gap = path.bonds[i] == Bond::gap;
        std::string svg, stroke = path.colour(0.5 * (path.shades[i] + shade_after(path, i)));
        if (style.gradual && !gap) {
            const std::string id = stick_id(path, i);
            svg = gradient(path, i, id);
            stroke = "url(#" + id + ")";
        }
        for (const auto& [from, to] : visible(path, path.places[i], path.places[i + 1]))
            svg += line(spot_at(path, i, from), spot_at(path, i, to),
                        gap ? dotted(stroke, 0.5 * style.width) : "stroke=\"" + stroke + "\" " + width);
        pieces.push_back({path.depth(i), svg});
    }
    for (std::size_t i = 0; i < path.loop.own; ++i) {
        const std::string fill = "fill=\"" + path.colour(path.shades[i]) + "\"";
        if (is_visible(path, path.places[i]))
            pieces.push_back({path.edges[i].start.z, disc(path.spots[i], 0.5 * style.width, fill)});
    }
}

std::string closure_of(const Path& path) {
    std::string svg;
    for (std::size_t i = 0; i < path.edges.size(); ++i) {
        if (path.bonds[i] != Bond::closing) continue;
        for (const auto& [from, to] : visible(path, path.places[i], path.places[i + 1]))
            svg += line(spot_at(path, i, from), spot_at(path, i, to), "");
    }
    if (svg.empty()) return svg;
    return "<g " + dashed() + " mask=\"url(#fade)\">\n" + svg + "</g>\n";
}

std::vector<PointR3> open_points(const Drawing& drawing, const std::vector<survey::Loop>& loops) {
    std::vector<PointR3> points;
    std::vector<std::size_t> seen(loops.size(), 0);
    for (const Edge& edge : drawing.edges) {
        const auto loop = static_cast<std::size_t>(edge.tag);
        if (seen[loop]++ < loops[loop].own) points.push_back(edge.start);
    }
    return points;
}

} // namespace

Camera::Camera(const Drawing& drawing, const std::vector<survey::Loop>& loops) {
    const std::vector<PointR3> points = open_points(drawing, loops);
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

Spot Camera::operator()(PointR3 point) const {
    const Spot spot = turned(point);
    return {0.5 * panel_width + scale_ * (spot.x - middle_.x), 0.5 * panel_height - scale_ * (spot.y - middle_.y)};
}

void Camera::turn_along_longest(const std::vector<PointR3>& points) {
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

Spot Camera::turned(PointR3 point) const {
    return {cosine_ * point.x + sine_ * point.y, cosine_ * point.y - sine_ * point.x};
}

std::vector<Path> paths_of(const Drawing& drawing, const std::vector<survey::Loop>& loops,
                           const std::vector<survey::Loop>& whole, const Camera& camera) {
    std::vector<Path> paths;
    auto from = drawing.edges.begin();
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const auto to = std::find_if(from, drawing.edges.end(),
                                     [&](const Edge& edge) { return edge.tag != static_cast<std::int32_t>(i); });
        if (from != to) {
            paths.push_back(path_of(loops[i], {from, to}, camera, whole[i]));
            const auto first = drawing.bonds.begin() + (from - drawing.edges.begin());
            paths.back().bonds = {first, first + (to - from)};
            paths.back().chains = loops.size();
        }
        from = to;
    }
    return paths;
}

std::string strands(const Drawing& drawing, std::vector<Path>& paths, const Style& style) {
    std::string svg;
    std::vector<Piece> pieces;
    for (Path& path : paths) {
        find_gaps(path, drawing, style.width);
        svg += closure_of(path);
        draw_chain(pieces, path, style);
    }
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) { return a.depth < b.depth; });
    for (const Piece& piece : pieces) svg += piece.svg;
    return svg;
}

std::string shadow(const std::vector<Path>& paths) {
    constexpr double width = 2.5;
    const std::string whole =
        "stroke=\"" + std::string(ghost) + "\" stroke-width=\"" + number(width) + "\" stroke-linecap=\"round\"";
    std::string svg;
    for (const Path& path : paths)
        for (std::size_t i = 0; i < path.edges.size(); ++i)
            if (path.bonds[i] != Bond::closing)
                svg +=
                    line(path.spots[i], path.spots[i + 1], path.bonds[i] == Bond::gap ? dotted(ghost, width) : whole);
    return svg;
}

std::string dashed() {
    return "stroke=\"" + std::string(grey) + "\" stroke-width=\"" + number(closure_width) +
           "\" stroke-dasharray=\"7 5\"";
}

std::string dotted(const std::string& colour, double width) {
    return "stroke=\"" + colour + "\" stroke-width=\"" + number(width) + "\" stroke-dasharray=\"3 4\"";
}

} // namespace loopwise::draw
