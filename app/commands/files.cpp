#include "app/commands/files.hpp"

#include "app/commands/command.hpp"
#include "read/bytes.hpp"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <limits>
#include <unistd.h>

namespace loopwise::app {

std::string label_of(const polymer::Molecule& molecule) {
    return molecule.file + (molecule.model.empty() ? "" : ", model " + molecule.model);
}

std::string label_of(const polymer::Molecule& molecule, const polymer::NamedChain& chain) {
    return label_of(molecule) + (chain.name.empty() ? "" : ": chain " + chain.name);
}

void tell_notes_in_chains(polymer::Molecule& molecule) {
    for (polymer::NamedChain& chain : molecule.chains)
        chain.notes.insert(chain.notes.begin(), molecule.notes.begin(), molecule.notes.end());
}

void refuse_second_input(const std::vector<std::string>& files) {
    if (std::count(files.begin(), files.end(), read::standard_input) > 1)
        refuse_usage("FILE: - (the standard input) can be given only once");
}

std::size_t available_memory() {
    // Includes what the kernel can free at once.
    std::ifstream file("/proc/meminfo");
    constexpr std::size_t kilobyte = 1024;
    std::string field, rest;
    while (file >> field)
        if (std::size_t amount = 0; field == "MemAvailable:" && file >> amount)
            return amount * kilobyte;
        else
            std::getline(file, rest);
    const long pages = sysconf(_SC_PHYS_PAGES), size = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || size <= 0) return std::numeric_limits<std::size_t>::max();
    return static_cast<std::size_t>(pages) * static_cast<std::size_t>(size);
}

int ErrorReporter::exit_status() {
    progress_.clear();
    if (!std::cout.flush()) add("standard output", "cannot be written");
    return any_ ? exit_failure : 0;
}

void ErrorReporter::add(const std::string& what, const std::string& reason) {
    any_ = true;
    progress_.clear();
    std::cerr << "loopwise: " << what << ": " << reason << '\n';
}

} // namespace loopwise::app
