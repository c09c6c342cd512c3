#include <algorithm>
#include <map>

#include "CFMetaData.h"

#include "ErrorText.h"
#include "FileServices.h"
#include "data/CaseFileSource.h"
#include "data/DictionaryVariables.h"
#include "data/HostDatabase.h"
#include "datafile/ColumnTypes.h"
#include "datafile/FieldDictionary.h"
#include "datafile/FileTables.h"
#include "datafile/NativePath.h"
#include "datafile/SqlQuoting.h"
#include "text/CodePage.h"

namespace {

namespace duck = datafile::duck;

/// Finds out what a Parquet file holds.
class ParquetOpening
{
public:
    ParquetOpening(const UserCaseFileSpec& spec, std::string path)
        : _spec(spec), _path(std::move(path)), _connection(connectToHostDatabase()),
          _relation(std::make_shared<Relation>())
    {
        _relation->name = _path;
    }

    CaseFileSource open();

private:
    void unseal();
    void findColumns();
    void readDictionary();
    datafile::Dictionary dictionaryOfModel(const std::string& xml) const;
    void describeColumns();
    void measureTexts();
    void check(const datafile::DictionaryVariable& described, CFField::StorageType storage) const;
    std::vector<int> columnsOf(const std::vector<std::string>& names) const;
    int widthOf(const datafile::DictionaryVariable& described) const;

