#include "spark/SparkCsv.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "datafile/CsvValue.h"
#include "datafile/FieldMetadata.h"
#include "datafile/RaisedFault.h"
#include "expression/FieldTypes.h"
#include "runtime/Reporter.h"
#include "spark/SparkColumns.h"
#include "spark/SparkCsvValue.h"
#include "spark/SparkDialect.h"
#include "spark/SparkPaths.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {
namespace {

/// A record with a wrong number of fields, as a text; missing for another record.
constexpr const char* kBadRecordColumn = "hv_bad";
/// A condition that is always true. The server rejects a statement that uses no other column.
constexpr const char* kUsesFirstColumn = " AND coalesce(length(c0), 0) >= 0";

std::string columnName(std::size_t column)
{
    return "c" + std::to_string(column);
}

/// 0 for a missing value.
std::int64_t numberIn(const SparkValue& value)
{
    const std::string text = value.value_or("0");
    std::int64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// How the records of a file are found.
enum class Records
{
    AreLines, ///< several tasks read a file
    MaySpanLines
};

/// A view of the file's records as texts. `columns` is the list of its columns, or empty if the
/// cluster shall find their number.
void makeView(SparkSession& session, const std::string& view, const CsvReadSettings& settings,
              bool skipsHeader, Records records, const std::string& columns)
{
    const Dialect& dialect = sparkDialect();
    // A text that no file has distinguishes a missing value from an empty text. With multiLine, one
    // task reads a file.
    const std::string sql =
        "CREATE TEMPORARY VIEW " + dialect.name(view) + columns + " USING csv OPTIONS (path " +
        dialect.literal(clusterPattern(settings.path)) + ", header '" +
        (skipsHeader ? "true" : "false") + "', multiLine '" +
        (records == Records::MaySpanLines ? "true" : "false") +
        "', quote '\"', escape '\"', nullValue '\\u0001hv\\u0001', emptyValue "
        "'', maxCharsPerColumn '67108864', mode 'PERMISSIVE', columnNameOfCorruptRecord '" +
        kBadRecordColumn + "')";
    try {
        session.explained([&] {
            SparkStream stream = session.client().command(sql, "");
            while (stream.next() != SparkStream::Event::End)
                continue;
        });
    } catch (const StatementFault& fault) {
        throw clusterFileFault(fault, settings.path, "read");
    }
}

/// A line whose quotes surround whole fields. All groups are possessive: Java matches other groups
/// by recursion, and a long line would need more than its stack.
constexpr const char* kQuotedLine =
    "^(?:(?:\"[^\"]*+(?:\"\"[^\"]*+)*+\"|[^,\"\r]*+)(?:,|\r?\\z))*+\\z";

/// Whether a line, the column `value`, means something else if it is read alone: it has a part of a
/// quoted text, a quote that does not surround a field, a carriage return within it, or only
/// blanks, which the cluster skips then.
std::string needsOtherLines()
{
    return "CASE WHEN instr(value, '\\r') BETWEEN 1 AND length(value) - 1 THEN true "
           "WHEN instr(value, '\"') > 0 THEN NOT value RLIKE " +
           sparkDialect().literal(std::string(kQuotedLine)) +
           " ELSE ascii(value) <= 32 AND value <> '\\r' AND value RLIKE '^[\\u0000- ]+$' END";
}

/// Looks at all lines of a file, which takes several tasks less time than one task takes to read
/// the records, unless only the first ones are wanted.
Records recordsOf(SparkSession& session, const CsvReadSettings& settings)
{
    if (settings.mostRecords != UINT64_MAX)
        return Records::MaySpanLines;
    try {
        const auto found = session.texts(
            "SELECT CAST(count_if(" + needsOtherLines() +
                ") AS STRING), CAST(count_if(endswith(value, '\\r')) AS STRING), "
                "CAST(count(*) - 1 AS STRING), CAST(count(*) AS STRING) FROM text." +
                sparkDialect().name(clusterPattern(settings.path)) + " WITH ('lineSep' = '\\n')",
            4);
        const std::vector<SparkValue>& counts = found.front();
        // The last line may lack its end.
        const bool haveOneEnd =
            counts[1] == "0" || counts[1] == counts[2] || counts[1] == counts[3];
        return counts[0] == "0" && haveOneEnd ? Records::AreLines : Records::MaySpanLines;
    } catch (const StatementFault& fault) {
        throw clusterFileFault(fault, settings.path, "read");
    }
}

/// Determines the fields of a CSV file and writes its SELECT.
class ClusterCsv
{
public:
    ClusterCsv(SparkSession& session, const CsvReadSettings& settings)
        : _session(session), _settings(settings), _view(session.newView())
    {
        readNames();
        std::string columns;
        for (std::size_t i = 0; i < _names.size(); ++i)
            columns += columnName(i) + " STRING, ";
        makeView(_session, _view, _settings, _settings.hasHeader, recordsOf(_session, _settings),
                 " (" + columns + kBadRecordColumn + " STRING)");
    }

    Fields guessedFields() const;
    Fields modelledFields() const;
    /// The values of a field, from its text. A text that does not fit fails, or is missing if
    /// records may be skipped.
    std::string valueOf(std::size_t column, const CFField& field) const;
    /// The condition for records that are not skipped.
    std::string condition(const Fields& fields) const;
    std::string from() const { return sparkDialect().name(_view); }

private:
    void readNames();
    CFField::StorageType storageOf(std::int64_t kinds) const;
    std::vector<CFField::StorageType> guessedStorages() const;
    [[noreturn]] void refuse(const std::string& problem) const
    {
        throw JobError(errors::kDataModelMismatch,
                       {.step = "read", .file = _settings.path, .what = problem});
    }

    SparkSession& _session;
    const CsvReadSettings& _settings;
    std::string _view;
    std::vector<std::string> _names;
};

void ClusterCsv::readNames()
{
    const std::string view = _session.newView();
    makeView(_session, view, _settings, false, Records::MaySpanLines, "");
    const std::string select = "SELECT * FROM " + sparkDialect().name(view);
    std::vector<std::vector<SparkValue>> first;
    try {
        const std::size_t count = sparkColumns(_session.explained([&] {
                                      return _session.client().schema(select);
                                  })).size();
        if (count > 0)
            first = _session.texts(select + " LIMIT 1", count);
    } catch (const StatementFault& fault) {
        throw clusterFileFault(fault, _settings.path, "read");
    }
    if (first.empty())
        throw JobError(
            errors::kFileEmpty,
            {.step = "read", .file = _settings.path, .what = "the file holds no line with text"});
    for (const SparkValue& name : first.front())
        _names.push_back(_settings.hasHeader ? name.value_or("") : "");
    _names = datafile::uniqueNames(std::move(_names));
}

/// The narrowest storage for values of these kinds, each of which is a bit.
CFField::StorageType ClusterCsv::storageOf(std::int64_t kinds) const
{
    CsvKind kind = CsvKind::Missing;
    for (const CsvKind found : {CsvKind::Integer, CsvKind::Real, CsvKind::Date, CsvKind::Time,
                                CsvKind::Timestamp, CsvKind::Text})
        if ((kinds & bitOf(found)) != 0)
            kind = datafile::widened(kind, found);
    return datafile::storageOfKind(kind);
}

std::vector<CFField::StorageType> ClusterCsv::guessedStorages() const
{
    std::vector<std::string> columns;
    for (std::size_t i = 0; i < _names.size(); ++i)
        columns.push_back(columnName(i));
    std::string records = from();
    if (_settings.mostRecords <= INT32_MAX)
        records =
            "(SELECT * FROM " + records + " LIMIT " + std::to_string(_settings.mostRecords) + ")";
    records += std::string(" WHERE ") + kBadRecordColumn + " IS NULL";
    std::vector<CFField::StorageType> storages(_names.size(), storageOf(0));
    try {
        for (const auto& found : _session.texts(csvKindsOf(columns, records), 2))
            storages.at(static_cast<std::size_t>(numberIn(found[0]))) =
                storageOf(numberIn(found[1]));
    } catch (const StatementFault& fault) {
        throw clusterFileFault(fault, _settings.path, "read");
    }
    return storages;
}

Fields ClusterCsv::guessedFields() const
{
    const std::vector<CFField::StorageType> storages = guessedStorages();
    Fields fields;
    for (std::size_t i = 0; i < _names.size(); ++i)
        fields.push_back(datafile::plainField(_names[i], storages[i]));
    return fields;
}

/// The fields of the file in its order, with the types of the data model. Fields are matched by
/// name if the file has names, else by position.
Fields ClusterCsv::modelledFields() const
{
    const Fields& model = *_settings.dataModel;
    if (!_settings.hasHeader) {
        if (model.size() != _names.size())
            refuse("the file has " + std::to_string(_names.size()) + " fields, the data model " +
                   std::to_string(model.size()));
        return model;
    }
    const FieldIndex known(model);
    const bool allKnown = std::all_of(_names.begin(), _names.end(), [&](const std::string& name) {
        return known.place(name).has_value();
    });
    Fields fields = allKnown ? Fields() : guessedFields();
    fields.resize(_names.size(), datafile::plainField("", CFField::String));
    for (std::size_t i = 0; i < _names.size(); ++i)
        if (const auto place = known.place(_names[i]))
            fields[i] = model[*place];
    const FieldIndex read(fields);
    for (const CFField& field : model)
        if (!read.place(field.GetName()))
            refuse("the data model has a field \"" + field.GetName() + "\", which the file lacks" +
                   base::suggestion(field.GetName(), {_names.begin(), _names.end()}));
    return fields;
}

std::string ClusterCsv::valueOf(std::size_t column, const CFField& field) const
{
    std::string text = columnName(column);
    if (field.GetStorage() == CFField::String)
        return text;
    const Dialect& dialect = sparkDialect();
    const ValueType type = valueTypeOf(field.GetStorage());
    std::string value = "CASE WHEN " + csvFits(text, type) + " THEN " + csvValue(text, type);
    if (_settings.errorThreshold == 0) {
        const std::string fault = datafile::raisedText(
            errors::kBadRecord, {.step = "read",
                                 .file = _settings.path,
                                 .field = field.GetName(),
                                 .what = "field \"" + field.GetName() + "\": \""});
        value += " WHEN " + text + " IS NOT NULL THEN " +
                 dialect.raised("concat(" + dialect.literal(fault) + ", left(" + text + ", 100), " +
                                    dialect.literal(std::string("\" is not ") +
                                                    typeWordOf(field.GetStorage())) +
                                    ")",
                                type);
    }
    return value + " END";
}

std::string ClusterCsv::condition(const Fields& fields) const
{
    const Dialect& dialect = sparkDialect();
    if (_settings.errorThreshold == 0) {
        const std::string fault = datafile::raisedText(
            errors::kBadRecord,
            {.step = "read",
             .file = _settings.path,
             .kind = datafile::kinds::kFieldCount,
             .what = "a record does not have " + std::to_string(_names.size()) + " fields: \""});
        return std::string("CASE WHEN ") + kBadRecordColumn + " IS NULL" + kUsesFirstColumn +
               " THEN true ELSE " +
               dialect.raised("concat(" + dialect.literal(fault) + ", left(" + kBadRecordColumn +
                                  ", 100), '\"')",
                              ValueType::Boolean) +
               " END";
    }
    std::string condition = std::string(kBadRecordColumn) + " IS NULL" + kUsesFirstColumn;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].GetStorage() != CFField::String)
            condition += " AND (" + columnName(i) + " IS NULL OR " +
                         csvFits(columnName(i), valueTypeOf(fields[i].GetStorage())) + ")";
    return condition;
}

