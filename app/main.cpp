// The program `loopwise`: finds the subcommand, runs it, and turns what it throws into one line.
#include "app/commands/command.hpp"
#include "app/interruption.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <iostream>

using namespace loopwise::app;

namespace {

constexpr const char* about = "Finds knots in protein backbones and other chains of beads.";

std::string help() {
    std::vector<std::pair<std::string, std::string>> subcommands;
    for (const Command& command : commands()) subcommands.emplace_back(command.name, command.summary);
    return std::string(about) + "\nUsage: loopwise [OPTIONS] SUBCOMMAND\n" +
           help_section("Options",
                        {{"-h, --help", "Print this help and exit"}, {"-V, --version", "Print the version and exit"}}) +
           help_section("Subcommands", subcommands) + '\n' + exit_statuses;
}

/// Help and version are an output like any other: a full disk must not pass in silence.
int print(const std::string& text) {
    if (std::cout << text << std::flush) return 0;
    std::cerr << "loopwise: standard output: cannot be written\n";
    return exit_failure;
}

const Command& command_named(const std::string& name) {
    std::string known;
    for (const Command& command : commands()) {
        if (name == command.name) return command;
        known += (known.empty() ? "" : ", ") + std::string(command.name);
    }
    refuse_usage((name.starts_with('-') ? "unknown option " : "unknown subcommand ") + name + "; choose from " + known);
}

int run(std::vector<std::string> arguments) {
    if (arguments.empty()) refuse_usage("a subcommand is required");
    std::string name = arguments.front();
    arguments.erase(arguments.begin());
    if (name == "--version" || name == "-V") throw VersionAsked{};
    if (name == "help" && !arguments.empty()) {
        name = arguments.front();
        arguments = {"--help"};
    }
    if (name == "--help" || name == "-h" || name == "help") return print(help());
    const Command& command = command_named(name);
    CommandLine line(command.name, command.summary);
    const Action action = command.declare(line);
    try {
        line.parse(std::move(arguments));
    } catch (const HelpAsked&) {
        return print(line.help());
    }
    exit_when_interrupted();
    return action();
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + std::min(argc, 1), argv + argc});
    } catch (const VersionAsked&) {
        return print("loopwise " LOOPWISE_VERSION "\n");
    } catch (const UsageError& error) {
        std::cerr << "loopwise: " << loopwise::words::printable(error.what()) << " (see --help)\n";
        return exit_usage;
    } catch (const Interrupted&) {
        return exit_interrupted;
    } catch (const std::exception& failure) {
        std::cerr << "loopwise: " << loopwise::words::printable(failure.what()) << '\n';
        return exit_failure;
    }
}
