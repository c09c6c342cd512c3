#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

#include "runtime/Database.h"
#include "spark/SparkClient.h"
#include "spark/SparkSettings.h"
#include "steps/JobEngine.h"

namespace EmbeddedHV {

/// A connection to the server with the settings on which the dialect relies.
struct SparkConnection
{
    std::unique_ptr<SparkClient> client;
    std::string version; ///< the server's, for example 4.2.0
};

/// Connects to the server. Borrows the library. A cancellation ends it; null: nothing does. Throws
/// JobError.
SparkConnection connectedClient(const SparkLibrary& library, const SparkSettings& settings,
                                Cancellation* cancellation);

/// Jobs on a Spark cluster. Named data sources are tables in a database of the service on the
/// cluster, which is dropped with this object.
class SparkEngine final : public JobEngine
{
public:
    /// Connects to nothing. Borrows the embedded database, which converts records between this
    /// process and the cluster.
    SparkEngine(const SparkSettings& settings, Database& database);
    SparkEngine(const SparkEngine&) = delete;
    SparkEngine& operator=(const SparkEngine&) = delete;
    ~SparkEngine() override;

    std::unique_ptr<Session> newSession() override;
    std::unique_ptr<const DataFiles> newFiles(Session& session, const FileSpace& files) override;

    const SparkSettings& settings() const { return _settings; }
    Database& database() const { return _database; }
    /// Connects to the server. A cancellation ends it; null: nothing does. Throws JobError.
    std::unique_ptr<SparkClient> connect(Cancellation* cancellation) const
    {
        return connectedClient(_library, _settings, cancellation).client;
    }
    /// A name that no other job has, on any machine.
    std::string newJobName();
    /// The database of the service. It exists once `makeSourceDatabase` was called.
    const std::string& sourceDatabase() const { return _sourceDatabase; }
    /// Throws ClusterFault.
    void makeSourceDatabase(SparkClient& client);

private:
    SparkSettings _settings;
    Database& _database;
    SparkLibrary _library;
    std::string _name; ///< of the service: random, because other hosts use the same cluster
    std::string _sourceDatabase;
    std::mutex _mutex;
    bool _hasSourceDatabase = false;
    std::atomic<int> _jobs = 0;
};

/// The statement that makes a database of a job or a service, in the scratch folder if there is
/// one.
std::string newDatabase(const SparkSettings& settings, const std::string& name);
/// The statement that drops it with its tables and its folder.
std::string dropDatabase(const std::string& name);
/// Runs a statement that returns no records. Throws ClusterFault.
void runCommand(SparkClient& client, const std::string& sql);

} // namespace EmbeddedHV
