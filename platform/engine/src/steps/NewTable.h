#pragma once

#include <cstdint>
#include <string>

#include <duckdb.h>

#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// A temporary table of the job that a step fills with records of its own making. A record's values
/// are added in the order of the fields; each function adds one. All throw JobError, also when the
/// job is stopped. One thread at a time; no statement may run on the job's connection meanwhile.
class NewTable
{
public:
    /// The context is borrowed. `step` begins every message.
    NewTable(JobContext& context, std::string step, Fields fields);
    NewTable(const NewTable&) = delete;
    NewTable& operator=(const NewTable&) = delete;
    ~NewTable();

    void addMissing();
    /// A number; not-a-number is a missing value.
    void addReal(double value);
    void addInteger(std::int64_t value);
    void addText(const std::string& value);
    /// Days since 1970-01-01.
    void addDate(std::int32_t days);
    /// Microseconds of the day.
    void addTime(std::int64_t microseconds);
    /// Microseconds since 1970-01-01.
    void addTimestamp(std::int64_t microseconds);
    void endRecord();

    /// The records as a relation. Nothing can be added any more.
    NodePtr finish();

private:
    void check(duckdb_state state) const;

    JobContext& _context;
    std::string _step;
    Fields _fields;
    std::string _table;
    duckdb_appender _appender = nullptr;
};

} // namespace EmbeddedHV
