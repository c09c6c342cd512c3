#include "descriptive/HVDescriptive.h"

#include <utility>
#include <variant>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "data/HVRawDataIterator.h"
#include "data/HVSimpleContainer.h"
#include "hvl/TextJob.h"
#include "runner/ExecutionScope.h"
#include "runner/HVRunner.h"
#include "support/Tracing.h"
#include "support/ZipReader.h"

namespace {

/// Default settings. Some values are the word "none" where a boolean is expected: the component
/// distinguishes the two.
const std::pair<const char*, std::variant<bool, const char*>> kDefaultSettings[] = {
    {"computeSummaryStats", true},        {"computeDistSummaryForString", true},
    {"computeCustomPercentiles", false},  {"customPercentilesAccuracy", "none"},
    {"computeAllPercentiles", false},     {"computeAllTargetInputPairs", false},
    {"storageTypeHandling", "none"},      {"fieldRoleHandling", "none"},
    {"measureHandling", "none"},          {"computeDistSummaryForNumeric", "none"},
    {"computeBivStatsForBDP", false},     {"identifyExtremeOutliers", false},
    {"dataInterestingness", false},       {"useFeatureSelection", "none"},
    {"useEqualFreqBinning", false},       {"useMissingValueHandling", false},
    {"useSupervisedMerging", false},      {"zeroInflationDetection", false},
    {"zeroInflationHandling", false},     {"trimTrailingBlank", false},
    {"computeDateDuration", false},       {"computeTimeDuration", false},
    {"outlierHandlingMethod", "markOut"}, {"outlierDetectionMethod", "none"},
};

constexpr const char* kStep = "-> descriptives:descriptives( deConf, _,outCon)\n";
constexpr const char* kStatMember = "StatXML.xml";
constexpr const char* kIntervalMember = "TIME_INTERVAL.json";
constexpr const char* kModelBegin = "<DataModel>";
constexpr const char* kModelEnd = "</DataModel>";
constexpr const char* kSummaries = "<DatasetSummaries>";
constexpr const char* kTraceLabel = "HVINTEG";

/// The path of a result in the host's encoding. The path that the engine got is UTF-8, which the
/// file functions do not accept in other code pages.
std::string archiveOf(const HVSimpleContainer& container)
{
    return container.getGenericPath();
}

/// The data model of a result, without the summaries, which CFMetaData does not know. Throws
/// std::out_of_range if there is no data model.
std::string modelOf(const std::string& statXml)
{
    std::string model = statXml.substr(statXml.find(kModelBegin));
    model = model.substr(0, model.find(kSummaries));
    if (model.find(kModelEnd) == std::string::npos)
        model += kModelEnd;
    return model;
}

void putFields(JNIJSONArray& array, const std::vector<std::string>& fields)
{
    for (const std::string& field : fields)
        array.add(field.c_str());
}

} // namespace

/// The input, the settings and the results of the last job.
struct HVINTEG_HIDDEN HVDescriptive::Impl
{
    Impl(HVRunner& owner, HVRawDataIterator* rows, std::string text);

    /// Name of the field with the role of a frequency weight, or empty.
    std::string weightField() const;
    /// Sets the fields to describe, without the weight field.
    void putInputFields(const std::vector<std::string>& fields, const std::string& weight);
    /// Numeric date fields form one group of possibly several. The setting is therefore a list of
    /// lists.
    void putDateFields(const std::vector<std::string>& fields, bool standard);
    /// Sets the default of every setting, so that the job text contains all.
    void BuildDescriptiveJson();
    /// Generates the job: definitions of settings and containers, and a pipeline from the input to
    /// the step.
    std::string GetHVL(const std::vector<HVSimpleContainer*>& containers);
    /// Generates and runs one job with these two containers and the further ones, and shows its
    /// messages. Returns false if the iterator cannot be rewound or the job fails.
    bool RunDescriptive(HVSimpleContainer* first, HVSimpleContainer* second);
    /// Returns false if the engine throws while the job runs.
    bool execute();
    /// Both read one member of an archive that the job wrote. A missing member leaves the result
    /// unchanged, a damaged one clears it.
    bool readModel(const HVSimpleContainer& stat, std::string& model);
    static bool readInterval(const HVSimpleContainer& json, std::string& interval);

