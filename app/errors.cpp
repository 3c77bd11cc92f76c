#include "app/errors.hpp"

#include "app/commands/command.hpp"
#include "words/text.hpp"

#include <algorithm>
#include <iostream>

namespace loopwise::app {

int ErrorReporter::exit_status() {
    progress_.clear();
    if (!std::cout.flush()) tell("standard output", "cannot be written");
    return any_ ? exit_failure : 0;
}

void ErrorReporter::tell(const std::string& what, std::string reason) {
    any_ = true;
    progress_.clear();
    // Some parsers start with the name of the file. Names and reasons may have several lines.
    std::string message = reason.starts_with(what) ? std::move(reason) : what + ": " + reason;
    std::replace(message.begin(), message.end(), '\n', ' ');
    std::cerr << "loopwise: " << words::printable(std::move(message)) << '\n';
}

} // namespace loopwise::app