    const UserCaseFileSpec& _spec;
    std::string _path;
    std::string _readable;
    std::unique_ptr<duck::Connection> _connection;
    std::shared_ptr<Relation> _relation;
    std::vector<std::string> _names;
    datafile::Dictionary _dictionary;
    std::vector<datafile::DictionaryVariable> _described; ///< of each column
};

void ParquetOpening::unseal()
{
    _readable = _path;
    if (!datafile::isSealed(_path))
        return;
    if (_spec.GetPassword().empty())
        throw ErrorText(_path + ": the file is sealed with a password, and none is given");
    _relation->scratch = datafile::openSealed(
        _path, _spec.GetPassword(), datafile::nativePath(hostToUtf8(GetVexaTempPath())), {});
    _readable = _relation->scratch->path();
}

void ParquetOpening::findColumns()
{
    _relation->from = datafile::parquetTable(_readable);
    try {
        const duck::Prepared statement(*_connection, "SELECT * FROM " + _relation->from);
        for (const auto& [name, type] : statement.columns()) {
            _names.push_back(name);
            _relation->columns.push_back(
                {datafile::canonicalColumn(datafile::quotedIdentifier(name), type),
                 datafile::storageOfColumn(type)});
        }
    } catch (const duck::QueryError&) {
        const bool sav = _spec.GetKind() == CaseFileKind::Sav;
        throw ErrorText(_path + ": this is not a " + (sav ? "SAV" : "Parquet") +
                        " file, or it is cut short");
    }
}

/// A data model that cannot be read counts as none: the columns are there all the same.
datafile::Dictionary ParquetOpening::dictionaryOfModel(const std::string& xml) const
{
    datafile::Fields fields;
    try {
        const CFMetaData model(xml);
        for (std::size_t i = 0; i < model.FieldCount(); ++i) {
            const CFField& field = *model.GetField(i);
            if (std::find(_names.begin(), _names.end(), field.GetName()) != _names.end())
                fields.push_back(field);
        }
    } catch (const CFMetaDataError&) {
        fields.clear();
    }
    return datafile::dictionaryOfFields(fields);
}

void ParquetOpening::readDictionary()
{
    const std::string text =
        datafile::parquetMetadata(*_connection, _readable, datafile::kDictionaryKey);
    if (!text.empty()) {
        _dictionary = datafile::dictionaryOf(text, _path);
        return;
    }
    const std::string model =
        datafile::parquetMetadata(*_connection, _readable, datafile::kDataModelKey);
    if (!model.empty())
        _dictionary = dictionaryOfModel(model);
}

/// A dictionary that contradicts its data is worth less than none.
void ParquetOpening::check(const datafile::DictionaryVariable& described,
                           CFField::StorageType storage) const
{
    if (described.isText != (storage == CFField::String))
        throw ErrorText(_path + ": variable \"" + described.name + "\" is " +
                        (described.isText ? "a text" : "a number") +
                        " in the dictionary, but not in the data");
}

void ParquetOpening::describeColumns()
{
    std::map<std::string, const datafile::DictionaryVariable*> known;
    for (const datafile::DictionaryVariable& variable : _dictionary.variables)
        known[variable.name] = &variable;
    for (std::size_t i = 0; i < _names.size(); ++i) {
        const CFField::StorageType storage = _relation->columns[i].storage;
        const auto found = known.find(_names[i]);
        datafile::DictionaryVariable described;
        if (found != known.end()) {
            described = *found->second;
            check(described, storage);
            known.erase(found);
        }
        described.name = _names[i];
        described.isText = storage == CFField::String;
        _described.push_back(described);
    }
    if (!known.empty())
        throw ErrorText(_path + ": variable \"" + known.begin()->first +
                        "\" of the dictionary has no data");
    measureTexts();
}

/// The widths of texts that nothing tells, and whether some are not there.
void ParquetOpening::measureTexts()
{
    std::string sql;
    std::vector<std::size_t> unknown;
    for (std::size_t i = 0; i < _names.size(); ++i)
        if (_relation->columns[i].storage == CFField::String && _described[i].width == 0) {
            const std::string& column = _relation->columns[i].sql;
            sql.append(sql.empty() ? "SELECT" : ",")
                .append(" coalesce(max(strlen(")
                .append(column)
                .append(")), 0), count(*) - count(nullif(")
                .append(column)
                .append(", ''))");
            unknown.push_back(i);
        }
    if (unknown.empty())
        return;
    duck::Result measured = _connection->query(sql + " FROM " + _relation->from);
    for (std::size_t place = 0; place < unknown.size(); ++place) {
        datafile::DictionaryVariable& described = _described[unknown[place]];
        described.width = hostWidth(static_cast<std::size_t>(measured.integer(2 * place, 0)));
        // A text that is not there can only be blank in a case.
        if (measured.integer(2 * place + 1, 0) > 0 && described.missing.empty())
            described.missing.values.emplace_back(std::string(" "));
    }
}

std::vector<int> ParquetOpening::columnsOf(const std::vector<std::string>& names) const
{
    std::vector<int> columns;
    for (const std::string& name : names)
        for (std::size_t i = 0; i < _names.size(); ++i)
            if (_names[i] == name)
                columns.push_back(static_cast<int>(i));
    return columns;
}

/// A width of the dictionary's encoding in the host's.
int ParquetOpening::widthOf(const datafile::DictionaryVariable& described) const
{
    if (described.width == 0 || _dictionary.encoding == hostCodePage()->name())
        return described.width;
    // A byte of another encoding may become three of UTF-8.
    const auto width = static_cast<std::size_t>(described.width);
    return hostWidth(_dictionary.encoding == "UTF-8" ? width : 3 * width);
}

CaseFileSource ParquetOpening::open()
{
    unseal();
    findColumns();
    readDictionary();
    describeColumns();
    std::vector<VEXA_Variable> variables;
    for (std::size_t i = 0; i < _names.size(); ++i) {
        const datafile::DictionaryVariable& described = _described[i];
        variables.push_back(
            variableOf(described, _relation->columns[i].storage, widthOf(described)));
    }
    tellNamesApart(variables);
    CaseFileSource source;
    for (const RelationColumn& column : _relation->columns)
        source.integers.push_back(column.storage == CFField::Integer);
    source.caseCount = _connection->query("SELECT count(*) FROM " + _relation->from).integer(0, 0);
    source.encoding = _dictionary.encoding;
    for (const std::string& line : _dictionary.documents)
        source.documents.push_back(utf8ToHost(line));
    source.cases = std::make_unique<TableCases>(std::move(variables), _relation);
    const std::vector<int> weight = columnsOf({_dictionary.weight});
    if (!weight.empty()) {
        if (source.cases->GetVariable(weight.front()).GetType() > 0)
            throw ErrorText(_path + ": the weight variable \"" + _dictionary.weight +
                            "\" is a text");
        source.cases->setWeight(weight.front());
    }
    source.cases->setSplit(columnsOf(_dictionary.split));
    return source;
}

} // namespace

CaseFileSource openParquet(const UserCaseFileSpec& spec, const std::string& path)
{
    return ParquetOpening(spec, path).open();
}
