// Command lines: what a subcommand takes, parsed by CLI11, explained and refused in our own words.
#pragma once

#include <charconv>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace loopwise::app {

/// A command line that cannot be; the reason is a sentence about it.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};
[[noreturn]] inline void refuse_usage(const std::string& reason) { throw UsageError(reason); }

/// Both ends are allowed.
template <class Number> struct Range { Number low, high; };

/// A whole number, or a finite one with a point, in decimal notation; nothing where the text is anything else or the
/// number does not fit its type.
template <class Number> std::optional<Number> decimal(const std::string& text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || rest != end) return std::nullopt;
    if constexpr (std::is_floating_point_v<Number>)
        if (!std::isfinite(number)) return std::nullopt;
    return number;
}

/// An option with a value, such as {"-o,--output", "FILE", "Write to this file"}.
struct ValueOption {
    const char* names;
    std::string value, help;
};

/// The arguments of one subcommand.
class CommandLine {
  public:
    using Take = std::function<void(const std::string& value)>;

    CommandLine(std::string name, std::string summary);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// One or more files, or exactly one.
    void files(std::vector<std::string>& into, const std::string& help);
    void file(std::string& into, const std::string& help);

    void flag(const char* names, bool& into, const std::string& help);
    void flag(const char* names, std::function<void()> take, const std::string& help);
    /// Calls take() with the value of the option, once; whatever it finds wrong it refuses.
    void value(const ValueOption& option, Take take);
    /// The same for every value of an option that may come several times.
    void values(const ValueOption& option, Take take);
    /// A text that is not empty.
    void text(const ValueOption& option, std::string& into);
    /// The number lies in the range; `into` may be optional.
    template <class Number, class Into> void number(const ValueOption& option, Range<Number> range, Into& into) {
        value(option, [name = long_name(option), range, &into](const std::string& text) {
            const std::optional<Number> number = decimal<Number>(text);
            if (!number || !(*number >= range.low && *number <= range.high))
                refuse_number(name, text, std::is_integral_v<Number>, shown(range.low), shown(range.high));
            into = *number;
        });
    }

    /// At most one of these options may be given.
    void exclusive(std::vector<std::string> names);
    /// The first option makes sense only with the second.
    void needs(std::string name, std::string other);
    /// Text below the options.
    void footer(std::string text);

    const std::string& name() const { return name_; }
    const std::string& summary() const { return summary_; }
    std::string help() const;
    /// Parses the arguments after the subcommand's name. Throws UsageError, HelpAsked or VersionAsked.
    void parse(std::vector<std::string> arguments);

  private:
    void option(const ValueOption& option, bool repeated, Take take);
    bool is_given(const std::string& name) const { return given_.contains(name); }
    static std::string long_name(const ValueOption& option);
    [[noreturn]] static void refuse_number(const std::string& name, const std::string& text, bool whole,
                                           const std::string& low, const std::string& high);
    template <class Number> static std::string shown(Number number) {
        char text[32];
        return {text, std::to_chars(text, text + sizeof text, number).ptr};
    }

    std::string name_, summary_, positional_, positional_help_, footer_;
    std::unique_ptr<CLI::App> parser_;
    std::vector<std::pair<std::string, std::string>> entries_; ///< of the help: an option, what it does
    std::set<std::string> flags_, given_;                      ///< long names
    std::vector<std::vector<std::string>> exclusive_;
    std::vector<std::pair<std::string, std::string>> needs_;
    std::vector<std::string>* files_ = nullptr;
    std::string* file_ = nullptr;
};

struct HelpAsked {};
struct VersionAsked {};

/// A heading and entries in two columns.
std::string help_section(const std::string& heading, const std::vector<std::pair<std::string, std::string>>& entries);

/// What every help ends with.
extern const char* const exit_statuses;

} // namespace loopwise::app
