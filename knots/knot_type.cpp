#include "knots/knot_type.hpp"

#include "knots/table.hpp"

#include <algorithm>

namespace loopwise::knots {
namespace {

const char* words(PolygonFault fault) {
    switch (fault) {
    case PolygonFault::few_beads: return "fewer than three beads";
    case PolygonFault::triangle: return "fewer than four beads";
    case PolygonFault::not_finite: return "coordinates that are not finite";
    case PolygonFault::repeated_beads: return "repeated beads";
    case PolygonFault::touching: return "the polygon meets itself, or nearly";
    case PolygonFault::none: break;
    }
    return "";
}

std::string text(const PrimeKnot& prime) {
    const char* const hands[] = {"", "+", "-"};
    std::string name = hands[static_cast<int>(prime.hand)];
    name.append(std::to_string(prime.crossings));
    if (prime.loops > 1) name.append("^").append(std::to_string(prime.loops));
    return name.append("_").append(std::to_string(prime.number));
}

std::string text(const KnotSum& sum) {
    std::string all;
    for (const PrimeKnot& prime : sum) all.append(all.empty() ? "" : " # ").append(text(prime));
    return all.empty() ? "0_1" : all;
}

/// Candidates are the knots, or the links, of one table.
const char* beyond_the_table(const KnotSum& candidate) {
    static_assert(table_crossings == 9 && table_link_crossings == 5);
    const bool is_link = !candidate.empty() && candidate.front().loops > 1;
    return is_link ? " or beyond five crossings" : " or beyond nine crossings";
}

} // namespace

KnotType KnotType::apart(KnotType one, KnotType other) {
    const bool proven = one.proven && other.proven;
    if (one.is_unknot() && other.is_unknot()) return named({unlink}, proven);
    return {.status = KnotStatus::apart, .proven = proven, .loops = {std::move(one), std::move(other)}};
}

// Written out: clang 14 does not survive the default one of a class that holds a vector of itself.
bool KnotType::operator==(const KnotType& other) const {
    return status == other.status && proven == other.proven && candidates == other.candidates && loops == other.loops &&
           jones == other.jones && crossings == other.crossings && fault == other.fault;
}

std::strong_ordering operator<=>(const KnotType& a, const KnotType& b) { return text(a) <=> text(b); }

std::string text(const KnotType& type) {
    std::string all;
    switch (type.status) {
    case KnotStatus::named:
        for (const KnotSum& sum : type.candidates) all.append(all.empty() ? "" : " or ").append(text(sum));
        return type.proven ? all : all + beyond_the_table(type.candidates.front());
    case KnotStatus::apart:
        for (const KnotType& loop : type.loops) all.append(all.empty() ? "" : ", ").append(text(loop));
        return all + " apart";
    case KnotStatus::unknown: return "unknown: " + text(type.jones);
    case KnotStatus::too_complex: return "not named: " + std::to_string(type.crossings) + " crossings";
    case KnotStatus::no_polygon: return std::string("not named: ") + words(type.fault);
    case KnotStatus::unnamed: break;
    }
    return "not named";
}

std::string short_text(const KnotType& type, std::size_t width) {
    const std::string all = text(type), cut_off = " ...";
    if (all.size() <= width) return all;
    const std::size_t room = width - cut_off.size(), space = all.find_last_of(' ', room);
    return all.substr(0, std::min(room, space)) + cut_off;
}

std::vector<std::string> names_of(const KnotType& type) {
    if (type.status == KnotStatus::apart) return {text(type)};
    std::vector<std::string> names;
    for (const KnotSum& sum : type.candidates) names.push_back(text(sum));
    return names;
}

} // namespace loopwise::knots

std::size_t std::hash<loopwise::knots::KnotType>::operator()(const loopwise::knots::KnotType& type) const {
    return std::hash<std::string>()(text(type));
}
