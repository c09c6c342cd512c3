#include "spark/SparkOutputs.h"

#include <optional>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/PendingFile.h"
#include "duckdb/DuckDialect.h"
#include "expression/FieldTypes.h"
#include "spark/PipedWriter.h"
#include "spark/SparkDialect.h"
#include "spark/SparkEngine.h"
#include "spark/SparkPaths.h"

namespace EmbeddedHV {
namespace {

class StreamedFile final : public Output
{
public:
    StreamedFile(SparkSession& session, JobContext& context, const FileOutputSettings& settings,
                 const Fields& fields)
        : _fields(fields), _file(context, settings, fields, duckDialect()),
          _writer(session, fields, *context.cancellation)
    {
    }

    std::string target() const override { return _file.target(); }
    bool writesFile() const override { return true; }
    std::string statement(const std::string& select) override
    {
        _writer.start(_file.statement(_writer.select()), "writes the file " + target());
        return typedSelect(_fields, select);
    }
    bool takesRecords() const override { return true; }
    void take(RecordBatch& batch) override { _writer.put(batch); }
    void commit() override
    {
        try {
            _writer.finish();
        } catch (const StatementFault& fault) {
            throw faultOf(fault, "write", target(), true);
        }
        _file.commit();
    }

private:
    Fields _fields;
    FileOutput _file;
    PipedWriter _writer; ///< ends before the file that it writes
};

class ClusterFolder final : public Output
{
public:
    ClusterFolder(SparkSession& session, JobContext& context, const FileOutputSettings& settings,
                  std::string folder, const Fields& fields)
        : _session(session), _context(context), _settings(settings), _folder(std::move(folder)),
          _fields(fields)
    {
        if (!settings.modelPath.empty() && !isOfCluster(settings.modelPath))
            _model.emplace(settings.modelPath, "write");
        context.announce(settings.path, "write");
        if (!settings.modelPath.empty())
            context.announce(settings.modelPath, "write");
    }
    ClusterFolder(const ClusterFolder&) = delete;
    ClusterFolder& operator=(const ClusterFolder&) = delete;
    ~ClusterFolder() override
    {
        if (_isWriting && _isNew && !_session.isLost())
            remove();
    }

    std::string target() const override { return _settings.path; }
    bool writesFile() const override { return true; }
    std::string statement(const std::string& select) override
    {
        _isNew = !_context.dataFiles->exists(_folder);
        _isWriting = true;
        return sparkDialect().fileOf(
            typedSelect(_fields, select),
            {clusterPath(_folder), _settings.kind == FileKind::Csv, _fields});
    }
    void commit() override
    {
        if (_settings.kind == FileKind::Hvbf)
            writeModelTo(modelIn(_folder));
        if (_model) {
            _model->write(dataModelOf(_fields));
            _model->commit();
        } else if (!_settings.modelPath.empty()) {
            writeModelTo(_settings.modelPath);
        }
        _isWriting = false;
        if (_settings.kind == FileKind::Hvbf)
            _context.written[fileNameOf(_folder)] = {_folder, FileKind::Hvbf, _fields, {}};
        _context.unwritten.erase(canonicalPath(_settings.path));
        if (!_settings.modelPath.empty())
            _context.unwritten.erase(canonicalPath(_settings.modelPath));
    }

private:
    /// Writes the data model as a folder of the text format.
    void writeModelTo(const std::string& path)
    {
        const Dialect& dialect = sparkDialect();
        try {
            _session.explained([&] {
                runCommand(_session.client(),
                           "INSERT OVERWRITE DIRECTORY " + dialect.literal(clusterPath(path)) +
                               " USING text SELECT " + dialect.literal(dataModelOf(_fields)) +
                               " AS value");
            });
        } catch (const StatementFault& fault) {
            throw faultOf(fault, "write", path, true);
        }
    }
    /// The cluster has no statement that removes a folder, but a database has one and is dropped
    /// with it.
    void remove() noexcept
    {
        try {
            const Dialect& dialect = sparkDialect();
            const std::string name = _session.newTag();
            runCommand(_session.client(), "CREATE DATABASE " + dialect.name(name) + " LOCATION " +
                                              dialect.literal(clusterPath(_folder)));
            runCommand(_session.client(), dropDatabase(name));
        } catch (const std::exception&) {
            return; // without its _SUCCESS file, the folder is not complete
        }
    }

    SparkSession& _session;
    JobContext& _context;
    FileOutputSettings _settings;
    std::string _folder; ///< the path on the cluster
    Fields _fields;
    std::optional<PendingFile> _model;
    bool _isNew = false; ///< there was nothing of this path before
    bool _isWriting = false;
};

} // namespace

std::string typedSelect(const Fields& fields, const std::string& select)
{
    const Dialect& dialect = sparkDialect();
    std::string columns;
    for (const CFField& field : fields) {
        const std::string name = dialect.name(field.GetName());
        columns += (columns.empty() ? "" : ", ") +
                   dialect.cast(name, valueTypeOf(field.GetStorage())) + " AS " + name;
    }
    return "SELECT " + columns + " FROM (" + select + ")";
}

std::unique_ptr<Output> streamedFile(SparkSession& session, JobContext& context,
                                     const FileOutputSettings& settings, const Fields& fields)
{
    return std::make_unique<StreamedFile>(session, context, settings, fields);
}

std::unique_ptr<Output> clusterFolder(SparkSession& session, JobContext& context,
                                      const FileOutputSettings& settings, std::string folder,
                                      const Fields& fields)
{
    return std::make_unique<ClusterFolder>(session, context, settings, std::move(folder), fields);
}

} // namespace EmbeddedHV
