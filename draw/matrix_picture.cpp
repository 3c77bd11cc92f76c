#include "draw/matrix_picture.hpp"

#include "words/numbers.hpp"
#include "words/residues.hpp"
#include "words/text.hpp"

#include <algorithm>

namespace loopwise::draw {
namespace {

constexpr std::size_t most_dots = 390; // along a side: two pixels each in the SVG picture

constexpr std::size_t longest_knot = 30;
std::string shown(const knots::KnotType& knot) { return short_text(knot, longest_knot); }

/// The knot with the greatest share among the subchains of a dot; the unknot only where there is no other.
fingerprint::Cell strongest_cell(const fingerprint::FingerprintMatrix& matrix, std::size_t first, std::size_t last,
                                 std::size_t side) {
    fingerprint::Cell best = matrix.at({first, std::max(first, last)});
    for (std::size_t f = first; f < std::min(first + side, matrix.beads()); ++f)
        for (std::size_t l = std::max(f, last); l < std::min(last + side, matrix.beads()); ++l) {
            const fingerprint::Cell& cell = matrix.at({f, l});
            if (cell.knot != 0 && (best.knot == 0 || cell.closures > best.closures)) best = cell;
        }
    return best;
}

std::vector<MatrixPicture::Run> row_of(const fingerprint::ChainFingerprint& of, std::size_t last, std::size_t side) {
    std::vector<MatrixPicture::Run> runs;
    for (std::size_t first = 0; first < std::min(last + side, of.matrix.beads()); first += side) {
        const fingerprint::Cell cell = strongest_cell(of.matrix, first, last, side);
        const std::size_t shade = shade_of(of, cell);
        if (!runs.empty() && runs.back().knot == cell.knot && runs.back().shade == shade)
            ++runs.back().dots;
        else
            runs.push_back({cell.knot, shade, 1});
    }
    return runs;
}

void add_legend(MatrixPicture& picture) {
    constexpr std::size_t most_knots = 10;
    std::vector<std::size_t> area(picture.knots.size()), knots;
    for (const auto& row : picture.rows)
        for (const MatrixPicture::Run& run : row) area[run.knot] += run.dots;
    for (std::size_t knot = 1; knot < area.size(); ++knot)
        if (area[knot] > 0) knots.push_back(knot);
    std::stable_sort(knots.begin(), knots.end(), [&](std::size_t a, std::size_t b) { return area[a] > area[b]; });
    picture.is_legend_complete = knots.size() <= most_knots;
    if (!picture.is_legend_complete) knots.resize(most_knots);
    knots.push_back(0);
    picture.legend = std::move(knots);
}

/// 1, 2, 5, 10, 20, ... so that there are at most some eight ticks.
int tick_distance(std::size_t beads) {
    constexpr std::size_t most_ticks = 8;
    int distance = 1;
    for (int i = 0; static_cast<std::size_t>(distance) * most_ticks < beads; ++i)
        distance = i % 3 == 1 ? distance / 2 * 5 : distance * 2;
    return distance;
}

std::vector<MatrixPicture::Tick> ticks_of(const std::vector<polymer::ResidueId>& residues) {
    const int apart = tick_distance(residues.size());
    std::vector<MatrixPicture::Tick> ticks;
    for (std::size_t bead = 0; bead < residues.size(); ++bead)
        if (residues[bead].is_number() && *residues[bead].number() % apart == 0)
            ticks.push_back({bead, residues[bead].text()});
    return ticks;
}

std::string sampling_of(const fingerprint::ChainFingerprint& of) {
    if (of.step == 1) return "every subchain was closed";
    return "grid of " + std::to_string(of.step) +
           (of.borders_within > 1 ? ", borders to within " + std::to_string(of.borders_within) + " residues"
                                  : ", refined at borders");
}

} // namespace

MatrixPicture picture_of(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places) {
    MatrixPicture picture{};
    picture.beads = of.matrix.beads();
    picture.dot = (picture.beads + most_dots - 1) / most_dots;
    for (std::size_t last = 0; last < picture.beads; last += picture.dot)
        picture.rows.push_back(row_of(of, last, picture.dot));
    for (std::size_t knot = 0; knot < of.knots.size(); ++knot) {
        picture.knots.push_back(shown(of.knots[knot]));
        auto& colours = picture.colours.emplace_back();
        for (std::size_t shade = 0; shade < shades; ++shade) colours[shade] = knot_colour(of, knot, shade);
    }
    add_legend(picture);
    picture.ticks = ticks_of(of.residues);
    for (const fingerprint::KnotPlace& place : places)
        if (place.core)
            picture.cores.push_back({*place.core, number_of(place, of),
                                     shown(place.knot) + " " + core_word(place) + " " +
                                         words::range(of.residues[place.core->first], of.residues[place.core->last])});
    picture.title = words::title(of.file, of.chain);
    picture.about = std::to_string(picture.beads) + " residues; the whole chain is " + shown(of.knot) + " in " +
                    words::percent(of.share) + " of " + std::to_string(of.closures) + " closures; " + sampling_of(of);
    picture.first_axis = "first residue of the subchain";
    picture.last_axis = "last residue of the subchain";
    return picture;
}

} // namespace loopwise::draw
