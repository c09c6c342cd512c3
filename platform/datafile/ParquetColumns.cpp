#include "datafile/ParquetColumns.h"

#include <algorithm>
#include <unordered_map>

#include "CFMetaData.h"

#include "base/ListText.h"
#include "datafile/ColumnTypes.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"
#include "datafile/FieldDictionary.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FileTables.h"
#include "datafile/RaisedFault.h"
#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

/// An unreadable data model is ignored, because the columns are still known.
Fields fieldsOfModel(const std::string& xml)
{
    Fields fields;
    try {
        const CFMetaData model(xml);
        for (std::size_t i = 0; i < model.FieldCount(); ++i)
            fields.push_back(*model.GetField(i));
    } catch (const CFMetaDataError&) {
        fields.clear();
    }
    return fields;
}

/// Compares a dictionary with the columns that it describes.
class DictionaryCheck
{
public:
    DictionaryCheck(const Dictionary& dictionary, const std::string& origin,
                    ParquetColumns& columns)
        : _dictionary(dictionary), _origin(origin), _columns(columns)
    {
    }

    void run() const
    {
        for (const DictionaryVariable& variable : _dictionary.variables)
            check(variable);
    }

private:
    FaultParts parts(const DictionaryVariable& variable, const std::string& problem) const
    {
        return {.step = "read",
                .file = _origin,
                .field = variable.name,
                .what = "variable \"" + variable.name + "\" " + problem};
    }
    void check(const DictionaryVariable& variable) const;
    void bound(std::string& value, const DictionaryVariable& variable) const;

    const Dictionary& _dictionary;
    const std::string& _origin;
    ParquetColumns& _columns;
};

void DictionaryCheck::check(const DictionaryVariable& variable) const
{
    const auto field = std::ranges::find(_columns.fields, variable.name, &CFField::GetName);
    if (field == _columns.fields.end())
        throw Fault(faults::kDataModel, parts(variable, "of the dictionary has no data"));
    if (variable.isText != (field->GetStorage() == CFField::String))
        throw Fault(faults::kDataModel,
                    parts(variable, std::string("is ") + (variable.isText ? "a text" : "a number") +
                                        " in the dictionary, but not in the data"));
    if (variable.isText && variable.name == _dictionary.weight)
        throw Fault(faults::kDataModel,
                    {.step = "read",
                     .file = _origin,
                     .field = variable.name,
                     .what = "the weight variable \"" + variable.name + "\" is a text"});
    if (variable.width > 0)
        bound(_columns.values[static_cast<std::size_t>(field - _columns.fields.begin())], variable);
}

/// Widths can only be checked while values are read.
void DictionaryCheck::bound(std::string& value, const DictionaryVariable& variable) const
{
    const std::string most = std::to_string(mostBytes(_dictionary, variable));
    const std::string fault =
        raisedText(faults::kDataModel, parts(variable, "has a value that is longer than the " +
                                                           std::to_string(variable.width) +
                                                           " bytes that the dictionary says"));
    // Trailing blanks only pad the host's texts. Count the bytes first, because that is faster.
    value = "CASE WHEN strlen(" + value + ") > " + most + " AND strlen(rtrim(" + value + ")) > " +
            most + " THEN error(" + quotedLiteral(fault) + ") ELSE " + value + " END";
}

/// The columns of a select list with names and types only.
ParquetColumns columnsOf(duck::Connection& connection, const std::string& list,
                         const std::string& table)
{
    ParquetColumns columns;
    const duck::Prepared statement(connection, "SELECT " + list + " FROM " + table);
    for (const auto& [name, type] : statement.columns()) {
        columns.fields.push_back(plainField(name, storageOfColumn(type)));
        columns.values.push_back(canonicalColumn(quotedIdentifier(name), type));
    }
    return columns;
}

/// Compares the columns of several files that are one dataset.
class PartComparison
{
public:
    PartComparison(duck::Connection& connection, const ParquetParts& parts)
        : _connection(connection), _parts(parts), _first(fieldsOf(parts.files.front()))
    {
        for (const CFField& field : _first)
            _places.emplace(foldedName(field.GetName()), _places.size());
    }

