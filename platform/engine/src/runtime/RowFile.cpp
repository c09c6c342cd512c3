#include "runtime/RowFile.h"

#include "EngineException.h"
#include "base/TimestampScale.h"
#include "datafile/FileTables.h"
#include "runtime/DataModel.h"
#include "runtime/FileSpace.h"

namespace EmbeddedHV {
namespace {

template <class T, class Convert>
void convert(std::vector<double>& numbers, duckdb_vector vector, std::size_t rows, Convert toNumber)
{
    const auto* data = static_cast<const T*>(duckdb_vector_get_data(vector));
    numbers.resize(rows);
    for (std::size_t i = 0; i < rows; ++i)
        numbers[i] = toNumber(data[i]);
}

} // namespace

RowFile::RowFile(Database& database, const WrittenFile& file, const std::string& scratchFolder)
    : _name(fileNameOf(file.path)), _dataModel(dataModelOf(file.fields))
{
    std::string path = file.content ? file.content->path() : file.path;
    _scratch = file.content;
    if (!file.password.empty()) {
        _scratch = openSealed(path, file.password, scratchFolder, {});
        path = _scratch->path();
    }
    const std::string from =
        file.kind == FileKind::Csv
            ? csvTable(path, true, file.fields, {.hasLongRecords = true, .inOneThread = true})
            : parquetTable(path);
    _connection = std::make_unique<ConnectionLease>(database.connect());
    duck::Prepared statement(**_connection, "SELECT " + columnList(file.fields) + " FROM " + from);
    _result = std::make_unique<duck::Result>(statement.stream());
    for (const CFField& field : file.fields)
        _columns.push_back({field.GetStorage(), {}, nullptr, nullptr});
}

void RowFile::load(Column& column, duckdb_vector vector, std::size_t rows)
{
    column.validity = duckdb_vector_get_validity(vector);
    switch (column.storage) {
    case CFField::Integer:
        convert<std::int64_t>(column.numbers, vector, rows,
                              [](std::int64_t value) { return static_cast<double>(value); });
        break;
    case CFField::Real:
        convert<double>(column.numbers, vector, rows, [](double value) { return value; });
        break;
    case CFField::Date:
        convert<std::int32_t>(column.numbers, vector, rows,
                              [](std::int32_t days) { return static_cast<double>(days); });
        break;
    case CFField::Time:
    case CFField::Timestamp:
        convert<std::int64_t>(column.numbers, vector, rows, base::rowSeconds);
        break;
    default:
        column.texts = static_cast<duckdb_string_t*>(duckdb_vector_get_data(vector));
        break;
    }
}

bool RowFile::fetch()
{
    // After the end, the database must not be asked again: its statement is finished.
    if (!_result || _ended)
        return false;
    try {
        _chunk = duck::nextChunk(*_result);
    } catch (const duck::QueryError& error) {
        _ended = true;
        throw Exception("the rows of " + _name + " cannot be read: " + error.what());
    }
    _ended = !_chunk;
    _row = 0;
    _rows = _ended ? 0 : _chunk.rows();
    for (std::size_t i = 0; i < _columns.size() && !_ended; ++i)
        load(_columns[i], _chunk.column(i), _rows);
    return !_ended;
}

unsigned int RowFile::nextRecord()
{
    ++_row;
    _status = _row < _rows || fetch() ? RecordAvailable : EndOfData;
    return _status;
}

unsigned int RowFile::getRecordValue(unsigned long long fieldIndex, void*& value,
                                     unsigned long long& length)
{
    if (_status != RecordAvailable)
        return _status;
    if (fieldIndex >= _columns.size())
        return EndOfData;
    Column& column = _columns[fieldIndex];
    if (column.validity && !duckdb_validity_row_is_valid(column.validity, _row)) {
        value = nullptr;
        length = 0;
    } else if (column.storage == CFField::String) {
        duckdb_string_t& text = column.texts[_row];
        value = const_cast<char*>(duckdb_string_t_data(&text));
        length = duckdb_string_t_length(text);
    } else {
        value = &column.numbers[_row];
        length = sizeof(double);
    }
    return RecordAvailable;
}

void RowFile::dispose(JNIEnv*)
{
    _chunk = duck::Chunk();
    _result.reset();
    if (_connection && !_ended)
        (*_connection)->endStatement();
    _ended = true;
    _connection.reset();
    _scratch.reset();
    _columns.clear();
    _rows = 0;
    _row = 0;
    _status = EndOfData;
}

} // namespace EmbeddedHV
