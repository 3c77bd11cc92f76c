#include "knots/knot_type.hpp"

#include "knots/links.hpp"
#include "knots/table.hpp"

#include <algorithm>
#include <tuple>

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
    if (prime == beyond_table(1)) return "beyond ten crossings";
    if (prime.number == 0) return "no link of the table";
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

bool is_link(const KnotSum& sum) {
    return std::any_of(sum.begin(), sum.end(), [](const PrimeKnot& prime) { return prime.loops > 1; });
}

/// The order of the table.
bool comes_before(const PrimeKnot& a, const PrimeKnot& b) {
    const auto place = [](const PrimeKnot& prime) {
        return std::tuple(prime.crossings == 0, -prime.loops, prime.crossings, prime.number, prime.hand);
    };
    return place(a) < place(b);
}

std::optional<bool> holds_factor(const KnotSum& knot, const KnotSum& part) {
    const auto has_unknown = [](const KnotSum& sum) {
        return std::any_of(sum.begin(), sum.end(), [](const PrimeKnot& prime) { return prime.number == 0; });
    };
    const bool is_known = !has_unknown(part);
    if (is_known && std::includes(knot.begin(), knot.end(), part.begin(), part.end(), comes_before)) return true;
    // An unknown part may be a sum of factors.
    if (has_unknown(knot) || (!is_known && knot.size() > 1)) return std::nullopt;
    return false;
}

/// What the candidates of a table leave out.
const char* limit_of(const KnotType& type) {
    static_assert(table_crossings == 10 && table_link_crossings == 8);
    return is_link(type.candidates.front()) ? "eight" : "ten";
}

} // namespace

KnotType KnotType::apart(std::vector<KnotType> pieces) {
    if (pieces.size() == 1) return pieces.front();
    const bool proven = std::all_of(pieces.begin(), pieces.end(), [](const KnotType& p) { return p.proven; });
    for (const KnotType& piece : pieces)
        if (!piece.has_name()) return piece;
    if (std::all_of(pieces.begin(), pieces.end(), [](const KnotType& p) { return p.is_unknot(); }))
        return named({{unlink(static_cast<int>(pieces.size()))}}, proven);
    return {.status = KnotStatus::apart, .proven = proven, .loops = std::move(pieces)};
}

KnotType KnotType::sum(const KnotType& one, const KnotType& other) {
    if (one.status == KnotStatus::too_complex || other.status == KnotStatus::too_complex)
        return too_complex(one.crossings + other.crossings);
    KnotType both{.status = std::max(one.status, other.status), .proven = one.proven && other.proven};
    for (const KnotSum& a : one.candidates)
        for (const KnotSum& b : other.candidates) {
            KnotSum& sum = both.candidates.emplace_back(a);
            sum.insert(sum.end(), b.begin(), b.end());
            std::sort(sum.begin(), sum.end(), comes_before);
        }
    return both;
}

// Written out: clang 14 does not survive the default one of a class that holds a vector of itself.
bool KnotType::operator==(const KnotType& other) const {
    return status == other.status && proven == other.proven && candidates == other.candidates && loops == other.loops &&
           crossings == other.crossings && fault == other.fault;
}

std::strong_ordering operator<=>(const KnotType& a, const KnotType& b) { return text(a) <=> text(b); }

std::optional<bool> holds_factor(const KnotType& knot, const KnotType& part) {
    if (knot.candidates.empty() || part.candidates.empty()) return std::nullopt;
    if (knot == part || knot.is_unknot()) return knot == part;
    const std::optional<bool> held = holds_factor(knot.candidates.front(), part.candidates.front());
    for (const KnotSum& a : knot.candidates)
        for (const KnotSum& b : part.candidates)
            if (holds_factor(a, b) != held) return std::nullopt;
    const bool is_proven = knot.proven && part.proven;
    return held == false && !is_proven ? std::nullopt : held;
}

std::string text(const KnotType& type) {
    std::string all;
    switch (type.status) {
    case KnotStatus::named:
    case KnotStatus::unknown:
        for (const KnotSum& sum : type.candidates) all.append(all.empty() ? "" : " or ").append(text(sum));
        return type.proven ? all : all.append(" or beyond ").append(limit_of(type)).append(" crossings");
    case KnotStatus::apart:
        for (const KnotType& loop : type.loops) all.append(all.empty() ? "" : ", ").append(text(loop));
        return all + " apart";
    case KnotStatus::too_complex: return "not named: " + std::to_string(type.crossings) + " crossings";
    case KnotStatus::no_polygon: return std::string("not named: ") + words(type.fault);
    case KnotStatus::unnamed: break;
    }
    return "not named";
}

std::string why_not_proven(const KnotType& type) {
    for (const KnotType& loop : type.loops)
        if (!loop.proven) return why_not_proven(loop);
    if (type.proven || type.candidates.empty()) return "";
    return std::string("the simplified diagram has more than ")
        .append(limit_of(type))
        .append(" crossings; a larger ")
        .append(is_link(type.candidates.front()) ? "link" : "knot")
        .append(" can have the same invariants");
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
    if (type.status == KnotStatus::named)
        for (const KnotSum& sum : type.candidates) names.push_back(text(sum));
    return names;
}

} // namespace loopwise::knots

std::size_t std::hash<loopwise::knots::KnotType>::operator()(const loopwise::knots::KnotType& type) const {
    return std::hash<std::string>()(text(type));
}
