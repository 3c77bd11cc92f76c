// The strands of a drawing on a panel: cut where they pass under others, coloured along the chain.
#pragma once

#include "draw/canvas.hpp"
#include "draw/drawing.hpp"
#include "draw/palette.hpp"

#include <string>
#include <utility>
#include <vector>

namespace loopwise::draw {

inline constexpr double panel_width = 665.0, panel_height = 580.0;
inline constexpr const char* grey = "#8a8a8a";  ///< of the closure
inline constexpr const char* ghost = "#e3e3e3"; ///< of a chain behind what is left of it

/// Turns and scales a view so that the open chains fill a panel but for a margin.
class Camera {
  public:
    Camera(const Drawing& drawing, const std::vector<survey::Loop>& loops);

    Spot operator()(PointR3 point) const;
    double pixels(double length) const { return scale_ * length; }

  private:
    void turn_along_longest(const std::vector<PointR3>& points);
    Spot turned(PointR3 point) const;

    double cosine_ = 1.0, sine_ = 0.0, scale_ = 1.0;
    Spot middle_;
};

/// One loop of a drawing on its panel. Places along it are measured in pixels from its first atom.
struct Path {
    const survey::Loop& loop;
    std::vector<Edge> edges;
    std::vector<Spot> spots;    ///< of the atoms, and the first again
    std::vector<double> places; ///< of the atoms, and of the first again
    std::vector<double> shades; ///< where in the whole chain the atoms are, 0 to 1
    std::vector<std::pair<double, double>> gaps;

    std::vector<Bond> bonds; ///< of the edges
    std::size_t chains = 1;  ///< how many share the drawing

    std::size_t chain() const { return static_cast<std::size_t>(edges.front().tag); }
    std::string colour(double shade) const { return colour_along(shade, chain(), chains); }
    double depth(std::size_t edge) const { return 0.5 * (edges[edge].start.z + edges[edge].end.z); }
};

struct Style {
    double width;
    bool gradual; ///< the colour changes along a stick, for few and long ones
};

/// One path for each loop that has edges; `whole` are the loops before their reduction.
std::vector<Path> paths_of(const Drawing& drawing, const std::vector<survey::Loop>& loops,
                           const std::vector<survey::Loop>& whole, const Camera& camera);

/// The closures, dashed, and the chains, the nearest strand last. Finds the gaps of the paths.
std::string strands(const Drawing& drawing, std::vector<Path>& paths, const Style& style);

/// The open chains, pale, behind what is left of them.
std::string shadow(const std::vector<Path>& paths);

/// The attributes of the line of a closure, and of one across a gap.
std::string dashed();
std::string dotted(const std::string& colour, double width);

} // namespace loopwise::draw
