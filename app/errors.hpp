// What fails is told in one line on stderr and does not stop the rest.
#pragma once

#include "app/interruption.hpp"
#include "app/progress.hpp"

#include <stdexcept>

namespace loopwise::app {

class ErrorReporter {
  public:
    explicit ErrorReporter(Progress& progress) : progress_(progress) {}

    /// Runs the work. What it throws is told as a failure of `what`; only Interrupted is passed on.
    template <class Work> void attempt(const std::string& what, const Work& work) {
        try {
            work();
        } catch (const Interrupted&) {
            throw;
        } catch (const std::exception& failure) {
            tell(what, failure.what());
        }
    }
    /// For a fault that the report tells.
    void fail() { any_ = true; }
    /// Of a run that ends now: also whether standard output took all that was written to it.
    int exit_status();

  private:
    void tell(const std::string& what, std::string reason);

    Progress& progress_;
    bool any_ = false;
};

} // namespace loopwise::app
