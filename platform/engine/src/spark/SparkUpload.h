#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/FieldNames.h"
#include "runtime/RecordBatch.h"
#include "spark/SparkSession.h"

namespace EmbeddedHV {

/// Sends records to the cluster, where they become a view. Few records stay in the memory of the
/// server; more go to a folder of the job, in blocks, so that the memory of this process does not
/// grow with their number. One thread.
class SparkUpload
{
public:
    /// Borrows the session. `source` names the records in messages.
    SparkUpload(SparkSession& session, const Fields& fields, std::string view, std::string source);

    /// Appends the records of a batch, which has the columns of the fields. Throws JobError if
    /// there are too many, and ClusterFault.
    void add(const RecordBatch& batch);
    /// Sends the rest and makes the view. Throws ClusterFault.
    void finish();

private:
    /// The values of one column that were not sent yet, in the layout of Arrow.
    struct Column
    {
        CFField::StorageType storage = CFField::Real;
        std::int64_t missing = 0;
        std::vector<std::uint8_t> validity;
        std::vector<std::int32_t> offsets; ///< of texts
        std::vector<std::uint8_t> values;
    };
    void takeNumbers(std::size_t rows);
    void takeColumn(Column& column, const BatchColumn& from, std::size_t rows);
    std::size_t size() const;
    void startBlock();
    void buildBlock();
    void sendBlock();
    void countBytes(std::size_t bytes);
    std::string selectOf(const std::string& from) const;

    SparkSession& _session;
    const Fields& _fields;
    std::string _view;
    std::string _source;
    std::string _number; ///< the column with the number of the record
    JavaObject _upload;
    std::vector<Column> _columns; ///< the number, then the fields
    std::size_t _rows = 0;        ///< in the columns
    std::int64_t _allRows = 0;
    std::int64_t _sentBytes = 0;
    std::string _folder;              ///< empty as long as nothing was sent
    std::vector<std::uint8_t> _bytes; ///< of the block
    ArrowBlock _block;
};

} // namespace EmbeddedHV
