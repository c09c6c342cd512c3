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

    /// Trains on the rows of an iterator. With a null iterator every job fails.
    HVTemporalTraining(HVRunner& runner, HVRawDataIterator* iterator);
    /// Trains on the records that a piece of job text reads, such as HVLRead generates for a file.
    HVTemporalTraining(HVRunner& runner, const std::string& readText);
    HVTemporalTraining(const HVTemporalTraining&) = delete;
    HVTemporalTraining& operator=(const HVTemporalTraining&) = delete;
    ~HVTemporalTraining();

    /// Takes the time from a field: a date, time, timestamp or text. Texts of an iterator are
    /// detected and converted as HVInteractiveTSR does; those of a piece of job text require
    /// SetTimeIsText.
    void SetTimeField(const std::string& field);
    /// Sets whether the time field of a piece of job text contains texts; false by default.
    void SetTimeIsText(bool isText);
    /// Takes the time from fields of numbers that together are a point of time, the outermost
    /// first, for example year and month.
    void SetCyclicFields(const std::vector<std::string>& fields);
    /// Takes the time from the order of the records.
    void SetCaseCountTime();
    /// Sets the interval between two points of time: the unit "year", "quarter", "month", "week",
    /// "day", "hour", "minute" or "second", and the number of units. By default the engine detects
    /// the interval in the data.
    void SetTimeInterval(const std::string& unit, int increment);
    /// Sets the days of a week that have points of time: 1 is Monday, 7 is Sunday.
    void SetWorkingDays(const std::vector<int>& days);
    /// Sets the hours of a day that have points of time: `from`, 0 to 23, is the first one, and
    /// `to` is the first one after them.
    void SetWorkingHours(int from, int to);

    /// Sets the fields whose combinations of values separate the series; no fields by default.
    void SetDimensions(const std::vector<std::string>& fields);
    /// Sets the fields whose values the series have. A job without a metric fails.
    void SetMetrics(const std::vector<std::string>& fields);
    /// Sets how several records at one point of time are combined, for all metrics: "sum", "mean",
    /// "min", "max", "first", "last" or "mode".
    void SetAggregation(const std::string& function);
    /// Sets how several records at one point of time are combined, for one metric. It takes
    /// precedence over the function for all metrics.
    void SetAggregation(const std::string& metric, const std::string& function);
    /// Sets how gaps in a series are filled: "linear", "neighbours", "last" or "none". A series is
    /// left out if more than `maxShare` of its points, 0 to 1, would be filled.
    void SetMissingValues(const std::string& method, double maxShare);

    /// Adds a series that the model predicts. A metric alone means all its series. Without a target
    /// all series are targets.
    void AddTarget(const Series& series);
    /// Adds a series from which others may be predicted. A metric alone means all its series.
    /// Without a predictor all series are predictors.
    void AddPredictor(const Series& series);
    /// Adds a series that is both a target and a predictor. A metric alone means all its series.
    void AddTargetAndPredictor(const Series& series);
    /// Forces a predictor into the equation of a target. An empty target means all targets.
    void ForcePredictor(const Series& target, const Series& predictor);
    /// Keeps a predictor out of the equation of a target. An empty target means all targets.
    void ForbidPredictor(const Series& target, const Series& predictor);
    /// Sets how many points of time the equations look back. Replaces SetMaxLag.
    void SetLags(int lags);
    /// Sets the highest number of points of time that the equations may look back. The engine tries
    /// all numbers up to it. Replaces SetLags.
    void SetMaxLag(int lags);
    /// Sets the criterion by which lags and predictors of a target are chosen: "BIC", "AIC", or
    /// "EBIC", which also takes the number of candidates into account. docs/tcm.md has the
    /// formulas.
    void SetCriterion(const std::string& criterion);
    /// Sets the highest number of predictors of a target, not counting its own past.
    void SetMaxPredictors(int count);
    /// Sets the confidence level of outliers, above 0 and below 1: a residual is an outlier if its
    /// p value is below 1 - `level`. docs/tcm.md describes the test.
    void SetOutlierLevel(double level);

    /// Replaces `job` by the text of the job that Train would run for this model file. Returns
    /// false without an input.
    bool GenerateHVL(const std::string& modelPath, std::string& job);
    /// Runs the job, shows its messages and ends its execution. The model file gets its name only
    /// if the job succeeds and the file is complete. It then replaces a file of that name;
    /// otherwise that file is unchanged. Returns false if the job fails, is cancelled or is
    /// refused, if the model cannot be written, or if the time is a field of texts whose name needs
    /// quotes in a job.
    bool Train(const std::string& modelPath);
    /// Returns why the last Train failed: what the job reported or, if it reported nothing, the
    /// problem that was found. In the second case only `errorText` is set. Returns false, and sets
    /// nothing, if there is no reason.
    bool hasError(std::string& errorId, std::string& errorText, std::string& errorDetail) const;
    /// The messages of the last job, in order of arrival.
    const std::vector<std::string>& getMessages() const;
    /// The text of the last job.
    const std::string& GetHVLJob() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
