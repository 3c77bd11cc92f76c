#include "knots/laurent.hpp"

#include <algorithm>

namespace loopwise::knots {

void trim(Laurent& polynomial) {
    std::vector<std::int64_t>& c = polynomial.coefficients;
    const auto not_zero = [](std::int64_t x) { return x != 0; };
    const auto first = std::find_if(c.begin(), c.end(), not_zero);
    if (first == c.end()) {
        polynomial = {};
        return;
    }
    c.erase(std::find_if(c.rbegin(), c.rend(), not_zero).base(), c.end());
    polynomial.twice_lowest += 2 * static_cast<int>(first - c.begin());
    c.erase(c.begin(), first);
}

Laurent mirrored(const Laurent& polynomial) {
    if (polynomial.coefficients.empty()) return {};
    return {-polynomial.twice_highest(), {polynomial.coefficients.rbegin(), polynomial.coefficients.rend()}};
}

std::optional<Laurent> product(const Laurent& a, const Laurent& b) {
    if (a.coefficients.empty() || b.coefficients.empty()) return Laurent{};
    Laurent result{a.twice_lowest + b.twice_lowest, {}};
    result.coefficients.resize(a.coefficients.size() + b.coefficients.size() - 1);
    for (std::size_t i = 0; i < a.coefficients.size(); ++i)
        for (std::size_t j = 0; j < b.coefficients.size(); ++j) {
            std::int64_t term = 0, &sum = result.coefficients[i + j];
            if (__builtin_mul_overflow(a.coefficients[i], b.coefficients[j], &term) ||
                __builtin_add_overflow(sum, term, &sum))
                return {};
        }
    return result;
}

std::optional<std::int64_t> determinant(const Laurent& polynomial) {
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < polynomial.coefficients.size(); ++i) {
        const std::int64_t c = polynomial.coefficients[i];
        if (i % 2 == 0 ? __builtin_add_overflow(sum, c, &sum) : __builtin_sub_overflow(sum, c, &sum)) return {};
    }
    if (sum == INT64_MIN) return {};
    return sum < 0 ? -sum : sum;
}

std::string text(const Laurent& polynomial) {
    if (polynomial.coefficients.empty()) return "0";
    std::string result;
    for (std::size_t i = 0; i < polynomial.coefficients.size(); ++i) {
        const std::int64_t c = polynomial.coefficients[i];
        if (c == 0) continue;
        const int twice = polynomial.twice_lowest + 2 * static_cast<int>(i);
        const bool first = result.empty();
        if (c < 0)
            result += first ? "-" : " - ";
        else if (!first)
            result += " + ";
        const std::string size = std::to_string(c).substr(c < 0 ? 1 : 0);
        if (twice == 0)
            result += size;
        else {
            if (size != "1") result += size;
            result += 't';
            if (twice % 2 != 0)
                result.append("^(").append(std::to_string(twice)).append("/2)");
            else if (twice != 2)
                result.append("^").append(std::to_string(twice / 2));
        }
    }
    return result;
}

} // namespace loopwise::knots
