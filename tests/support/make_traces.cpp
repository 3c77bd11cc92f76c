// Makes protein-like C-alpha traces with a known knot: those of examples/data, which tests read.
//
//     make_traces FOLDER
//
// A knot drawn on a grid is given two long tails and folded into a globule by Monte Carlo moves that
// cannot carry one bond across another, so the knot stays.
//
// Everybody gets the same files: the random numbers come straight from the engine, and the arithmetic
// is only + - * / and square roots, which IEEE 754 defines to the last bit. Where the compiler may fuse
// a product and a sum into one rounding, forbid it with -ffp-contract=off.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr double bond = 3.8;
constexpr double clearance = 4.0;
/// The distance of second neighbours at bond angles of 80 and of 150 degrees.
constexpr double sharpest = 4.886;
constexpr double flattest = 7.340;
/// The mean square distance from the centre that is usual for proteins of some 120 residues.
constexpr double usual_spread = 182.0;
/// Where the surface of such a globule is. Ends kept outside cannot slip back through the knot.
constexpr double surface = 21.0;

struct Point {
    double x, y, z;
};

Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Point operator*(double s, Point a) { return {s * a.x, s * a.y, s * a.z}; }

double dot(Point a, Point b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Point cross(Point a, Point b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double square(double s) { return s * s; }
double length(Point a) { return std::sqrt(dot(a, a)); }
double distance(Point a, Point b) { return length(a - b); }
bool closer(Point a, Point b, double limit) { return dot(a - b, a - b) < square(limit); }
Point unit(Point a) { return (1.0 / length(a)) * a; }

using Trace = std::vector<Point>;

Point centre(const Trace& trace) {
    Point sum{0.0, 0.0, 0.0};
    for (const Point p : trace) sum = sum + p;
    return (1.0 / static_cast<double>(trace.size())) * sum;
}

// --- The knots, drawn on a grid ------------------------------------------------------------------------

/// A path by turns along a column and along a row: the numbers are those columns and rows. Columns run
/// above rows, so the order of the visits alone decides the knot. Both ends leave across row 0.
using Drawing = std::vector<int>;

/// Two bonds from line to line keep the beads of neighbouring lines clear of each other.
constexpr int bonds_per_line = 2;

void walk(Trace& trace, Point direction, int lines) {
    const Point step = (lines < 0 ? -bond : bond) * direction;
    for (int i = 0; i < std::abs(lines) * bonds_per_line; ++i) trace.push_back(trace.back() + step);
}

Trace knot_of(const Drawing& drawing) {
    Trace trace{{0.0, 0.0, 0.0}};
    int row = 0;
    for (std::size_t i = 0; i + 2 < drawing.size(); i += 2) {
        walk(trace, {0.0, 1.0, 0.0}, drawing[i + 1] - row);
        walk(trace, {0.0, 0.0, 1.0}, -1);
        walk(trace, {1.0, 0.0, 0.0}, drawing[i + 2] - drawing[i]);
        walk(trace, {0.0, 0.0, 1.0}, 1);
        row = drawing[i + 1];
    }
    walk(trace, {0.0, 1.0, 0.0}, -row);
    return trace;
}

/// The knot with tails of equal length that make up the wanted number of beads.
Trace with_tails(Trace trace, std::size_t beads) {
    const Point step{0.0, bond, 0.0};
    while (trace.size() < beads) {
        std::reverse(trace.begin(), trace.end());
        trace.push_back(trace.back() - step);
    }
    return trace;
}

// --- What makes a trace look like a protein ------------------------------------------------------------

enum class Shape { coil, helix, strand };

Shape shape(const Point* p) {
    const double reach = distance(p[0], p[3]);
    if (reach > 9.3) return Shape::strand;
    const bool right_handed = dot(cross(p[1] - p[0], p[2] - p[1]), p[3] - p[2]) > 0.0;
    return right_handed && reach > 4.6 && reach < 5.8 ? Shape::helix : Shape::coil;
}

/// Neighbouring stretches of four beads that go on with the same helix or strand.
double regularity(const Trace& trace) {
    double count = 0.0;
    Shape last = Shape::coil;
    for (std::size_t i = 0; i + 3 < trace.size(); ++i) {
        const Shape here = shape(&trace[i]);
        if (here == last && here != Shape::coil) count += 1.0;
        last = here;
    }
    return count;
}

double contacts(const Trace& trace) {
    double count = 0.0;
    for (std::size_t i = 0; i < trace.size(); ++i)
        for (std::size_t j = i + 4; j < trace.size(); ++j)
            if (closer(trace[i], trace[j], 7.5)) count += 1.0;
    return count;
}

/// The sum of squared distances from the centre, less what is usual.
double excess_spread(const Trace& trace) {
    const Point middle = centre(trace);
    double sum = 0.0;
    for (const Point p : trace) sum += dot(p - middle, p - middle) - usual_spread;
    return sum;
}

double buried_ends(const Trace& trace) {
    const Point middle = centre(trace);
    return std::max(0.0, surface - distance(trace.front(), middle)) +
           std::max(0.0, surface - distance(trace.back(), middle));
}

double energy(const Trace& trace) {
    return 0.02 * std::abs(excess_spread(trace)) + 3.0 * buried_ends(trace) - 0.3 * contacts(trace) -
           3.0 * regularity(trace);
}

/// How far the bond angles leave their range; nothing in a trace that is done.
double strain(const Trace& trace) {
    double sum = 0.0;
    for (std::size_t i = 0; i + 2 < trace.size(); ++i) {
        const double d = distance(trace[i], trace[i + 2]);
        sum += std::max({0.0, sharpest - d, d - flattest});
    }
    return sum;
}

/// Whether the beads from first to before last keep the distance from all but their neighbours.
bool keeps_clear(const Trace& trace, std::size_t first, std::size_t last, double limit) {
    for (std::size_t i = first; i < last; ++i)
        for (std::size_t j = 0; j < trace.size(); ++j)
            if ((j + 1 < i || j > i + 1) && closer(trace[i], trace[j], limit)) return false;
    return true;
}

// --- Folding --------------------------------------------------------------------------------------------

/// Beads that keep the clearance hold their bonds more than 2.9 apart, so a move this short cannot
/// carry one bond across another.
constexpr double longest_move = 1.0;
constexpr std::size_t longest_turn = 40;

class Folding {
  public:
    Folding(Trace start, std::uint64_t seed) : trace_(std::move(start)), energy_(energy(trace_)), engine_(seed) {}

    Trace cooled(int moves) {
        for (int i = 0; i < moves; ++i) move(0.3 + 4.0 * square(1.0 - static_cast<double>(i) / moves));
        return trace_;
    }

  private:
    Trace trace_;
    double energy_;
    std::mt19937_64 engine_;

    double uniform() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
    double symmetric() { return 2.0 * uniform() - 1.0; }
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(engine_() % bound); }

    void move(double temperature) {
        const std::size_t first = below(trace_.size());
        const std::size_t last = std::min(first + 1 + below(longest_turn), trace_.size());
        Trace turned = trace_;
        turn(turned, first, last);
        if (!keeps_clear(turned, first, last, clearance) || strain(turned) > strain(trace_)) return;
        const double changed = energy(turned);
        if (!accepts((changed - energy_) / temperature)) return;
        trace_.swap(turned);
        energy_ = changed;
    }

    /// Turns the beads from first to before last about the line through the beads on either side of
    /// them; at an end of the trace, where one of these is missing, about any line through the other.
    void turn(Trace& trace, std::size_t first, std::size_t last) {
        const bool both_sides = first > 0 && last < trace.size();
        const Point hinge = first > 0 ? trace[first - 1] : trace[last];
        const Point axis = unit(both_sides ? trace[last] - hinge : Point{symmetric(), symmetric(), symmetric()});
        double arm = bond;
        for (std::size_t i = first; i < last; ++i) arm = std::max(arm, length(cross(axis, trace[i] - hinge)));
        // The tangent of half the angle gives its sine and cosine without a library's own rounding.
        const double tangent = symmetric() * longest_move / (2.0 * arm);
        const double sine = 2.0 * tangent / (1.0 + square(tangent));
        for (std::size_t i = first; i < last; ++i) {
            const Point across = cross(axis, trace[i] - hinge);
            trace[i] = trace[i] + sine * (across + tangent * cross(axis, across));
        }
    }

    /// A rational stand-in for exp(-rise), which libraries round differently.
    bool accepts(double rise) { return rise <= 0.0 || uniform() * square(square(1.0 + rise / 4.0)) < 1.0; }
};

// --- The files ------------------------------------------------------------------------------------------

Trace centred_and_rounded(Trace trace) {
    const Point middle = centre(trace);
    const auto rounded = [](double s) { return std::round(s * 1000.0) / 1000.0; };
    for (Point& p : trace) p = {rounded(p.x - middle.x), rounded(p.y - middle.y), rounded(p.z - middle.z)};
    return trace;
}

/// Within what rounding may change.
bool is_well_formed(const Trace& trace) {
    for (std::size_t i = 0; i + 1 < trace.size(); ++i)
        if (std::abs(distance(trace[i], trace[i + 1]) - bond) > 0.002) return false;
    return keeps_clear(trace, 0, trace.size(), bond) && strain(trace) < 0.01;
}

bool write(const Trace& trace, const std::filesystem::path& file) {
    std::ofstream out(file);
    out << std::fixed << std::setprecision(3);
    for (std::size_t i = 0; i < trace.size(); ++i)
        out << i + 1 << ' ' << trace[i].x << ' ' << trace[i].y << ' ' << trace[i].z << '\n';
    return static_cast<bool>(out.flush());
}

struct Recipe {
    std::string name;
    Drawing drawing;
    std::size_t beads;
    /// Picked out of 15 as one whose ends, closed far away in nearly any direction, give this knot.
    std::uint64_t seed;
};

const std::vector<Recipe> recipes{
    {"trefoil", {0, 2, 2, 4, 4, 1, 1, 3, 3}, 120, 12},
    {"unknot", {2, 2, 0, 4, 4, 1, 1, 3, 3}, 120, 2},
    {"figure_eight", {0, 3, 2, 5, 5, 1, 3, 4, 1, 2, 4}, 136, 14},
};

bool make(const Recipe& recipe, const std::filesystem::path& folder) {
    Folding folding(with_tails(knot_of(recipe.drawing), recipe.beads), recipe.seed);
    const Trace trace = centred_and_rounded(folding.cooled(600000));
    return is_well_formed(trace) && write(trace, folder / (recipe.name + ".txt"));
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_traces FOLDER\n";
        return EXIT_FAILURE;
    }
    for (const Recipe& recipe : recipes)
        if (!make(recipe, argv[1])) {
            std::cerr << recipe.name << ": not folded well, or the file cannot be written\n";
            return EXIT_FAILURE;
        }
}
