#pragma once

#include <iosfwd>
#include <memory>
#include <sstream>
#include <string>

#include "OutputTree.h"
#include "hvhost/describe/GroupComparison.h"
#include "hvhost/show/OutputShown.h"

class HostSession;
class ProcedureDataSource;
struct Description;
struct GroupDescription;

/// A description as output of the host, under the name of the file: the statistics, the time
/// intervals, the frequencies and the histograms. If there are groups, each has a heading,
/// after a comparison of them. As text, groups are kept as they are written, because their trees
/// take much more memory.
class DescriptionOutput
{
public:
    /// Borrows the session and the description.
    DescriptionOutput(HostSession& session, const Description& description, OutputLook look);

    /// Shows the result document of a group. `data` knows the current group. Ends all other output
    /// of the process. Throws CommandFault as Rendering does.
    void add(const GroupDescription& group, const std::string& results, ProcedureDataSource& data);
    /// Compares the groups, in front of the single ones, which a page then folds. Call it after the
    /// last group. Throws as `add` does.
    void compareGroups();
    /// Writes the output so far. Throws as writeOutput does.
    void write(std::ostream& out) const;

private:
    /// Whether charts are added whose content a table already has.
    bool drawsAnalyses() const { return _look.form == "html"; }
    /// On a page with many groups only the comparison has charts.
    bool hasGroupCharts() const;
    void keep(const std::shared_ptr<OutputHeading>& group);

    HostSession& _session;
    const Description& _description;
    OutputLook _look;
    GroupComparison _comparison;
    std::size_t _groups = 0;
    std::shared_ptr<OutputHeading> _heading;
    std::ostringstream _groupTexts; ///< of text only
};
