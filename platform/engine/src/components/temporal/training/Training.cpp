#include "components/temporal/training/Training.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/statistics/Distributions.h"
#include "components/temporal/base/FewMessages.h"
#include "components/temporal/training/Autoregression.h"
#include "components/temporal/training/EquationFit.h"
#include "components/temporal/training/FitMeasures.h"
#include "components/temporal/training/GroupSelection.h"
#include "components/temporal/training/TrainingWindows.h"

namespace EmbeddedHV {
namespace {

/// Targets whose products are computed together.
constexpr std::size_t kTargetsAtOnce = 64;
constexpr std::int64_t kMostExcludedMessages = 1000;
/// For the progress: the choice of the lags ends, and the fit of the equations.
constexpr double kLagsShare = 0.7;
constexpr double kFitEnd = 0.9;
constexpr Eigen::Index kLeastPoints = leastPoints(1);

/// The training of one model.
class Trainer
{
public:
    Trainer(const SeriesTable& table, const TrainingOptions& options, const TrainingHooks& hooks,
            std::string component, TcmModel& model)
        : _table(table), _options(options), _hooks(hooks), _component(std::move(component)),
          _model(model), _scaled(scaledSeries(table))
    {
    }

    void run()
    {
        if (_table.values.rows() < kLeastPoints)
            refuseLags(_table.values.rows(), _options.lags.value_or(1));
        reportExcluded();
        for (const auto& [predictor, target] : _options.forced)
            _forced[target].push_back(predictor);
        const std::vector<TrainingWindow> windows = trainingWindows(_scaled, _options);
        if (windows.empty())
            throw JobError(errors::kTooFewPoints,
                           {.step = _component,
                            .what = "no series can be a target: each is constant, has gaps or is "
                                    "not meant to be one"});
        _model.trainingPoints = _table.values.rows();
        _model.outlierLevel = _options.outlierLevel;
        _model.lags = _options.lags ? givenLags(windows.front()) : chosenLags(windows.front());
        fitWindows(windows, partOf(_hooks.progress, _options.lags ? 0 : kLagsShare, kFitEnd));
        if (_fitted.empty())
            throw JobError(errors::kTooFewPoints,
                           {.step = _component, .what = "no series has an equation"});
        finishEquations();
        addAutoregressions(partOf(_hooks.progress, kFitEnd, 1));
        _model.lastValues = _table.values.bottomRows(_model.lags);
    }

private:
    std::string quoted(std::size_t place) const { return shownName(_model.series[place]); }
    /// `series` is the name of the series that the text is about; empty for several.
    void tell(const char* id, const std::vector<std::string>& series, const std::string& text) const
    {
        _hooks.message(id, {.step = _component, .series = series, .what = text});
    }

    void reportExcluded() const
    {
        FewMessages messages(_hooks.message, errors::kSeriesExcluded, kMostExcludedMessages,
                             "series: TCMModel.json lists them");
        for (std::size_t i = 0; i < _model.series.size(); ++i)
            if (_scaled.columns[i].state != SeriesState::Usable)
                messages.send({.step = _component,
                               .series = _model.series[i].name,
                               .what = "the series " + quoted(i) + " " +
                                       _scaled.columns[i].problem +
                                       ": it is neither a target nor a predictor"});
        messages.finish();
    }

    [[noreturn]] void refuseLags(Eigen::Index points, int lags) const
    {
        throw JobError(errors::kTooFewPoints,
                       {.step = _component,
                        .limit = leastPoints(lags),
                        .what = "the points of time that the series have in common are " +
                                std::to_string(points) + "; equations with " +
                                std::to_string(lags) + (lags == 1 ? " lag" : " lags") +
                                " need at least " + std::to_string(leastPoints(lags))});
    }

    int givenLags(const TrainingWindow& window) const
    {
        if (*_options.lags > mostLags(window.range.size()))
            refuseLags(window.range.size(), *_options.lags);
        return *_options.lags;
    }

