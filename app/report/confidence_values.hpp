// The confidence of a prediction in reports.
#pragma once

#include "app/report/report.hpp"
#include "polymer/confidence.hpp"

namespace loopwise::app {

/// "mean 91.2, least 34.5, 12 residues below 50".
std::string confidence_text(const polymer::Confidence& confidence);
/// Null if there is none.
Json confidence_json(const std::optional<polymer::Confidence>& confidence);
/// The line of a chain in text; empty if there is none.
std::string confidence_line(const std::optional<polymer::Confidence>& confidence);
Row confidence_columns();
/// By confidence_columns(): mean, least and number of low residues; empty if there is none.
Row confidence_row(const std::optional<polymer::Confidence>& confidence);

} // namespace loopwise::app
