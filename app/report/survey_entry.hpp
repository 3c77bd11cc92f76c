// A survey in reports.
#pragma once

#include "app/report/report.hpp"
#include "survey/noise.hpp"

namespace loopwise::app {

Head survey_head(const survey::Plan& plan);

class SurveyEntry final : public Entry {
  public:
    /// The survey must outlive the entry.
    explicit SurveyEntry(const survey::Result& result, std::optional<survey::Noise> noise = {})
        : result_(result), noise_(std::move(noise)) {}

    std::string text() const override;
    Json json() const override;
    /// A row for each chain; with --structure one for the structure before them.
    std::vector<Row> rows() const override;

  private:
    const survey::Result& result_;
    std::optional<survey::Noise> noise_;
};

} // namespace loopwise::app
