// A run of a subcommand over files, with its report.
#pragma once

#include "app/commands/inputs.hpp"
#include "app/errors.hpp"

namespace loopwise::app {

class Run {
  public:
    /// `unit` is what the progress counts. Refuses a command line that names the standard input twice.
    Run(const Inputs& given, const Head& head, std::string unit = "closures");

    /// Calls body(molecule) for every molecule of every file. Returns the exit status.
    int each_molecule(const std::function<void(polymer::Molecule&)>& body);
    /// Calls body(molecule, chain) for every chain, cut and with the notes about the file.
    int each_chain(const std::function<void(const polymer::Molecule&, polymer::NamedChain&)>& body);

    template <class Work> void attempt(const std::string& what, const Work& work) { errors_.attempt(what, work); }
    void add(const Entry& entry);
    /// Writes a file that is not asked for where the path is empty; `text` makes its text.
    void write(const std::string& path, const std::function<std::string()>& text);
    void fail() { errors_.fail(); }
    int exit_status() { return errors_.exit_status(); }
    void begin(const std::string& label, std::size_t closures = 0) { progress_.begin(label, number_, closures); }
    Progress& progress() { return progress_; }

  private:
    const Inputs& given_;
    Progress progress_;
    ErrorReporter errors_{progress_};
    std::unique_ptr<Report> report_;
    std::size_t number_ = 0; ///< of the file
};

} // namespace loopwise::app
