#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// What a container of the component holds.
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
    std::string path; ///< the operating system's
};

/// What is asked of the component, checked against the fields of its input.
struct DescriptivesSettings
{
    Fields fields;              ///< to be described, in the order of the list
    std::vector<Fields> points; ///< each a point of time: one date field, or numbers that make one
    std::optional<std::string> weight;
    /// At most so many distinct values of a field are told; nothing for any number.
    std::optional<std::int64_t> mostDistinctValues;
    bool summaries = true;
    bool stringDistributions = true;
    bool trimsBlanks = false;
    std::vector<OutputContainer> containers;
    /// What was said of settings that have no effect, for a result document.
    std::vector<std::string> remarks;

    /// Whether a container holds what `kind` says.
    bool wants(ContainerKind kind) const;
    /// Whether a container tells the missing values one by one.
    bool tellsMissing() const
    {
        return wants(ContainerKind::Results) || wants(ContainerKind::Statistics);
    }
};

/// Reads the configuration and the containers of the call, and tells of each setting that asks for
/// what the component does not do. Throws JobError.
DescriptivesSettings descriptivesSettings(StepCall& call);

} // namespace EmbeddedHV
