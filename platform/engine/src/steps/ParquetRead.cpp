#include "steps/ParquetRead.h"

#include <algorithm>
#include <system_error>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FileColumns.h"
#include "datafile/OpenSealed.h"
#include "datafile/ParquetParts.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "expression/ValueTypes.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {
namespace {

/// Thrown while a sealed file is opened, when the job is cancelled. The job checks for the
/// cancellation itself.
struct Cancelled
{
};

const char* idOf(SealedFileError::Kind kind)
{
    switch (kind) {
    case SealedFileError::Kind::WrongPassword:
        return errors::kWrongPassword;
    case SealedFileError::Kind::System:
        return errors::kFileUnreadable;
    default:
        return errors::kNotOfItsKind;
    }
}

/// The content of a sealed file; null if the file is not sealed.
std::shared_ptr<ScratchFile> unsealed(JobContext& context, const ParquetReadSettings& settings)
{
    if (settings.kind != FileKind::Sav || !isSealed(settings.path))
        return nullptr;
    const auto parts = [&settings](const std::string& problem) {
        return FaultParts{.step = "read", .file = settings.path, .what = problem};
    };
    if (settings.password.empty())
        throw JobError(errors::kPasswordMissing,
                       parts("the file is sealed with a password, and none is given"));
    try {
        return openSealed(settings.path, settings.password, context.files.scratchFolder(),
                          [&context] {
                              if (context.stopping())
                                  throw Cancelled{};
                          });
    } catch (const Cancelled&) {
        return nullptr;
    } catch (const SealedFileError& error) {
        throw JobError(idOf(error.kind()), parts(error.what()));
    } catch (const std::system_error& error) {
        throw JobError(errors::kFileUnreadable,
                       parts(std::string("the file cannot be read: ") + error.what()));
    }
}

/// Reports damage in a file, which is found only while records are read.
class ParquetCheck : public SourceCheck
{
public:
    explicit ParquetCheck(std::string path) : _path(std::move(path)) {}
    void start(Cancellation&, const Progress&) override {}
    void finish(Session&, Reporter&) override {}
    void abandon(const StatementFault& fault) override
    {
        // A path of a cluster has no parts here.
        const ParquetParts parts =
            hasParts(_path) ? parquetParts(_path) : ParquetParts{_path, {}, {_path}, {}};
        const auto damaged = std::ranges::find_if(
            parts.files, [&](const std::string& file) { return fault.isDamaged(file); });
        if (damaged == parts.files.end())
            return;
        const bool isKnown = !parts.isFile() && !fault.isDamaged({});
        throw JobError(
            errors::kNotOfItsKind,
            {.step = "read",
             .file = _path,
             .what = isKnown ? parts.nameOf(*damaged) + " is damaged" : "the file is damaged"},
            fault.what());
    }

private:
    std::string _path;
};

ParquetColumns columnsOf(JobContext& context, const ParquetReadSettings& settings,
                         const std::string& path)
{
    try {
        return context.session->parquetColumns(path);
    } catch (const StatementFault& error) {
        if (error.about() == StatementFault::About::Itself)
            throw JobError(error.error());
        throw JobError(errors::kNotOfItsKind,
                       {.step = "read",
                        .file = settings.path,
                        .what = std::string("this is not ") +
                                (settings.kind == FileKind::Sav ? "a SAV" : "an HVBF") +
                                " file, or it is cut short"},
                       error.what());
    }
}

/// Applies a data model document next to the file. It may widen a type. Everything else must agree
/// with the file; otherwise it belongs to another file.
void applyDocument(const Dialect& dialect, ParquetColumns& columns,
                   const ParquetReadSettings& settings)
{
    const auto refuse = [&settings](const std::string& problem) {
        throw JobError(errors::kDataModelMismatch,
                       {.step = "read", .file = settings.path, .what = problem});
    };
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < columns.fields.size(); ++i)
        places.emplace(columns.fields[i].GetName(), i);
    for (const CFField& wanted : *settings.dataModel) {
        const auto place = places.find(wanted.GetName());
        if (place == places.end())
            refuse("the data model has a field \"" + wanted.GetName() + "\", which the file lacks" +
                   base::suggestion(wanted.GetName(), columns.fields, &CFField::GetName));
        CFField* const found = &columns.fields[place->second];
        if (found->GetStorage() == wanted.GetStorage())
            continue;
        if (!converts(valueTypeOf(found->GetStorage()), valueTypeOf(wanted.GetStorage())))
            refuse("the field \"" + wanted.GetName() + "\" is " + typeWordOf(found->GetStorage()) +
                   ", and in the data model " + typeWordOf(wanted.GetStorage()));
        std::string& value = columns.values[place->second];
        value = dialect.cast(value, valueTypeOf(wanted.GetStorage()));
        *found = plainField(wanted.GetName(), wanted.GetStorage());
    }
}

} // namespace

NodePtr planParquet(JobContext& context, const ParquetReadSettings& settings)
{
    const auto scratch = unsealed(context, settings);
    const std::string path = scratch ? scratch->path() : settings.path;
    ParquetColumns columns = columnsOf(context, settings, path);
    if (settings.dataModel) {
        makeNamesUnique(columns.fields);
        applyDocument(context.dialect, columns, settings);
        adoptMetadata(columns.fields, *settings.dataModel);
    } else {
        context.session->describeColumns(path, settings.path, columns);
        makeNamesUnique(columns.fields);
    }
    auto node = std::make_shared<Node>();
    node->fields = columns.fields;
    // A sealed file was already checked when it was opened.
    if (!scratch)
        node->check = std::make_shared<ParquetCheck>(path);
    // The node owns the unnamed scratch file.
    node->select = [scratch, path, columns = node->fields, session = context.session.get(),
                    sql = "SELECT " + selectList(context.dialect, node->fields, columns.values) +
                          " FROM "](const std::vector<std::string>&) {
        return sql + session->parquetRecords(path, columns);
    };
    return node;
}

} // namespace EmbeddedHV
