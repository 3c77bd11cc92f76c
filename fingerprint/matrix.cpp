#include "fingerprint/matrix.hpp"

#include <new>
#include <stdexcept>
#include <string>

namespace loopwise::fingerprint {

FingerprintMatrix::FingerprintMatrix(std::size_t beads, std::size_t most_memory) : beads_(beads) {
    constexpr double bytes_per_cell = sizeof(Cell) + 1.0 / 8.0, megabyte = 1e6;
    const double bytes = 0.5 * static_cast<double>(beads) * static_cast<double>(beads + 1) * bytes_per_cell;
    const auto refuse = [&] {
        throw std::length_error("the matrix of all subchains of " + std::to_string(beads) + " residues takes " +
                                std::to_string(static_cast<std::size_t>(bytes / megabyte) + 1) +
                                " MB of memory, more than there is");
    };
    if (bytes > static_cast<double>(most_memory)) refuse();
    try {
        cells_.resize(beads * (beads + 1) / 2);
        tested_.resize(cells_.size());
    } catch (const std::bad_alloc&) {
        refuse();
    } catch (const std::length_error&) {
        refuse();
    }
}

void FingerprintMatrix::test(Subchain s, Cell cell) {
    cells_[index(s)] = cell;
    tested_[index(s)] = true;
}

void FingerprintMatrix::renumber(std::span<const std::uint16_t> number_of) {
    for (Cell& cell : cells_) cell.knot = number_of[cell.knot];
}

} // namespace loopwise::fingerprint
