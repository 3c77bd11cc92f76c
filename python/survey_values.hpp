// Results of surveys as Python holds them.
#pragma once

#include "python/arrays.hpp"
#include "survey/survey.hpp"

namespace loopwise::python {

/// A row for each closure that was counted, a column for each chain.
struct ClosureTable {
    std::vector<std::int64_t> closures;
    std::vector<std::int64_t> left;     ///< beads left, by rows
    std::vector<std::int64_t> numbers;  ///< of the knots, by rows; empty where loops are not named
    std::vector<knots::KnotType> knots; ///< by number
};

struct Survey {
    py::object chains; ///< the list of loopwise.Chain that was given
    survey::Result result;
    ClosureTable table;
    py::object arrays; ///< of the table, once they were asked for
};
using SurveyPtr = std::shared_ptr<Survey>;

void bind_survey_values(py::module_& module);

} // namespace loopwise::python
