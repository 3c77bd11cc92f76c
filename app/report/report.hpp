// Reports of all subcommands, in any format.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace loopwise::app {

class CommandLine;

using Json = nlohmann::ordered_json;
using Row = std::vector<std::string>;

inline Row extended(Row row, const Row& more) {
    row.insert(row.end(), more.begin(), more.end());
    return row;
}

/// What is said once, before all entries.
struct Head {
    std::string subcommand;
    std::string text;                             ///< lines for people, or none
    std::function<void(Json& head)> add_settings; ///< to the head of JSON; or none
    Row columns;
};

/// What a subcommand found out about a chain, a structure or a file. A format asks for the form that it prints.
class Entry {
  public:
    virtual ~Entry() = default;
    virtual std::string text() const = 0;
    virtual Json json() const = 0;
    /// By the columns of the head.
    virtual std::vector<Row> rows() const = 0;
};

/// Entries are written as they come, so that a long run shows what it has.
class Report {
  public:
    virtual ~Report() = default;
    virtual void add(const Entry& entry) = 0;
    virtual void finish() {}
};

struct Format {
    const char* option; ///< that asks for it; none for the default
    const char* help;
    std::unique_ptr<Report> (*make)(std::ostream& out, const Head& head);
};

/// Gives the subcommand an option for each format.
void declare_formats(CommandLine& line, const Format*& into);
const Format& default_format();

} // namespace loopwise::app
