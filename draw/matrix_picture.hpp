// What a picture of a fingerprint's matrix shows, however it is drawn.
#pragma once

#include "draw/knot_colours.hpp"

namespace loopwise::draw {

/// The triangle of all subchains: the first residue across, the last residue upwards, so that the whole chain is at the
/// upper left. Of a long chain a dot stands for several subchains.
struct MatrixPicture {
    /// Equal dots side by side.
    struct Run {
        std::size_t knot, shade, dots;
    };
    /// A label of both axes, at the middle of a bead.
    struct Tick {
        std::size_t bead;
        std::string label;
    };
    struct Core {
        fingerprint::Subchain subchain;
        std::size_t knot;
        std::string label;
    };

    std::size_t beads, dot;                               ///< of the chain; along the side of a dot
    std::vector<std::vector<Run>> rows;                   ///< by last bead, each by first bead up to the diagonal
    std::vector<std::string> knots;                       ///< by number, in few letters
    std::vector<std::array<std::string, shades>> colours; ///< of each knot
    std::vector<std::size_t> legend;                      ///< the knots that cover most, then the unknot
    bool is_legend_complete;
    std::vector<Tick> ticks;
    std::vector<Core> cores;
    std::string title, about, first_axis, last_axis;
};

MatrixPicture picture_of(const fingerprint::ChainFingerprint& fingerprint,
                         const std::vector<fingerprint::KnotPlace>& places);

/// Where the square of all pairs of residues lies in the SVG picture.
struct Plot {
    double left, bottom, side;
};
inline constexpr Plot svg_plot{110.0, 880.0, 780.0};

/// The SVG text. Without the heading, the picture begins below it.
std::string matrix_svg(const MatrixPicture& picture, bool with_heading = true);

} // namespace loopwise::draw
