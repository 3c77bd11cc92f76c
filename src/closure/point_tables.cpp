#include "closure/point_tables.hpp"

#include "closure/fullerene_data.hpp"
#include "closure/uniform_data.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <iterator>

namespace loopwise {

std::array<PointR3, fuleren_rows> fuleren;
std::array<PointR3, uniform_rows> uniform;

static_assert(std::size(fullerene_data) == fuleren_rows);
static_assert(std::size(uniform_data) == uniform_rows);

} // namespace loopwise

void FillFulerenData() {
    using namespace loopwise;
    if (fuleren[0].x == fullerene_data[0].x) return;
    std::copy(std::begin(fullerene_data), std::end(fullerene_data), fuleren.begin());
    std::copy(std::begin(uniform_data), std::end(uniform_data), uniform.begin());
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}
