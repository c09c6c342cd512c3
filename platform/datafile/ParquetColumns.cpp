#include "datafile/ParquetColumns.h"

#include <algorithm>

#include "CFMetaData.h"

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

} // namespace

ParquetColumns parquetColumns(duck::Connection& connection, const std::string& path)
{
    ParquetColumns columns;
    const duck::Prepared statement(connection, "SELECT * FROM " + parquetTable(path));
    for (const auto& [name, type] : statement.columns()) {
        columns.fields.push_back(plainField(name, storageOfColumn(type)));
        columns.values.push_back(canonicalColumn(quotedIdentifier(name), type));
    }
    return columns;
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