    /// The number of lags with the least sum of the criterion over all targets of the window, all
    /// on the points of time that have the most lags.
    int chosenLags(const TrainingWindow& window) const
    {
        const int wanted = _options.maxLag.value_or(kDefaultMaxLag);
        const int most = std::min(wanted, mostLags(window.range.size()));
        if (most < 1)
            refuseLags(window.range.size(), 1);
        if (most < wanted && _options.maxLag)
            tell(errors::kLagsReduced, {},
                 "the series have " + std::to_string(window.range.size()) +
                     " points of time in common, enough for " + std::to_string(most) +
                     " lags at most");
        if (most == 1)
            return 1;
        LaggedProducts products(_scaled, window.members, window.range, most, _hooks.checkStop);
        std::vector<double> sums(static_cast<std::size_t>(most));
        const ProgressSink progress = partOf(_hooks.progress, 0, kLagsShare);
        for (int lags = 1; lags <= most; ++lags)
            forEachTarget(window, products, lags, [&](std::size_t, const Selection& selection) {
                sums[static_cast<std::size_t>(lags - 1)] += selection.criterion;
                progress(fractionOf(static_cast<std::size_t>(lags - 1), sums.size()));
            });
        return 1 + static_cast<int>(std::min_element(sums.begin(), sums.end()) - sums.begin());
    }

    SelectionRules rulesOf(const TrainingWindow& window, std::size_t target) const
    {
        SelectionRules rules;
        rules.maxPredictors = _options.maxPredictors;
        rules.criterion = _options.criterion;
        for (std::size_t member = 0; member < window.members.size(); ++member) {
            const std::size_t place = window.members[member];
            const PredictorPair pair{place, target};
            if (place == target || !_scaled.columns[place].range.contains(window.range))
                continue;
            if (_options.forced.count(pair) > 0)
                rules.forced.push_back(member);
            else if (_options.isCandidate[place] && _options.forbidden.count(pair) == 0)
                rules.candidates.push_back(member);
        }
        return rules;
    }

    std::size_t mostGroups(const TrainingWindow& window) const
    {
        std::size_t most = 0;
        for (const auto& [target, predictors] : _forced)
            most = std::max(most, predictors.size());
        return std::min(window.members.size(),
                        1 + most + static_cast<std::size_t>(_options.maxPredictors));
    }

    template <class Take>
    void forEachTarget(const TrainingWindow& window, LaggedProducts& products, int lags,
                       const Take& take) const
    {
        GroupSelection selection(products, lags, static_cast<int>(mostGroups(window)));
        for (std::size_t i = 0; i < window.targets.size(); ++i) {
            if (i % kTargetsAtOnce == 0)
                products.prepare(i, std::min(kTargetsAtOnce, window.targets.size() - i));
            _hooks.checkStop();
            take(window.targets[i], selection.select(i, rulesOf(window, window.targets[i])));
        }
    }

    void fitWindows(const std::vector<TrainingWindow>& windows, const ProgressSink& progress)
    {
        std::size_t targets = 0;
        for (const TrainingWindow& window : windows)
            targets += window.targets.size();
        std::size_t fitted = 0;
        for (const TrainingWindow& window : windows)
            fitWindow(window, [&] { progress(fractionOf(++fitted, targets)); });
    }

    /// Calls `fitted` after each target.
    void fitWindow(const TrainingWindow& window, const std::function<void()>& fitted)
    {
        if (_model.lags > mostLags(window.range.size())) {
            for (const std::size_t target : window.targets)
                tell(errors::kSeriesExcluded, _model.series[target].name,
                     "the series " + quoted(target) + " has " +
                         std::to_string(window.range.size()) + " points, too few for " +
                         std::to_string(_model.lags) + " lags: it is not a target");
            return;
        }
        LaggedProducts products(_scaled, window.members, window.range, _model.lags,
                                _hooks.checkStop);
        forEachTarget(window, products, _model.lags,
                      [&](std::size_t target, const Selection& selection) {
                          fitTarget(window, target, selection);
                          fitted();
                      });
    }

    /// Sends a message for each forced predictor that cannot be in the equation.
    void reportUnusableForced(const TrainingWindow& window, std::size_t target) const
    {
        const auto forced = _forced.find(target);
        if (forced == _forced.end())
            return;
        for (const std::size_t predictor : forced->second) {
            const ScaledColumn& column = _scaled.columns[predictor];
            if (column.state != SeriesState::Usable || !column.range.contains(window.range))
                tell(errors::kPredictorExcluded, _model.series[predictor].name,
                     "the equation of " + quoted(target) + " lacks the predictor " +
                         quoted(predictor) + ", which has not all values from point " +
                         std::to_string(window.range.first) + " to point " +
                         std::to_string(window.range.end - 1));
        }
    }

