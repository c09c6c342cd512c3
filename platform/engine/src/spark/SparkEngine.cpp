#include "spark/SparkEngine.h"

#include <optional>
#include <random>

#include "ErrorIds.h"
#include "JobError.h"
#include "spark/SparkDialect.h"
#include "spark/SparkFiles.h"
#include "spark/SparkSession.h"
#include "spark/SparkWatch.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kCallMillis = 15000;
constexpr std::int64_t kRetryMillis = 20000;
constexpr const char* kMajorVersion = "4.";

/// 16 hexadecimal digits.
std::string randomName()
{
    constexpr const char* kDigits = "0123456789abcdef";
    std::random_device random;
    std::string name;
    for (int i = 0; i < 16; ++i)
        name += kDigits[random() % 16];
    return name;
}

void requireVersion(const std::string& version, const std::string& url)
{
    if (version.starts_with(kMajorVersion))
        return;
    const std::string name = shownCluster(url);
    throw JobError(errors::kNoCluster,
                   {.name = name,
                    .what = "the cluster at " + name + " runs Spark " + version +
                            ", and jobs need version 4; use a cluster of this version"});
}

} // namespace

std::string newDatabase(const SparkSettings& settings, const std::string& name)
{
    const std::string location =
        settings.scratch.empty()
            ? std::string()
            : " LOCATION " + sparkDialect().literal(settings.scratch + "/" + name);
    return "CREATE DATABASE IF NOT EXISTS " + sparkDialect().name(name) + location;
}

std::string dropDatabase(const std::string& name)
{
    return "DROP DATABASE IF EXISTS " + sparkDialect().name(name) + " CASCADE";
}

void runCommand(SparkClient& client, const std::string& sql)
{
    SparkStream stream = client.command(sql, "");
    while (stream.next() != SparkStream::Event::End)
        continue;
}

SparkConnection connectedClient(const SparkLibrary& library, const SparkSettings& settings,
                                Cancellation* cancellation)
{
    try {
        SparkConnection connection{
            std::make_unique<SparkClient>(library, settings.url, kCallMillis, kRetryMillis), {}};
        SparkClient& client = *connection.client;
        {
            std::optional<SparkWatch> watch;
            if (cancellation)
                watch.emplace([&] { client.abandon(); }, *cancellation);
            connection.version = client.connect();
        }
        requireVersion(connection.version, settings.url);
        std::vector<std::string> options = settings.options;
        // Last, because results depend on them.
        for (const SparkSetting& setting : kSparkSettings)
            options.insert(options.end(), {setting.name, setting.value});
        client.configure(options);
        return connection;
    } catch (const ClusterFault& fault) {
        throw connectionError(fault, settings.url);
    } catch (const JavaFailure& failure) {
        throw connectionError({ClusterFaultKind::Use, failure.what()}, settings.url);
    }
}

SparkEngine::SparkEngine(const SparkSettings& settings, Database& database)
    : _settings(settings), _database(database), _library(settings.machine, settings.clientFolder),
      _name(randomName()), _sourceDatabase("hv_sources_" + _name)
{
}

SparkEngine::~SparkEngine()
{
    if (!_hasSourceDatabase)
        return;
    try {
        runCommand(*connect(nullptr), dropDatabase(_sourceDatabase));
    } catch (const std::exception&) {
        return; // the tables stay on a cluster that does not answer any more
    }
}

std::unique_ptr<Session> SparkEngine::newSession()
{
    return std::make_unique<SparkSession>(*this);
}

std::unique_ptr<const DataFiles> SparkEngine::newFiles(Session& session, const FileSpace& files)
{
    return std::make_unique<SparkFiles>(static_cast<SparkSession&>(session), files);
}

std::string SparkEngine::newJobName()
{
    return "hv_job_" + _name + "_" + std::to_string(++_jobs);
}

void SparkEngine::makeSourceDatabase(SparkClient& client)
{
    const std::lock_guard lock(_mutex);
    if (_hasSourceDatabase)
        return;
    runCommand(client, newDatabase(_settings, _sourceDatabase));
    _hasSourceDatabase = true;
}

} // namespace EmbeddedHV
