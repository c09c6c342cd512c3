#include "tcm/HVTemporalTraining.h"

#include <fstream>

#include "CFMetaData.h"
#include "EngineException.h"
#include "ExtNameStr.h"
#include "data/HVRawDataIterator.h"
#include "data/HVSimpleContainer.h"
#include "hvl/TextJob.h"
#include "runner/ExecutionScope.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "support/ReplacementFile.h"
#include "support/Tracing.h"
#include "tcm/TemporalJobText.h"
#include "tcm/TimeConversion.h"
#include "tcm/TrainingSettings.h"

namespace {

constexpr const char* kPreparationContainer = "JSON";
constexpr const char* kModelContainer = "TCM";
constexpr const char* kCaseCount = "$casecount";

bool isTextIn(const CFMetaData& model, const std::string& field)
{
    const CFField* const found = model.GetField(field);
    return found != nullptr && found->GetStorage() == CFField::String;
}

std::string listOfOne(const std::string& element)
{
    return "[" + element + "]";
}

/// Gives the model its name. A name that is there keeps its file until the new one is whole.
bool publish(const HVSimpleContainer& model, const std::string& path)
{
    ReplacementFile file(path);
    std::ifstream written;
    ExtNameStr::Open(written, ExtNameStr(model.getGenericPath()), std::ios::in | std::ios::binary);
    if (!file.isOpen() || !written.is_open() || written.peek() == std::ifstream::traits_type::eof())
        return false;
    file.stream() << written.rdbuf();
    return file.stream().good() && file.finish();
}

} // namespace

/// The input, the settings, and what became of the last job.
struct HVINTEG_HIDDEN HVTemporalTraining::Impl
{
    Impl(HVRunner& owner, HVRawDataIterator* iterator, const std::string& text)
        : runner(owner), rows(iterator), readText(text)
    {
    }

    bool hasInput() const { return rows != nullptr || !readText.empty(); }
    bool isTimeText() const
    {
        return !settings.timeField.empty() &&
               (settings.isTimeText ||
                (rows != nullptr && isTextIn(rows->getMetaData(), settings.timeField)));
    }
    std::string compose(const HVSimpleContainer& preparation, const HVSimpleContainer& model) const;
    bool check(const std::string& modelPath);
    bool run(const HVSimpleContainer& preparation, const HVSimpleContainer& model);
    bool execute();

    HVRunner& runner;
    HVRawDataIterator* rows;
    std::string readText;
    TrainingSettings settings;
    std::string job;
    std::string reason; ///< why Train failed, if the job did not report it
    std::vector<std::string> messages;
};

std::string HVTemporalTraining::Impl::compose(const HVSimpleContainer& preparation,
                                              const HVSimpleContainer& model) const
{
    const bool convertsTime = isTimeText();
    return definition("tsdpConf", preparationJson(settings)) +
           outputLine("tsdpOutCon", preparation) + definition("trainConf", trainingJson(settings)) +
           definition("trainInCon", listOfOne(importedContainer(kPreparationContainer,
                                                                preparation.getAbsolutePath()))) +
           outputLine("trainOutCon", model) +
           (convertsTime ? GetToTimestampLambda(settings.timeField) + "\n" : "") +
           (rows != nullptr ? "read(" + iteratorReader(*rows) + ")" : readText) +
           (convertsTime ? "->reclassifyField(_,toTS)" : "") +
           "->tsdp:tsdp(tsdpConf,_,tsdpOutCon)->tcm:train(trainConf,trainInCon,trainOutCon)";
}

/// Tests that fail early, before the engine works for long.
bool HVTemporalTraining::Impl::check(const std::string& modelPath)
{
    if (!hasInput())
        reason = "There are no data to train the model on.";
    // The conversion writes the field without quotes. Only a name cannot add steps to the job.
    else if (isTimeText() && !isPlainName(settings.timeField))
        reason = "The time field \"" + settings.timeField +
                 "\" cannot be converted: its name needs quotes in a job.";
    else if (!ReplacementFile(modelPath).isOpen())
        reason = "The model file \"" + modelPath + "\" cannot be written.";
    else if (rows != nullptr && rows->Rewind(false) != EmbeddedHV::RowDataIterator::RecordAvailable)
        reason = "The data cannot be read from their first record on.";
    return reason.empty();
}

bool HVTemporalTraining::Impl::run(const HVSimpleContainer& preparation,
                                   const HVSimpleContainer& model)
{
    job = compose(preparation, model);
    traceHVLFile(job, "TCM_API", "TRAIN");
    const ExecutionScope execution(runner);
    if (!runner.prepareHVLJob(job))
        return false;
    if (rows != nullptr)
        runner.addInputIterator(rows);
    const bool isDone =
        execute() && runner.getProgressListener()->getState() == HVProgressListener::Succeeded;
    messages = runner.getProgressListener()->getMessages();
    runner.displayAllMessages(true, true);
    runner.cleanJRef();
    runner.cleanExecution();
    return isDone;
}

/// An exception of the engine while the job runs is a failure of the job, as in HVInteractive.
bool HVTemporalTraining::Impl::execute()
{
    try {
        return runner.execute();
    } catch (const EmbeddedHV::Exception& error) {
        reason = error.getMessage();
    } catch (const EmbeddedHV::JavaException& error) {
        reason = error.getMessage();
    }
    return false;
}

