#include "components/descriptives/settings/DescriptivesSettings.h"

#include <algorithm>
#include <charconv>
#include <variant>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/descriptives/model/FieldSummary.h"
#include "datafile/ColumnTypes.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kDefaultDistinctValues = 1000;
constexpr std::int64_t kAnyNumber = -1;

/// Settings that the component does not support, each with the value that turns it off.
const std::pair<const char*, std::variant<bool, const char*>> kNotHonoured[] = {
    {"dataInterestingness", false},
    {"useFeatureSelection", "none"},
    {"useMissingValueHandling", false},
    {"zeroInflationHandling", false},
};
/// The number of threads is a setting of the whole engine.
constexpr const char* kThreads = "NumberOfThreads";

constexpr std::pair<const char*, ContainerKind> kContainerNames[] = {
    {"PMML", ContainerKind::Pmml},
    {"StatXML", ContainerKind::Statistics},
    {"JSON", ContainerKind::TimeIntervals},
    {"Results", ContainerKind::Results},
};
/// The kinds of containers with other names, by position.
constexpr ContainerKind kContainerPlaces[] = {ContainerKind::Pmml, ContainerKind::Statistics};

/// Whether the value turns the setting off. A value of another type does not.
bool isDefault(const Json& value, const std::variant<bool, const char*>& standard)
{
    if (const bool* flag = std::get_if<bool>(&standard))
        return value.is_boolean() && value.get<bool>() == *flag;
    return value.is_string() && value.get<std::string>() == std::get<const char*>(standard);
}

void tellNotHonoured(const StepCall& call, const MessageSink& tell, const char* key)
{
    tell(errors::kSettingNotHonoured,
         {.step = call.name,
          .setting = key,
          .what = "is " +
                  call.configuration[key].dump(-1, ' ', false, Json::error_handler_t::replace) +
                  ", which this engine does not do: it has no effect"});
}

void checkNotHonoured(const StepCall& call, const Settings& settings, const MessageSink& tell)
{
    for (const auto& [key, standard] : kNotHonoured)
        if (settings.has(key) && !isDefault(call.configuration[key], standard))
            tellNotHonoured(call, tell, key);
    if (settings.integer(kThreads))
        tellNotHonoured(call, tell, kThreads);
}

std::optional<Fields> fieldList(const StepCall& call, const Settings& settings,
                                const std::string& key)
{
    if (!settings.has(key))
        return std::nullopt;
    const Json& names = settings.neededList(key);
    Fields fields;
    FieldIndex known;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const CFField& field = call.inputField(settings.textAt(names, key, i));
        if (known.add(field.GetName()))
            fields.push_back(field);
    }
    return fields;
}

[[noreturn]] void refuseType(const Settings& settings, const std::string& key, const CFField& field,
                             const std::string& wanted)
{
    settings.refuse(key, "names \"" + field.GetName() + "\", which is " +
                             typeWordOf(field.GetStorage()) + ", not " + wanted);
}

/// Each date field is a point of time by itself.
void readDateFields(const StepCall& call, const Settings& settings, DescriptivesSettings& result)
{
    const std::string key = "stdDateTimeFieldList";
    for (const CFField& field : fieldList(call, settings, key).value_or(Fields())) {
        if (!isMoment(field))
            refuseType(settings, key, field, "a date, a time or a timestamp");
        result.points.push_back({field});
    }
}

/// The number fields of an inner list form a point of time together.
void readPeriodFields(const StepCall& call, const Settings& settings, DescriptivesSettings& result)
{
    const std::string key = "nonStdDateTimeFieldList";
    if (!settings.has(key))
        return;
    const Json& groups = settings.neededList(key);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::string place = key + "[" + std::to_string(i) + "]";
        Json wrapped = Json::object();
        wrapped[place] = groups[i];
        const Fields fields =
            fieldList(call, Settings(wrapped, settings.step()), place).value_or(Fields());
        for (const CFField& field : fields)
            if (!isNumber(field))
                refuseType(settings, place, field, "a number");
        if (!fields.empty())
            result.points.push_back(fields);
    }
}

