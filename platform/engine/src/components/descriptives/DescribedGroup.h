#pragma once

#include <string>
#include <vector>

#include "components/ContainerFile.h"
#include "components/descriptives/TimeInterval.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/DescriptivesSettings.h"

namespace EmbeddedHV {

/// What was found in the records of one group, or in all records.
struct DescribedGroup
{
    DataSummary summary;
    std::vector<TimeInterval> intervals;
    /// Messages about the group, for a result document.
    std::vector<std::string> remarks;
};

/// The members of a container, see docs/descriptives.md. Without groups there is one member, of
/// the only element. With groups, PMML and results have one for each group.
std::vector<ContainerMember> containerMembers(ContainerKind kind,
                                              const std::vector<DescribedGroup>& groups,
                                              const DescriptivesSettings& settings);

} // namespace EmbeddedHV
