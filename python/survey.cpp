// Surveys of chains, of structures and of frames.
#include "survey/survey.hpp"

#include "python/background.hpp"
#include "python/module.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace loopwise::python {
namespace {

/// What each closure left of every component, and the numbers of the knots, by row. Knots are numbered as they come.
struct Rows {
    std::vector<std::int64_t> closures, left, knots;
    std::unordered_map<knots::KnotType, std::int64_t> numbers;
};

struct Survey {
    survey::Result result;
    Rows rows;
};

class SurveyWatcher final : public survey::Watcher {
  public:
    SurveyWatcher(Job& job, Rows& rows) : job_(job), rows_(rows) {}
    void closure_at(std::size_t, double part) override { part < 1.0 ? job_.look() : job_.step(); }
    void closure_counted(const survey::ClosureResult& made) override {
        rows_.closures.push_back(static_cast<std::int64_t>(made.closure));
        for (const survey::Loop& loop : made.reduced)
            rows_.left.push_back(static_cast<std::int64_t>(loop.beads.size()));
        for (const knots::KnotType& knot : made.knots) {
            const auto next = static_cast<std::int64_t>(rows_.numbers.size());
            rows_.knots.push_back(rows_.numbers.try_emplace(knot, next).first->second);
        }
    }

  private:
    Job& job_;
    Rows& rows_;
};

Survey surveyed(const polymer::Molecule& molecule, const survey::Plan& plan, Job& job) {
    Survey made;
    SurveyWatcher watcher(job, made.rows);
    made.result = survey::survey(molecule, survey::plan_for(molecule, plan), watcher);
    return made;
}

survey::Plan plan_of(const py::dict& given) {
    survey::Plan plan;
    plan.method = survey::Method::named(given["method"].cast<std::string>(), true);
    plan.closures = given["closures"].cast<std::size_t>();
    plan.scale = given["scale"].cast<double>();
    plan.seed = given["seed"].cast<std::uint64_t>();
    plan.threads = given["threads"].cast<unsigned>();
    plan.name_knots = given["names"].cast<bool>();
    plan.together = given["together"].cast<bool>();
    return plan;
}

polymer::Molecule molecule_of(const py::sequence& components) {
    polymer::Molecule molecule;
    for (Chain& chain : structure_of(components)) {
        std::vector<polymer::ResidueId> residues = polymer::residues_of(chain);
        molecule.chains.push_back({"", std::move(chain), std::move(residues)});
    }
    return molecule;
}

py::dict dict_of(const std::vector<survey::KnotCount>& counts) {
    py::dict knots;
    for (const survey::KnotCount& count : counts) knots[py::cast(count.knot)] = count.closures;
    return knots;
}

/// Two chains -> linking number -> closures.
py::dict linking_numbers_of(const std::vector<survey::PairTally>& pairs) {
    py::dict numbers;
    for (const survey::PairTally& pair : pairs) numbers[py::make_tuple(pair.one, pair.other)] = pair.numbers;
    return numbers;
}

/// Positions in the closed chain.
py::array_t<std::int64_t> positions_of(const survey::Loop& loop) {
    py::array_t<std::int64_t> positions(static_cast<py::ssize_t>(loop.beads.size()));
    std::int64_t* to = positions.mutable_data();
    for (std::size_t i = 0; i < loop.beads.size(); ++i)
        *to++ = static_cast<std::int64_t>(index_of(loop.position(i)));
    return positions;
}

py::dict dict_of(const survey::ComponentTally& tally) {
    py::dict result;
    result["beads"] = tally.beads;
    result["left"] = tally.left;
    result["bare"] = tally.fully_reduced;
    result["knots"] = dict_of(tally.knots);
    if (const auto& smallest = tally.smallest)
        result["smallest"] = py::make_tuple(smallest->closure, positions_of(smallest->loop),
                                            coordinates_of(smallest->loop.beads));
    else
        result["smallest"] = py::none();
    return result;
}

/// The closure, and for every component the closed chain and the positions in it that are left.
py::object tuple_of(const survey::ClosureResult* made) {
    if (!made) return py::none();
    py::list components;
    for (std::size_t i = 0; i < made->closed.size(); ++i)
        components.append(
            py::make_tuple(coordinates_of(made->closed[i].beads), positions_of(made->reduced[i])));
    py::list knots;
    for (const knots::KnotType& knot : made->knots) knots.append(text(knot));
    return py::make_tuple(made->closure, components, knots);
}

using Table = py::array_t<std::int64_t>;

Table table_of(const std::vector<std::int64_t>& numbers, std::size_t height, std::size_t width) {
    Table table({static_cast<py::ssize_t>(height), static_cast<py::ssize_t>(width)});
    std::copy(numbers.begin(), numbers.end(), table.mutable_data());
    return table;
}

/// Arrays of the closures, of what they left of each component and of its knot's number among the names in order.
py::tuple tables_of(const Rows& rows, std::size_t width) {
    const std::map<knots::KnotType, std::int64_t> sorted(rows.numbers.begin(), rows.numbers.end());
    std::vector<std::int64_t> place(sorted.size());
    py::list names;
    for (const auto& [knot, number] : sorted) {
        place[static_cast<std::size_t>(number)] = static_cast<std::int64_t>(names.size());
        names.append(text(knot));
    }
    std::vector<std::int64_t> knots = rows.knots;
    for (std::int64_t& knot : knots) knot = place[static_cast<std::size_t>(knot)];
    const std::size_t height = rows.closures.size();
    const Table closures(static_cast<py::ssize_t>(height), rows.closures.data());
    return py::make_tuple(closures, table_of(rows.left, height, width),
                          table_of(knots, height, knots.empty() ? 0 : width), names);
}

py::dict dict_of(const Survey& survey) {
    const survey::Result& result = survey.result;
    py::list components;
    for (const survey::ComponentTally& tally : result.components) components.append(dict_of(tally));
    py::dict dict;
    dict["components"] = components;
    dict["left"] = result.whole.left;
    dict["bare"] = result.whole.fully_reduced;
    dict["links"] = dict_of(result.whole.knots);
    dict["linking_numbers"] = linking_numbers_of(result.pairs);
    dict["method"] = result.plan.method->name;
    dict["closures"] = result.plan.closures;
    dict["failed"] = result.failed;
    dict["counted"] = result.counted();
    dict["typical"] = tuple_of(result.typical());
    dict["table"] = tables_of(survey.rows, result.components.size());
    return dict;
}

/// Closures of so few beads are short steps.
constexpr std::size_t few_beads = 500;

bool is_small(const polymer::Molecule& molecule) {
    std::size_t beads = 0;
    for (const polymer::NamedChain& named : molecule.chains) beads += named.beads.size();
    return beads <= few_beads;
}

py::dict survey_molecule(const py::sequence& components, const py::dict& given, const py::object& progress) {
    const survey::Plan plan = plan_of(given);
    polymer::Molecule molecule = molecule_of(components);
    const bool here = is_small(molecule);
    const auto work = [molecule = std::move(molecule), plan](Job& job) {
        job.plan(plan.closures);
        return surveyed(molecule, plan, job);
    };
    return dict_of(here ? in_steps<Survey>(work, progress) : in_background<Survey>(work, progress));
}

/// Threads take frames first; those that find none help with the closures of a frame.
py::list survey_frames(const py::sequence& frames, const py::dict& given, const py::object& progress) {
    survey::Plan plan = plan_of(given);
    std::vector<polymer::Molecule> molecules;
    for (const py::handle frame : frames) molecules.push_back(molecule_of(frame.cast<py::sequence>()));
    const auto surveys = in_background<std::vector<Survey>>(
        [molecules = std::move(molecules), plan](Job& job) {
            const auto threads_over_frames =
                static_cast<unsigned>(std::min<std::size_t>(std::max(plan.threads, 1U), molecules.size()));
            survey::Plan plan_of_frame = plan;
            plan_of_frame.threads = plan.threads / std::max(threads_over_frames, 1U);
            job.plan(plan.closures * molecules.size());
            std::vector<Survey> done(molecules.size());
            survey::in_parallel(molecules.size(), threads_over_frames, [&](std::size_t i, std::size_t) {
                done[i] = surveyed(molecules[i], plan_of_frame, job);
            });
            return done;
        },
        progress);
    py::list results;
    for (const Survey& survey : surveys) results.append(dict_of(survey));
    return results;
}

} // namespace

void bind_survey(py::module_& module) {
    module.def("survey", survey_molecule);
    module.def("survey_frames", survey_frames);
}

} // namespace loopwise::python
