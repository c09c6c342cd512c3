#pragma once

#include <jni.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "spark/ClusterFault.h"
#include "spark/JavaCalls.h"

namespace EmbeddedHV {

struct SparkClasses;

/// The jars of the cluster's client, loaded once for the process, when the first job asks for them.
class SparkLibrary
{
public:
    /// Borrows the virtual machine, which lives as long as the process. `folder` has the jars.
    SparkLibrary(JavaVM* machine, std::string folder);

    /// Whether the folder has jars. Loads nothing.
    bool isInstalled() const;
    const std::string& folder() const { return _folder; }
    JavaVM* machine() const { return _machine; }
    /// Loads the classes if no session has. Throws ClusterFault. Any thread.
    const SparkClasses& classes() const;

private:
    JavaVM* _machine;
    std::string _folder;
};

/// Records by columns in a block of memory, in the layout of the Java class ColumnBatch.
struct ArrowBlock
{
    std::size_t records = 0;
    std::uint8_t* bytes = nullptr; ///< borrowed
    std::size_t size = 0;
    std::vector<std::int64_t> layout;
};

/// A running statement. One thread at a time.
class SparkStream
{
public:
    enum class Event
    {
        End,
        Batch,
        Report
    };

    SparkStream(const SparkLibrary& library, JavaObject stream);
    SparkStream(SparkStream&&) = default;
    SparkStream& operator=(SparkStream&&) = delete;
    /// Tells the server that no more records are needed.
    ~SparkStream();

    /// Waits for the next batch or report. Throws ClusterFault.
    Event next();
    /// The last batch. Its memory is valid until the next call of next.
    ArrowBlock batch();
    /// The columns as JSON, as in SparkClient::schema. Empty before the first batch.
    std::string schema();
    /// The share of the tasks that the server knows which are done, from 0 to 1.
    double progress();
    /// The metrics of SparkClient::addCounted in the statement: a name and a value in turn.
    /// Complete at the end.
    std::vector<std::int64_t> counts() const;

private:
    const SparkLibrary* _library;
    JavaObject _stream;
    JavaObject _batch;
};

/// A session of the cluster's Java client. One thread at a time, except interrupt and abandon. All
/// operations throw ClusterFault.
class SparkClient
{
public:
    /// Connects to nothing yet. Borrows the library. `callMillis` is how long a call without a
    /// statement may take, `retryMillis` how long after its last answer a server is tried again.
    SparkClient(const SparkLibrary& library, const std::string& url, std::int64_t callMillis,
                std::int64_t retryMillis);
    SparkClient(const SparkClient&) = delete;
    SparkClient& operator=(const SparkClient&) = delete;
    /// Ends the session.
    ~SparkClient();

    /// Connects to the server. Returns its version, for example 4.2.0.
    std::string connect();
    /// Ends a call of connect, which then fails. Nothing may follow. Any thread.
    void abandon();
    /// Names and values in turn.
    void configure(const std::vector<std::string>& settings);
    /// The columns of a query as JSON: a list of objects with name, type and nullable.
    std::string schema(const std::string& query);
    SparkStream query(const std::string& sql, const std::string& tag);
    /// A statement that returns no records. It has ended when the stream is at its end.
    SparkStream command(const std::string& sql, const std::string& tag);
    /// Makes a query a view, which ends with the session.
    void registerView(const std::string& view, const std::string& query);
    /// Defines a query that later statements may read by its name, which occurs in no other text.
    /// Its records are counted on the way: `metrics` has the name of a metric, an integer, and its
    /// aggregate, in turn. Asks the server nothing.
    void addCounted(const std::string& name, const std::string& query,
                    const std::vector<std::string>& metrics);
    /// Interrupts the statements with the tag. Any thread.
    void interrupt(const std::string& tag);

    /// Sends records of these columns. `types` are the names of types in SQL.
    JavaObject upload(const std::vector<std::string>& names, const std::vector<std::string>& types);
    /// Makes the records of a block a view, which the server keeps in memory.
    void registerRows(const JavaObject& upload, const std::string& view, const ArrowBlock& block);
    /// Appends the records of a block to a folder of Parquet files.
    void appendRows(const JavaObject& upload, const std::string& path, const ArrowBlock& block,
                    const std::string& tag);

private:
    SparkStream start(jmethodID method, const std::string& sql, const std::string& tag);

    const SparkLibrary& _library;
    const SparkClasses& _classes;
    JavaObject _session;
};

} // namespace EmbeddedHV
