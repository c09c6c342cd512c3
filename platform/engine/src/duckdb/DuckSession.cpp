#include "duckdb/DuckSession.h"

#include <utility>

#include "datafile/ParquetColumns.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/DuckDialect.h"
#include "duckdb/DuckFaults.h"
#include "runtime/QueryWatch.h"

namespace EmbeddedHV {
namespace {

/// Calls `work`. A failure of a statement becomes a StatementFault.
template <class Work>
auto explained(Work work)
{
    try {
        return work();
    } catch (const duck::QueryError& error) {
        throw duckFault(error.what());
    }
}

std::string_view textOf(const void* data, std::size_t row)
{
    // The database's function does not change the text.
    auto& text = const_cast<duckdb_string_t&>(static_cast<const duckdb_string_t*>(data)[row]);
    return {duckdb_string_t_data(&text), duckdb_string_t_length(text)};
}

/// A chunk of a streamed result.
class DuckBatch final : public RecordBatch
{
public:
    explicit DuckBatch(duck::Chunk& chunk) : _chunk(chunk) {}

    std::size_t rows() const override { return _chunk.rows(); }
    BatchColumn column(std::size_t index) const override
    {
        const duckdb_vector vector = _chunk.column(index);
        return {duckdb_vector_get_data(vector), duckdb_vector_get_validity(vector), textOf};
    }
    duck::Chunk& chunk() const { return _chunk; }

private:
    duck::Chunk& _chunk;
};

/// The result of a query of lines and messages.
class DuckRejects final : public RejectedRecords
{
public:
    explicit DuckRejects(duck::Result rows) : _rows(std::move(rows)) {}

    std::size_t count() const override { return _rows.rows(); }
    std::uint64_t line(std::size_t record) const override
    {
        return static_cast<std::uint64_t>(_rows.integer(0, record));
    }
    std::string message(std::size_t record) const override { return _rows.text(1, record); }

private:
    mutable duck::Result _rows; ///< the database's interface has no constant results
};

/// Makes streamed statements wait until each chunk is fetched. Without it the database fills a
/// buffer of a megabyte, in which it does not count long texts. A chunk has more bytes than this
/// buffer. With a buffer of one byte, the database waits forever for some sources.
class ShortBuffer
{
public:
    explicit ShortBuffer(duck::Connection& connection) : _connection(connection)
    {
        explained([&] { _connection.query("SET streaming_buffer_size = '32KB'"); });
    }
    ShortBuffer(const ShortBuffer&) = delete;
    ShortBuffer& operator=(const ShortBuffer&) = delete;
    ~ShortBuffer()
    {
        // If it fails, later statements are slower and not wrong.
        duckdb_query(_connection.handle(), "RESET streaming_buffer_size", nullptr);
    }

private:
    duck::Connection& _connection;
};

} // namespace

const Dialect& DuckSession::dialect() const
{
    return duckDialect();
}

duck::Result DuckSession::query(const std::string& sql)
{
    return explained([&] { return _connection->query(sql); });
}

void DuckSession::run(const std::string& sql, Cancellation& cancellation, const Progress& progress)
{
    const QueryWatch watch(_connection->handle(), cancellation, progress);
    query(sql);
}

void DuckSession::stream(const std::string& sql, Cancellation& cancellation,
                         const Progress& progress, const std::function<void(RecordBatch&)>& take)
{
    const QueryWatch watch(_connection->handle(), cancellation, progress);
    explained([&] {
        duck::Prepared statement(*_connection, sql);
        duck::Result rows = statement.stream();
        while (duck::Chunk chunk = duck::nextChunk(rows)) {
            DuckBatch batch(chunk);
            take(batch);
        }
    });
}

void DuckSession::streamLarge(const std::string& sql, Cancellation& cancellation,
                              const Progress& progress,
                              const std::function<void(RecordBatch&)>& take)
{
    const ShortBuffer buffer(*_connection);
    stream(sql, cancellation, progress, take);
}

std::string DuckSession::tableName(const std::string& table, TableOwner)
{
    return quotedIdentifier(table);
}

std::string DuckSession::beginAddition(const std::string& table, const std::string& select)
{
    query("BEGIN TRANSACTION");
    return duckDialect().addition(quotedIdentifier(table), select);
}

std::string DuckSession::finiteResults(const std::string& select, const ResultColumns& columns)
{
    return columns.selectFrom("(" + select + ")", [](const ResultColumns::Finite& column) {
        return Overflows::call(column.count, column.name);
    });
}

void DuckSession::dropTable(const std::string& table, TableOwner)
{
    query("DROP TABLE IF EXISTS " + quotedIdentifier(table));
}

std::string DuckSession::parquetTable(const std::string& path) const
{
    return duckDialect().parquetTable(path);
}

ParquetColumns DuckSession::parquetColumns(const std::string& path)
{
    return explained([&] { return datafile::parquetColumns(*_connection, path); });
}

void DuckSession::describeColumns(const std::string& path, const std::string& origin,
                                  ParquetColumns& columns)
{
    explained([&] { datafile::describeColumns(*_connection, path, origin, columns); });
}

bool DuckSession::hasRejects(const std::string& rejects)
{
    return query("SELECT count(*) FROM duckdb_tables() WHERE temporary AND table_name = " +
                 quotedLiteral(rejects))
               .integer(0, 0) > 0;
}

bool DuckSession::hasRejectedValues(const std::string& rejects)
{
    return query("SELECT count(*) FROM " + quotedIdentifier(rejects) +
                 " WHERE error_message LIKE 'Error when converting%'")
               .integer(0, 0) > 0;
}

std::unique_ptr<RejectedRecords> DuckSession::rejectedRecords(const std::string& rejects,
                                                              std::int64_t most)
{
    const std::string limit = most < 0 ? std::string() : " LIMIT " + std::to_string(most);
    return std::make_unique<DuckRejects>(query("SELECT line, min(error_message) FROM " +
                                               quotedIdentifier(rejects) +
                                               " GROUP BY line ORDER BY line" + limit));
}

duck::Connection& connectionOf(Session& session)
{
    return static_cast<DuckSession&>(session).connection();
}

duck::Chunk& chunkOf(RecordBatch& batch)
{
    return static_cast<DuckBatch&>(batch).chunk();
}

} // namespace EmbeddedHV
