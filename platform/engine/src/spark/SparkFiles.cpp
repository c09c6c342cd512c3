#include "spark/SparkFiles.h"

#include <filesystem>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/InputFile.h"
#include "duckdb/DuckDialect.h"
#include "duckdb/DuckEngine.h"
#include "spark/PipedWriter.h"
#include "spark/SparkCollection.h"
#include "spark/SparkCsv.h"
#include "spark/SparkDialect.h"
#include "spark/SparkEngine.h"
#include "spark/SparkOutputs.h"
#include "spark/SparkPaths.h"
#include "spark/SparkSource.h"
#include "steps/CsvRead.h"
#include "steps/ParquetRead.h"

namespace EmbeddedHV {
namespace {

namespace fs = std::filesystem;

/// A CSV file of a byte for each value has eight times its size as records.
constexpr std::uintmax_t kLargestRatio = 8;

/// Whether this process sees something of this path.
bool isSeenHere(const std::string& path)
{
    std::error_code ignored;
    return !isOfCluster(path) && fs::exists(path, ignored);
}

bool isFolderHere(const std::string& path)
{
    std::error_code ignored;
    return !isOfCluster(path) && fs::is_directory(path, ignored);
}

} // namespace

bool SparkFiles::exists(const std::string& path) const
{
    if (!isOfCluster(path))
        return isSeenHere(path);
    try {
        _session.client().schema("SELECT * FROM text." + sparkDialect().name(clusterPattern(path)));
        return true;
    } catch (const ClusterFault& fault) {
        return !fault.isCondition("PATH_NOT_FOUND");
    } catch (const JavaFailure&) {
        return true; // the next statement reports the failure
    }
}

void SparkFiles::checkInput(const std::string& path, FileKind kind, const std::string& step) const
{
    const bool isReadHere = kind == FileKind::Sav || (kind == FileKind::Csv && _files.isOwn(path));
    if (isReadHere || (isSeenHere(path) && !isFolderHere(path)))
        checkInputFile(path, step);
}

std::string SparkFiles::document(const std::string& path, const std::string& step) const
{
    if (!isOfCluster(path))
        return readSmallFile(path, step);
    try {
        return _session.textIn(path);
    } catch (const StatementFault& fault) {
        throw clusterFileFault(fault, path, step);
    }
}

SparkFiles::~SparkFiles()
{
    if (_edge)
        _edge->dropTables();
}

JobContext& SparkFiles::edge(const JobContext& context) const
{
    if (!_edge) {
        DuckEngine embedded(_session.engine().database());
        _edge = std::make_shared<JobContext>(embedded, context.files, context.dataSources);
    }
    _edge->cancellation = context.cancellation;
    _edge->plansOnly = context.plansOnly;
    _edge->message = context.message;
    _edge->iterators = context.iterators;
    return *_edge;
}

/// Plans the relation on the embedded database and sends its records.
template <class Plan>
NodePtr SparkFiles::planned(JobContext& context, const std::string& name, Plan plan) const
{
    SentRecords records;
    records.relation = plan(edge(context));
    records.context = _edge;
    records.name = name;
    return sentNode(_session, std::move(records));
}

/// Whether this process reads the file and sends its records. It knows more about bad records than
/// the cluster.
bool SparkFiles::isSent(const std::string& path) const
{
    if (_files.isOwn(path))
        return true;
    std::error_code error;
    const std::uintmax_t bytes = isOfCluster(path) ? 0 : fs::file_size(path, error);
    const auto most = static_cast<std::uintmax_t>(_session.engine().settings().uploadBytes);
    return !isOfCluster(path) && !error && bytes <= most / kLargestRatio;
}

NodePtr SparkFiles::csv(JobContext& context, const CsvReadSettings& settings) const
{
    if (!isSent(settings.path))
        return planClusterCsv(_session, context, settings);
    return planned(context, settings.path,
                   [&](JobContext& edge) { return planCsv(edge, settings); });
}

std::string SparkFiles::folderOf(const std::string& path) const
{
    return _files.isOwn(path) ? _session.jobFolder() + "/" + fileNameOf(path) : path;
}

/// Whether the workers do not see a file or folder that this process sees.
bool SparkFiles::isOnlyHere(const std::string& path) const
{
    if (_files.isOwn(path) || !isSeenHere(path))
        return false;
    return !_session.seesParquet(path);
}

NodePtr SparkFiles::parquet(JobContext& context, const ParquetReadSettings& settings) const
{
    if (settings.kind == FileKind::Sav || isOnlyHere(settings.path))
        return planned(context, settings.path,
                       [&](JobContext& edge) { return planParquet(edge, settings); });
    ParquetReadSettings onCluster = settings;
    onCluster.path = folderOf(settings.path);
    return planParquet(context, onCluster);
}

NodePtr SparkFiles::rows(JobContext& context, RowSource& source) const
{
    SentRecords records;
    records.relation = localFiles()->rows(context, source);
    records.relation->fields = source.fields();
    records.name = "the row iterator \"" + source.name() + "\"";
    records.failure = [&source] { return source.failure(); };
    return sentNode(_session, std::move(records));
}

WrittenFile SparkFiles::fetched(JobContext& context, const WrittenFile& file) const
{
    if (file.kind != FileKind::Hvbf)
        return file;
    WrittenFile here = file;
    here.content = std::make_shared<ScratchFile>(_files.scratchFolder());
    PipedWriter writer(_session, file.fields, *context.cancellation);
    writer.start(duckDialect().fileOf(writer.select(), {here.content->path(), false, file.fields,
                                                        kDataModelKey, dataModelOf(file.fields)}),
                 "writes the file " + file.path);
    const std::string select =
        "SELECT * FROM " +
        sparkDialect().inFileOrder(_session.parquetTable(file.path), file.fields);
    _session.stream(
        typedSelect(file.fields, select), *context.cancellation, [](double) {},
        [&writer](RecordBatch& batch) { writer.put(batch); });
    writer.finish();
    return here;
}

std::unique_ptr<Output> SparkFiles::output(JobContext& context, const FileOutputSettings& settings,
                                           const Fields& fields) const
{
    // The next statement that reads the file will find other records.
    if (_edge)
        std::erase_if(_edge->profiles, [&settings](const auto& known) {
            return known.first.first == settings.path;
        });
    if (settings.kind == FileKind::Hvbf)
        return clusterFolder(_session, context, settings, folderOf(settings.path), fields);
    if (!isOfCluster(settings.path))
        return streamedFile(_session, context, settings, fields);
    if (settings.kind == FileKind::Csv)
        return clusterFolder(_session, context, settings, settings.path, fields);
    throw JobError(errors::kNotAvailable,
                   {.step = "write",
                    .file = settings.path,
                    .what = "the process of the host writes a SAV file, and only the cluster sees "
                            "this path; use a path that both see, or the type hvbf"});
}

std::unique_ptr<Stage> SparkFiles::collection(JobContext& context, const std::string& step,
                                              const Fields& fields) const
{
    return collectedRecords(_session, context, step, fields);
}

NodePtr SparkFiles::sent(NodePtr local, const std::string& step) const
{
    SentRecords records;
    records.relation = std::move(local);
    records.name = "the input of " + step;
    return sentNode(_session, std::move(records));
}

} // namespace EmbeddedHV
