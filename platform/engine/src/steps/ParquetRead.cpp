#include "steps/ParquetRead.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/FieldDictionary.h"
#include "datafile/InputFile.h"
#include "expression/FieldTypes.h"
#include "expression/NearestName.h"
#include "expression/ValueTypes.h"
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

/// Damage inside of a file shows only while its records are read.
class ParquetCheck : public SourceCheck
{
public:
    explicit ParquetCheck(std::string path) : _path(std::move(path)) {}
    void start(Cancellation&) override {}
    void finish(duck::Connection&, Reporter&) override {}
    void abandon(const std::string& databaseMessage) override
    {
        // The second is how faults inside of the database's reader show.
        if (databaseMessage.find("Failed to read file \"" + _path) != std::string::npos ||
            databaseMessage.starts_with("Invalid Error: "))
            throw JobError(errors::kNotOfItsKind, "read: " + _path + ": the file is damaged",
                           databaseMessage);
    }

private:
    std::string _path;
};

/// The fields of a file, and the SQL of the value of each.
struct ParquetColumns
{
    Fields fields;
    std::vector<std::string> values;
};

ParquetColumns columnsOf(JobContext& context, const ParquetReadSettings& settings,
                         const std::string& table)
{
    ParquetColumns columns;
    try {
        const duck::Prepared statement(*context.connection, "SELECT * FROM " + table);
        for (const auto& [name, type] : statement.columns()) {
            columns.fields.push_back(plainField(name, storageOfColumn(type)));
            columns.values.push_back(canonicalColumn(quotedIdentifier(name), type));
        }
    } catch (const duck::QueryError& error) {
        throw JobError(errors::kNotOfItsKind,
                       "read: " + settings.path + ": this is not " +
                           (settings.kind == FileKind::Sav ? "a SAV" : "an HVBF") +
                           " file, or it is cut short",
                       error.what());
    }
    return columns;
}

/// A document beside the file may widen a type. Whatever else it says of a field must be so: the
/// document is another file's otherwise.
void applyDocument(ParquetColumns& columns, const ParquetReadSettings& settings)
{
    const auto refuse = [&settings](const std::string& problem) {
        throw JobError(errors::kDataModelMismatch, "read: " + settings.path + ": " + problem);
    };
    for (const CFField& wanted : *settings.dataModel) {
        const auto found = std::ranges::find(columns.fields, wanted.GetName(), &CFField::GetName);
        if (found == columns.fields.end())
            refuse("the data model has a field \"" + wanted.GetName() + "\", which the file lacks" +
                   suggestion(wanted.GetName(), columns.fields, &CFField::GetName));
        if (found->GetStorage() == wanted.GetStorage())
            continue;
        if (!converts(valueTypeOf(found->GetStorage()), valueTypeOf(wanted.GetStorage())))
            refuse("the field \"" + wanted.GetName() + "\" is " + typeWordOf(found->GetStorage()) +
                   ", and in the data model " + typeWordOf(wanted.GetStorage()));
        std::string& value =
            columns.values[static_cast<std::size_t>(found - columns.fields.begin())];
        value.insert(0, "CAST(").append(" AS ").append(sqlTypeOf(wanted.GetStorage())).append(")");
        *found = plainField(wanted.GetName(), wanted.GetStorage());
    }
}

} // namespace

NodePtr planParquet(JobContext& context, const ParquetReadSettings& settings)
{
    const auto scratch = unsealed(context, settings);
    const std::string path = scratch ? scratch->path() : settings.path;
    const std::string table = parquetTable(path);
    ParquetColumns columns = columnsOf(context, settings, table);
    if (settings.dataModel)
        applyDocument(columns, settings);
    auto node = std::make_shared<Node>();
    node->fields = columns.fields;
    if (settings.dataModel)
        adoptMetadata(node->fields, *settings.dataModel);
    else
        adoptInnerMetadata(context, path, node->fields);
    // What was sealed was checked when it was opened.
    if (!scratch)
        node->check = std::make_shared<ParquetCheck>(path);
    // The file without a name lives as long as the node that reads it.
    node->select = [scratch, sql = "SELECT " + selectList(node->fields, columns.values) + " FROM " +
                                   table](const std::vector<std::string>&) { return sql; };
    return node;
}

} // namespace EmbeddedHV
