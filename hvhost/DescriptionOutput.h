#pragma once

#include <memory>
#include <string>

#include "OutputTree.h"

class HostSession;
class ProcedureDataSource;
struct Description;
struct GroupDescription;

/// A description as output of the host: under the name of the file the statistics, the time
/// intervals, the frequencies and the histograms; if there are groups, under a heading for each.
class DescriptionOutput
{
public:
    /// Session and description are borrowed.
    DescriptionOutput(HostSession& session, const Description& description);

    /// Shows what the result document of a group tells. `data` knows the group. Throws CommandFault
    /// as Rendering.
    void add(const GroupDescription& group, const std::string& results, ProcedureDataSource& data);
    /// Everything so far; it stays.
    std::shared_ptr<const OutputHeading> heading() const { return _heading; }

private:
    HostSession& _session;
    const Description& _description;
    std::shared_ptr<OutputHeading> _heading;
};
