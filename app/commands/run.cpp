#include "app/commands/run.hpp"

#include "read/read.hpp"
#include "words/text.hpp"
#include "write/whole_file.hpp"

#include <algorithm>
#include <iostream>

namespace loopwise::app {

Run::Run(const Inputs& given, const Head& head, std::string unit)
    : given_(given), progress_(given.files.size(), std::move(unit)) {
    if (std::count(given.files.begin(), given.files.end(), words::standard_input) > 1)
        refuse_usage("FILE: - (the standard input) can be given only once");
    report_ = given.format->make(std::cout, head);
}

int Run::each_molecule(const std::function<void(polymer::Molecule&)>& body) {
    note_interruptions();
    bool interrupted = false;
    try {
        for (const std::string& file : given_.files) {
            ++number_;
            attempt(file, [&] {
                begin("reading " + file);
                for (polymer::Molecule& molecule : read::read_molecules(file, given_.selection)) {
                    stop_if_interrupted();
                    body(molecule);
                }
            });
        }
    } catch (const Interrupted&) {
        interrupted = true;
    }
    progress_.clear();
    report_->finish();
    const int status = errors_.exit_status();
    return interrupted ? exit_interrupted : status;
}

int Run::each_chain(const std::function<void(const polymer::Molecule&, polymer::NamedChain&)>& body) {
    return each_molecule([&](polymer::Molecule& molecule) {
        tell_notes_in_chains(molecule);
        for (polymer::NamedChain& chain : molecule.chains)
            attempt(label_of(molecule, chain), [&] {
                given_.cut(chain);
                body(molecule, chain);
            });
    });
}

void Run::add(const Entry& entry) {
    progress_.clear();
    report_->add(entry);
}

void Run::write(const std::string& path, const std::function<std::string()>& text) {
    if (path.empty()) return;
    attempt(path, [&] {
        begin("drawing " + path);
        const std::string made = text();
        progress_.clear();
        write::write_whole(path, made);
    });
}

} // namespace loopwise::app
