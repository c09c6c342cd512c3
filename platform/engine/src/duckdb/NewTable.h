#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <duckdb.h>

#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// A temporary table that a step fills with its own records. The values of a record are added in
/// the order of the fields, one value per call. All functions throw JobError, also when the job is
/// stopped. One thread at a time. No statement may run on the job's connection until finish.
class NewTable
{
public:
    /// Borrows the context. `step` is the beginning of every error message.
    NewTable(JobContext& context, std::string step, Fields fields);
    NewTable(const NewTable&) = delete;
    NewTable& operator=(const NewTable&) = delete;
    ~NewTable();

    void addMissing();
    /// Adds a number. Not-a-number becomes a missing value.
    void addReal(double value);
    void addInteger(std::int64_t value);
    void addText(const std::string& value);
    /// Adds a date, in days since 1970-01-01.
    void addDate(std::int32_t days);
    /// Adds a time of day, in microseconds since midnight.
    void addTime(std::int64_t microseconds);
    /// Adds a timestamp, in microseconds since 1970-01-01.
    void addTimestamp(std::int64_t microseconds);
    void endRecord();
    /// Adds a record for each value of the columns, which have the same size. The first field is an
    /// integer and gets the number of the record from 0; the others get the columns' values, and
    /// not-a-number is a missing value. Not in the middle of a record. `progress` receives the
    /// finished fraction.
    void addNumbered(const std::vector<std::vector<double>>& columns,
                     const std::function<void(double)>& progress);

    /// Returns the records as a relation. No more records can be added.
    NodePtr finish();

private:
    void check(duckdb_state state) const;
    void throwIfStopped() const;

    JobContext& _context;
    std::string _step;
    Fields _fields;
    std::string _table;
    duckdb_appender _appender = nullptr;
};

} // namespace EmbeddedHV
