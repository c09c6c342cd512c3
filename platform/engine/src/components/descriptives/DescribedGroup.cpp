#include "components/descriptives/DescribedGroup.h"

#include "components/descriptives/IntervalDocument.h"
#include "components/descriptives/PmmlDocument.h"
#include "components/descriptives/ResultDocument.h"
#include "components/descriptives/StatDocument.h"

namespace EmbeddedHV {
namespace {

/// The name of a member before and after the number of its group, if it has one.
struct MemberName
{
    std::string base;
    std::string extension;

    std::string whole() const { return base + extension; }
    std::string of(std::size_t group) const { return base + std::to_string(group) + extension; }
};

MemberName memberOf(ContainerKind kind)
{
    switch (kind) {
    case ContainerKind::Pmml:
        return {"PMML", ".xml"};
    case ContainerKind::Statistics:
        return {"StatXML", ".xml"};
    case ContainerKind::TimeIntervals:
        return {"TIME_INTERVAL", ".json"};
    case ContainerKind::Results:
        return {"Results", ".json"};
    }
    return {};
}

std::string documentOf(ContainerKind kind, const DescribedGroup& group,
                       const DescriptivesSettings& settings)
{
    switch (kind) {
    case ContainerKind::Pmml:
        return pmmlDocument(group.summary);
    case ContainerKind::Statistics:
        return statDocument(group.summary);
    case ContainerKind::TimeIntervals:
        return intervalDocument(group.intervals);
    case ContainerKind::Results:
        return resultDocument(group.summary, settings, group.remarks, group.intervals);
    }
    return {};
}

/// One document for all groups.
std::string commonDocument(ContainerKind kind, const std::vector<DescribedGroup>& groups,
                           bool countsLeftOut)
{
    GroupStatDocument statistics(countsLeftOut);
    std::vector<std::vector<TimeInterval>> intervals;
    if (kind == ContainerKind::TimeIntervals) {
        for (const DescribedGroup& group : groups)
            intervals.push_back(group.intervals);
        return groupIntervalDocument(intervals);
    }
    for (const DescribedGroup& group : groups)
        statistics.add(group.summary);
    return statistics.text();
}

} // namespace

std::vector<ContainerMember> containerMembers(ContainerKind kind,
                                              const std::vector<DescribedGroup>& groups,
                                              const DescriptivesSettings& settings)
{
    const MemberName name = memberOf(kind);
    if (!settings.groupField)
        return {{name.whole(), documentOf(kind, groups.front(), settings)}};
    if (kind == ContainerKind::Statistics || kind == ContainerKind::TimeIntervals)
        return {{name.whole(),
                 commonDocument(kind, groups,
                                settings.weight && settings.wants(ContainerKind::Results))}};
    std::vector<ContainerMember> members;
    members.reserve(groups.size());
    for (const DescribedGroup& group : groups)
        members.push_back({name.of(members.size() + 1), documentOf(kind, group, settings)});
    return members;
}

} // namespace EmbeddedHV
