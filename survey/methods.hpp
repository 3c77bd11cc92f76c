// The methods of closure. A new one takes a file of its own with its functions, and their row in methods.cpp; the
// program, its help and completion, and Python read the table.
#pragma once

#include "src/closure/closures.hpp"

#include <optional>
#include <span>
#include <string_view>

namespace loopwise::survey {

/// Limits of every scale: above the first, up to the second.
inline constexpr double scales_above = 1.0, largest_scale = 1e6;
inline bool is_scale(double scale) { return scale > scales_above && scale <= largest_scale; }

/// What a method is told of one closure.
struct ClosureInput {
    std::size_t closure = 0;          ///< its number
    double scale = 0.0;               ///< for methods that take one
    closure::Draw draw{};             ///< for random methods
    std::optional<double> diameter{}; ///< of the chain, where the caller knows it
};

struct MethodRow {
    const char* name;
    const char* help; ///< what it does, in a line
    bool random = false;
    bool closes = true; ///< false where the last bead is bonded to the first already
    /// Whether the caller can name the direction, 0 to 399, by the closure's number or by the only draw.
    bool takes_direction = false;
    std::size_t default_closures = 400, most_closures = 100'000'000;
    double default_scale = 0.0;      ///< 0 where the method takes none
    std::size_t most_components = 0; ///< that it closes together; 0 where it closes single chains only
    closure::Closing (*close_chain)(Chain& chain, const ClosureInput& input);
    closure::Closing (*close_structure)(Structure& structure, const ClosureInput& input) = nullptr;

    bool takes_scale() const { return default_scale > 0.0; }
};

/// The table, in the order of the help.
std::span<const MethodRow> all_methods();

/// A method: a row of the table.
class Method {
  public:
    /// The default: of single chains "directions", of structures "direction".
    static Method standard(bool together = false);
    /// The method that reduces rings as they are.
    static Method ring();
    /// Throws std::invalid_argument, with all names in its words, where no method has this one. "ring" is a name only
    /// where the caller says so.
    static Method named(std::string_view name, bool with_ring = false);

    const MethodRow* operator->() const { return row_; }
    bool operator==(const Method&) const = default;

  private:
    explicit Method(const MethodRow& row) : row_(&row) {}
    const MethodRow* row_;
};

} // namespace loopwise::survey
