#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "duckdb/DuckSession.h"
#include "runtime/Session.h"
#include "spark/SparkClient.h"

namespace EmbeddedHV {

class SparkEngine;

/// A value of a small query as text; empty if it is missing.
using SparkValue = std::optional<std::string>;

/// A session of a job on the cluster. Tables of the job are tables in a database of its own on the
/// cluster, which is made when the first one is needed and dropped with the session.
class SparkSession final : public Session
{
public:
    /// Connects to nothing. Borrows the engine.
    explicit SparkSession(SparkEngine& engine);
    SparkSession(const SparkSession&) = delete;
    SparkSession& operator=(const SparkSession&) = delete;
    ~SparkSession() override;

    const Dialect& dialect() const override;
    bool offers(Feature) const override { return false; }
    Session& local() override { return _edge; }
    void open(Cancellation* cancellation) override;
    void run(const std::string& sql, Cancellation& cancellation, const Progress& progress) override;
    void stream(const std::string& sql, Cancellation& cancellation, const Progress& progress,
                const std::function<void(RecordBatch&)>& take) override;
    std::string tableName(const std::string& table, TableOwner owner) override;
    std::string recordsOf(const std::string& table, const Fields& fields) override;
    std::string beginAddition(const std::string& table, const std::string& select) override;
    void endAddition() override;
    void undoAddition() override;
    void dropTable(const std::string& table, TableOwner owner) override;
    std::string finiteResults(const std::string& select, const ResultColumns& columns) override;
    std::string parquetTable(const std::string& path) const override;
    std::string parquetRecords(const std::string& path, const Fields& columns) const override;
    void keepOrder(bool isKept) override { _keepsOrder = isKept; }
    ParquetColumns parquetColumns(const std::string& path) override;
    void describeColumns(const std::string& path, const std::string& origin,
                         ParquetColumns& columns) override;
    bool hasRejects(const std::string& rejects) override;
    bool hasRejectedValues(const std::string& rejects) override;
    std::unique_ptr<RejectedRecords> rejectedRecords(const std::string& rejects,
                                                     std::int64_t most) override;
    /// Those of the embedded database, which reads row iterators for the cluster.
    RowSources& rowSources() override { return _edge.rowSources(); }
    TextFunctions& textFunctions() override { return _edge.textFunctions(); }
    Overflows& overflows() override { return _edge.overflows(); }

    SparkEngine& engine() const { return _engine; }
    /// The embedded database's session, which converts records between this process and the
    /// cluster. The thread that runs the job uses it.
    DuckSession& edge() { return _edge; }
    /// The connection. Call open before. Its operations throw ClusterFault.
    SparkClient& client() { return *_client; }
    /// Calls `work`. Faults of the cluster become StatementFault.
    template <class Work>
    auto explained(Work work)
    {
        try {
            return work();
        } catch (const ClusterFault& fault) {
            throw meaningOf(fault);
        } catch (const JavaFailure& failure) {
            throw meaningOf({ClusterFaultKind::Use, failure.what()});
        }
    }
    /// Whether the workers see a Parquet file or folder. The next call of parquetColumns for it
    /// asks the cluster nothing.
    bool seesParquet(const std::string& path);
    /// The lines of a text on the cluster. Throws StatementFault.
    std::string textIn(const std::string& path);
    /// The records of a small query of texts.
    std::vector<std::vector<SparkValue>> texts(const std::string& sql, std::size_t columns);
    /// The folder of the job on the cluster, as a URI. Makes the job's database.
    std::string jobFolder();
    /// Whether the connection is lost, so that nothing can be removed on the cluster.
    bool isLost() const { return _isLost; }
    /// The server's address, for messages.
    const std::string& url() const;
    /// A name for a view that only this session sees.
    std::string newView() { return "hv_view_" + std::to_string(++_views); }
    /// A tag for one statement, by which it is interrupted.
    std::string newTag();

private:
    StatementFault meaningOf(const ClusterFault& fault);
    void makeJobDatabase();
    void countOverflows(const SparkStream& stream);
    SparkStream modelOf(const std::string& path);
    std::string parquetSchema(const std::string& path);
    std::string ordered(const std::string& table, const Fields& fields) const;
    void follow(SparkStream stream, const std::string& tag, Cancellation& cancellation,
                const Progress& progress, const std::function<void(RecordBatch&)>& take);

    SparkEngine& _engine;
    DuckSession _edge;
    std::unique_ptr<SparkClient> _client;
    std::string _jobDatabase;
    bool _hasJobDatabase = false;
    bool _keepsOrder = true;
    bool _isLost = false;
    std::string _jobFolder;
    std::string _seen;                 ///< the path of seesParquet
    std::string _seenSchema;           ///< the schema of its records
    std::string _asked;                ///< the path of parquetSchema
    std::optional<SparkStream> _model; ///< the lines of its data model, not read yet
    std::string _addedTo;              ///< the table of the service to which an addition belongs
    std::string _addition;             ///< the table of the job with the records of the addition
    int _additions = 0;
    int _views = 0;
    int _statements = 0;
};

} // namespace EmbeddedHV
