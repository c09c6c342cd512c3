#pragma once

#include <map>
#include <string>
#include <vector>

#include "components/temporal/explanation/CausalNetwork.h"
#include "components/temporal/explanation/LatestChange.h"
#include "components/temporal/explanation/ModelData.h"
#include "components/temporal/explanation/OutlierOrigin.h"
#include "components/temporal/explanation/PointLabels.h"
#include "components/temporal/scoring/Scoring.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// What an explanation is made of. All pointers are borrowed.
struct ExplanationInput
{
    const TcmModel* model = nullptr;
    const ModelData* data = nullptr; ///< null without data
    const PointLabels* labels = nullptr;
    bool isEncoded = false; ///< series are named by their ids
    std::string component;  ///< begins messages
    StopCheck check;
};

/// A model with what its documents are made from. One thread at a time.
class Explanation
{
public:
    /// Finds the outliers: those in the data, else those of the training. Throws what the check
    /// throws.
    explicit Explanation(ExplanationInput input);

    const TcmModel& model() const { return *_input.model; }
    const CausalNetwork& network() const { return _network; }
    const ModelData* data() const { return _input.data; }
    const PointLabels& labels() const { return *_input.labels; }
    const std::vector<SeriesOutlier>& outliers() const { return _outliers; }
    void check() const { _input.check(); }

    const ModelSeries& series(std::size_t place) const { return model().series[place]; }
    /// How documents name a series: its name as a list, or its id alone.
    std::vector<std::string> nameOf(std::size_t place) const;
    /// The same in one text.
    std::string textOf(std::size_t place) const;
    /// The outliers of some series, or of all if the list is empty.
    std::vector<SeriesOutlier> outliersOf(const std::vector<std::size_t>& places) const;
    /// The equations of some targets in the order of the model, or of all if the list is empty.
    std::vector<const SeriesEquation*> equationsOf(const std::vector<std::size_t>& places) const;
    /// Where the latest change of a series comes from; null if there are no data, the series is not
    /// a target, or its change is unknown.
    const LatestChange* latestChangeOf(std::size_t place) const;
    /// What the predictor of an edge contributes to the latest change of the target; nothing if
    /// that is unknown.
    std::optional<double> contributionOf(const CausalEdge& edge) const;
    OutlierOrigin originOf(const SeriesOutlier& outlier, std::int64_t level,
                           std::size_t most) const;
    /// Values, predictions and a forecast with bounds. Without data the last values of the training
    /// take their place. Throws JobError if the data lack a series that is needed.
    Scores scoresOf(const ScoringRequest& request) const;

private:
    ExplanationInput _input;
    CausalNetwork _network;
    std::vector<SeriesOutlier> _outliers;
    mutable std::map<std::size_t, std::optional<LatestChange>> _changes; ///< as far as asked for
};

} // namespace EmbeddedHV
