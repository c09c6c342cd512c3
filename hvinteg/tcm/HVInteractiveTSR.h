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

/// What a viewer of temporal causal models asks: what a model can do, what it predicts for a
/// series, and what influences what. A model is a finished archive, which HVTemporalTraining makes.
///
/// A series is told by the values of the model's dimension fields, one for each of them in the
/// model's order, and by the name of a metric. A model without dimensions has none of the former.
///
///     HVInteractiveTSR viewer;
///     std::vector<double> actual;
///     std::vector<double> predicted;
///     if (viewer.GetScenarioInfo(dataset, modelPath, "month", "-11", "6", {}, {}, {}, "sales",
///                                {"region"}, {"north"}, actual, predicted))
///         draw(actual, predicted);
///
/// What needs data prepares them as the model's own were, anew at each request. Paths are in the
/// host's encoding, as are the names given to getGatingInfo; all other texts are UTF-8.
///
/// Errors: a request is false, with a reason for hasError and getMessages, if a job failed, and if
/// the dataset or the data file is unknown or cannot be opened. It is false without a reason if the
/// model is missing or damaged, or does not know a field or a series. No damaged model and no
/// unknown dataset makes a request throw. Exceptions of the engine outside the run of a job, and of
/// Java while a job is composed, pass.
class HVINTEG_EXPORT HVInteractiveTSR : public HVInteractive
{
public:
    HVInteractiveTSR();
    HVInteractiveTSR(const HVInteractiveTSR&) = delete;
    HVInteractiveTSR& operator=(const HVInteractiveTSR&) = delete;
    ~HVInteractiveTSR() override;

    /// What a model is made of: the data models of all its fields, of what scoring reads and of
    /// what it writes, and its properties, XML; its network of series, and the settings and results
    /// of its data preparation, JSON. A request that fails leaves what it read until then.
    bool getModelCapabilities(const std::string& modelPath, std::string& fullDataModel,
                              std::string& inputDataModel, std::string& outputDataModel,
                              std::string& modelProperties, std::string& netGraph,
                              std::string& tsdpOutput);

    /// Actual and predicted values of a series, appended in the order of time: for each point of
    /// time one value, an actual one up to the end of the data, a predicted one beyond it. Missing
    /// ones are the host's system-missing value.
    ///
    /// The range is closed. Its ends are whole numbers: 0 is the last point of time that the model
    /// was trained on, 3 the third one behind it. The point of time comes from the field
    /// `timeField`, a text maybe; without a name it is told by other fields. The reserved lists
    /// take no part.
    bool GetScenarioInfo(LocallyUniqueID dataset, const std::string& modelPath,
                         const std::string& timeField, const std::string& rangeStart,
                         const std::string& rangeEnd, const std::vector<std::string>& reservedNames,
                         const std::vector<long long>& reservedFirst,
                         const std::vector<long long>& reservedSecond,
                         const std::string& metricName, const std::vector<std::string>& dimFields,
                         const std::vector<std::string>& dimValues,
                         std::vector<double>& actualValues, std::vector<double>& predictedValues);

    /// The same for all points of time from the first one of the training to `request.horizon` ones
    /// behind the data, with the bounds of the predicted values and with values that the caller
    /// gives. A point of the data has its actual value and the one predicted a step ahead. The
    /// field of the time is that of the model. `forecast` has what was read until a failure. The
    /// messages are those of the preparation and of the scoring.
    bool getForecast(LocallyUniqueID dataset, const std::string& modelPath,
                     const std::string& metricName, const std::vector<std::string>& dimFields,
                     const std::vector<std::string>& dimValues, const HVForecastRequest& request,
                     HVSeriesForecast& forecast);

    /// What the engine says of a model, as JSON: `artifacts` is a JSON list of objects, each with
    /// the name of an artifact and what it needs; docs/tcm.md lists them. On the cases of a
    /// dataset, or by the model alone with kNoDataset.
    bool getModelStatistics(LocallyUniqueID dataset, const std::string& modelPath,
                            const std::vector<std::string>& dimFields, const std::string& artifacts,
                            std::string& statJson);

    /// The effects of a series and its causes, `level` steps through the network, as JSON: on the
    /// cases of a dataset, or by the model alone with kNoDataset. `flag` takes no part.
    bool getImpactDiagram(LocallyUniqueID dataset, const std::string& modelPath,
                          const std::string& metricName, const std::vector<std::string>& dimFields,
                          const std::vector<std::string>& dimValues, bool flag, int level,
                          std::string& statJson);

    /// What there is to model in a dataset, or in the file `dataPath` with kNoDataset: the data
    /// model of the fields, with up to `maxValues` distinct values of each and some to tell that
    /// there are more, XML; and the time interval of the date field, JSON. Either may be left out,
    /// and its result is empty then; not both.
    bool getGatingInfo(LocallyUniqueID dataset, const std::string& dataPath,
                       const std::string& dateTimeField, const std::vector<std::string>& fields,
                       int maxValues, std::string& timeInterval, std::string& dataModel);

private:
    /// Turns a field of texts into timestamps, on the way from rows or a file to another file.
    /// False, without messages, if the rows were cancelled.
    bool ConvertTimeStr(const std::string& timeField, HVRawDataIterator& iterator,
                        const RecordFile& output);
    bool ConvertTimeStr(const std::string& timeField, const RecordFile& input,
                        const RecordFile& output);

    /// Reads the settings of the model's data preparation, and finds the dataset's columns.
    bool fitSettings(PreparationReplay& replay);
    /// Runs the preparation. The field of the time, if there is one, may be a text.
    bool prepareData(PreparationReplay& replay, const std::string& timeField);
    /// Copies rows to a file, whose data model lists the distinct values of the dimension fields.
    bool UpdateDataModel(const std::vector<std::string>& dimFields, HVRawDataIterator& iterator,
                         const RecordFile& output);
    /// Prepares rows or a file as `settings`, JSON, say.
    bool RunTSDP(HVRawDataIterator& iterator, const std::string& settings,
                 const HVSimpleContainer& jsonOutput, const RecordFile& output);
    bool RunTSDP(const RecordFile& input, const std::string& settings,
                 const HVSimpleContainer& jsonOutput, const RecordFile& output);
    bool runPreparation(const std::string& job, HVRawDataIterator* iterator);

    /// Scores a series, and appends its values.
    bool scoreSeries(const SeriesScoring& scoring, const ScoringStep& step);
    bool forecastSeries(const SeriesForecast& forecast, const ScoringStep& step,
                        HVSeriesForecast& result);
    /// Where the output component's answer goes, and which request asks.
    struct Answer
    {
        std::string& statJson;
        const char* operation;
    };
    /// Runs the component on data, which it prepares, or on the model alone.
    bool runOutputComponent(PreparationReplay& data, const std::string& settings,
                            const HVSimpleContainer& output, const Answer& answer);
};
