#include "spark/SparkSession.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/FieldMetadata.h"
#include "expression/FieldTypes.h"
#include "runtime/DataModel.h"
#include "runtime/Overflows.h"
#include "spark/SparkBatch.h"
#include "spark/SparkColumns.h"
#include "spark/SparkDialect.h"
#include "spark/SparkEngine.h"
#include "spark/SparkPaths.h"
#include "spark/SparkSql.h"
#include "spark/SparkWatch.h"

namespace EmbeddedHV {
namespace {

/// The storage for a column of a file; String for what cannot be a number or a time.
CFField::StorageType storageOfType(const std::string& type)
{
    constexpr std::pair<std::string_view, CFField::StorageType> kStorages[] = {
        {"BOOLEAN", CFField::Integer},     {"TINYINT", CFField::Integer},
        {"SMALLINT", CFField::Integer},    {"INT", CFField::Integer},
        {"BIGINT", CFField::Integer},      {"FLOAT", CFField::Real},
        {"DOUBLE", CFField::Real},         {"DECIMAL", CFField::Real},
        {"DATE", CFField::Date},           {"TIME", CFField::Time},
        {"TIMESTAMP", CFField::Timestamp}, {"TIMESTAMP_NTZ", CFField::Timestamp},
    };
    const std::string_view name = std::string_view(type).substr(0, type.find('('));
    for (const auto& [known, storage] : kStorages)
        if (known == name)
            return storage;
    return CFField::String;
}

/// The records of a query of texts.
std::vector<std::vector<SparkValue>> textsOf(SparkStream stream, std::size_t columns)
{
    std::vector<std::vector<SparkValue>> records;
    const std::vector<SparkColumn> types(columns, {"", "STRING"});
    SparkBatch batch(types);
    SparkStream::Event event = stream.next();
    for (; event != SparkStream::Event::End; event = stream.next()) {
        if (event != SparkStream::Event::Batch)
            continue;
        batch.show(stream.batch());
        for (std::size_t row = 0; row < batch.rows(); ++row) {
            std::vector<SparkValue>& record = records.emplace_back();
            for (std::size_t i = 0; i < columns; ++i) {
                const BatchColumn column = batch.column(i);
                record.push_back(column.isMissing(row) ? SparkValue()
                                                       : SparkValue(column.textAt(row)));
            }
        }
    }
    return records;
}

/// The text with these lines.
std::string linesOf(const std::vector<std::vector<SparkValue>>& records)
{
    std::string text;
    for (const auto& line : records)
        text += line[0].value_or("") + "\n";
    return text;
}

/// Ends a statement whose records nobody needs any more.
void interruptQuietly(SparkClient& client, const std::string& tag) noexcept
{
    try {
        client.interrupt(tag);
    } catch (const std::exception&) {
        return; // a lost connection ends the statement as well
    }
}

/// Whether this process sees a file of this path. The file may contain field metadata.
bool isFileHere(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

[[noreturn]] void refuseRejects()
{
    throw JobError(errors::kInternal, "the cluster has no list of skipped records");
}

} // namespace

SparkSession::SparkSession(SparkEngine& engine)
    : _engine(engine), _edge(engine.database()), _jobDatabase(engine.newJobName())
{
}

SparkSession::~SparkSession()
{
    if (!_client || !_hasJobDatabase || _isLost)
        return;
    try {
        runCommand(*_client, dropDatabase(_jobDatabase));
    } catch (const std::exception&) {
        return; // the tables stay on a cluster that does not answer any more
    }
}

const Dialect& SparkSession::dialect() const
{
    return sparkDialect(_engine.settings().sums);
}

void SparkSession::open(Cancellation* cancellation)
{
    if (!_client)
        _client = _engine.connect(cancellation);
}

StatementFault SparkSession::meaningOf(const ClusterFault& fault)
{
    _isLost = _isLost || fault.isOfConnection();
    return statementFault(fault, url());
}

const std::string& SparkSession::url() const
{
    return _engine.settings().url;
}

std::string SparkSession::newTag()
{
    return _jobDatabase + "_" + std::to_string(++_statements);
}

void SparkSession::run(const std::string& sql, Cancellation& cancellation, const Progress& progress)
{
    const std::string tag = newTag();
    explained([&] { follow(_client->command(sql, tag), tag, cancellation, progress, {}); });
}

void SparkSession::stream(const std::string& sql, Cancellation& cancellation,
                          const Progress& progress, const std::function<void(RecordBatch&)>& take)
{
    const std::string tag = newTag();
    explained([&] { follow(_client->query(sql, tag), tag, cancellation, progress, take); });
}

/// Waits for the end of a statement. If `take` throws, the statement is interrupted.
void SparkSession::follow(SparkStream stream, const std::string& tag, Cancellation& cancellation,
                          const Progress& progress, const std::function<void(RecordBatch&)>& take)
{
    const SparkWatch watch([&] { _client->interrupt(tag); }, cancellation);
    std::optional<SparkBatch> batch;
    SparkStream::Event event = stream.next();
    for (; event != SparkStream::Event::End; event = stream.next()) {
        if (event == SparkStream::Event::Report) {
            progress(stream.progress());
            continue;
        }
        if (!take)
            continue;
        if (!batch)
            batch.emplace(sparkColumns(stream.schema()));
        batch->show(stream.batch());
        try {
            take(*batch);
        } catch (...) {
            interruptQuietly(*_client, tag);
            throw;
        }
    }
    countOverflows(stream);
}

/// Adds what a statement that has ended has counted.
void SparkSession::countOverflows(const SparkStream& stream)
{
    const std::vector<std::int64_t> counts = stream.counts();
    for (std::size_t i = 0; i + 1 < counts.size(); i += 2)
        if (OverflowCount* const count = overflows().find(counts[i]))
            *count += static_cast<std::uint64_t>(counts[i + 1]);
}

std::vector<std::vector<SparkValue>> SparkSession::texts(const std::string& sql,
                                                         std::size_t columns)
{
    return explained([&] { return textsOf(_client->query(sql, ""), columns); });
}

std::string SparkSession::textIn(const std::string& path)
{
    return linesOf(texts("SELECT * FROM text." + sparkDialect().name(clusterPattern(path)), 1));
}

void SparkSession::makeJobDatabase()
{
    if (_hasJobDatabase)
        return;
    const SparkSettings& settings = _engine.settings();
    try {
        runCommand(*_client, newDatabase(settings, _jobDatabase));
    } catch (const ClusterFault& fault) {
        if (fault.isOfConnection())
            throw meaningOf(fault).error();
        const std::string place =
            settings.scratch.empty() ? "the cluster's warehouse" : settings.scratch;
        throw JobError(errors::kFileUnwritable,
                       {.file = place,
                        .what = "the cluster cannot keep the records of the job there; the "
                                "setting \"engine.scratch\" names a folder that all its workers "
                                "can write to"},
                       fault.what());
    }
    _hasJobDatabase = true;
}

std::string SparkSession::jobFolder()
{
    makeJobDatabase();
    if (!_jobFolder.empty())
        return _jobFolder;
    const std::string& scratch = _engine.settings().scratch;
    if (!scratch.empty())
        return _jobFolder = scratch + "/" + _jobDatabase;
    for (const auto& record : texts("DESCRIBE DATABASE " + sparkDialect().name(_jobDatabase), 2))
        if (record[0] == "Location")
            _jobFolder = record[1].value_or("");
    return _jobFolder;
}

std::string SparkSession::tableName(const std::string& table, TableOwner owner)
{
    const Dialect& dialect = sparkDialect();
    if (owner == TableOwner::Job) {
        makeJobDatabase();
        return dialect.name(_jobDatabase) + "." + dialect.name(table);
    }
    explained([&] { _engine.makeSourceDatabase(*_client); });
    return dialect.name(_engine.sourceDatabase()) + "." + dialect.name(table);
}

std::string SparkSession::ordered(const std::string& table, const Fields& fields) const
{
    return _keepsOrder ? sparkDialect().inFileOrder(table, fields) : table;
}

std::string SparkSession::recordsOf(const std::string& table, const Fields& fields)
{
    return ordered(tableName(table, TableOwner::Job), fields);
}

/// The records first go to a table of the job, because the cluster cannot take back what it has
/// added to a table.
std::string SparkSession::beginAddition(const std::string& table, const std::string& select)
{
    _addedTo = tableName(table, TableOwner::Service);
    _addition = tableName("hv_added_" + std::to_string(++_additions), TableOwner::Job);
    return sparkDialect().newTable(_addition, select);
}

void SparkSession::endAddition()
{
    explained([&] {
        runCommand(*_client, sparkDialect().addition(_addedTo, "SELECT * FROM " + _addition));
    });
    undoAddition();
}

void SparkSession::undoAddition()
{
    explained([&] { runCommand(*_client, "DROP TABLE IF EXISTS " + _addition); });
}

void SparkSession::dropTable(const std::string& table, TableOwner owner)
{
    // The cluster's tables of the job are dropped with its database, all at once.
    if (owner == TableOwner::Job)
        _edge.dropTable(table, owner);
    else
        explained([&] { runCommand(*_client, "DROP TABLE IF EXISTS " + tableName(table, owner)); });
}

/// The server may compute a record twice, for example to sort by ranges. So it counts the different
/// keys of the records, by their hashes, not the records.
std::string SparkSession::finiteResults(const std::string& select, const ResultColumns& columns)
{
    std::string keys;
    for (const std::string& key : columns.keys)
        keys += (keys.empty() ? "" : ", ") + key;
    std::vector<std::string> metrics;
    for (const ResultColumns::Finite& column : columns.finite) {
        metrics.push_back(std::to_string(column.count));
        metrics.push_back(sparkSql("size(collect_set(CASE WHEN NOT abs($1) < " HV_SPARK_INFINITY
                                   " THEN xxhash64($2) END))",
                                   {column.name, keys.empty() ? "1" : keys}));
    }
    const std::string view = newView() + "_counted";
    _client->addCounted(view, select, metrics);
    return columns.selectFrom(view, [](const ResultColumns::Finite& column) {
        return sparkDialect().finiteReal(column.name);
    });
}

std::string SparkSession::parquetTable(const std::string& path) const
{
    return sparkDialect().parquetTable(clusterPath(path));
}

std::string SparkSession::parquetRecords(const std::string& path, const Fields& columns) const
{
    return ordered(parquetTable(path), columns);
}

/// Asks for the data model in a folder. The pattern matches the folder, too. So a missing model is
/// no fault, which would take the client half a second.
SparkStream SparkSession::modelOf(const std::string& path)
{
    const std::string name = kModelName;
    return _client->query("SELECT * FROM text." +
                              sparkDialect().name(clusterPattern(path) + "{,/" + name + "}") +
                              " WITH ('pathGlobFilter' = '{" + name + ",part-*.txt}')",
                          "");
}

/// The cluster reads the data model at the same time, because describeColumns follows.
std::string SparkSession::parquetSchema(const std::string& path)
{
    _asked = path;
    _model.reset();
    if (!isFileHere(path))
        _model.emplace(modelOf(path));
    return _client->schema("SELECT * FROM " + parquetTable(path));
}

bool SparkSession::seesParquet(const std::string& path)
{
    try {
        _seenSchema = parquetSchema(path);
        _seen = path;
        return true;
    } catch (const ClusterFault& fault) {
        _model.reset();
        return !fault.isCondition("PATH_NOT_FOUND");
    } catch (const JavaFailure&) {
        return true; // the next statement reports the failure
    }
}

ParquetColumns SparkSession::parquetColumns(const std::string& path)
{
    const Dialect& dialect = sparkDialect();
    ParquetColumns columns;
    const std::string seen = std::exchange(_seen, "");
    const std::string schema =
        seen == path ? _seenSchema : explained([&] { return parquetSchema(path); });
    for (const SparkColumn& column : sparkColumns(schema)) {
        const CFField::StorageType storage = storageOfType(column.type);
        columns.fields.push_back(plainField(column.name, storage));
        columns.values.push_back(dialect.cast(dialect.name(column.name), valueTypeOf(storage)));
    }
    return columns;
}

void SparkSession::describeColumns(const std::string& path, const std::string& origin,
                                   ParquetColumns& columns)
{
    // The cluster does not show the metadata in a file, but this process may see the file too.
    if (isFileHere(path))
        return _edge.describeColumns(path, origin, columns);
    try {
        const std::string model = explained([&] {
            const bool isAsked = _model && _asked == path;
            SparkStream lines = isAsked ? std::move(*_model) : modelOf(path);
            _model.reset();
            return linesOf(textsOf(std::move(lines), 1));
        });
        if (model.empty())
            return; // another program has written the folder
        datafile::adoptMetadata(columns.fields,
                                fieldsOfDataModel(model, modelIn(path), errors::kDataModel));
    } catch (const StatementFault&) {
        return; // the next statement reports the failure
    } catch (const JobError&) {
        return; // the columns are known without the data model
    }
}

bool SparkSession::hasRejects(const std::string&)
{
    return false;
}

bool SparkSession::hasRejectedValues(const std::string&)
{
    refuseRejects();
}

std::unique_ptr<RejectedRecords> SparkSession::rejectedRecords(const std::string&, std::int64_t)
{
    refuseRejects();
}

} // namespace EmbeddedHV
