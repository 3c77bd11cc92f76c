#include "commands/files.hpp"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <limits>
#include <unistd.h>

namespace loopwise {

std::vector<NamedChain> chains_asked_for(const std::string& file, const std::string& name) {
    std::vector<NamedChain> chains = read_chains(file);
    if (name.empty()) return chains;
    std::erase_if(chains, [&](const NamedChain& named) { return named.name != name; });
    if (chains.empty()) throw std::runtime_error("has no chain " + name);
    return chains;
}

std::size_t available_memory() {
    // What the kernel can free at once counts too, which only this file tells.
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

bool written_to_stdout() {
    if (std::cout.flush()) return true;
    std::cerr << "loopwise: standard output: cannot be written\n";
    return false;
}

void Complaints::add(const std::string& what, std::string reason) {
    any_ = true;
    progress_.clear();
    // Some parsers start with the name of the file or use several lines.
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    std::cerr << "loopwise: " << (reason.starts_with(what) ? "" : what + ": ") << reason << '\n';
}

} // namespace loopwise
