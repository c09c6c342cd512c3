#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "components/descriptives/settings/AnalysisSettings.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The content of a container of the component.
enum class ContainerKind
{
    Pmml,
    Statistics,
    TimeIntervals,
    Results
};

/// An output container of the job text.
struct OutputContainer
{
    ContainerKind kind = ContainerKind::Pmml;
    std::string path; ///< in the operating system's form
};

/// The settings of the component, checked against the fields of its input.
struct DescriptivesSettings
{
    Fields fields; ///< the fields to describe, in the order of the list
    std::vector<Fields>
        points; ///< each is a point of time: one date field, or numbers that form one
    std::optional<std::string> weight;
    /// The field with the number of each record's group; empty if the records are not grouped.
    std::optional<std::string> groupField;
    std::size_t groups = 1; ///< their number
    /// A field with more distinct values does not list them; empty for no limit.
    std::optional<std::int64_t> mostDistinctValues;
    bool summaries = true;
    bool stringDistributions = true;
    bool trimsBlanks = false;
    AnalysisSettings analyses;
    std::vector<OutputContainer> containers;
    /// Messages about unsupported settings, for a result document.
    std::vector<std::string> remarks;

    /// Whether a container of this kind is wanted.
    bool wants(ContainerKind kind) const;
    /// Whether a container lists the missing values.
    bool tellsMissing() const
    {
        return wants(ContainerKind::Results) || wants(ContainerKind::Statistics);
    }
};

/// Reads the configuration and the containers of the call. Sends a message for each unsupported
/// setting that is turned on. Throws JobError.
DescriptivesSettings descriptivesSettings(StepCall& call);

} // namespace EmbeddedHV
