// Surveys of chains, of structures and of frames.
#include "survey/survey.hpp"

#include "draw/picture.hpp"
#include "python/background.hpp"
#include "python/module.hpp"
#include "python/survey_values.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <map>

namespace loopwise::python {
namespace {

class SurveyWatcher final : public survey::Watcher {
  public:
    SurveyWatcher(Job& job, ClosureTable& table) : job_(job), table_(table) {}
    void closure_at(std::size_t, double part) override { part < 1.0 ? job_.look() : job_.step(); }
    void closure_counted(const survey::ClosureResult& made) override {
        table_.closures.push_back(static_cast<std::int64_t>(made.closure));
        for (const survey::Loop& loop : made.reduced)
            table_.left.push_back(static_cast<std::int64_t>(loop.beads.size()));
        for (const knots::KnotType& knot : made.knots) {
            const auto next = static_cast<std::int64_t>(numbers_.size());
            table_.numbers.push_back(numbers_.try_emplace(knot, next).first->second);
        }
    }
    void path_begins() override { job_.look(); }
    /// Numbers the knots in their order.
    void sort_knots() {
        const std::map<knots::KnotType, std::int64_t> sorted(numbers_.begin(), numbers_.end());
        std::vector<std::int64_t> new_numbers(sorted.size());
        for (const auto& [knot, number] : sorted) {
            new_numbers[static_cast<std::size_t>(number)] = static_cast<std::int64_t>(table_.knots.size());
            table_.knots.push_back(knot);
        }
        for (std::int64_t& number : table_.numbers) number = new_numbers[static_cast<std::size_t>(number)];
    }

  private:
    Job& job_;
    ClosureTable& table_;
    std::unordered_map<knots::KnotType, std::int64_t> numbers_; ///< as they come
};

std::shared_ptr<Survey> surveyed(const polymer::Molecule& molecule, const survey::Plan& plan, Job& job) {
    auto made = std::make_shared<Survey>();
    SurveyWatcher watcher(job, made->table);
    made->result = survey::survey(molecule, survey::plan_for(molecule, plan), watcher);
    watcher.sort_knots();
    return made;
}

/// Named as its pictures shall be. The one chain of a molecule gives that its name.
polymer::Molecule molecule_of(const py::list& chains) {
    polymer::Molecule molecule;
    for (const py::handle chain : chains) molecule.chains.push_back(named_chain_of(chain));
    if (molecule.chains.size() == 1) {
        molecule.file = std::exchange(molecule.chains.front().name, "");
        if (molecule.file.empty()) molecule.file = "chain";
        return molecule;
    }
    molecule.file = "structure";
    for (std::size_t i = 0; i < molecule.chains.size(); ++i)
        if (molecule.chains[i].name.empty()) molecule.chains[i].name = std::to_string(i + 1);
    return molecule;
}

/// Closures of so few beads are short steps.
constexpr std::size_t few_beads = 500;

bool is_small(const polymer::Molecule& molecule) {
    std::size_t beads = 0;
    for (const polymer::NamedChain& named : molecule.chains) beads += named.beads.size();
    return beads <= few_beads;
}

SurveyPtr survey_chains(const py::list& chains, const survey::Plan& plan, const py::object& progress) {
    polymer::Molecule molecule = molecule_of(chains);
    const bool here = is_small(molecule);
    const auto work = [molecule = std::move(molecule), plan](Job& job) {
        job.plan(plan.closures);
        return surveyed(molecule, plan, job);
    };
    const SurveyPtr made = here ? in_steps<SurveyPtr>(work, progress) : in_background<SurveyPtr>(work, progress);
    made->chains = chains;
    return made;
}

/// Threads take frames first; those that find none help with the closures of a frame.
std::vector<SurveyPtr> survey_frames(const py::list& frames, const survey::Plan& plan, const py::object& progress) {
    std::vector<polymer::Molecule> molecules;
    std::vector<py::list> chains;
    for (const py::handle frame : frames) {
        chains.emplace_back().append(frame);
        molecules.push_back(molecule_of(chains.back()));
    }
    const auto surveys = in_background<std::vector<SurveyPtr>>(
        [molecules = std::move(molecules), plan](Job& job) {
            const auto threads_over_frames =
                static_cast<unsigned>(std::min<std::size_t>(std::max(plan.threads, 1U), molecules.size()));
            survey::Plan plan_of_frame = plan;
            plan_of_frame.threads = plan.threads / std::max(threads_over_frames, 1U);
            job.plan(plan.closures * molecules.size());
            std::vector<SurveyPtr> done(molecules.size());
            survey::in_parallel(molecules.size(), threads_over_frames, [&](std::size_t i, std::size_t) {
                done[i] = surveyed(molecules[i], plan_of_frame, job);
            });
            return done;
        },
        progress);
    for (std::size_t i = 0; i < surveys.size(); ++i) surveys[i]->chains = chains[i];
    return surveys;
}

} // namespace

void bind_survey(py::module_& module) {
    bind_survey_values(module);
    module.def("survey", survey_chains);
    module.def("survey_frames", survey_frames);
}

} // namespace loopwise::python
