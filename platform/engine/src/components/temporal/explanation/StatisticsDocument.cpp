#include "components/temporal/explanation/StatisticsDocument.h"

#include "components/temporal/explanation/StatisticsJson.h"

namespace EmbeddedHV {
namespace {

bool isAboutOneSeries(ArtifactKind kind)
{
    return kind == ArtifactKind::ImpactEffects || kind == ArtifactKind::ImpactCauses ||
           kind == ArtifactKind::RootCause;
}

void addMembers(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request)
{
    switch (request.kind) {
    case ArtifactKind::ImpactEffects:
    case ArtifactKind::ImpactCauses:
        return statistics::addImpact(text, explanation, request, request.targets.front());
    case ArtifactKind::Network:
        return statistics::addNetwork(text, explanation);
    case ArtifactKind::Fit:
        return statistics::addFit(text, explanation, request);
    case ArtifactKind::Equations:
        return statistics::addEquations(text, explanation, request);
    case ArtifactKind::Outliers:
        return statistics::addOutliers(text, explanation, request);
    case ArtifactKind::RootCause:
        return statistics::addRootCauses(text, explanation, request, request.targets.front());
    case ArtifactKind::Forecast:
        return statistics::addForecast(text, explanation, request);
    }
}

/// The artifact with the request that it answers.
std::string artifactText(const Explanation& explanation, const ArtifactRequest& request)
{
    ArtifactText text;
    text.add("name", request.name);
    if (!request.targets.empty()) {
        Json targets = Json::array();
        for (const std::size_t target : request.targets)
            targets.push_back(explanation.nameOf(target));
        text.add("target", targets);
    }
    if (isAboutOneSeries(request.kind))
        text.add("level", request.level);
    addMembers(text, explanation, request);
    return text.finish();
}

} // namespace

std::string statisticsDocument(const Explanation& explanation,
                               const std::vector<ArtifactRequest>& requests)
{
    std::string artifacts;
    const auto add = [&](const ArtifactRequest& request) {
        explanation.check();
        artifacts += (artifacts.empty() ? "\n" : ",\n") + artifactText(explanation, request);
    };
    for (const ArtifactRequest& request : requests) {
        if (!isAboutOneSeries(request.kind)) {
            add(request);
            continue;
        }
        ArtifactRequest one = request;
        for (const std::size_t target : request.targets) {
            one.targets = {target};
            add(one);
        }
    }
    return "{\"artifacts\": [" + artifacts + "\n]}\n";
}

} // namespace EmbeddedHV
