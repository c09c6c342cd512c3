#pragma once

#include <memory>
#include <string>

#include "OutputTree.h"
#include "hvhost/describe/GroupComparison.h"

class HostSession;
class ProcedureDataSource;
struct Description;
struct GroupDescription;

/// A description as output of the host, under the name of the file: the statistics, the time
/// intervals, the frequencies and the histograms. If there are groups, each has a heading,
/// after a comparison of them.
class DescriptionOutput
{
public:
    /// Borrows the session and the description.
    /// `drawsAnalyses`: whether charts are added whose content a table already has.
    DescriptionOutput(HostSession& session, const Description& description, bool drawsAnalyses);

    /// Shows the result document of a group. `data` knows the current group. Throws CommandFault as
    /// Rendering does.
    void add(const GroupDescription& group, const std::string& results, ProcedureDataSource& data);
    /// Compares the groups, in front of the single ones, which a page then folds. Call it after the
    /// last group. Throws as `add` does.
    void compareGroups();
    /// The output so far. The object shares ownership.
    std::shared_ptr<const OutputHeading> heading() const { return _heading; }

private:
    /// On a page with many groups only the comparison has charts.
    bool hasGroupCharts() const;

    HostSession& _session;
    const Description& _description;
    bool _drawsAnalyses;
    GroupComparison _comparison;
    std::size_t _groups = 0;
    std::shared_ptr<OutputHeading> _heading;
};
