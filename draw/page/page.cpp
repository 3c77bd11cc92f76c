#include "draw/page/page.hpp"

#include "draw/matrix.hpp"
#include "draw/page/assets.hpp"
#include "draw/palette.hpp"
#include "words/numbers.hpp"
#include "words/text.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace loopwise::draw {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t colours_along = 64;
constexpr std::size_t most_dots = 400, most_lines = 100; ///< along a side of the matrix
constexpr std::size_t shades = 5;
constexpr double thousand = 1000.0;

using words::percent;

double rounded(double value) { return std::round(value * thousand) / thousand; }

Json positions(const Chain& beads) {
    Json list = Json::array();
    for (const ChainAtom& bead : beads) list.push_back({rounded(bead.x), rounded(bead.y), rounded(bead.z)});
    return list;
}

Json page_of(const std::string& file, const std::string& chain,
             const std::vector<polymer::ResidueId>& residues, const Chain& beads) {
    Json colours = Json::array();
    for (std::size_t i = 0; i < colours_along; ++i)
        colours.push_back(colour_along(static_cast<double>(i) / (colours_along - 1)));
    return {{"title", words::file_title(file) + (chain.empty() ? "" : ", chain " + chain)},
            {"labels", polymer::texts_of(residues)},
            {"beads", positions(beads)},
            {"along", std::move(colours)}};
}

/// A loop of a stretch: the closing beads are numbered after those of the chain.
Json json_of(const survey::Loop& closed, const survey::Loop& reduced, std::size_t first, std::size_t beads) {
    const std::size_t own = closed.own;
    const Chain far(closed.beads.begin() + static_cast<std::ptrdiff_t>(own), closed.beads.end());
    Json kept = Json::array();
    for (std::size_t i = 0; i < reduced.beads.size(); ++i) {
        const std::size_t position = index_of(reduced.position(i));
        kept.push_back(position < own ? first + position : beads + position - own);
    }
    return {{"first", first}, {"last", first + own - 1}, {"far", positions(far)}, {"kept", std::move(kept)}};
}

Json json_of(const fingerprint::ChainFingerprint& of, const Chain& beads, fingerprint::Subchain subchain) {
    const fingerprint::FingerprintMatrix::Cell& cell = of.matrix.at(subchain);
    const fingerprint::TypicalClosure typical =
        fingerprint::typical_closure(beads, subchain, of.knots[cell.knot], of.closures);
    Json json = json_of(typical.closed, typical.reduced, subchain.first, beads.size());
    json["words"] = text(of.knots[cell.knot]) + (of.matrix.is_tested(subchain) ? " in " : " in about ") +
                    percent(of.share_of(cell)) + " of its closures";
    json["closure"] = "The closure in direction " + std::to_string(typical.row);
    json["knot"] = text(typical.knot);
    return json;
}

/// Rows of runs of equal dots: knot, shade, dots.
Json rows_of(const fingerprint::ChainFingerprint& of, std::size_t side) {
    const std::size_t beads = of.matrix.beads();
    Json rows = Json::array();
    for (std::size_t last = 0; last < beads; last += side) {
        std::vector<std::array<std::size_t, 3>> runs;
        for (std::size_t first = 0; first < std::min(last + side, beads); first += side) {
            const fingerprint::FingerprintMatrix::Cell cell = strongest_cell(of, first, last, side);
            const double part = of.share_of(cell) * static_cast<double>(shades);
            const std::size_t shade =
                cell.knot == 0
                    ? 0
                    : std::clamp<std::size_t>(static_cast<std::size_t>(std::ceil(part)), 1, shades) - 1;
            if (!runs.empty() && runs.back()[0] == cell.knot && runs.back()[1] == shade)
                ++runs.back()[2];
            else
                runs.push_back({cell.knot, shade, 1});
        }
        rows.push_back(runs);
    }
    return rows;
}

Json matrix_of(const fingerprint::ChainFingerprint& of) {
    const std::size_t side = (of.matrix.beads() + most_dots - 1) / most_dots;
    Json colours = Json::array();
    for (std::size_t knot = 0; knot < of.knots.size(); ++knot) {
        Json row = Json::array();
        for (std::size_t shade = 0; shade < shades; ++shade)
            row.push_back(
                knot_colour(of, knot, (static_cast<double>(shade) + 1.0) / static_cast<double>(shades)));
        colours.push_back(std::move(row));
    }
    return {{"side", side}, {"colours", std::move(colours)}, {"rows", rows_of(of, side)}};
}