    void fitTarget(const TrainingWindow& window, std::size_t target, const Selection& selection)
    {
        reportUnusableForced(window, target);
        for (const std::size_t member : selection.collinear)
            noteCollinear(window.members[member], target);
        for (const std::size_t member : selection.omitted)
            tell(errors::kPredictorExcluded, _model.series[window.members[member]].name,
                 "the equation of " + quoted(target) + " has too few points for the predictor " +
                     quoted(window.members[member]) + ", which is left out");
        std::vector<EquationGroup> groups;
        for (const SelectedGroup& group : selection.groups)
            groups.push_back({window.members[group.member], group.lags, group.isForced});
        for (;;) {
            if (auto fitted = fitEquation(_table, _scaled, target, groups)) {
                _fitted.emplace(target, std::move(*fitted));
                return;
            }
            if (groups.empty())
                return;
            // The sums of products are too coarse to detect this dependence.
            noteCollinear(groups.back().series, target);
            groups.pop_back();
        }
    }

    void noteCollinear(std::size_t predictor, std::size_t target)
    {
        std::vector<std::size_t>& targets = _collinear[predictor];
        if (targets.empty() || targets.back() != target)
            targets.push_back(target);
    }

    void finishEquations()
    {
        for (const auto& [predictor, targets] : _collinear)
            tell(errors::kPredictorExcluded, _model.series[predictor].name,
                 "lags of the series " + quoted(predictor) + " are linear in other terms of " +
                     (targets.size() == 1
                          ? "the equation of " + quoted(targets[0])
                          : std::to_string(targets.size()) + " equations, the first that of " +
                                quoted(targets[0])) +
                     ": they are left out");
        for (std::size_t i = 0; i < _model.series.size(); ++i) {
            _model.series[i].isTarget = _fitted.count(i) > 0;
            _model.series[i].isCandidate =
                _options.isCandidate[i] && _scaled.columns[i].state == SeriesState::Usable;
        }
        for (auto& [target, fitted] : _fitted) {
            if (fitted.isPerfect)
                tell(errors::kPerfectFit, _model.series[target].name,
                     "the equation of " + quoted(target) +
                         " fits without error: it may hold the series by definition");
            addOutliers(fitted);
            _model.equations.push_back(std::move(fitted.equation));
        }
    }

    void addOutliers(const FittedEquation& fitted)
    {
        const SeriesEquation& equation = fitted.equation;
        const auto degrees =
            static_cast<double>(equation.fit.observations - equation.fit.parameters - 1);
        for (std::size_t i = 0; i < fitted.studentised.size(); ++i) {
            if (std::isnan(fitted.studentised[i]))
                continue;
            const double p = twoSidedT(fitted.studentised[i], degrees);
            const double actual = _table.values(static_cast<Eigen::Index>(i),
                                                static_cast<Eigen::Index>(equation.series));
            if (p < 1 - _options.outlierLevel)
                _model.outliers.push_back({equation.series, static_cast<std::int64_t>(i), actual,
                                           actual - equation.residuals[i], p});
        }
    }

    void addAutoregressions(const ProgressSink& progress)
    {
        for (std::size_t i = 0; i < _model.series.size(); ++i) {
            _hooks.checkStop();
            progress(fractionOf(i, _model.series.size()));
            if (auto own = autoregressionFor(_table, _scaled, i, _model.lags, _options.criterion))
                _model.autoregressions.push_back(std::move(*own));
        }
    }

    const SeriesTable& _table;
    const TrainingOptions& _options;
    const TrainingHooks& _hooks;
    std::string _component;
    TcmModel& _model;
    ScaledSeries _scaled;
    std::map<std::size_t, std::vector<std::size_t>> _forced;    ///< predictors by target
    std::map<std::size_t, FittedEquation> _fitted;              ///< by target
    std::map<std::size_t, std::vector<std::size_t>> _collinear; ///< targets by predictor
};

} // namespace

TcmModel trainModel(const SeriesTable& table, std::vector<ModelSeries> series,
                    const TrainingOptions& options, const TrainingHooks& hooks,
                    const std::string& component)
{
    TcmModel model;
    model.series = std::move(series);
    Trainer(table, options, hooks, component, model).run();
    return model;
}

} // namespace EmbeddedHV
