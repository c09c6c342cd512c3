#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "components/temporal/base/ProgressSink.h"
#include "components/temporal/base/StopCheck.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// What decides whether another predictor comes into an equation, and the number of lags.
enum class SelectionCriterion
{
    Bic,         ///< Bayesian information criterion
    ExtendedBic, ///< with the number of candidates in the penalty
    Aic          ///< Akaike's information criterion
};

/// A predictor and a target, each a place in the list of series.
using PredictorPair = std::pair<std::size_t, std::size_t>;

/// How a model is trained.
struct TrainingOptions
{
    std::vector<bool> isTarget;    ///< by series
    std::vector<bool> isCandidate; ///< by series
    std::set<PredictorPair> forced;
    std::set<PredictorPair> forbidden;
    std::optional<int> lags;   ///< of every equation; chosen if absent
    std::optional<int> maxLag; ///< the most lags to choose from; absent, kDefaultMaxLag
    int maxPredictors = 5;     ///< of an equation, beside its own past
    SelectionCriterion criterion = SelectionCriterion::Bic;
    double outlierLevel = 0.99;
};

inline constexpr int kDefaultMaxLag = 5;

/// How the training reports to its caller while it runs.
struct TrainingHooks
{
    MessageSink message;
    StopCheck checkStop; ///< called every few milliseconds
    ProgressSink progress = [](double) {};
};

} // namespace EmbeddedHV
