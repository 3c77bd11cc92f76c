// What subcommands that go through files have in common.
#pragma once

#include "input/input.hpp"
#include "output.hpp"
#include "progress.hpp"

namespace loopwise {

/// The chains of a file, or the one of that name; an empty name is none. Throws std::runtime_error.
std::vector<NamedChain> chains_asked_for(const std::string& file, const std::string& name);

/// Physical memory that can be had without driving other programs out, in bytes.
std::size_t available_memory();

/// Whether all that went to standard output got there; complains if not.
bool written_to_stdout();

/// Tells failures on stderr, a line each, and goes on.
class Complaints {
  public:
    explicit Complaints(Progress& progress) : progress_(progress) {}

    /// Runs the action. What it throws is told as a failure of that; only Interrupted is passed on.
    template <class Work> void attempt(const std::string& what, const Work& work) {
        try {
            work();
        } catch (const Interrupted&) {
            throw;
        } catch (const std::exception& failure) {
            add(what, failure.what());
        }
    }
    bool any() const { return any_; }

  private:
    void add(const std::string& what, std::string reason);

    Progress& progress_;
    bool any_ = false;
};

} // namespace loopwise
