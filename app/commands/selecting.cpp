#include "app/commands/selecting.hpp"

#include "app/commands/command.hpp"

namespace loopwise::app {

void declare_selecting(CLI::App& app, Selecting& into) {
    app.add_option("--chain", into.chains, "Only the chains of these names")
        ->allow_extra_args(false)
        ->option_text("NAME,...");
    app.add_option("--model", into.model, "The model of this number, or all (default: the first)")
        ->option_text("N|all");
    app.add_option("--atom", into.atom, "The atom of a residue to take (default CA)")->option_text("NAME");
    const auto residue = [](std::optional<polymer::ResidueId>& id) {
        return [&id](const std::string& text) { id = polymer::ResidueId::parse(text); };
    };
    app.add_option_function<std::string>("--first", residue(into.first),
                                         "Cut every chain: first residue, such as 82 or 82A")
        ->option_text("ID");
    app.add_option_function<std::string>("--last", residue(into.last), "Cut every chain: last residue")
        ->option_text("ID");
}

read::Selection selection_of(const Selecting& given) {
    read::Selection selection{{}, given.model, given.atom};
    for (std::string_view names : given.chains) {
        while (true) {
            const std::size_t comma = names.find(',');
            selection.chains.emplace_back(names.substr(0, comma));
            if (selection.chains.back().empty()) refuse_usage("--chain: expected a chain name");
            if (comma == std::string_view::npos) break;
            names.remove_prefix(comma + 1);
        }
    }
    const std::string& model = selection.model;
    const bool is_number = !model.empty() && model.find_first_not_of("0123456789") == std::string::npos;
    if (!model.empty() && model != read::every_model && !is_number)
        refuse_usage("--model: expected a number or all, found " + model);
    if (selection.atom.empty()) refuse_usage("--atom: expected an atom name");
    return selection;
}

} // namespace loopwise::app
