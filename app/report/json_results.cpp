#include "app/report/json_results.hpp"

namespace loopwise::app {

void add_knot(Json& json, const knots::KnotType& knot) {
    json["knot"] = text(knot);
    json["names"] = names_of(knot);
    json["proven"] = knot.proven;
}

JsonResults::JsonResults(std::ostream& out, const Json& head) : out_(out) {
    std::string text = head.dump();
    text.pop_back();
    out_ << text << ",\"results\":[";
}

void JsonResults::add(const Json& result) {
    // A file name may be no UTF-8, which would make the dump throw.
    out_ << (first_ ? "\n" : ",\n") << result.dump(-1, ' ', false, Json::error_handler_t::replace);
    out_.flush();
    first_ = false;
}

} // namespace loopwise::app
