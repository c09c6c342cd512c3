#pragma once

#include <string>
#include <vector>

#include "SvrDMDataset.h"
#include "dialog/HVInteractive.h"
#include "tcm/HVForecast.h"

class HVRawDataIterator;
class HVSimpleContainer;
struct PreparationReplay;
struct RecordFile;
struct ScoringStep;
struct SeriesForecast;
struct SeriesScoring;

/// Requests of a viewer of temporal causal models: what a model can do, what it predicts for a
/// series, and which series influence each other. A model is a file that HVTemporalTraining writes.
///
/// A caller names a series by the values of the model's dimension fields, one for each field in the
/// model's order, and by the name of a metric. Without dimensions the metric names the series.
///
///     HVInteractiveTSR viewer;
///     std::vector<double> actual;
///     std::vector<double> predicted;
///     if (viewer.GetScenarioInfo(dataset, modelPath, "month", "-11", "6", {}, {}, {}, "sales",
///                                {"region"}, {"north"}, actual, predicted))
///         draw(actual, predicted);
///
/// A request that needs data prepares them each time, with the settings of the training. Paths, and
/// the names given to getGatingInfo, are in the host's encoding. All other texts are UTF-8.
///
/// Errors: a request returns false, with a reason for hasError and getMessages, if a job failed, or
/// if the dataset or the data file is unknown or cannot be opened. It returns false without a
/// reason if the model is missing or damaged, or does not have a field or a series. A damaged model
/// or an unknown dataset does not make a request throw. Exceptions that the engine throws outside
/// the run of a job, and that Java throws while a job is composed, are passed on.
///
/// Cancel: a request that is cancelled runs no further job and returns false without a reason. Only
/// if its last job had already ended does it succeed. It leaves no file and no execution. Another
/// object can make the same request again; a cancelled object refuses all jobs.
class HVINTEG_EXPORT HVInteractiveTSR : public HVInteractive
{
public:
    /// Creates the runner; see HVInteractive.
    HVInteractiveTSR();
    HVInteractiveTSR(const HVInteractiveTSR&) = delete;
    HVInteractiveTSR& operator=(const HVInteractiveTSR&) = delete;
    /// Ends the runner; see HVInteractive.
    ~HVInteractiveTSR() override;

    /// Reads the parts of a model. As XML: the data models of all its fields, of the input and of
    /// the output of scoring, and its properties. As JSON: its network of series, and the settings
    /// and results of its data preparation. A request that fails may have set some of them.
    bool getModelCapabilities(const std::string& modelPath, std::string& fullDataModel,
                              std::string& inputDataModel, std::string& outputDataModel,
                              std::string& modelProperties, std::string& netGraph,
                              std::string& tsdpOutput);

    /// Appends actual and predicted values of a series in the order of time. Each point of time
    /// gives one value: an actual one up to the end of the data, a predicted one after it. Missing
    /// values are the host's system-missing value.
    ///
    /// The range is closed. Its ends are whole numbers: 0 is the last point of time of the
    /// training, 3 the third one after it. `timeField` is the model's field of the time, which may
    /// be a text; empty if the model has no such field. The reserved lists are not used.
    bool GetScenarioInfo(LocallyUniqueID dataset, const std::string& modelPath,
                         const std::string& timeField, const std::string& rangeStart,
                         const std::string& rangeEnd, const std::vector<std::string>& reservedNames,
                         const std::vector<long long>& reservedFirst,
                         const std::vector<long long>& reservedSecond,
                         const std::string& metricName, const std::vector<std::string>& dimFields,
                         const std::vector<std::string>& dimValues,
                         std::vector<double>& actualValues, std::vector<double>& predictedValues);

    /// Predicts a series for all points of time, from the first one of the training to
    /// `request.horizon` points after the data, with bounds and with values that the caller gives.
    /// Series, dataset and model are named as in GetScenarioInfo. A point of the data has its
    /// actual value and its one-step prediction. The field of the time is that of the model. If
    /// reading fails, `forecast` keeps the points read so far. The messages are those of the
    /// preparation and of the scoring.
    bool getForecast(LocallyUniqueID dataset, const std::string& modelPath,
                     const std::string& metricName, const std::vector<std::string>& dimFields,
                     const std::vector<std::string>& dimValues, const HVForecastRequest& request,
                     HVSeriesForecast& forecast);

