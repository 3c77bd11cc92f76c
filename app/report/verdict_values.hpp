// The verdict on a chain's gaps in reports.
#pragma once

#include "app/report/report.hpp"
#include "survey/gap_verdict.hpp"

#include <optional>

namespace loopwise::app {

/// A verdict and what its numbers refer to.
struct VerdictValues {
    const std::optional<survey::GapVerdict>& verdict; ///< none for a chain without gaps
    const polymer::Bonds& bonds;
    const std::vector<polymer::ResidueId>& residues;

    /// Lines of text; empty if there is no verdict.
    std::string text() const;
    /// Null if there is no verdict.
    Json json() const;
    /// The fields of verdict_columns().
    Row row() const;
};

Row verdict_columns();

} // namespace loopwise::app
