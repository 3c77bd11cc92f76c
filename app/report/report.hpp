// The results as text for people, or as JSON or CSV for programs.
#pragma once

#include "survey/survey.hpp"

#include <memory>
#include <ostream>

namespace loopwise::app {

enum class Format { text, json, csv };

/// Results are written as they come, so that a long run shows what it has.
class Report {
  public:
    virtual ~Report() = default;
    virtual void add(const survey::Result& result) = 0;
    virtual void finish() {}
};

/// Writes the head of the report; `out` and `plan` must outlive it.
std::unique_ptr<Report> make_report(Format format, std::ostream& out, const survey::Plan& plan);

// One for each format.
std::unique_ptr<Report> make_text_report(std::ostream& out, const survey::Plan& plan);
std::unique_ptr<Report> make_json_report(std::ostream& out, const survey::Plan& plan);
std::unique_ptr<Report> make_csv_report(std::ostream& out, const survey::Plan& plan);

/// Knots are shortened to this many characters in a table, and in a sentence.
inline constexpr std::size_t widest_knot_column = 36, longest_knot = 60;

/// All notes about a chain of a result.
std::vector<std::string> notes_on(const survey::Result& result, const survey::ComponentTally& component);

/// The labels of what is left of a loop.
std::string labels_of(const survey::ComponentTally::Smallest& smallest,
                      const survey::ComponentTally& component);

} // namespace loopwise::app
