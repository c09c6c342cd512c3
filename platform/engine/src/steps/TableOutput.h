#pragma once

#include <string>

#include "runtime/DataSources.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// Writes a named data source: a new table that takes the name when it is whole, or more records
/// for the one that is there. What fails, or is planned anew because a source has other types than
/// it seemed, has added nothing.
class TableOutput final : public Output
{
public:
    /// Throws JobError if the fields do not suit a source that is appended to. The context is
    /// borrowed.
    TableOutput(JobContext& context, std::string name, bool append, Fields fields);
    TableOutput(const TableOutput&) = delete;
    TableOutput& operator=(const TableOutput&) = delete;
    ~TableOutput() override;

    std::string target() const override { return "the data source \"" + _name + "\""; }
    std::string statement(const std::string& select) override;
    void commit() override;

private:
    void checkFields(const Fields& known) const;
    void endAddition();
    void drop(const std::string& table);

    JobContext& _context;
    std::string _name;
    Fields _fields;
    std::string _table;
    bool _insert = false;     ///< the table is there, and records are added to it
    bool _adding = false;     ///< records are being added, in a transaction
    bool _unfinished = false; ///< a new table that has no name yet
};

} // namespace EmbeddedHV