HVTemporalTraining::HVTemporalTraining(HVRunner& runner, HVRawDataIterator* iterator)
    : _impl(std::make_unique<Impl>(runner, iterator, std::string()))
{
}

HVTemporalTraining::HVTemporalTraining(HVRunner& runner, const std::string& readText)
    : _impl(std::make_unique<Impl>(runner, nullptr, readText))
{
}

HVTemporalTraining::~HVTemporalTraining() = default;

void HVTemporalTraining::SetTimeField(const std::string& field)
{
    _impl->settings.timeField = field;
    _impl->settings.cyclicFields.clear();
}

void HVTemporalTraining::SetTimeIsText(bool isText)
{
    _impl->settings.isTimeText = isText;
}

void HVTemporalTraining::SetCyclicFields(const std::vector<std::string>& fields)
{
    _impl->settings.timeField.clear();
    _impl->settings.cyclicFields = fields;
}

void HVTemporalTraining::SetCaseCountTime()
{
    SetCyclicFields({kCaseCount});
}

void HVTemporalTraining::SetTimeInterval(const std::string& unit, int increment)
{
    _impl->settings.intervalUnit = unit;
    _impl->settings.intervalIncrement = increment;
}

void HVTemporalTraining::SetWorkingDays(const std::vector<int>& days)
{
    _impl->settings.workingDays = days;
}

void HVTemporalTraining::SetWorkingHours(int from, int to)
{
    _impl->settings.workingHours = {from, to};
}

void HVTemporalTraining::SetDimensions(const std::vector<std::string>& fields)
{
    _impl->settings.dimensions = fields;
}

void HVTemporalTraining::SetMetrics(const std::vector<std::string>& fields)
{
    _impl->settings.metrics = fields;
}

void HVTemporalTraining::SetAggregation(const std::string& function)
{
    _impl->settings.aggregation = function;
}

void HVTemporalTraining::SetAggregation(const std::string& metric, const std::string& function)
{
    _impl->settings.aggregationOfMetrics[metric] = function;
}

void HVTemporalTraining::SetMissingValues(const std::string& method, double maxShare)
{
    _impl->settings.missingMethod = method;
    _impl->settings.maxMissingShare = maxShare;
}

void HVTemporalTraining::AddTarget(const Series& series)
{
    _impl->settings.targets.push_back(series);
}

void HVTemporalTraining::AddPredictor(const Series& series)
{
    _impl->settings.predictors.push_back(series);
}

void HVTemporalTraining::AddTargetAndPredictor(const Series& series)
{
    _impl->settings.both.push_back(series);
}

void HVTemporalTraining::ForcePredictor(const Series& target, const Series& predictor)
{
    _impl->settings.forced.emplace_back(target, predictor);
}

void HVTemporalTraining::ForbidPredictor(const Series& target, const Series& predictor)
{
    _impl->settings.forbidden.emplace_back(target, predictor);
}

void HVTemporalTraining::SetLags(int lags)
{
    _impl->settings.lags = lags;
    _impl->settings.maxLag.reset();
}

void HVTemporalTraining::SetMaxLag(int lags)
{
    _impl->settings.maxLag = lags;
    _impl->settings.lags.reset();
}

void HVTemporalTraining::SetCriterion(const std::string& criterion)
{
    _impl->settings.criterion = criterion;
}

void HVTemporalTraining::SetMaxPredictors(int count)
{
    _impl->settings.maxPredictors = count;
}

void HVTemporalTraining::SetOutlierLevel(double level)
{
    _impl->settings.outlierLevel = level;
}

bool HVTemporalTraining::GenerateHVL(const std::string& modelPath, std::string& job)
{
    if (!_impl->hasInput())
        return false;
    const HVSimpleContainer preparation(kPreparationContainer, "");
    const HVSimpleContainer model(kModelContainer, modelPath);
    job = _impl->compose(preparation, model);
    return true;
}

bool HVTemporalTraining::Train(const std::string& modelPath)
{
    _impl->reason.clear();
    _impl->messages.clear();
    _impl->job.clear();
    _impl->runner.getProgressListener()->reset();
    if (!_impl->check(modelPath))
        return false;
    const HVSimpleContainer preparation(kPreparationContainer, "");
    const HVSimpleContainer model(kModelContainer, "");
    if (!_impl->run(preparation, model))
        return false;
    if (publish(model, modelPath))
        return true;
    _impl->reason = "The model file \"" + modelPath + "\" cannot be written.";
    return false;
}

bool HVTemporalTraining::hasError(std::string& errorId, std::string& errorText,
                                  std::string& errorDetail) const
{
    if (_impl->runner.getProgressListener()->hasError(errorId, errorText, errorDetail))
        return true;
    if (!_impl->reason.empty())
        errorText = _impl->reason;
    return !_impl->reason.empty();
}

const std::vector<std::string>& HVTemporalTraining::getMessages() const
{
    return _impl->messages;
}

const std::string& HVTemporalTraining::GetHVLJob() const
{
    return _impl->job;
}
