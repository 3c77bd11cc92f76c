// Files and errors, for all subcommands.
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

/// Copies the notes about the molecule to each of its chains, for reports that list chains.
void tell_notes_in_chains(polymer::Molecule& molecule);

/// Refuses the standard input as two inputs.
void refuse_second_input(const std::vector<std::string>& files);

/// Physical memory that is free without swapping, in bytes.
std::size_t available_memory();

/// Reports errors on stderr, a line each.
class ErrorReporter {
  public:
    explicit ErrorReporter(Progress& progress) : progress_(progress) {}

    /// Runs the action and reports what it throws as an error of `what`. Only Interrupted is passed on.
    template <class Work> void attempt(const std::string& what, const Work& work) {
        try {
            work();
        } catch (const Interrupted&) {
            throw;
        } catch (const std::exception& failure) {
            add(what, failure.what());
        }
    }
    /// The exit status at the end of the run. Reports an error if the standard output could not be written.
    int exit_status();

  private:
    void add(const std::string& what, const std::string& reason);

    Progress& progress_;
    bool any_ = false;
};

} // namespace loopwise::app
