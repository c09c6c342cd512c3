#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

class HVRawDataIterator;
class HVRunner;

/// Trains a temporal causal model: composes the job that prepares the series of a data source and
/// finds the equations of the targets, runs it, and leaves the model in a file that
/// HVInteractiveTSR reads.
///
///     HVRawDataIterator cases(source, columns, {}, true, kWeightRound, true, nullptr);
///     cases.SetName("cases");
///     HVTemporalTraining training(runner, &cases);
///     training.SetTimeField("month");
///     training.SetDimensions({"region"});
///     training.SetMetrics({"sales", "advertising"});
///     training.SetMaxLag(4);
///     if (!training.Train("sales.tcm") && training.hasError(id, text, detail)) ...
///
/// A series is named as in HVInteractiveTSR: by its values of the dimension fields, in their order,
/// and then by its metric. The time comes from a field, from cyclic fields, or from the order of
/// the records; the last setter of the three wins. Settings that are not set are not in the job,
/// so the engine's defaults apply; docs/tcm.md lists them.
///
/// Setters never validate: the engine refuses a setting that makes no sense, by its name. Runner
/// and iterator are borrowed and must outlive the object. The iterator is read from the first
/// record on each time. Names are UTF-8, paths are in the host's encoding. The thread is the
/// runner's; HVRunner::cancelExecution may be called from any thread. Exceptions of Java or the
/// engine before the job runs are passed on.
class HVINTEG_EXPORT HVTemporalTraining
{
public:
    /// Values of the dimension fields, then the metric.
    using Series = std::vector<std::string>;

    /// The input: rows, or a piece of job text that reads something, such as HVLRead generates for
    /// a file. A null iterator leaves a job without input, which fails.
    HVTemporalTraining(HVRunner& runner, HVRawDataIterator* iterator);
    /// The input is what a piece of job text reads, such as HVLRead generates for a file.
    HVTemporalTraining(HVRunner& runner, const std::string& readText);
    HVTemporalTraining(const HVTemporalTraining&) = delete;
    HVTemporalTraining& operator=(const HVTemporalTraining&) = delete;
    ~HVTemporalTraining();

    /// A date, time or timestamp. Texts among the rows are converted as HVInteractiveTSR does; with
    /// a piece of job text, SetTimeIsText says that they are texts.
    void SetTimeField(const std::string& field);
    /// Whether the time field of a piece of job text contains texts.
    void SetTimeIsText(bool isText);
    /// Numbers that make up a point of time, the outermost first, as year and month.
    void SetCyclicFields(const std::vector<std::string>& fields);
    /// The order of the records.
    void SetCaseCountTime();
    /// The interval between two points of time: "year", "quarter", "month", "week", "day", "hour",
    /// "minute" or "second", and how many of them. Found in the data if it is not set.
    void SetTimeInterval(const std::string& unit, int increment);
    /// Days of a week that have points of time: 1 is Monday.
    void SetWorkingDays(const std::vector<int>& days);
    /// Hours of a day that have points of time: from `from`, 0 to 23, to before `to`.
    void SetWorkingHours(int from, int to);

    /// Fields whose combinations of values separate the series; no fields by default.
    void SetDimensions(const std::vector<std::string>& fields);
    /// Fields whose values the series have. A job without a metric fails.
    void SetMetrics(const std::vector<std::string>& fields);
    /// How several records at one point of time are combined: "sum", "mean", "min", "max", "first",
    /// "last" or "mode". For all metrics, or for one.
    void SetAggregation(const std::string& function);
    /// The same for one metric. Takes precedence over the function for all.
    void SetAggregation(const std::string& metric, const std::string& function);
    /// How gaps in a series are filled: "linear", "neighbours", "last" or "none". A series is left
    /// out if more than the share of its points, 0 to 1, would be filled.
    void SetMissingValues(const std::string& method, double maxShare);

    /// Which series the model predicts, which it may predict from, and which are both. A metric
    /// alone means all its series. Without a target all series are targets, and without a
    /// predictor all may be predicted from.
    void AddTarget(const Series& series);
    /// Adds a series from which others may be predicted.
    void AddPredictor(const Series& series);
    /// Adds a series that is both a target and a predictor.
    void AddTargetAndPredictor(const Series& series);
    /// A predictor that is always, or never, in the equation of a target. An empty target means all
    /// targets.
    void ForcePredictor(const Series& target, const Series& predictor);
    /// A predictor that the equation of a target never has. An empty target: the equations of all
    /// targets.
    void ForbidPredictor(const Series& target, const Series& predictor);
    /// How many points of time the equations look back: a number, or the best one up to a number.
    /// The one that was set last holds.
    void SetLags(int lags);
    /// Tries all numbers of points up to this one. Replaces SetLags.
    void SetMaxLag(int lags);
    /// How the lags and the predictors of a target are chosen: "BIC", "EBIC",
    /// which counts the candidates too, or "AIC".
    void SetCriterion(const std::string& criterion);
    /// The most predictors of a target besides its own past.
    void SetMaxPredictors(int count);
    /// The share of residuals, 0 to 1, that chance explains; larger ones are outliers.
    void SetOutlierLevel(double level);

    /// Composes the job that Train would run, for the model file of that name. False without an
    /// input.
    bool GenerateHVL(const std::string& modelPath, std::string& job);
    /// Runs the job, and shows its messages. The model file gets its name only if the job succeeded
    /// and the file is whole; a file that has the name is replaced then, and unchanged otherwise.
    /// False if the job failed, was cancelled or was refused, the model cannot be written, or the
    /// time is a field of texts whose name needs quotes in a job. No execution is left.
    bool Train(const std::string& modelPath);
    /// Why the last Train failed: what the job reported or, where it reported nothing, what was
    /// found; then only `errorText` is set. False, and nothing is set, if there is no reason.
    bool hasError(std::string& errorId, std::string& errorText, std::string& errorDetail) const;
    /// The messages of the last job, in order of arrival.
    const std::vector<std::string>& getMessages() const;
    /// The text of the last job.
    const std::string& GetHVLJob() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