    /// The columns of all files, and the fields that their folders give.
    ParquetColumns columns() const
    {
        for (const std::string& file : _parts.files)
            compare(file);
        std::vector<std::string> names;
        for (const CFField& field : _first)
            if (!isKey(field.GetName()))
                names.push_back(quotedIdentifier(field.GetName()));
        for (const PartKey& key : _parts.keys)
            names.push_back(quotedIdentifier(key.name));
        ParquetColumns columns =
            columnsOf(_connection, base::joined(names, ", "), parquetTable(_parts));
        const std::size_t inFiles = names.size() - _parts.keys.size();
        for (std::size_t i = 0; i < _parts.keys.size(); ++i) {
            const PartKey& key = _parts.keys[i];
            columns.fields[inFiles + i] = plainField(key.name, key.storage);
            columns.values[inFiles + i] = "CAST(nullif(" + quotedIdentifier(key.name) + ", " +
                                          quotedLiteral(kMissingKey) + ") AS " +
                                          sqlTypeOf(key.storage) + ")";
        }
        return columns;
    }

private:
    [[noreturn]] void fail(const char* id, const std::string& file, const std::string& what) const
    {
        throw Fault(id, {.step = "read", .file = _parts.path, .what = _parts.nameOf(file) + what});
    }

    Fields fieldsOf(const std::string& file) const
    try {
        return columnsOf(_connection, "*", parquetTable(ParquetParts{file, {}, {file}, {}})).fields;
    } catch (const duck::QueryError&) {
        fail(faults::kNotOfItsKind, file, " is not a Parquet file, or it is cut short");
    }

    bool isKey(const std::string& name) const
    {
        return std::ranges::any_of(_parts.keys,
                                   [&](const PartKey& key) { return isSameName(key.name, name); });
    }

    /// The columns may have another order.
    void compare(const std::string& file) const
    {
        const std::string first = _parts.nameOf(_parts.files.front());
        const Fields fields = fieldsOf(file);
        std::vector<bool> isFound(_first.size());
        for (const CFField& field : fields) {
            const auto place = _places.find(foldedName(field.GetName()));
            if (place == _places.end())
                fail(faults::kPartsDiffer, file,
                     " has the field \"" + field.GetName() + "\", which " + first + " lacks");
            isFound[place->second] = true;
            const CFField::StorageType wanted = _first[place->second].GetStorage();
            if (field.GetStorage() != wanted)
                fail(faults::kPartsDiffer, file,
                     ": the field \"" + field.GetName() + "\" is " +
                         typeWordOf(field.GetStorage()) + ", and " + typeWordOf(wanted) + " in " +
                         first);
        }
        const auto missing = std::ranges::find(isFound, false);
        if (missing != isFound.end())
            fail(faults::kPartsDiffer, file,
                 " lacks the field \"" +
                     _first[static_cast<std::size_t>(missing - isFound.begin())].GetName() +
                     "\", which " + first + " has");
    }

    duck::Connection& _connection;
    const ParquetParts& _parts;
    Fields _first;
    std::unordered_map<std::string, std::size_t> _places; ///< of the first file's fields
};

} // namespace

ParquetColumns parquetColumns(duck::Connection& connection, const std::string& path)
{
    const ParquetParts parts = parquetParts(path);
    if (parts.isFile())
        return columnsOf(connection, "*", parquetTable(parts));
    return PartComparison(connection, parts).columns();
}

Dictionary describeColumns(duck::Connection& connection, const std::string& path,
                           const std::string& origin, ParquetColumns& columns)
{
    if (const std::string text = parquetMetadata(connection, path, kDictionaryKey); !text.empty()) {
        Dictionary dictionary = dictionaryOf(text, origin);
        DictionaryCheck(dictionary, origin, columns).run();
        adoptDictionary(columns.fields, dictionary);
        return dictionary;
    }
    const std::string model = parquetMetadata(connection, path, kDataModelKey);
    if (model.empty())
        return {};
    adoptMetadata(columns.fields, fieldsOfModel(model));
    return dictionaryOfFields(columns.fields);
}

std::size_t mostBytes(const Dictionary& dictionary, const DictionaryVariable& variable)
{
    // A byte of another encoding may become three bytes of UTF-8.
    const auto width = static_cast<std::size_t>(variable.width);
    return dictionary.encoding == "UTF-8" ? width : 3 * width;
}

} // namespace datafile
