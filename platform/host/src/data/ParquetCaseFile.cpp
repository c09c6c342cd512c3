#include <algorithm>
#include <cstdint>
#include <map>

#include "FileServices.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "data/CaseFileSource.h"
#include "data/CaseText.h"
#include "data/DictionaryVariables.h"
#include "data/HostDatabase.h"
#include "datafile/FaultIds.h"
#include "datafile/FileTables.h"
#include "datafile/ParquetColumns.h"
#include "datafile/SqlQuoting.h"
#include "text/CodePage.h"

namespace {

namespace duck = datafile::duck;

/// Makes blanks missing, because a missing text can only be blank in a case. Does nothing if the
/// declared missing values leave no room.
void addBlank(datafile::DictionaryMissing& missing)
{
    const auto isBlank = [](const datafile::DictionaryValue& value) {
        return std::get<std::string>(value).find_first_not_of(' ') == std::string::npos;
    };
    if (missing.values.size() < missing.mostValues() &&
        std::none_of(missing.values.begin(), missing.values.end(), isBlank))
        missing.values.emplace_back(std::string(" "));
}

/// Determines the content of a Parquet file.
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
    void describe();
    void widenTexts();
    void findGaps();
    void measureTexts();
    bool hasNull(const std::string& column) const;
    std::vector<int> columnsOf(const std::vector<std::string>& names) const;
    int widthOf(const datafile::DictionaryVariable& described) const;

    const UserCaseFileSpec& _spec;
    std::string _path;
    std::string _readable;
    std::unique_ptr<duck::Connection> _connection;
    std::shared_ptr<Relation> _relation;
    datafile::ParquetColumns _columns;
    datafile::Dictionary _dictionary;
    std::vector<datafile::DictionaryVariable> _described; ///< of each column
};

void ParquetOpening::unseal()
{
    _readable = _path;
    if (!datafile::isSealed(_path))
        return;
    if (_spec.GetPassword().empty())
        throw CaseFileError(_path, ": the file is sealed with a password, and none is given", {},
                            datafile::faults::kPasswordMissing);
    _relation->scratch = datafile::openSealed(_path, _spec.GetPassword(),
                                              base::nativePath(hostToUtf8(GetVexaTempPath())),
                                              [this] { _spec.Look(); });
    _readable = _relation->scratch->path();
}

void ParquetOpening::findColumns()
{
    _relation->from = datafile::parquetTable(_readable);
    try {
        _columns = datafile::parquetColumns(*_connection, _readable);
    } catch (const duck::QueryError&) {
        const bool sav = _spec.GetKind() == CaseFileKind::Sav;
        throw CaseFileError(_path,
                            std::string(": this is not a ") + (sav ? "SAV" : "Parquet") +
                                " file, or it is cut short",
                            {}, datafile::faults::kNotOfItsKind);
    }
}

void ParquetOpening::describe()
{
    _dictionary = datafile::describeColumns(*_connection, _readable, _path, _columns);
    for (std::size_t i = 0; i < _columns.fields.size(); ++i) {
        const CFField& field = _columns.fields[i];
        datafile::DictionaryVariable described;
        for (const datafile::DictionaryVariable& variable : _dictionary.variables)
            if (variable.name == field.GetName())
                described = variable;
        described.name = field.GetName();
        described.isText = field.GetStorage() == CFField::String;
        if (!_spec.DeclaresMissing())
            described.missing = {};
        _described.push_back(described);
        _relation->columns.push_back({_columns.values[i], field.GetStorage()});
    }
    if (_spec.IsDictionaryOnly()) {
        widenTexts();
    } else {
        findGaps();
        measureTexts();
    }
}

/// Gives texts without a declared width the greatest width.
void ParquetOpening::widenTexts()
{
    for (datafile::DictionaryVariable& described : _described)
        if (described.isText && described.width == 0)
            described.width = kWidestText;
}

/// Determines which texts of known width are missing in some case. Reads the column only if the
/// file has no statistics.
void ParquetOpening::findGaps()
{
    duck::Result counts = _connection->query(
        "SELECT path_in_schema, CASE WHEN bool_and(stats_null_count IS NOT NULL) THEN "
        "sum(stats_null_count)::BIGINT ELSE -1 END FROM parquet_metadata(" +
        datafile::fileArgument(datafile::parquetParts(_readable)) + ") GROUP BY ALL");
    std::map<std::string, std::int64_t> nulls;
    for (std::size_t row = 0; row < counts.rows(); ++row)
        nulls[counts.text(0, row)] = counts.integer(1, row);
    for (std::size_t i = 0; i < _described.size(); ++i) {
        if (_relation->columns[i].storage != CFField::String || _described[i].width == 0)
            continue;
        const auto known = nulls.find(_columns.fields[i].GetName());
        const bool isKnown = known != nulls.end() && known->second >= 0;
        if (isKnown ? known->second > 0 : hasNull(_relation->columns[i].sql))
            addBlank(_described[i].missing);
    }
}

bool ParquetOpening::hasNull(const std::string& column) const
{
    return _connection
               ->query("SELECT (count(*) - count(" + column + "))::BIGINT FROM " + _relation->from)
               .integer(0, 0) > 0;
}

/// Measures the widths of texts without a declared width, and whether some are missing.
void ParquetOpening::measureTexts()
{
    std::string sql;
    std::vector<std::size_t> unknown;
    for (std::size_t i = 0; i < _described.size(); ++i)
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
        if (measured.integer(2 * place + 1, 0) > 0)
            addBlank(described.missing);
    }
}

std::vector<int> ParquetOpening::columnsOf(const std::vector<std::string>& names) const
{
    std::vector<int> columns;
    for (const std::string& name : names)
        for (std::size_t i = 0; i < _described.size(); ++i)
            if (_described[i].name == name)
                columns.push_back(static_cast<int>(i));
    return columns;
}

/// Converts a width from the dictionary's encoding to the host's.
int ParquetOpening::widthOf(const datafile::DictionaryVariable& described) const
{
    // With equal encodings the widths are equal.
    if (described.width == 0 || _dictionary.encoding == hostCodePage()->name())
        return described.width;
    return hostWidth(datafile::mostBytes(_dictionary, described));
}

CaseFileSource ParquetOpening::open()
{
    unseal();
    findColumns();
    describe();
    // Only now: the dictionary refers to the original names.
    datafile::makeNamesUnique(_columns.fields);
    std::vector<VEXA_Variable> variables;
    for (std::size_t i = 0; i < _described.size(); ++i) {
        const datafile::DictionaryVariable& described = _described[i];
        variables.push_back(
            variableOf(described, _relation->columns[i].storage, widthOf(described)));
        variables.back().SetName(utf8ToHost(_columns.fields[i].GetName()));
    }
    tellNamesApart(variables);
    CaseFileSource source;
    source.fields = _columns.fields;
    source.caseCount = _connection->query("SELECT count(*) FROM " + _relation->from).integer(0, 0);
    _relation->caseCount = source.caseCount;
    source.encoding = _dictionary.encoding;
    for (const std::string& line : _dictionary.documents)
        source.documents.push_back(utf8ToHost(line));
    source.cases = std::make_unique<TableCases>(std::move(variables), _relation);
    const std::vector<int> weight = columnsOf({_dictionary.weight});
    if (!weight.empty())
        source.cases->setWeight(weight.front());
    source.cases->setSplit(columnsOf(_dictionary.split));
    return source;
}

} // namespace

CaseFileSource openParquet(const UserCaseFileSpec& spec, const std::string& path)
{
    return ParquetOpening(spec, path).open();
}
