#include "knots/diagram.hpp"

namespace loopwise::knots {

int Diagram::add(Crossing crossing) {
    crossings.push_back(crossing);
    mate.resize(4 * crossings.size(), -1);
    return size() - 1;
}

void Diagram::dissolve(int crossing) {
    // One strand after the other: in a kink the first leads to the second.
    for (const int place : {0, 1}) {
        const Dart in = 4 * crossing + place, out = opposite(in);
        link(across(in), across(out));
    }
    crossings[static_cast<std::size_t>(crossing)].sign = 0;
}

void Diagram::renumber() {
    std::vector<int> number(crossings.size());
    int next = 0;
    for (int c = 0; c < size(); ++c)
        if (!is_gone(c)) number[static_cast<std::size_t>(c)] = next++;
    for (int c = 0; c < size(); ++c) {
        if (is_gone(c)) continue;
        const int to = number[static_cast<std::size_t>(c)];
        for (int place = 0; place < 4; ++place) {
            const Dart end = across(4 * c + place);
            mate[static_cast<std::size_t>(4 * to + place)] =
                4 * number[static_cast<std::size_t>(crossing_of(end))] + place_of(end);
        }
        crossings[static_cast<std::size_t>(to)] = crossings[static_cast<std::size_t>(c)];
    }
    crossings.resize(static_cast<std::size_t>(next));
    mate.resize(4 * crossings.size());
}

int Diagram::writhe(bool own_only) const {
    int sum = 0;
    for (const Crossing& c : crossings)
        if (!own_only || c.under == c.over) sum += c.sign;
    return sum;
}

int Diagram::linking_number(int one, int other) const {
    int sum = 0;
    for (const Crossing& c : crossings)
        if ((c.under == one && c.over == other) || (c.under == other && c.over == one)) sum += c.sign;
    return sum / 2;
}

/// Where an edge arrives, the next one around the face on its left leaves one place clockwise.
void find_faces(const Diagram& diagram, Faces& faces) {
    faces.left_of.assign(diagram.mate.size(), -1);
    faces.any_end.clear();
    for (Dart start = 0; start < static_cast<Dart>(diagram.mate.size()); ++start) {
        if (faces.left_of[static_cast<std::size_t>(start)] >= 0) continue;
        for (Dart d = start; faces.left_of[static_cast<std::size_t>(d)] < 0; d = turned(diagram.across(d), 3))
            faces.left_of[static_cast<std::size_t>(d)] = static_cast<int>(faces.any_end.size());
        faces.any_end.push_back(start);
    }
}

} // namespace loopwise::knots
