#include "app/command_line.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace loopwise::app {
namespace {

constexpr std::size_t help_column = 30;

} // namespace

const char* const exit_statuses = R"(Exit status:
  0    success
  1    a file or chain could not be processed, or an output could not be written: one line for each on
       standard error; the rest was processed
  2    wrong command line
  130  interrupted
)";

std::string help_section(const std::string& heading, const std::vector<std::pair<std::string, std::string>>& entries) {
    std::string text = "\n" + heading + ":\n";
    for (const auto& [name, help] : entries) {
        std::string line = "  " + name;
        if (line.size() + 1 > help_column) line += '\n';
        const std::size_t width = line.back() == '\n' ? line.size() + help_column : help_column;
        line.resize(std::max(line.size(), width), ' ');
        for (const char c : help) line += c == '\n' ? '\n' + std::string(help_column, ' ') : std::string(1, c);
        text += line + '\n';
    }
    return text;
}

CommandLine::CommandLine(std::string name, std::string summary)
    : name_(std::move(name)), summary_(std::move(summary)), parser_(std::make_unique<CLI::App>()) {
    parser_->set_help_flag();
    parser_->allow_extras();
    const auto request = [this](const char* names, const char* help, auto asked) {
        parser_->add_flag_callback(names, [asked] { throw asked; });
        std::string shown = names;
        entries_.emplace_back(shown.replace(shown.find(','), 1, ", "), help);
    };
    request("-h,--help", "Print this help and exit", HelpAsked{});
    request("-V,--version", "Print the version and exit", VersionAsked{});
}

CommandLine::~CommandLine() = default;

void CommandLine::files(std::vector<std::string>& into, const std::string& help) {
    positional_ = "FILE ...";
    positional_help_ = help;
    files_ = &into;
}

void CommandLine::file(std::string& into, const std::string& help) {
    positional_ = "FILE";
    positional_help_ = help;
    file_ = &into;
}

void CommandLine::flag(const char* names, bool& into, const std::string& help) {
    flag(
        names, [&into] { into = true; }, help);
}

void CommandLine::flag(const char* names, std::function<void()> take, const std::string& help) {
    const std::string name = *flags_.insert(long_name({names, "", ""})).first;
    parser_->add_flag_callback(names, [this, name, take = std::move(take)] {
        given_.insert(name);
        take();
    });
    entries_.emplace_back(names, help);
}

void CommandLine::option(const ValueOption& option, bool repeated, Take take) {
    const std::string name = long_name(option);
    const auto take_all = [this, name, repeated, take = std::move(take)](const std::vector<std::string>& values) {
        if (values.size() > 1 && !repeated) refuse_usage(name + " is given twice");
        given_.insert(name);
        for (const std::string& value : values) take(value);
    };
    parser_->add_option_function<std::vector<std::string>>(option.names, take_all)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    std::string shown = option.names;
    if (const std::size_t comma = shown.find(','); comma != std::string::npos) shown.replace(comma, 1, ", ");
    entries_.emplace_back(shown + ' ' + option.value, option.help);
}

void CommandLine::value(const ValueOption& given, Take take) { option(given, false, std::move(take)); }
void CommandLine::values(const ValueOption& given, Take take) { option(given, true, std::move(take)); }

void CommandLine::text(const ValueOption& given, std::string& into) {
    value(given, [name = long_name(given), &into](const std::string& text) {
        if (text.empty()) refuse_usage(name + ": a value is required");
        into = text;
    });
}

void CommandLine::exclusive(std::vector<std::string> names) { exclusive_.push_back(std::move(names)); }

void CommandLine::needs(std::string name, std::string other) { needs_.emplace_back(std::move(name), std::move(other)); }

void CommandLine::footer(std::string text) { footer_ = std::move(text); }

std::string CommandLine::help() const {
    std::string text = summary_ + "\nUsage: loopwise " + name_ + " [OPTIONS] " + (files_ ? "FILE..." : "FILE") + '\n';
    text += help_section("Arguments", {{positional_, positional_help_}}) + help_section("Options", entries_);
    return text + (footer_.empty() ? "" : '\n' + footer_ + '\n') + '\n' + exit_statuses;
}

void CommandLine::parse(std::vector<std::string> arguments) {
    // CLI11 would take the next argument for the value of `--name=`.
    const auto literal = std::find(arguments.begin(), arguments.end(), "--");
    for (auto argument = arguments.begin(); argument != literal; ++argument) {
        const std::size_t equals = argument->find('=');
        if (!argument->starts_with("--") || equals == std::string::npos) continue;
        const std::string name = argument->substr(0, equals);
        if (flags_.contains(name)) refuse_usage(name + " takes no value");
        if (equals + 1 == argument->size()) refuse_usage(name + ": a value is required");
    }
    std::reverse(arguments.begin(), arguments.end()); // as CLI11 wants them
    try {
        parser_->parse(std::move(arguments));
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string words = error.what();
        refuse_usage(words.substr(0, words.find(':')) + ": a value is required");
    } catch (const CLI::Error& error) {
        refuse_usage(error.what());
    }
    std::vector<std::string> files;
    bool only_files = false;
    for (std::string& rest : parser_->remaining()) {
        if (!only_files && rest == "--") {
            only_files = true;
            continue;
        }
        if (!only_files && rest.size() > 1 && rest.front() == '-') refuse_usage("unknown option " + rest);
        files.push_back(std::move(rest));
    }
    if (files.empty()) refuse_usage("FILE is missing");
    if (file_ && files.size() > 1) refuse_usage("one FILE is expected, not also " + files[1]);
    for (const auto& names : exclusive_) {
        std::string first;
        for (const std::string& name : names) {
            if (!is_given(name)) continue;
            if (!first.empty()) refuse_usage(name + " excludes " + first);
            first = name;
        }
    }
    for (const auto& [name, other] : needs_)
        if (is_given(name) && !is_given(other)) refuse_usage(name + " requires " + other);
    if (files_)
        *files_ = std::move(files);
    else
        *file_ = std::move(files.front());
}

std::string CommandLine::long_name(const ValueOption& option) {
    const std::string names = option.names;
    return names.substr(names.find("--"));
}

void CommandLine::refuse_number(const std::string& name, const std::string& text, bool whole, const std::string& low,
                                const std::string& high) {
    refuse_usage(name + ": expected a " + (whole ? "whole " : "") + "number from " + low + " to " + high + ", not '" +
                 text + "'");
}

} // namespace loopwise::app