    /// Returns statistics of a model as JSON. `artifacts` is a JSON list of objects, each with the
    /// name of an artifact and its settings; docs/tcm.md lists them. Uses the cases of a dataset,
    /// or the model alone with kNoDataset.
    bool getModelStatistics(LocallyUniqueID dataset, const std::string& modelPath,
                            const std::vector<std::string>& dimFields, const std::string& artifacts,
                            std::string& statJson);

    /// Returns the effects and the causes of a series as JSON, up to `level` edges away in the
    /// network. Uses the cases of a dataset, or the model alone with kNoDataset. `flag` is not
    /// used.
    bool getImpactDiagram(LocallyUniqueID dataset, const std::string& modelPath,
                          const std::string& metricName, const std::vector<std::string>& dimFields,
                          const std::vector<std::string>& dimValues, bool flag, int level,
                          std::string& statJson);

    /// Describes the data for a training: a dataset, or the file `dataPath` with kNoDataset.
    /// `dataModel` (XML) receives the data model of the fields with their distinct values. The
    /// limit is `maxValues` + 1, but 105 if `maxValues` is below 100; a field with more values
    /// lists none. `timeInterval` (JSON) receives the time interval of the date field. Without
    /// fields or without a date field, that result is empty; without both, the request fails.
    bool getGatingInfo(LocallyUniqueID dataset, const std::string& dataPath,
                       const std::string& dateTimeField, const std::vector<std::string>& fields,
                       int maxValues, std::string& timeInterval, std::string& dataModel);

private:
    /// Copies rows or a file to another file, and converts a field of texts to timestamps. Returns
    /// false, and shows no messages, if the rows were cancelled.
    HVINTEG_HIDDEN bool ConvertTimeStr(const std::string& timeField, HVRawDataIterator& iterator,
                                       const RecordFile& output);
    HVINTEG_HIDDEN bool ConvertTimeStr(const std::string& timeField, const RecordFile& input,
                                       const RecordFile& output);

    /// Reads the settings of the model's data preparation, and finds the dataset's columns.
    HVINTEG_HIDDEN bool fitSettings(PreparationReplay& replay);
    /// Runs the preparation. `timeField` may be empty or a field of texts.
    HVINTEG_HIDDEN bool prepareData(PreparationReplay& replay, const std::string& timeField);
    /// Copies rows to a file, whose data model lists the distinct values of the dimension fields.
    HVINTEG_HIDDEN bool UpdateDataModel(const std::vector<std::string>& dimFields,
                                        HVRawDataIterator& iterator, const RecordFile& output);
    /// Prepares rows or a file with these settings (JSON).
    HVINTEG_HIDDEN bool RunTSDP(HVRawDataIterator& iterator, const std::string& settings,
                                const HVSimpleContainer& jsonOutput, const RecordFile& output);
    HVINTEG_HIDDEN bool RunTSDP(const RecordFile& input, const std::string& settings,
                                const HVSimpleContainer& jsonOutput, const RecordFile& output);
    HVINTEG_HIDDEN bool runPreparation(const std::string& job, HVRawDataIterator* iterator);

    /// Scores a series and appends its values.
    HVINTEG_HIDDEN bool scoreSeries(const SeriesScoring& scoring, const ScoringStep& step);
    HVINTEG_HIDDEN bool forecastSeries(const SeriesForecast& forecast, const ScoringStep& step,
                                       HVSeriesForecast& result);
    /// The result of the output component, and the request that asks for it.
    struct Answer
    {
        std::string& statJson;
        const char* operation;
    };
    /// Prepares the data, if there is a dataset, and runs the component.
    HVINTEG_HIDDEN bool runOutputComponent(PreparationReplay& data, const std::string& settings,
                                           const HVSimpleContainer& output, const Answer& answer);
};
