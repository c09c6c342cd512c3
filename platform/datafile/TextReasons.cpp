#include "datafile/TextReasons.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/AsciiText.h"
#include "base/ListText.h"
#include "datafile/CsvProfile.h"
#include "datafile/CsvScanner.h"
#include "datafile/CsvValue.h"
#include "datafile/Duck.h"
#include "datafile/FileTables.h"
#include "datafile/SqlQuoting.h"

namespace datafile {
namespace {

constexpr std::uint64_t kRecordsBetweenStops = 1024;
/// Signs before or after a number.
constexpr std::array<std::string_view, 5> kSigns{"%", "$", "€", "£", "¥"};
constexpr std::string_view kBlanks = " \t";
constexpr std::array<std::string_view, 4> kWords{"true", "false", "yes", "no"};
constexpr std::size_t kLongestWord = 5;

bool isNumber(std::string_view text)
{
    const CsvKind kind = datafile::kindOf({base::trimmed(text, kBlanks), false});
    return kind == CsvKind::Integer || kind == CsvKind::Real;
}

bool isSignedNumber(std::string_view text)
{
    return std::ranges::any_of(kSigns, [text](std::string_view sign) {
        return (text.starts_with(sign) && isNumber(text.substr(sign.size()))) ||
               (text.ends_with(sign) && isNumber(text.substr(0, text.size() - sign.size())));
    });
}

bool isWord(std::string_view text)
{
    return text.size() <= kLongestWord &&
           std::ranges::find(kWords, base::lowerCase(std::string(text))) != kWords.end();
}

/// What is known about the values of a column.
class Column
{
public:
    void take(const CsvField& field, std::uint64_t line, std::uint64_t record)
    {
        const CsvKind kind = kindOf(field);
        if (kind == CsvKind::Missing)
            return;
        if (kind != CsvKind::Text) {
            ++_others;
            return;
        }
        // Usually the first texts already decide that these two are not the reason.
        _areSigned = _areSigned && isSignedNumber(field.text);
        _areWords = _areWords && isWord(field.text);
        if (_texts++ > 0)
            return;
        _first.text = textOf(field);
        _first.line = line;
        _first.record = record;
    }

    bool hasReason() const
    {
        return _texts > 0 && (_areSigned || (_areWords && _others == 0) || _others > _texts);
    }

    TextReason reason(std::size_t column, const std::string& name) const
    {
        TextReason reason = _first;
        reason.column = column;
        reason.name = name;
        if (_areSigned)
            reason.cause = TextReason::Cause::Sign;
        else if (_areWords && _others == 0)
            reason.cause = TextReason::Cause::Words;
        return reason;
    }

private:
    std::uint64_t _texts = 0;
    std::uint64_t _others = 0;
    bool _areSigned = true;
    bool _areWords = true;
    TextReason _first;
};

std::vector<TextReason> reasonsOf(const std::vector<Column>& columns,
                                  const std::vector<std::string>& names)
{
    std::vector<TextReason> reasons;
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i].hasReason())
            reasons.push_back(columns[i].reason(i, names[i]));
    return reasons;
}

/// Owns an instance of the database.
class OwnDatabase
{
public:
    OwnDatabase() : _database(duck::openInMemory()) {}
    OwnDatabase(const OwnDatabase&) = delete;
    OwnDatabase& operator=(const OwnDatabase&) = delete;
    ~OwnDatabase() { duckdb_close(&_database); }
    duckdb_database handle() const { return _database; }

private:
    duckdb_database _database;
};

/// Takes the texts of a chunk. Its columns are those of `places`.
void takeChunk(const duck::Chunk& chunk, const std::vector<std::size_t>& places,
               std::uint64_t records, std::vector<Column>& columns)
{
    for (std::size_t i = 0; i < places.size(); ++i) {
        const duckdb_vector vector = chunk.column(i);
        auto* const texts = static_cast<duckdb_string_t*>(duckdb_vector_get_data(vector));
        std::uint64_t* const validity = duckdb_vector_get_validity(vector);
        for (std::size_t row = 0; row < chunk.rows(); ++row)
            if (validity == nullptr || duckdb_validity_row_is_valid(validity, row))
                columns[places[i]].take(
                    {{duckdb_string_t_data(&texts[row]), duckdb_string_t_length(texts[row])},
                     false},
                    0, records + row + 1);
    }
}

} // namespace

std::vector<TextReason> textReasons(const std::string& path, bool hasHeader,
                                    const std::function<bool()>& goOn)
{
    const std::vector<std::string> names = CsvProfile(path, hasHeader).names();
    std::vector<Column> columns(names.size());
    CsvScanner scanner(path);
    std::vector<CsvField> fields;
    if (hasHeader)
        scanner.next(fields);
    for (std::uint64_t record = 0; scanner.next(fields); ++record) {
        if (record % kRecordsBetweenStops == 0 && !goOn())
            return {};
        for (std::size_t i = 0; i < columns.size() && i < fields.size(); ++i)
            columns[i].take(fields[i], scanner.line(), record + 1);
    }
    return reasonsOf(columns, names);
}

std::vector<TextReason> textReasonsOfParquet(const std::string& path,
                                             const std::function<bool()>& goOn)
{
    const OwnDatabase database;
    duck::Connection connection(database.handle());
    const std::string table = parquetTable(path);
    std::vector<std::string> names;
    std::vector<std::string> list;
    std::vector<std::size_t> places; ///< of the columns of texts
    for (const auto& [name, type] :
         duck::Prepared(connection, "SELECT * FROM " + table).columns()) {
        if (type == DUCKDB_TYPE_VARCHAR) {
            list.push_back(quotedIdentifier(name));
            places.push_back(names.size());
        }
        names.push_back(name);
    }
    if (list.empty())
        return {};
    std::vector<Column> columns(names.size());
    duck::Prepared statement(connection, "SELECT " + base::joined(list, ", ") + " FROM " + table);
    duck::Result rows = statement.stream();
    std::uint64_t records = 0;
    while (const duck::Chunk chunk = duck::nextChunk(rows)) {
        if (!goOn())
            return {};
        takeChunk(chunk, places, records, columns);
        records += chunk.rows();
    }
    return reasonsOf(columns, names);
}

} // namespace datafile
