#pragma once

#include <memory>
#include <string>
#include <vector>

#include "RowDataIterator.h"
#include "datafile/ScratchFile.h"
#include "runtime/Database.h"
#include "runtime/WrittenFile.h"

namespace EmbeddedHV {

/// The rows of a file that a job wrote, in the protocol of row iterators. Reads one chunk at a
/// time, so memory does not grow with the file. One thread at a time.
class RowFile : public RowDataIterator
{
public:
    /// Opens the file. Throws duck::QueryError, SealedFileError and std::system_error.
    RowFile(Database& database, const WrittenFile& file, const std::string& scratchFolder);

    std::string getName() override { return _name; }
    std::string getDataModel() override { return _dataModel; }
    unsigned int nextRecord() override;
    unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                unsigned long long& length) override;
    void dispose(JNIEnv* env) override;

private:
    /// The values of one field in the current chunk.
    struct Column
    {
        CFField::StorageType storage = CFField::Real;
        std::vector<double> numbers; ///< all values except texts, converted
        duckdb_string_t* texts = nullptr;
        std::uint64_t* validity = nullptr; ///< null: no value of the chunk is missing
    };
    bool fetch();
    static void load(Column& column, duckdb_vector vector, std::size_t rows);

    std::string _name;
    std::string _dataModel;
    std::shared_ptr<ScratchFile> _scratch;
    std::unique_ptr<ConnectionLease> _connection;
    std::unique_ptr<duck::Result> _result;
    duck::Chunk _chunk;
    std::vector<Column> _columns;
    std::size_t _rows = 0;
    std::size_t _row = 0;
    unsigned int _status = EndOfData;
    bool _ended = false;
};

} // namespace EmbeddedHV