/// The whole chain first.
Json subchains_of(const fingerprint::ChainFingerprint& of, const Chain& beads) {
    const std::size_t step = (beads.size() + most_lines - 1) / most_lines;
    Json list = Json::array();
    for (std::size_t first = 0; first < beads.size(); first += step)
        for (std::size_t off = 0; first + off < beads.size(); off += step)
            list.push_back(json_of(of, beads, {first, beads.size() - 1 - off}));
    return list;
}

void replace(std::string& text, const std::string& mark, std::string_view by) {
    text.replace(text.find(mark), mark.size(), by);
}

std::string page(const Json& data) {
    std::string text = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    // A tag in a file's name would end the script.
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;) text.replace(at, 1, "\\u003c");
    std::string html(assets::page_html());
    replace(html, "%CSS%", assets::page_css());
    replace(html, "%SCRIPT%", assets::page_js());
    replace(html, "%THREE%", assets::three_js());
    replace(html, "%DATA%", text);
    return html;
}

} // namespace

std::string fingerprint_page(const fingerprint::ChainFingerprint& of,
                             const std::vector<fingerprint::KnotPlace>& places, const Chain& beads) {
    Json data = page_of(of.file, of.chain, of.residues, beads);
    data["about"] = std::to_string(beads.size()) + " residues; the whole chain is " + text(of.knot) + " in " +
                    percent(of.share) + " of " + std::to_string(of.closures) + " closures; " + of.way();
    data["columns"] = {"knot", "share on the whole chain", "greatest share", "core", "tails", ""};
    data["places"] = Json::array();
    for (const fingerprint::KnotPlace& place : places) {
        Json row = {{"colour", knot_colour(of, number_of(place, of), 1.0)}, {"stretch", nullptr}};
        std::string core = "none", tails;
        if (place.core) {
            const auto [before, after] = tails_of(*place.core, of.matrix.beads());
            core = of.residues[place.core->first].text() + " to " + of.residues[place.core->last].text();
            tails = std::to_string(before) + " and " + std::to_string(after);
            row["stretch"] = json_of(of, beads, *place.core);
        }
        row["cells"] = {text(place.knot),
                        percent(place.share),
                        percent(place.greatest_share),
                        core,
                        tails,
                        place.slipknot ? "slipknot" : ""};
        data["places"].push_back(std::move(row));
    }
    data["matrix"] = matrix_of(of);
    data["stretches"] = subchains_of(of, beads);
    return page(data);
}

std::string survey_page(const survey::Result& result) {
    const survey::ComponentTally& tally = result.components.front();
    const survey::ClosureResult& shown = *result.typical();
    const survey::Loop &closed = shown.closed.front(), &reduced = shown.reduced.front();
    const Chain beads(closed.beads.begin(), closed.beads.begin() + static_cast<std::ptrdiff_t>(closed.own));
    Json data = page_of(result.file, tally.name, tally.residues, beads);
    data["about"] =
        std::to_string(beads.size()) + " residues, " + std::to_string(result.counted()) + " closures";
    data["columns"] = {"knot", "closures", "share"};
    data["places"] = Json::array();
    for (const survey::KnotCount& count : tally.knots)
        data["places"].push_back(
            {{"colour", "#8a909c"},
             {"stretch", nullptr},
             {"cells",
              {text(count.knot), std::to_string(count.closures),
               percent(static_cast<double>(count.closures) / static_cast<double>(result.counted()))}}});
    data["matrix"] = nullptr;
    Json subchain = json_of(closed, reduced, 0, beads.size());
    subchain["words"] = "the whole chain";
    subchain["closure"] = "Closure " + std::to_string(shown.closure);
    subchain["knot"] = text(shown.knots.empty() ? knots::KnotType{} : shown.knots.front());
    data["stretches"] = Json::array({std::move(subchain)});
    return page(data);
}

} // namespace loopwise::draw
