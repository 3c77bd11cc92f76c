#include "polymer/residue_id.hpp"

#include <algorithm>
#include <charconv>

namespace loopwise::polymer {

ResidueId ResidueId::parse(std::string_view text) {
    ResidueId id;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, id.number_);
    id.has_number_ = error == std::errc{};
    if (id.has_number_ && end - rest == 1) id.insertion_ = *rest;
    // Leading zeros and longer codes would be lost.
    if (!id.has_number_ || id.text() != text) id.text_ = std::make_shared<const std::string>(text);
    return id;
}

std::string ResidueId::text() const {
    if (text_) return *text_;
    std::string text = std::to_string(number_);
    if (insertion_ != '\0') text += insertion_;
    return text;
}

std::optional<std::int32_t> ResidueId::number() const { return has_number_ ? std::optional(number_) : std::nullopt; }

std::string ResidueId::suffix() const {
    if (!has_number_) return *text_;
    if (!text_) return std::string(insertion_ == '\0' ? 0 : 1, insertion_);
    return text_->substr(std::min(text_->find_first_not_of("0123456789", 1), text_->size()));
}

bool operator==(const ResidueId& a, const ResidueId& b) {
    if (a.text_ || b.text_) return a.text_ && b.text_ && *a.text_ == *b.text_;
    return a.number_ == b.number_ && a.insertion_ == b.insertion_;
}

bool operator<(const ResidueId& a, const ResidueId& b) {
    if (a.has_number_ != b.has_number_) return a.has_number_;
    if (a.has_number_ && a.number_ != b.number_) return a.number_ < b.number_;
    return a.text() < b.text();
}

std::vector<std::string> texts_of(const std::vector<ResidueId>& residues) {
    std::vector<std::string> texts;
    texts.reserve(residues.size());
    for (const ResidueId& residue : residues) texts.push_back(residue.text());
    return texts;
}

std::vector<ResidueId> parsed(const std::vector<std::string>& texts) {
    std::vector<ResidueId> residues;
    residues.reserve(texts.size());
    for (const std::string& text : texts) residues.push_back(ResidueId::parse(text));
    return residues;
}

} // namespace loopwise::polymer