    HVRunner& runner;
    HVRawDataIterator* iterator;
    std::string readText;
    std::vector<HVSimpleContainer*> furtherContainers;
    JNIJSONObject settings;
    std::string statXml;
    std::string jobText;
};

HVDescriptive::Impl::Impl(HVRunner& owner, HVRawDataIterator* rows, std::string text)
    : runner(owner), iterator(rows), readText(std::move(text))
{
    BuildDescriptiveJson();
}

void HVDescriptive::Impl::BuildDescriptiveJson()
{
    for (const auto& [key, value] : kDefaultSettings) {
        if (const bool* flag = std::get_if<bool>(&value))
            settings.put(key, *flag);
        else
            settings.put(key, std::get<const char*>(value));
    }
}

std::string HVDescriptive::Impl::weightField() const
{
    const CFMetaData& model = iterator->getMetaData();
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        if (model.GetField(i)->GetRole() == CFField::FrequencyWeight)
            return model.GetField(i)->GetName();
    return {};
}

std::string HVDescriptive::Impl::GetHVL(const std::vector<HVSimpleContainer*>& containers)
{
    std::string list;
    for (const HVSimpleContainer* container : containers)
        list += (list.empty() ? "" : ",") + exportedContainer(*container);
    std::string text = definition("deConf", settings.toString());
    text += definition("outCon", "[" + list + "]");
    text += iterator ? "read(" + iteratorReader(*iterator) + ") " : readText;
    return text + kStep;
}

bool HVDescriptive::Impl::RunDescriptive(HVSimpleContainer* first, HVSimpleContainer* second)
{
    if (iterator && iterator->Rewind(false) != 0)
        return false;
    std::vector<HVSimpleContainer*> containers = {first, second};
    containers.insert(containers.end(), furtherContainers.begin(), furtherContainers.end());
    jobText = GetHVL(containers);
    traceHVLFile(jobText, kTraceLabel, "HVDescriptive");
    const ExecutionScope execution(runner);
    runner.prepareHVLJob(jobText);
    if (iterator)
        runner.addInputIterator(iterator);
    for (HVSimpleContainer* container : containers)
        runner.addOutputContainer(container);
    const bool succeeded = execute();
    runner.displayAllMessages(true, true);
    runner.cleanExecution();
    return succeeded;
}

bool HVDescriptive::Impl::execute()
{
    try {
        return runner.execute();
    } catch (...) {
        return false;
    }
}

void HVDescriptive::Impl::putInputFields(const std::vector<std::string>& fields,
                                         const std::string& weight)
{
    JNIJSONArray array;
    for (const std::string& field : fields)
        if (weight.empty() || field != weight)
            array.add(field.c_str());
    settings.put("inputFieldList", &array);
}

void HVDescriptive::Impl::putDateFields(const std::vector<std::string>& fields, bool standard)
{
    JNIJSONArray array;
    putFields(array, fields);
    if (standard) {
        settings.put("stdDateTimeFieldList", &array);
        return;
    }
    JNIJSONArray groups;
    groups.add(&array);
    settings.put("nonStdDateTimeFieldList", &groups);
}

bool HVDescriptive::Impl::readModel(const HVSimpleContainer& stat, std::string& model)
{
    ZipReader reader(archiveOf(stat));
    if (!reader.GotoFile(kStatMember))
        return false;
    if (!reader.ExportString(statXml)) {
        model.clear();
        return false;
    }
    traceXMLFile(statXml, kTraceLabel, "HVDescriptive_DataModel");
    model = modelOf(statXml);
    return true;
}