/// Counts the records that are skipped before a statement begins.
class SkippedRecords final : public SourceCheck
{
public:
    SkippedRecords(SparkSession& session, const CsvReadSettings& settings, std::string count)
        : _session(session), _path(settings.path), _most(settings.errorThreshold),
          _count(std::move(count))
    {
    }
    void start(Cancellation&, const Progress&) override
    {
        _skipped = countOf();
        if (_most >= 0 && _skipped > _most)
            throw JobError(errors::kTooManyBadRecords,
                           {.step = "read",
                            .file = _path,
                            .limit = _most,
                            .what = std::to_string(_skipped) + " records are bad, and " +
                                    std::to_string(_most) + " may be skipped"});
    }
    void finish(Session&, Reporter& reporter) override
    {
        if (_skipped > 0)
            reporter.message(
                errors::kRecordsSkipped,
                {.step = "read",
                 .file = _path,
                 .what = std::to_string(_skipped) +
                         (_skipped == 1 ? " record was skipped" : " records were skipped")});
    }
    void abandon(const StatementFault&) override {}

private:
    std::int64_t countOf()
    {
        try {
            return numberIn(_session.texts(_count, 1).front().front());
        } catch (const StatementFault& fault) {
            throw clusterFileFault(fault, _path, "read");
        }
    }

