// What a residue is called.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace loopwise::polymer {

/// The identifier of a residue: its number and insertion code, as in 52A. Any other text is an identifier
/// too, such as a number beyond 32 bits. It prints as it was written. Only such texts take memory of their
/// own, which copies share.
class ResidueId {
  public:
    ResidueId() = default;
    explicit ResidueId(std::int32_t number) : number_(number) {}

    /// The only way from text to an identifier, for files and for the command line.
    static ResidueId parse(std::string_view text);
    std::string text() const;

    /// The number that the text begins with; none if there is no such number of 32 bits.
    std::optional<std::int32_t> number() const;
    /// What follows the number: the insertion code or nothing. The whole text if there is no number.
    std::string suffix() const;
    bool is_number() const { return has_number_ && suffix().empty(); }

    friend bool operator==(const ResidueId& a, const ResidueId& b);
    /// By number, those without a number last; identifiers of one number by their text.
    friend bool operator<(const ResidueId& a, const ResidueId& b);

  private:
    std::int32_t number_ = 0;
    bool has_number_ = true;
    char insertion_ = '\0';
    std::shared_ptr<const std::string> text_; ///< where number and insertion code do not give it back
};

std::vector<std::string> texts_of(const std::vector<ResidueId>& residues);
std::vector<ResidueId> parsed(const std::vector<std::string>& texts);

} // namespace loopwise::polymer