bool HVDescriptive::Impl::readInterval(const HVSimpleContainer& json, std::string& interval)
{
    ZipReader reader(archiveOf(json));
    if (!reader.GotoFile(kIntervalMember))
        return false;
    std::string text;
    if (!reader.ExportString(text)) {
        interval.clear();
        return false;
    }
    traceJSONFile(text, kTraceLabel, "HVDescriptive_AutoDetect");
    interval = text;
    return true;
}

HVDescriptive::HVDescriptive(HVRunner& runner, HVRawDataIterator* iterator)
    : _impl(std::make_unique<Impl>(runner, iterator, std::string()))
{
}

HVDescriptive::HVDescriptive(HVRunner& runner, std::string readText)
    : _impl(std::make_unique<Impl>(runner, nullptr, std::move(readText)))
{
}

HVDescriptive::~HVDescriptive() = default;

void HVDescriptive::SetDESetting(const std::string& key, const std::string& value)
{
    _impl->settings.put(key, value.c_str());
}

void HVDescriptive::SetDESetting(const std::string& key, const bool& value)
{
    _impl->settings.put(key, value);
}

void HVDescriptive::SetNThreads(int threads)
{
    if (threads > 0)
        _impl->settings.put("NumberOfThreads", threads);
}

void HVDescriptive::AddOutputContainer(HVSimpleContainer& container)
{
    _impl->furtherContainers.push_back(&container);
}

bool HVDescriptive::BuildMetaData(const std::vector<std::string>* fields, CFMetaData& metadata,
                                  int maxDistinctValues, bool useWeight)
{
    if (!fields || fields->empty())
        return false;
    const std::string weight = useWeight && _impl->iterator ? _impl->weightField() : std::string();
    _impl->putInputFields(*fields, weight);
    _impl->settings.put("maxNOfDistinctValues", maxDistinctValues);
    if (!weight.empty())
        _impl->settings.put("frequencyWeightField", weight.c_str());
    HVSimpleContainer pmml("PMML", "");
    HVSimpleContainer stat("StatXML", "");
    if (!_impl->RunDescriptive(&pmml, &stat))
        return false;
    ZipReader reader(archiveOf(stat));
    if (!reader.GotoFile(kStatMember) || !reader.ExportString(_impl->statXml))
        return false;
    traceXMLFile(_impl->statXml, kTraceLabel,
                 weight.empty() ? "HVDescriptive_DataModel" : "HVDesc_Weight_DataModel");
    metadata = CFMetaData(modelOf(_impl->statXml), nullptr);
    return true;
}

bool HVDescriptive::UpdateDateModel(const std::vector<std::string>* inputFields,
                                    const std::vector<std::string>* dateFields, bool standardDates,
                                    std::string& timeInterval, std::string& dataModel,
                                    int maxDistinctValues)
{
    if (!inputFields || !dateFields)
        return false;
    if (inputFields->empty() && dateFields->empty()) {
        dataModel.clear();
        timeInterval.clear();
        return false;
    }
    if (!inputFields->empty())
        _impl->putInputFields(*inputFields, "");
    if (!dateFields->empty())
        _impl->putDateFields(*dateFields, standardDates);
    _impl->settings.put("maxNOfDistinctValues", maxDistinctValues);
    HVSimpleContainer json("JSON", "");
    HVSimpleContainer stat("StatXML", "");
    if (!_impl->RunDescriptive(&json, &stat))
        return false;
    bool result = true;
    if (inputFields->empty())
        dataModel.clear();
    else
        result = _impl->readModel(stat, dataModel);
    if (dateFields->empty()) {
        timeInterval.clear();
        return result;
    }
    return Impl::readInterval(json, timeInterval);
}

const std::string& HVDescriptive::GetStatXML() const
{
    return _impl->statXml;
}

const std::string& HVDescriptive::GetHVLJob() const
{
    return _impl->jobText;
}
