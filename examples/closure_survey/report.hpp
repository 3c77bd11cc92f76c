// The results as text for people, or as JSON or CSV for programs.
#ifndef CLOSURE_SURVEY_REPORT_HPP
#define CLOSURE_SURVEY_REPORT_HPP

#include "survey.hpp"

#include <memory>
#include <ostream>

enum class Format { text, json, csv };

/// Results are written as they come, so that a long run shows what it has.
class Report {
  public:
    virtual ~Report() = default;
    virtual void add(const Result& result) = 0;
    virtual void finish() {}
};

/// Writes the head of the report; `out` and `plan` must outlive it.
std::unique_ptr<Report> make_report(Format format, std::ostream& out, const Plan& plan);

#endif
