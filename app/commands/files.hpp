// What subcommands that go through files have in common.
#pragma once

#include "app/interruption.hpp"
#include "app/progress.hpp"
#include "read/read.hpp"

#include <fstream>
#include <functional>

namespace loopwise::app {

/// What a molecule and its chains are called in reports: "complex.pdb, model 2: chain A".
std::string label_of(const polymer::Molecule& molecule);
std::string label_of(const polymer::Molecule& molecule, const polymer::NamedChain& chain);

/// Notes about a whole file stand at each of its chains where chains are told of one by one.
void tell_notes_in_chains(polymer::Molecule& molecule);

/// Refuses a command line that names the standard input twice.
void refuse_second_input(const std::vector<std::string>& files);

/// Physical memory that can be had without driving other programs out, in bytes.
std::size_t available_memory();

/// Tells failures on stderr, a line each, and goes on.
class ErrorReporter {
  public:
    explicit ErrorReporter(Progress& progress) : progress_(progress) {}

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
    /// Of a run that ends now: also whether standard output took all that was written to it.
    int exit_status();

  private:
    void add(const std::string& what, std::string reason);

    Progress& progress_;
    bool any_ = false;
};

} // namespace loopwise::app
