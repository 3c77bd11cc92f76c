#include "app/report/confidence_values.hpp"

#include "app/report/json_values.hpp"
#include "words/numbers.hpp"

namespace loopwise::app {

std::string confidence_text(const polymer::Confidence& confidence) {
    return "mean " + words::fixed(confidence.mean, 1) + ", least " + words::fixed(confidence.least, 1) +
           (confidence.low > 0
                ? ", " + words::counted(confidence.low, "residue") + " below " + words::general(polymer::low_confidence)
                : "");
}

Json confidence_json(const std::optional<polymer::Confidence>& confidence) {
    if (!confidence) return nullptr;
    return {{"mean", confidence->mean}, {"least", confidence->least}, {"below_50", confidence->low}};
}

std::string confidence_line(const std::optional<polymer::Confidence>& confidence) {
    return confidence ? "  confidence: " + confidence_text(*confidence) + '\n' : "";
}

Row confidence_columns() { return {"confidence_mean", "confidence_least", "confidence_low"}; }

Row confidence_row(const std::optional<polymer::Confidence>& confidence) {
    if (!confidence) return Row(3);
    return {words::general(confidence->mean), words::general(confidence->least), std::to_string(confidence->low)};
}

} // namespace loopwise::app
