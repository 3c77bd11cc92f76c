// Closed polygons and their links in the report of `loopwise knot`.
#pragma once

#include "app/report/report.hpp"
#include "knots/links.hpp"
#include "polymer/molecule.hpp"

#include <optional>

namespace loopwise::app {

Head knot_head();

/// A polygon by itself.
struct PolygonEntry final : Entry {
    PolygonEntry(const polymer::Molecule& of, const polymer::NamedChain& named) : molecule(of), chain(named) {}

    const polymer::Molecule& molecule;
    const polymer::NamedChain& chain;
    std::string warning; ///< about gaps that were crossed
    knots::KnotName name;

    std::string text() const override;
    Json json() const override;
    std::vector<Row> rows() const override;
};

/// All polygons of a molecule together.
struct LinkEntry final : Entry {
    explicit LinkEntry(const polymer::Molecule& of) : molecule(of) {}

    struct Pair {
        std::size_t one, other;
        knots::KnotType type;
        int linking;
    };
    const polymer::Molecule& molecule;
    std::optional<knots::KnotName> name; ///< of two polygons or more
    std::vector<Pair> pairs;

    std::string text() const override;
    Json json() const override;
    std::vector<Row> rows() const override;
};

} // namespace loopwise::app
