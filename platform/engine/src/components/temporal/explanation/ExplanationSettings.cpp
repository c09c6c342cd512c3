#include "components/temporal/explanation/ExplanationSettings.h"

#include <algorithm>
#include <iterator>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/temporal/scoring/Scoring.h"

namespace EmbeddedHV {
namespace {

/// The settings that an artifact takes or requires.
struct ArtifactForm
{
    const char* name;
    ArtifactKind kind;
    bool takesTarget = false;
    bool needsTarget = false;
    bool takesLevel = false;
    std::int64_t defaultLevel = 1;
};

constexpr ArtifactForm kArtifactForms[] = {
    {"interpretation.ImpactDiagramEffects", ArtifactKind::ImpactEffects, true, true, true},
    {"interpretation.ImpactDiagramCauses", ArtifactKind::ImpactCauses, true, true, true},
    {"network", ArtifactKind::Network},
    {"fit", ArtifactKind::Fit, true},
    {"equations", ArtifactKind::Equations, true},
    {"outliers", ArtifactKind::Outliers, true},
    {"rootCause", ArtifactKind::RootCause, true, true, true, 3},
    {"forecast", ArtifactKind::Forecast, true, true},
};

constexpr std::pair<const char*, TimeOfDay> kTimeFormats[] = {
    {"hh:mm:ss", TimeOfDay::Seconds},
    {"HH:mm:ss", TimeOfDay::Seconds},
    {"hh:mm", TimeOfDay::Minutes},
    {"HH:mm", TimeOfDay::Minutes},
};

const ArtifactForm& artifactForm(const Settings& settings)
{
    const std::string name = settings.neededText("name");
    const auto* found = std::find_if(std::begin(kArtifactForms), std::end(kArtifactForms),
                                     [&](const ArtifactForm& form) { return name == form.name; });
    if (found != std::end(kArtifactForms))
        return *found;
    std::vector<std::string_view> names;
    for (const ArtifactForm& form : kArtifactForms)
        names.emplace_back(form.name);
    settings.refuse("name", "is \"" + name + "\", which is not an artifact" +
                                base::suggestion(name, names));
}

class RequestReader
{
public:
    RequestReader(const TcmModel& model, const SeriesLookup& lookup, bool isEncoded)
        : _model(model), _lookup(lookup), _isEncoded(isEncoded)
    {
    }

    ArtifactRequest request(const Settings& settings) const
    {
        const ArtifactForm& form = artifactForm(settings);
        ArtifactRequest request;
        request.kind = form.kind;
        request.name = form.name;
        if (form.takesTarget && (form.needsTarget || settings.has("target")))
            request.targets = targets(settings, form.needsTarget);
        if (form.takesLevel)
            request.level = level(settings, form.defaultLevel);
        if (form.kind == ArtifactKind::Forecast)
            readForecast(settings, request);
        return request;
    }

private:
    static std::int64_t level(const Settings& settings, std::int64_t otherwise)
    {
        const std::int64_t level = settings.integer("level").value_or(otherwise);
        if (level < 1)
            settings.refuse("level", "is " + std::to_string(level) + ", not 1 or more");
        return level;
    }

    static void readForecast(const Settings& settings, ArtifactRequest& request)
    {
        request.span = settings.integer("forecastSpan").value_or(0);
        if (request.span < 0 || request.span > kLongestForecast)
            settings.refuse("forecastSpan", "is " + std::to_string(request.span) +
                                                ", not a number from 0 to " +
                                                std::to_string(kLongestForecast));
        if (const auto level = settings.number("confidenceLevel"))
            request.confidenceLevel =
                level->IsInteger() ? static_cast<double>(level->GetInteger()) : level->GetReal();
        if (!(request.confidenceLevel > 0 && request.confidenceLevel < 1))
            settings.refuse("confidenceLevel", "is not a number between 0 and 1");
    }

    std::vector<std::size_t> targets(const Settings& settings, bool isNeeded) const
    {
        const Json& list = settings.neededList("target");
        if (isNeeded && list.empty())
            settings.refuse("target", "names no series");
        std::vector<std::size_t> places;
        for (std::size_t i = 0; i < list.size(); ++i) {
            const std::size_t place = series(settings, list, i);
            if (std::find(places.begin(), places.end(), place) == places.end())
                places.push_back(place);
        }
        return places;
    }

    std::size_t series(const Settings& settings, const Json& list, std::size_t index) const
    {
        if (!_isEncoded)
            return _lookup.placeAt(settings, list, "target", index);
        const std::string key = "target[" + std::to_string(index) + "]";
        if (!list[index].is_array() || list[index].size() != 1)
            settings.refuse(key, "is not a list of one text, the id of a series");
        const std::string id = settings.textAt(list[index], key, 0);
        if (const auto place = _model.placeOf(id))
            return *place;
        throw JobError(errors::kUnknownSeries,
                       {.step = settings.step(),
                        .setting = settings.pathOf(key),
                        .name = id,
                        .what = "names the id \"" + id + "\", which no series of the model has"});
    }

    const TcmModel& _model;
    const SeriesLookup& _lookup;
    bool _isEncoded;
};

void reportNotHonoured(const StepCall& call, const std::string& key, const std::string& value,
                       const std::string& instead)
{
    call.context.message(
        errors::kOutputNotHonoured,
        {.step = call.name, .setting = key, .what = "is \"" + value + "\"; " + instead});
}

TimeOfDay wantedTimeOfDay(const StepCall& call, const Settings& settings)
{
    const std::string format = settings.text("timeFormat").value_or("");
    for (const auto& [known, shown] : kTimeFormats)
        if (format == known)
            return shown;
    if (!format.empty())
        reportNotHonoured(call, "timeFormat", format, "times are written as hh:mm:ss");
    return TimeOfDay::Seconds;
}

} // namespace

ExplanationSettings explanationSettings(const StepCall& call, const TcmModel& model,
                                        const SeriesLookup& lookup)
{
    const Settings settings = call.settings();
    ExplanationSettings result;
    result.isEncoded = settings.flag("isEncoded").value_or(false);
    const RequestReader reader(model, lookup, result.isEncoded);
    const Json& artifacts = settings.neededList("artifacts");
    for (std::size_t i = 0; i < artifacts.size(); ++i) {
        const Settings artifact = settings.objectAt(artifacts, "artifacts", i);
        result.artifacts.push_back(reader.request(artifact));
        artifact.reportOthers(call.context.message);
    }
    settings.text("locale"); // the result is the same in each locale; the host translates its words
    result.timeOfDay = wantedTimeOfDay(call, settings);
    settings.reportOthers(call.context.message);
    return result;
}

} // namespace EmbeddedHV
