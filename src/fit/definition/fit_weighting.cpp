#include "fit/definition/fit_weighting.h"

#include <sstream>

namespace lumoplot {
namespace {

constexpr const char* kByYErrors = "y-errors";
constexpr const char* kAbsolute = "absolute";
constexpr const char* kRobustWords[] = {"none", "huber", "cauchy", "tukey"};

} // namespace

std::string TextOf(const TFitWeighting& weighting) {
    std::string text;
    const auto add = [&text](const char* word) { text += (text.empty() ? "" : " ") + std::string(word); };
    if (weighting.ByYErrors) add(kByYErrors);
    if (weighting.Errors == TErrorSource::Points) add(kAbsolute);
    if (weighting.Robust != TRobust::None) add(kRobustWords[static_cast<int>(weighting.Robust)]);
    return text;
}

TFitWeighting FitWeightingOf(std::string_view text) {
    TFitWeighting weighting;
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (word == kByYErrors) weighting.ByYErrors = true;
        if (word == kAbsolute) weighting.Errors = TErrorSource::Points;
        for (int i = 0; i <= static_cast<int>(TRobust::Tukey); ++i)
            if (word == kRobustWords[i]) weighting.Robust = TRobust{i};
    }
    return weighting;
}

} // namespace lumoplot
