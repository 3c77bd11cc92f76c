// A row of CSV for every closure.
#pragma once

#include "survey/survey.hpp"

#include <ostream>

namespace loopwise::app {

/// Writes the rows while the survey counts, and passes everything on to another watcher.
class EachClosure final : public survey::Watcher {
  public:
    /// Writes the head; `out` and `next` must outlive it.
    EachClosure(std::ostream& out, survey::Watcher& next);

    /// The molecule whose closures come next.
    void begin(const polymer::Molecule& molecule) { molecule_ = &molecule; }
    void closure_at(std::size_t closure, double part) override { next_.closure_at(closure, part); }
    void closure_counted(const survey::ClosureResult& made) override;
    void path_begins() override { next_.path_begins(); }

  private:
    std::ostream& out_;
    survey::Watcher& next_;
    const polymer::Molecule* molecule_ = nullptr;
};

} // namespace loopwise::app
