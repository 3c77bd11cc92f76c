// The program `loopwise`: finds the subcommand, runs it, and turns what it throws into one line.
#include "app/commands/command.hpp"

#include <iostream>

using namespace loopwise::app;

namespace {

// The manual pages are made from the help (cmake/manual.sh), so both have one layout.

constexpr const char* exit_statuses = R"(Exit status:
  0    all done
  1    a file or a chain could not be worked on, or an output not be written: one line each on stderr, the
       rest is done
  2    wrong command line
  130  interrupted)";

class HelpLayout final : public CLI::Formatter {
  public:
    HelpLayout() { label("Positionals", "Arguments"); }
    std::string make_option_name(const CLI::Option* option, bool is_positional) const override {
        return CLI::detail::find_and_replace(CLI::Formatter::make_option_name(option, is_positional), ",",
                                             ", ");
    }
    /// Only what stands for the value; what options exclude or need, an error says.
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string text = option->get_option_text();
        return text.empty() ? "" : " " + text;
    }
};

void end_with_exit_statuses(CLI::App& app) {
    const std::string own = app.get_footer();
    app.footer(own + (own.empty() ? "" : "\n\n") + exit_statuses);
}

/// Help and version are an output like any other: a full disk must not pass in silence.
int print(const CLI::App& app, const CLI::ParseError& request) {
    app.exit(request);
    if (std::cout.flush()) return 0;
    std::cerr << "loopwise: standard output: cannot be written\n";
    return exit_failure;
}

/// A word in the place of a subcommand that is none.
void refuse_unknown(const std::string& word) {
    std::string known;
    for (const Command& command : commands()) {
        if (word == command.name) return;
        known += (known.empty() ? "" : ", ") + std::string(command.name);
    }
    refuse_usage(word + " is no subcommand; there are " + known);
}

/// The parser would take the next argument for the value of `--name=`.
void refuse_empty_values(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--") return;
        if (argument.starts_with("--") && argument.find('=') == argument.size() - 1)
            refuse_usage(argument.substr(0, argument.size() - 1) + ": a value is required");
    }
}

int run(int argc, char** argv) {
    CLI::App app("Works on chains of C-alpha atoms: knots, and what holds them.", "loopwise");
    app.set_version_flag("--version", "loopwise " LOOPWISE_VERSION);
    app.require_subcommand(1);
    app.formatter(std::make_shared<HelpLayout>());
    std::vector<std::pair<CLI::App*, Action>> actions;
    for (const Command& command : commands()) {
        CLI::App* const subcommand = app.add_subcommand(command.name, command.summary);
        actions.emplace_back(subcommand, command.declare(*subcommand));
        end_with_exit_statuses(*subcommand);
    }
    end_with_exit_statuses(app);
    try {
        if (argc > 1 && argv[1][0] != '-') refuse_unknown(argv[1]);
        refuse_empty_values(argc, argv);
        app.parse(argc, argv);
        for (const auto& [subcommand, action] : actions)
            if (subcommand->parsed()) return action();
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return print(app, error);
        std::cerr << "loopwise: " << error.what() << " (see --help)\n";
    }
    return exit_usage;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "loopwise: " << failure.what() << '\n';
        return exit_failure;
    }
}
