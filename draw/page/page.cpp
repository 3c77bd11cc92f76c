#include "draw/page/page.hpp"

#include "draw/page/assets.hpp"
#include "draw/palette.hpp"
#include "fingerprint/cores.hpp"
#include "words/numbers.hpp"
#include "words/text.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace loopwise::draw {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t colours_along = 64;
constexpr double thousand = 1000.0;

using words::percent;

double rounded(double value) { return std::round(value * thousand) / thousand; }

Json positions(const Chain& beads) {
    Json list = Json::array();
    for (const ChainAtom& bead : beads) list.push_back({rounded(bead.x), rounded(bead.y), rounded(bead.z)});
    return list;
}

Json chain_data(const std::vector<polymer::ResidueId>& residues, const Chain& beads) {
    Json colours = Json::array();
    for (std::size_t i = 0; i < colours_along; ++i)
        colours.push_back(colour_along(static_cast<double>(i) / (colours_along - 1)));
    return {{"labels", polymer::texts_of(residues)}, {"beads", positions(beads)}, {"along", std::move(colours)}};
}

Json json_of(const fingerprint::TypicalClosure& typical, const fingerprint::ChainFingerprint& of) {
    const fingerprint::Cell& cell = of.matrix.at(typical.subchain);
    return {{"first", typical.subchain.first},
            {"last", typical.subchain.last},
            {"far", positions(typical.closing)},
            {"kept", typical.left},
            {"words", text(of.knots[cell.knot]) + " in " + percent(of.share_of(cell.closures)) + " of its closures"},
            {"closure", "The closure in direction " + std::to_string(typical.row)},
            {"knot", text(typical.knot)}};
}

/// The typical closure of the whole chain. The closing beads are numbered after those of the chain.
Json json_of(const survey::ClosureResult& shown) {
    const survey::Loop &closed = shown.closed.front(), &reduced = shown.reduced.front();
    const Chain far(closed.beads.begin() + static_cast<std::ptrdiff_t>(closed.own), closed.beads.end());
    Json kept = Json::array();
    for (std::size_t i = 0; i < reduced.beads.size(); ++i) kept.push_back(index_of(reduced.position(i)));
    return {{"first", 0},
            {"last", closed.own - 1},
            {"far", positions(far)},
            {"kept", std::move(kept)},
            {"words", "the whole chain"},
            {"closure", "Closure " + std::to_string(shown.closure)},
            {"knot", text(shown.knots.empty() ? knots::KnotType{} : shown.knots.front())}};
}

/// A row of the table; a click on it shows the closure of that number.
Json row_of(const fingerprint::KnotPlace& place, const fingerprint::ChainFingerprint& of,
            const std::vector<fingerprint::TypicalClosure>& closures) {
    Json row = {{"colour", knot_colour(of, number_of(place, of))}, {"shown", nullptr}};
    std::string core = "none", tails;
    if (place.core) {
        const auto [before, after] = fingerprint::tails_of(*place.core, of.matrix.beads());
        core = of.residues[place.core->first].text() + " to " + of.residues[place.core->last].text();
        tails = std::to_string(before) + " and " + std::to_string(after);
        const auto of_core = std::find_if(closures.begin(), closures.end(),
                                          [&](const auto& closure) { return closure.subchain == *place.core; });
        if (of_core != closures.end()) row["shown"] = of_core - closures.begin();
    }
    row["cells"] = {text(place.knot), percent(place.share), percent(place.greatest_share), core, tails,
                    text(place.kind)};
    return row;
}

void replace(std::string& text, const std::string& mark, std::string_view by) {
    text.replace(text.find(mark), mark.size(), by);
}

std::string page(const Json& data, const std::string& matrix) {
    std::string text = data.dump(-1, ' ', false, Json::error_handler_t::replace);
    // A tag in a file's name would end the script.
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;) text.replace(at, 1, "\\u003c");
    std::string html(assets::page_html());
    // From the last mark to the first, so that what was put in is not searched.
    replace(html, "%SCRIPT%", assets::page_js());
    replace(html, "%THREE%", assets::three_js());
    replace(html, "%DATA%", text);
    replace(html, "%MATRIX%", matrix);
    replace(html, "%CSS%", assets::page_css());
    return html;
}

} // namespace

std::string fingerprint_page(const fingerprint::ChainFingerprint& of, const std::vector<fingerprint::KnotPlace>& places,
                             const Chain& beads, const std::vector<fingerprint::TypicalClosure>& closures) {
    const MatrixPicture picture = picture_of(of, places);
    Json data = chain_data(of.residues, beads);
    data["title"] = picture.title;
    data["about"] = picture.about;
    data["columns"] = {"knot", "share on the whole chain", "greatest share", "core", "tails", "kind"};
    data["rows"] = Json::array();
    for (const fingerprint::KnotPlace& place : places) data["rows"].push_back(row_of(place, of, closures));
    data["plot"] = {{"left", svg_plot.left}, {"bottom", svg_plot.bottom}, {"side", svg_plot.side}};
    data["closures"] = Json::array();
    for (const fingerprint::TypicalClosure& closure : closures) data["closures"].push_back(json_of(closure, of));
    return page(data, matrix_svg(picture, false));
}

std::string survey_page(const survey::Result& result) {
    constexpr const char* colour_of_all = "#8a909c";
    const survey::ComponentTally& tally = result.components.front();
    const survey::Loop& closed = result.typical()->closed.front();
    const Chain beads(closed.beads.begin(), closed.beads.begin() + static_cast<std::ptrdiff_t>(closed.own));
    Json data = chain_data(tally.residues, beads);
    data["title"] = words::title(result.file, tally.name);
    data["about"] = std::to_string(beads.size()) + " residues, " + std::to_string(result.counted()) + " closures";
    data["columns"] = {"knot", "closures", "share"};
    data["rows"] = Json::array();
    for (const survey::KnotCount& count : tally.knots)
        data["rows"].push_back(
            {{"colour", colour_of_all},
             {"shown", nullptr},
             {"cells",
              {text(count.knot), std::to_string(count.closures),
               percent(static_cast<double>(count.closures) / static_cast<double>(result.counted()))}}});
    data["plot"] = nullptr;
    data["closures"] = Json::array({json_of(*result.typical())});
    return page(data, "");
}

} // namespace loopwise::draw