    SparkSession& _session;
    std::string _path;
    std::int64_t _most;
    std::string _count; ///< SQL
    std::int64_t _skipped = 0;
};

} // namespace

JobError clusterFileFault(const StatementFault& fault, const std::string& path,
                          const std::string& step)
{
    if (fault.about() == StatementFault::About::Itself)
        return fault.error();
    return {errors::kFileUnreadable,
            {.step = step,
             .file = path,
             .what = "the cluster cannot read the file: " + fault.error().parts().what},
            fault.what()};
}

NodePtr planClusterCsv(SparkSession& session, JobContext&, const CsvReadSettings& settings)
{
    const ClusterCsv csv(session, settings);
    auto node = std::make_shared<Node>();
    node->fields = settings.dataModel ? csv.modelledFields() : csv.guessedFields();
    std::vector<std::string> values;
    for (std::size_t i = 0; i < node->fields.size(); ++i)
        values.push_back(csv.valueOf(i, node->fields[i]));
    const std::string condition = csv.condition(node->fields);
    node->select = [sql = "SELECT " + selectList(sparkDialect(), node->fields, values) + " FROM " +
                          csv.from() + " WHERE " +
                          condition](const std::vector<std::string>&) { return sql; };
    if (settings.errorThreshold != 0)
        node->check =
            std::make_shared<SkippedRecords>(session, settings,
                                             "SELECT CAST(count(*) AS STRING) FROM " + csv.from() +
                                                 " WHERE NOT (" + condition + ")");
    return node;
}

} // namespace EmbeddedHV
