#pragma once

#include <map>
#include <string>
#include <vector>

#include "components/temporal/CausalNetwork.h"
#include "components/temporal/LatestChange.h"
#include "components/temporal/ModelData.h"
#include "components/temporal/OutlierOrigin.h"
#include "components/temporal/PointLabels.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A model with what its documents are made from. One thread at a time.
class Explanation
{
public:
    /// All are borrowed; `data` is null if there are none. Finds the outliers: those in the data,
    /// else those of the training. Throws what `check` throws.
    Explanation(const TcmModel& model, const ModelData* data, const PointLabels& labels,
                bool isEncoded, const StopCheck& check);

    const TcmModel& model() const { return _model; }
    const CausalNetwork& network() const { return _network; }
    const ModelData* data() const { return _data; }
    const PointLabels& labels() const { return _labels; }
    const std::vector<SeriesOutlier>& outliers() const { return _outliers; }
    void check() const { _check(); }

    const ModelSeries& series(std::size_t place) const { return _model.series[place]; }
    /// How documents name a series: its name as a list, or its id alone.
    std::vector<std::string> nameOf(std::size_t place) const;
    /// The same in one text.
    std::string textOf(std::size_t place) const;
    /// The outliers of some series, or of all if none are given.
    std::vector<SeriesOutlier> outliersOf(const std::vector<std::size_t>& places) const;
    /// The equations of some targets in the order of the model, or of all if none are given.
    std::vector<const SeriesEquation*> equationsOf(const std::vector<std::size_t>& places) const;
    /// Where the latest change of a series comes from; null if there are no data, the series is no
    /// target, or its change is unknown.
    const LatestChange* latestChangeOf(std::size_t place) const;
    /// What the predictor of an edge contributes to the latest change of the target; nothing if
    /// that is unknown.
    std::optional<double> contributionOf(const CausalEdge& edge) const;
    OutlierOrigin originOf(const SeriesOutlier& outlier, std::int64_t level,
                           std::size_t most) const;

private:
    const TcmModel& _model;
    const ModelData* _data;
    const PointLabels& _labels;
    bool _isEncoded;
    const StopCheck& _check;
    CausalNetwork _network;
    std::vector<SeriesOutlier> _outliers;
    mutable std::map<std::size_t, std::optional<LatestChange>> _changes; ///< as far as asked for
};

} // namespace EmbeddedHV
