#include "components/temporal/StatisticsDocument.h"

#include "components/temporal/StatisticsJson.h"

namespace EmbeddedHV {
namespace {

bool isAboutOneSeries(ArtifactKind kind)
{
    return kind == ArtifactKind::ImpactEffects || kind == ArtifactKind::ImpactCauses ||
           kind == ArtifactKind::RootCause;
}

Json membersOf(const Explanation& explanation, const ArtifactRequest& request)
{
    switch (request.kind) {
    case ArtifactKind::ImpactEffects:
    case ArtifactKind::ImpactCauses:
        return statistics::impactMembers(explanation, request, request.targets.front());
    case ArtifactKind::Network:
        return statistics::networkMembers(explanation);
    case ArtifactKind::Fit:
        return statistics::fitMembers(explanation, request);
    case ArtifactKind::Equations:
        return statistics::equationMembers(explanation, request);
    case ArtifactKind::Outliers:
        return statistics::outlierMembers(explanation, request);
    case ArtifactKind::RootCause:
        return statistics::rootCauseMembers(explanation, request, request.targets.front());
    }
    return {};
}

/// The artifact with the request that it answers.
std::string artifactText(const Explanation& explanation, const ArtifactRequest& request)
{
    Json artifact = {{"name", request.name}};
    if (!request.targets.empty()) {
        Json targets = Json::array();
        for (const std::size_t target : request.targets)
            targets.push_back(explanation.nameOf(target));
        artifact["target"] = std::move(targets);
    }
    if (isAboutOneSeries(request.kind))
        artifact["level"] = request.level;
    Json members = membersOf(explanation, request);
    for (auto& [key, value] : members.items())
        artifact[key] = std::move(value);
    explanation.check();
    // Names and texts may hold bytes that are no characters.
    return artifact.dump(-1, ' ', false, Json::error_handler_t::replace);
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
        for (const std::size_t target : request.targets)
            add({request.kind, request.name, {target}, request.level});
    }
    return "{\"artifacts\": [" + artifacts + "\n]}\n";
}

} // namespace EmbeddedHV