void readWeight(const StepCall& call, const Settings& settings, DescriptivesSettings& result)
{
    const std::string key = "frequencyWeightField";
    const std::string name = settings.text(key).value_or("");
    if (name.empty())
        return;
    const CFField& field = call.inputField(name);
    if (!isNumber(field))
        refuseType(settings, key, field, "a number");
    result.weight = name;
}

/// Groups have numbers, so that a group without records can be described, too.
void readGroups(const StepCall& call, const Settings& settings, DescriptivesSettings& result)
{
    constexpr std::int64_t kMostGroups = 100000;
    const std::string key = "groupField";
    const std::string countKey = "groupCount";
    const std::string name = settings.text(key).value_or("");
    const std::optional<std::string> count = settings.text(countKey);
    if (name.empty())
        return;
    const CFField& field = call.inputField(name);
    if (field.GetStorage() != CFField::Integer)
        refuseType(settings, key, field, "an integer");
    std::int64_t groups = 0;
    const std::string text = count.value_or("");
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), groups);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size() || groups < 1 ||
        groups > kMostGroups)
        settings.refuse(countKey, "is \"" + text + "\", not a number from 1 to " +
                                      std::to_string(kMostGroups));
    result.groupField = name;
    result.groups = static_cast<std::size_t>(groups);
}

/// Without a list, every field except the weight and the group is described.
void readFields(const StepCall& call, const Settings& settings, DescriptivesSettings& result)
{
    if (auto listed = fieldList(call, settings, "inputFieldList")) {
        result.fields = std::move(*listed);
        return;
    }
    for (const CFField& field : call.input()->fields)
        if (field.GetName() != result.weight && field.GetName() != result.groupField)
            result.fields.push_back(field);
}

void readDistinctValues(const Settings& settings, DescriptivesSettings& result)
{
    const std::string key = "maxNOfDistinctValues";
    const std::int64_t most = settings.integer(key).value_or(kDefaultDistinctValues);
    if (most < kAnyNumber)
        settings.refuse(key, "is " + std::to_string(most) + ", not -1 or a count");
    if (most != kAnyNumber)
        result.mostDistinctValues = most;
}

/// The kind of a container, from its name or its position in the list.
ContainerKind kindOf(const StepCall& call, const std::string& name, std::size_t place)
{
    for (const auto& [known, kind] : kContainerNames)
        if (name == known)
            return kind;
    if (place >= std::size(kContainerPlaces))
        throw JobError(errors::kSettingType,
                       {.step = call.name,
                        .what = "the output container \"" + name +
                                "\" is unknown; known are PMML, StatXML, JSON and Results"});
    return kContainerPlaces[place];
}

void readContainers(StepCall& call, DescriptivesSettings& result)
{
    const std::vector<ComponentContainer> containers = outputContainers(call);
    for (std::size_t i = 0; i < containers.size(); ++i)
        result.containers.push_back({kindOf(call, containers[i].name, i), containers[i].path});
}

} // namespace

bool DescriptivesSettings::wants(ContainerKind kind) const
{
    return std::any_of(containers.begin(), containers.end(),
                       [kind](const OutputContainer& output) { return output.kind == kind; });
}

DescriptivesSettings descriptivesSettings(StepCall& call)
{
    const Settings settings = call.settings();
    DescriptivesSettings result;
    readWeight(call, settings, result);
    readGroups(call, settings, result);
    readFields(call, settings, result);
    readDateFields(call, settings, result);
    readPeriodFields(call, settings, result);
    readDistinctValues(settings, result);
    result.summaries = settings.flag("computeSummaryStats").value_or(true);
    result.stringDistributions = settings.flag("computeDistSummaryForString").value_or(true);
    result.trimsBlanks = settings.flag("trimTrailingBlank").value_or(false);
    result.analyses = analysisSettings(call, settings, result.fields);
    const MessageSink tell = [&](const std::string& id, const FaultParts& parts) {
        result.remarks.push_back(sentenceOf(parts));
        call.context.message(id, parts);
    };
    checkNotHonoured(call, settings, tell);
    settings.reportOthers(tell);
    readContainers(call, result);
    return result;
}

} // namespace EmbeddedHV
