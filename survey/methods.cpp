#include "survey/methods.hpp"

#include "src/closure/point_tables.hpp"
#include "survey/minimal_closure.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace loopwise::survey {
namespace {

using namespace closure;

constexpr std::size_t any_number = SIZE_MAX;

Closing in_row(Chain& chain, const ClosureInput& input) {
    const auto row = static_cast<int>(std::min<std::size_t>(input.closure, uniform_rows));
    return input.diameter ? close_in_direction(chain, row, *input.diameter) : close_in_direction(chain, row);
}

// Functions of the library as the table has them, by what they take.
template <auto close> Closing drawn(auto& open, const ClosureInput& input) { return close(open, input.draw); }
template <auto close> Closing drawn_at_scale(auto& open, const ClosureInput& input) {
    return close(open, input.scale, input.draw);
}
Closing outside(auto& open, const ClosureInput& input) { return close_outside(open, input.scale); }
Closing minimally(Chain& chain, const ClosureInput&) { return close_minimally(chain); }
Closing as_it_is(auto&, const ClosureInput&) { return Closing::closed; }

constexpr std::array table{
    MethodRow{.name = "directions",
              .help = "both ends move out along each of 400 directions, one closure for each",
              .takes_direction = true,
              .default_closures = uniform_rows,
              .most_closures = uniform_rows,
              .close_chain = in_row},
    MethodRow{.name = "direction",
              .help = "both ends move out along a random direction",
              .random = true,
              .takes_direction = true,
              .most_components = most_components_in_directions,
              .close_chain = drawn<close_in_random_direction>,
              .close_structure = drawn<close_in_random_directions>},
    MethodRow{.name = "point",
              .help = "through one far point in a random direction",
              .random = true,
              .takes_direction = true,
              .default_scale = 10.0,
              .most_components = most_components_through_points,
              .close_chain = drawn_at_scale<close_through_point>,
              .close_structure = drawn_at_scale<close_through_points>},
    MethodRow{.name = "two-points",
              .help = "by a far arc between two random directions",
              .random = true,
              .default_scale = 2.0,
              .most_components = most_components_by_arcs,
              .close_chain = drawn_at_scale<close_by_arc>,
              .close_structure = drawn_at_scale<close_by_arcs>},
    MethodRow{.name = "outside",
              .help = "by a far arc from the last bead's direction to the first's: one closure",
              .default_closures = 1,
              .most_closures = 1,
              .default_scale = 2.0,
              .most_components = any_number,
              .close_chain = outside,
              .close_structure = outside},
    MethodRow{.name = "minimal",
              .help = "by the shorter way: straight between the ends, or out of the chain's hull: one closure",
              .default_closures = 1,
              .most_closures = 1,
              .close_chain = minimally},
    MethodRow{.name = "ring",
              .help = "not at all: the last bead is bonded to the first",
              .closes = false,
              .default_closures = 1,
              .most_closures = 1,
              .most_components = any_number,
              .close_chain = as_it_is,
              .close_structure = as_it_is},
};

const MethodRow& row_where(auto&& holds) { return *std::find_if(table.begin(), table.end(), holds); }

} // namespace

std::span<const MethodRow> all_methods() { return table; }

Method Method::standard(bool together) {
    return Method(row_where([&](const MethodRow& row) { return !together || row.most_components > 0; }));
}

Method Method::ring() {
    return Method(row_where([](const MethodRow& row) { return !row.closes; }));
}

Method Method::named(std::string_view name, bool with_ring) {
    std::string names;
    for (const MethodRow& row : table) {
        if (!row.closes && !with_ring) continue;
        if (row.name == name) return Method(row);
        names.append(names.empty() ? "" : ", ").append(row.name);
    }
    throw std::invalid_argument("unknown method '" + std::string(name) + "'; choose from " + names);
}

} // namespace loopwise::survey
