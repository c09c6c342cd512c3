#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "datafile/FileColumns.h"
#include "dialect/Dialect.h"
#include "runtime/Cancellation.h"
#include "runtime/Progress.h"
#include "runtime/QueryFaults.h"
#include "runtime/RecordBatch.h"
#include "runtime/ResultColumns.h"

namespace EmbeddedHV {

class Overflows;
class RowSources;
class TextFunctions;

/// What a backend may lack.
enum class Feature
{
    Maps,
    SealedFiles ///< writing them
};

/// Who drops a table.
enum class TableOwner
{
    Job,
    Service ///< the table is a named data source
};

/// Records of a CSV file that a statement skipped, one for each line.
class RejectedRecords
{
public:
    virtual ~RejectedRecords() = default;
    virtual std::size_t count() const = 0;
    /// Counts from 1, in ascending order.
    virtual std::uint64_t line(std::size_t record) const = 0;
    /// The backend's message.
    virtual std::string message(std::size_t record) const = 0;
};

/// The backend as one job uses it. One statement at a time; the thread that runs the statement also
/// calls all other operations. Operations that run a statement throw StatementFault.
class Session
{
public:
    virtual ~Session() = default;

    virtual const Dialect& dialect() const = 0;
    virtual bool offers(Feature) const { return true; }
    /// The session of the embedded database, in which components compute: this one, unless the
    /// backend is a cluster. The thread that runs the job uses it.
    virtual Session& local() { return *this; }
    /// Connects to the backend. Call it before the operations below. A cancellation ends it; there
    /// may be none. Throws JobError.
    virtual void open(Cancellation*) {}

    /// Runs a statement that returns no records. A cancellation interrupts it.
    virtual void run(const std::string& sql, Cancellation& cancellation,
                     const Progress& progress) = 0;
    /// Passes the records of a statement to `take` in batches, in order. A cancellation interrupts
    /// it. Exceptions of `take` end the statement and pass.
    virtual void stream(const std::string& sql, Cancellation& cancellation,
                        const Progress& progress,
                        const std::function<void(RecordBatch&)>& take) = 0;
    /// Like `stream`, for records of kilobytes: the statement runs at most one batch ahead of
    /// `take`, if the backend would run ahead by a number of records, whatever their size.
    virtual void streamLarge(const std::string& sql, Cancellation& cancellation,
                             const Progress& progress,
                             const std::function<void(RecordBatch&)>& take)
    {
        stream(sql, cancellation, progress, take);
    }

    /// The SQL name of a table. Prepares the place for tables of this owner. Throws JobError.
    virtual std::string tableName(const std::string& table, TableOwner owner) = 0;
    /// The FROM item with the records of a table of the job, in the order of the SELECT that made
    /// it.
    virtual std::string recordsOf(const std::string& table, const datafile::Fields& /*fields*/)
    {
        return tableName(table, TableOwner::Job);
    }
    /// Begins to append the records of a SELECT to a table of the service, column by column by
    /// name. Returns the statement to run next. endAddition makes the records visible, undoAddition
    /// takes them back. One addition at a time.
    virtual std::string beginAddition(const std::string& table, const std::string& select) = 0;
    virtual void endAddition() = 0;
    virtual void undoAddition() = 0;
    /// Drops a table if it exists.
    virtual void dropTable(const std::string& table, TableOwner owner) = 0;
    /// The SELECT with the records of a SELECT, in their order, in which the infinite values of
    /// some columns are missing. The next statement that contains it counts them in `overflows`.
    virtual std::string finiteResults(const std::string& select, const ResultColumns& columns) = 0;

    /// The FROM item that reads a Parquet file or folder.
    virtual std::string parquetTable(const std::string& path) const = 0;
    /// The FROM item with the records of a Parquet file or folder with these columns, in their
    /// order if the next statement needs it.
    virtual std::string parquetRecords(const std::string& path,
                                       const datafile::Fields& /*columns*/) const
    {
        return parquetTable(path);
    }
    /// Whether the next statements need the records of files and tables in their order, as they do
    /// at first. A cluster sorts them for that.
    virtual void keepOrder(bool) {}
    /// The columns of a Parquet file, with names and types only.
    virtual datafile::ParquetColumns parquetColumns(const std::string& path) = 0;
    /// Adds the descriptions in the file. `origin` is the file's name for messages. Throws JobError
    /// if they contradict the columns.
    virtual void describeColumns(const std::string& path, const std::string& origin,
                                 datafile::ParquetColumns& columns) = 0;

    /// Whether a statement has made the list of rejected records. See CsvSource::rejects.
    virtual bool hasRejects(const std::string& rejects) = 0;
    /// Whether a record was rejected because a value does not convert.
    virtual bool hasRejectedValues(const std::string& rejects) = 0;
    /// The first rejected records, or all if `most` is negative.
    virtual std::unique_ptr<RejectedRecords> rejectedRecords(const std::string& rejects,
                                                             std::int64_t most) = 0;

    /// The sources of records, the functions and the counts that statements can use now.
    virtual RowSources& rowSources() = 0;
    virtual TextFunctions& textFunctions() = 0;
    virtual Overflows& overflows() = 0;
};

} // namespace EmbeddedHV
