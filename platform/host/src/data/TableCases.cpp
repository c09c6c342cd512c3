#include "data/TableCases.h"

#include <numeric>

#include "ErrorText.h"
#include "data/CaseFileFault.h"
#include "data/HostDatabase.h"

namespace {

namespace duck = datafile::duck;

/// Selects only the requested columns, which saves most of the reading of a Parquet file.
std::string selectOf(const Relation& relation, const std::vector<int>& columns)
{
    std::string sql = "SELECT ";
    const char* separator = "";
    for (const int column : columns) {
        sql += separator + relation.columns[static_cast<std::size_t>(column)].sql;
        separator = ", ";
    }
    // A case without columns still counts.
    return sql + (columns.empty() ? "true" : "") + " FROM " + relation.from;
}

} // namespace

TableCases::TableCases(std::vector<VEXA_Variable> variables,
                       std::shared_ptr<const Relation> relation)
    : _variables(std::move(variables)), _relation(std::move(relation))
{
}

const VEXA_Variable& TableCases::GetVariable(int column) const
{
    if (column < 0 || column >= ColumnCount())
        throw ErrorText(_relation->name + " has no column " + std::to_string(column));
    return _variables[static_cast<std::size_t>(column)];
}

VEXA_InputCaseIterator* TableCases::MakeIterator(ErrorMonitor* monitor) const
{
    std::vector<int> all(_variables.size());
    std::iota(all.begin(), all.end(), 0);
    return MakeProjectedIterator(all, monitor);
}

VEXA_InputCaseIterator* TableCases::MakeProjectedIterator(const std::vector<int>& columns,
                                                          ErrorMonitor* monitor) const
{
    std::vector<CaseColumn> buffers;
    buffers.reserve(columns.size());
    for (const int column : columns) {
        const VEXA_Variable& variable = GetVariable(column);
        buffers.emplace_back(_relation->columns[static_cast<std::size_t>(column)].storage,
                             variable.GetType(), hostToUtf8(variable.GetName()), hostCodePage());
    }
    return std::make_unique<TableCaseIterator>(_relation, columns, std::move(buffers),
                                               monitor ? monitor : _monitor)
        .release();
}

TableCaseIterator::TableCaseIterator(std::shared_ptr<const Relation> relation,
                                     const std::vector<int>& columns,
                                     std::vector<CaseColumn> buffers, ErrorMonitor* monitor)
    : _relation(std::move(relation)), _connection(connectToHostDatabase(columns.size())),
      _buffers(std::move(buffers)), _values(_buffers.size()), _monitor(monitor)
{
    for (const CaseColumn& buffer : _buffers)
        _units.push_back(buffer.units());
    try {
        duck::Prepared statement(*_connection, selectOf(*_relation, columns));
        _result = std::make_unique<duck::Result>(statement.stream());
    } catch (const duck::QueryError& error) {
        throw errorTextOf(_relation->name, "the cases cannot be read", error, columns.size());
    }
}

/// Reads the next chunk of the stream into the buffers. Returns false at the end and from then on.
bool TableCaseIterator::fetch()
{
    if (!_result)
        return false;
    try {
        _chunk = duck::nextChunk(*_result);
    } catch (const duck::QueryError& error) {
        _result.reset();
        throw errorTextOf(_relation->name,
                          "the cases cannot be read on after case " + std::to_string(_count), error,
                          _buffers.size());
    }
    _row = 0;
    _rows = _chunk ? _chunk.rows() : 0;
    if (!_chunk)
        end();
    for (std::size_t i = 0; i < _buffers.size() && _rows > 0; ++i) {
        _buffers[i].load(_chunk.column(i), _rows, _monitor);
        _values[i] = _buffers[i].first();
    }
    return _rows > 0;
}

/// Detects a file that another program has truncated meanwhile, which looks like its end. More
/// cases than counted are not an error: a blank line of a file with one column is a case for the
/// database but not for the count.
void TableCaseIterator::end()
{
    _result.reset();
    if (const std::optional<long long> expected = _relation->caseCount;
        expected && _count < *expected)
        throw ErrorText(_relation->name + ": the file changed while it was read: it had " +
                        std::to_string(*expected) + " cases, and now has " +
                        std::to_string(_count));
}

void TableCaseIterator::move(std::size_t cases)
{
    for (std::size_t i = 0; i < _values.size(); ++i)
        _values[i] += _units[i] * cases;
    _row += cases;
}

int TableCaseIterator::NextCase()
{
    if (_isBeforeRow)
        _isBeforeRow = false;
    else if (_row + 1 < _rows)
        move(1);
    else if (!fetch())
        return 0;
    ++_count;
    return 1;
}

std::size_t TableCaseIterator::CasesAhead()
{
    if (!_isBeforeRow && _row + 1 >= _rows)
        _isBeforeRow = fetch();
    const std::size_t from = _isBeforeRow ? _row : _row + 1;
    return from < _rows ? _rows - from : 0;
}

const OBS* TableCaseIterator::NumbersAhead(int column) const
{
    // A number takes one unit.
    return GetObsPointer(column) + (_isBeforeRow ? 0 : 1);
}

void TableCaseIterator::Skip(std::size_t cases)
{
    move(_isBeforeRow ? cases - 1 : cases);
    _isBeforeRow = false;
    _count += static_cast<long long>(cases);
}
