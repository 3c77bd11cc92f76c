// `loopwise check`: looks for breaks.
#include "commands/command.hpp"
#include "commands/files.hpp"

#include <iostream>

namespace loopwise {

Action declare_check(CLI::App& app) {
    struct Arguments {
        std::vector<std::string> files;
        std::string chain;
    };
    const auto given = std::make_shared<Arguments>();
    app.add_option("FILE", given->files, readable_formats())->required()->option_text("...");
    app.add_option("--chain", given->chain, "Only the chain of this name")->option_text("NAME");
    app.footer("Neighbours should be 3.4 to 4.2 apart. Exit status 1 also where a chain has a break.");
    return [given] {
        Progress progress(given->files.size());
        Complaints complaints(progress);
        bool broken = false;
        for (const std::string& file : given->files)
            complaints.attempt(file, [&] {
                for (const NamedChain& chain : chains_asked_for(file, given->chain)) {
                    const std::string found = CheckDistancesBetweenAtoms(chain.beads);
                    broken |= found != "OK";
                    std::cout << file << (chain.name.empty() ? "" : " chain " + chain.name) << ": "
                              << chain.beads.size()
                              << (chain.beads.size() == 1 ? " residue, " : " residues, ")
                              << (found == "OK" ? "no break" : found.substr(found.find(' ') + 1)) << '\n';
                }
            });
        const bool written = written_to_stdout();
        return broken || complaints.any() || !written ? exit_failure : 0;
    };
}

} // namespace loopwise
