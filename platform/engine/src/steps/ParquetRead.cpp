#include "steps/ParquetRead.h"

#include <system_error>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/ColumnTypes.h"
#include "datafile/FieldDictionary.h"
#include "datafile/InputFile.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {
namespace {

/// Ends the work on a sealed file when the job is cancelled; the job looks at that itself.
struct Stopped
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

/// The content of a sealed file, or null for a file that is not sealed.
std::shared_ptr<ScratchFile> unsealed(JobContext& context, const ParquetReadSettings& settings)
{
    if (settings.kind != FileKind::Sav || !isSealed(settings.path))
        return nullptr;
    const std::string prefix = "read: " + settings.path + ": ";
    if (settings.password.empty())
        throw JobError(errors::kPasswordMissing,
                       prefix + "the file is sealed with a password, and none is given");
    try {
        return openSealed(settings.path, settings.password, context.files.scratchFolder(),
                          [&context] {
                              if (context.stopping())
                                  throw Stopped{};
                          });
    } catch (const Stopped&) {
        return nullptr;
    } catch (const SealedFileError& error) {
        throw JobError(idOf(error.kind()), prefix + error.what());
    } catch (const std::system_error& error) {
        throw JobError(errors::kFileUnreadable,
                       prefix + "the file cannot be read: " + error.what());
    }
}

/// What the file itself says of its fields. A text that cannot be read counts as none: the columns
/// are there all the same.
void adoptInnerMetadata(JobContext& context, const std::string& path, Fields& fields)
{
    const auto text = [&](const char* key) {
        return parquetMetadata(*context.connection, path, key);
    };
    try {
        if (const std::string dictionary = text(kDictionaryKey); !dictionary.empty())
            adoptDictionary(fields, dictionaryOf(dictionary, path));
        else if (const std::string model = text(kDataModelKey); !model.empty())
            adoptMetadata(
                fields, fieldsOfDataModel(model, "the data model in " + path, errors::kDataModel));
    } catch (const JobError&) {
        return;
    }
}

} // namespace

NodePtr planParquet(JobContext& context, const ParquetReadSettings& settings)
{
    const auto scratch = unsealed(context, settings);
    const std::string path = scratch ? scratch->path() : settings.path;
    const std::string table = parquetTable(path);
    std::vector<std::string> columns;
    auto node = std::make_shared<Node>();
    try {
        const duck::Prepared statement(*context.connection, "SELECT * FROM " + table);
        for (const auto& [name, type] : statement.columns()) {
            const std::string quoted = quotedIdentifier(name);
            columns.push_back(canonicalColumn(quoted, type));
            node->fields.push_back(plainField(name, storageOfColumn(type)));
        }
    } catch (const duck::QueryError& error) {
        throw JobError(errors::kNotOfItsKind,
                       "read: " + settings.path + ": this is not a " +
                           (settings.kind == FileKind::Sav ? "SAV" : "HVBF") +
                           " file, or it is cut short",
                       error.what());
    }
    if (settings.dataModel)
        adoptMetadata(node->fields, *settings.dataModel);
    else
        adoptInnerMetadata(context, path, node->fields);
    // The file without a name lives as long as the node that reads it.
    node->select = [scratch, sql = "SELECT " + selectList(node->fields, columns) + " FROM " +
                                   table](const std::vector<std::string>&) { return sql; };
    return node;
}

} // namespace EmbeddedHV
