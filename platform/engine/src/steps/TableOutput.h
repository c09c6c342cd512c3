#pragma once

#include <string>

#include "runtime/DataSources.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// Writes a named data source: creates a new table that gets the name when it is complete, or
/// appends records to the existing one. If the statement fails or is planned again, nothing is
/// added.
class TableOutput final : public Output
{
public:
    /// Borrows the context. Throws JobError if the fields do not fit the source that they are
    /// appended to.
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
    bool _insert = false;     ///< the table exists and records are appended
    bool _adding = false;     ///< a transaction that appends records is open
    bool _unfinished = false; ///< a new table that does not have its name yet
};

} // namespace EmbeddedHV
