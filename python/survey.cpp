// Surveys of chains, of structures and of frames.
#include "survey/survey.hpp"

#include "background.hpp"
#include "module.hpp"
#include "survey/parallel.hpp"

#include <algorithm>
#include <map>

namespace loopwise {
namespace {

/// What a closure left of each component, and of which knot.
struct Row {
    std::size_t closure;
    std::vector<std::size_t> left;
    std::vector<std::string> knots;
};

struct Survey {
    Result result;
    std::vector<Row> rows;
};

class SurveyWatcher final : public Watcher {
  public:
    SurveyWatcher(Job& job, std::vector<Row>& rows) : job_(job), rows_(rows) {}
    void closure_at(std::size_t, double part) override { part < 1.0 ? job_.look() : job_.step(); }
    void closure_counted(const Specimen& specimen) override {
        Row row{specimen.closure, {}, specimen.knots};
        for (const Loop& loop : specimen.reduced) row.left.push_back(loop.beads.size());
        rows_.push_back(std::move(row));
    }

  private:
    Job& job_;
    std::vector<Row>& rows_;
};

Survey surveyed(const Molecule& molecule, const Plan& plan, Job& job) {
    Survey survey;
    SurveyWatcher watcher(job, survey.rows);
    survey.result = loopwise::survey(molecule, plan_for(molecule, plan), watcher);
    return survey;
}

Plan plan_of(const py::dict& given) {
    Plan plan;
    plan.method = method_of(given["method"].cast<std::string>());
    plan.closures = given["closures"].cast<std::size_t>();
    plan.scale = given["scale"].cast<double>();
    plan.seed = given["seed"].cast<std::uint64_t>();
    plan.threads = given["threads"].cast<unsigned>();
    plan.name_knots = given["names"].cast<bool>();
    plan.together = given["together"].cast<bool>();
    return plan;
}

Molecule molecule_of(const py::sequence& components) {
    Molecule molecule;
    for (Chain& chain : structure_of(components)) {
        std::vector<std::string> labels = labels_of(chain);
        molecule.chains.push_back({"", std::move(chain), std::move(labels)});
    }
    return molecule;
}

py::dict dict_of(const std::vector<KnotCount>& counts) {
    py::dict knots;
    for (const KnotCount& count : counts) knots[py::str(count.knot)] = count.closures;
    return knots;
}

/// Two chains -> linking number -> closures.
py::dict linking_numbers_of(const std::vector<PairTally>& pairs) {
    py::dict numbers;
    for (const PairTally& pair : pairs) numbers[py::make_tuple(pair.one, pair.other)] = pair.numbers;
    return numbers;
}

py::dict dict_of(const ComponentTally& tally) {
    py::dict result;
    result["beads"] = tally.beads;
    result["left"] = tally.left;
    result["bare"] = tally.bare;
    result["knots"] = dict_of(tally.knots);
    if (const auto& smallest = tally.smallest)
        result["smallest"] = py::make_tuple(smallest->closure, positions_of(smallest->loop.beads),
                                            coordinates_of(smallest->loop.beads));
    else
        result["smallest"] = py::none();
    return result;
}

/// The closure, and for every component the closed chain and the positions in it that are left.
py::object tuple_of(const Specimen* specimen) {
    if (!specimen) return py::none();
    py::list components;
    for (std::size_t i = 0; i < specimen->closed.size(); ++i)
        components.append(py::make_tuple(coordinates_of(specimen->closed[i].beads),
                                         positions_of(specimen->reduced[i].beads)));
    return py::make_tuple(specimen->closure, components, specimen->knots);
}

using Table = py::array_t<std::int64_t>;

/// Arrays of the closures, of what they left of each component and of its knot's number among the names.
py::tuple table_of(const std::vector<Row>& rows, const Result& result) {
    std::map<std::string, std::int64_t> numbers;
    for (const ComponentTally& tally : result.components)
        for (const KnotCount& count : tally.knots) numbers[count.knot] = 0;
    std::vector<std::string> names;
    for (auto& [name, number] : numbers) {
        number = static_cast<std::int64_t>(names.size());
        names.push_back(name);
    }
    const auto height = static_cast<py::ssize_t>(rows.size());
    const auto width = static_cast<py::ssize_t>(result.components.size());
    Table closures(height), left({height, width}), knots({height, names.empty() ? 0 : width});
    std::int64_t *to_closure = closures.mutable_data(), *to_left = left.mutable_data(),
                 *to_knot = knots.mutable_data();
    for (const Row& row : rows) {
        *to_closure++ = static_cast<std::int64_t>(row.closure);
        for (const std::size_t beads : row.left) *to_left++ = static_cast<std::int64_t>(beads);
        for (const std::string& knot : row.knots) *to_knot++ = numbers.at(knot);
    }
    return py::make_tuple(closures, left, knots, names);
}

py::dict dict_of(const Survey& survey) {
    const Result& result = survey.result;
    py::list components;
    for (const ComponentTally& tally : result.components) components.append(dict_of(tally));
    py::dict dict;
    dict["components"] = components;
    dict["left"] = result.whole.left;
    dict["bare"] = result.whole.bare;
    dict["links"] = dict_of(result.whole.knots);
    dict["linking_numbers"] = linking_numbers_of(result.pairs);
    dict["method"] = name_of(result.plan.method);
    dict["closures"] = result.plan.closures;
    dict["failed"] = result.failed;
    dict["counted"] = result.counted();
    dict["typical"] = tuple_of(result.typical());
    dict["table"] = table_of(survey.rows, result);
    return dict;
}

py::dict survey_molecule(const py::sequence& components, const py::dict& given, const py::object& progress) {
    const Plan plan = plan_of(given);
    return dict_of(in_background<Survey>(
        [molecule = molecule_of(components), plan](Job& job) {
            job.plan(plan.closures);
            return surveyed(molecule, plan, job);
        },
        progress));
}

/// Threads take frames first; those that find none help with the closures of a frame.
py::list survey_frames(const py::sequence& frames, const py::dict& given, const py::object& progress) {
    Plan plan = plan_of(given);
    std::vector<Molecule> molecules;
    for (const py::handle frame : frames) molecules.push_back(molecule_of(frame.cast<py::sequence>()));
    const auto surveys = in_background<std::vector<Survey>>(
        [molecules = std::move(molecules), plan](Job& job) {
            const auto threads_over_frames =
                static_cast<unsigned>(std::min<std::size_t>(std::max(plan.threads, 1U), molecules.size()));
            Plan plan_of_frame = plan;
            plan_of_frame.threads = plan.threads / std::max(threads_over_frames, 1U);
            job.plan(plan.closures * molecules.size());
            std::vector<Survey> done(molecules.size());
            in_parallel(molecules.size(), threads_over_frames, [&](std::size_t i, std::size_t) {
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

Method method_of(const std::string& name) {
    for (const Method method : {Method::directions, Method::point, Method::direction, Method::two_points,
                                Method::outside, Method::ring})
        if (name == name_of(method)) return method;
    throw py::value_error("there is no method '" + name + "'");
}

void bind_survey(py::module_& module) {
    module.def("survey", survey_molecule);
    module.def("survey_frames", survey_frames);
}

} // namespace loopwise
