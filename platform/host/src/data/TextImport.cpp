#include "TextImport.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "CFMetaData.h"
#include "FileServices.h"
#include "base/ListText.h"
#include "base/NativePath.h"
#include "base/NearestName.h"
#include "data/CaseFileFault.h"
#include "data/ColumnForms.h"
#include "data/HostDatabase.h"
#include "data/ImportColumn.h"
#include "data/JsonText.h"
#include "data/TextBytes.h"
#include "data/Utf8Copy.h"
#include "datafile/ColumnTypes.h"
#include "datafile/CsvFault.h"
#include "datafile/CsvScanner.h"
#include "datafile/FaultIds.h"
#include "datafile/FieldNames.h"
#include "datafile/FileKind.h"
#include "datafile/FileTables.h"
#include "datafile/InputFile.h"
#include "datafile/SpaceFault.h"
#include "datafile/SqlQuoting.h"
#include "datafile/StorageWords.h"
#include "text/CodePage.h"
#include "workbook/SheetCopy.h"
#include "workbook/WorkbookFault.h"

namespace {

namespace duck = datafile::duck;
using datafile::quotedIdentifier;
using datafile::quotedLiteral;

constexpr const char* kIsoDate = "%Y-%m-%d";
/// The database accepts records of JSON up to this size without an option.
constexpr std::size_t kUsualJsonRecord = std::size_t{8} << 20;
/// A file with more columns than kWideDataset is written in groups of so many values, because the
/// database holds a group of records in memory.
constexpr std::size_t kValuesOfGroup = 20'000'000;
constexpr std::size_t kLeastOfGroup = 2048; // the database knows no smaller groups

std::string character(char value)
{
    return quotedLiteral(value == '\0' ? std::string() : std::string(1, value));
}

const char* typeWordOf(const std::string& type)
{
    return datafile::typeWordOf(type == "BIGINT" ? CFField::Integer : CFField::Real);
}

/// An instance for records with very many columns, or very long ones. For each column of texts the
/// database reserves some blocks of 256 KiB, though it hardly uses them. So this instance may take
/// the usual share of the memory, unlike the host's.
class WideDatabase
{
public:
    WideDatabase()
        : _database(duck::openInMemory(
              {{"temp_directory", base::nativePath(hostToUtf8(GetVexaTempPath()))},
               {"threads", "1"}}))
    {
    }
    WideDatabase(const WideDatabase&) = delete;
    WideDatabase& operator=(const WideDatabase&) = delete;
    ~WideDatabase() { duckdb_close(&_database); }

    std::unique_ptr<duck::Connection> connect() const
    {
        return std::make_unique<duck::Connection>(_database);
    }

private:
    duckdb_database _database;
};

/// Reads one file through the database.
class Import
{
public:
    Import(const std::string& path, const TextImport& form)
        : _path(path), _form(form), _readable(path)
    {
        if (form.kind == TextImport::Kind::Json)
            takeJson();
        else if (form.kind == TextImport::Kind::Sheet)
            takeSheet();
        else
            _mark = optionOfMark(_readable);
        if (!form.codePage.empty())
            convert();
        if (separatorsInLine(_readable) > kWideDataset || !_jsonLimit.empty())
            _wide.emplace();
        _connection = _wide ? _wide->connect() : connectToHostDatabase();
    }

    TextImported write(const std::string& target)
    {
        const std::string from = table();
        std::vector<std::string> list;
        for (const ImportColumn& column : _columns)
            list.push_back(selectedItem(column));
        run("COPY (SELECT " + base::joined(list, ", ") + " FROM " + from + ") TO " +
            quotedLiteral(target) + " (FORMAT parquet" + groupOption() + modelOption() + ")");
        return std::move(_told);
    }

private:
    std::string table()
    {
        switch (_form.kind) {
        case TextImport::Kind::Json:
            return jsonTable();
        case TextImport::Kind::Sheet:
            return sheetTable();
        default:
            return separatedTable();
        }
    }

    void use(std::shared_ptr<datafile::ScratchFile> copy)
    {
        _copy = std::move(copy);
        _readable = _copy->path();
    }

    void takeJson()
    {
        JsonText text = checkedJson(_readable, _form.look);
        if (text.longestRecord > kUsualJsonRecord)
            _jsonLimit = ", maximum_object_size = " + std::to_string(datafile::kLongestCsvRecord);
        if (text.copy)
            use(std::move(text.copy));
    }

    void takeSheet()
    try {
        SheetCopy sheet = copySheet(
            _path, {_form.sheet, _form.hasHeader, _form.skippedLines, _form.missing, _form.look},
            base::nativePath(hostToUtf8(GetVexaTempPath())));
        for (std::size_t i = 0; i < sheet.kinds.size(); ++i)
            _columns.push_back({sheet.names[i], importType(sheet.kinds[i])});
        _told.impossibleDates = sheet.impossibleDates;
        use(std::move(sheet.file));
    } catch (const WorkbookFault& fault) {
        throw CaseFileError(_path, std::string(": ") + fault.what());
    } catch (const std::system_error& error) {
        errno = error.code().value();
        failToCopy(_path, "as text");
    }

    void convert()
    {
        if (*_mark != '\0')
            throw CaseFileError(_path, ": the file is UTF-16, so no other encoding can be chosen");
        const auto page = codePageOfFile(_form.codePage);
        if (!page->isUtf8())
            use(utf8Copy(_readable, *page, _form.look));
    }

    std::string groupOption() const
    {
        if (_columns.size() <= kWideDataset)
            return {};
        return ", ROW_GROUP_SIZE " +
               std::to_string(std::max(kValuesOfGroup / _columns.size(), kLeastOfGroup));
    }

    duck::Result run(const std::string& sql)
    try {
        return _connection->query(sql);
    } catch (const duck::QueryError& error) {
        fail(error.what());
    }

    [[noreturn]] void fail(const std::string& message) const
    {
        const auto line = datafile::csvLine(message);
        // The copy of a sheet has no names.
        if (line && _form.kind == TextImport::Kind::Sheet)
            throw CaseFileError(_path,
                                ": record " + std::to_string(*line) + ": " +
                                    datafile::csvParts(_path, *line, message).what,
                                {}, datafile::faults::kBadRecord);
        if (line || datafile::spaceFaultIn(message) != nullptr)
            throw errorTextOf(_path, {}, duck::QueryError(message));
        if (message.find("Out of Memory Error") != std::string::npos)
            throw CaseFileError(_path,
                                ": there is not enough memory to convert the file, which has " +
                                    std::to_string(_columns.size()) + " fields");
        if (_form.kind == TextImport::Kind::Json)
            failOfJson(message);
        if (message.find("sniff") != std::string::npos ||
            message.find("Sniff") != std::string::npos)
            throw CaseFileError(_path, ": no records were found in the file");
        throw CaseFileError(_path, ": " + datafile::headline(message));
    }

    /// The database's message names the place in one of two forms, after the name of the file.
    [[noreturn]] void failOfJson(const std::string& message) const
    {
        const char* const what = message.find("Malformed JSON") != std::string::npos
                                     ? ": the file is not JSON: "
                                     : ": a value does not fit: ";
        const auto line = datafile::between(message, " in line ", ":");
        const auto record = datafile::between(message, " in record/value ", ":");
        const auto place = line ? line : record;
        if (!place)
            throw CaseFileError(_path, ": " + datafile::headline(message));
        const std::string reason =
            datafile::between(message, " " + *place + ": ", "\n").value_or("");
        const std::size_t end = reason.find_last_not_of(". ");
        throw CaseFileError(_path, (line ? ":" + *line : ": record " + *record) + what +
                                       reason.substr(0, end + 1));
    }

    std::string jsonTable()
    {
        std::string table = "read_json(" + quotedLiteral(datafile::literalPath(_readable)) +
                            ", sample_size = -1, map_inference_threshold = -1, "
                            "field_appearance_threshold = 0" +
                            _jsonLimit + ")";
        duck::Result found = run("DESCRIBE SELECT * FROM " + table);
        for (std::size_t row = 0; row < found.rows(); ++row)
            _columns.push_back({found.text(0, row), found.text(1, row)});
        if (_columns.size() == 1 && _columns.front().name == "json")
            throw CaseFileError(_path, ": the file has no records: neither an array of objects nor "
                                       "an object a line");
        return table;
    }

    /// The copy of the sheet has neither names nor other forms than those of the database. Its
    /// records may lack fields at their ends.
    std::string sheetTable()
    {
        nameColumns();
        setTypes();
        const std::string options =
            ", header = false, quote = '\"', escape = '\"', delim = ',', nullstr = [''], "
            "null_padding = true, parallel = false" +
            datafile::csvLimits();
        readValues(options);
        return tableOf(options);
    }

    std::string separatedTable()
    {
        std::string options = commonOptions();
        duck::Result found =
            run("SELECT DateFormat, TimestampFormat, c.name, c.type, Delimiter FROM (SELECT *,"
                " unnest(Columns) AS c FROM sniff_csv(" +
                quotedLiteral(datafile::literalPath(_readable)) + options +
                ", sample_size = -1, ignore_errors = true))");
        if (found.rows() == 0)
            throw CaseFileError(_path, ": the file has no fields");
        if (_form.separator == '\0')
            options += ", delim = " + quotedLiteral(found.text(4, 0));
        // The database finds one form of dates for the whole file. It prefers %y/%m/%d.
        const bool hasOtherDates =
            _form.dateFormat.empty() && !found.text(0, 0).empty() && found.text(0, 0) != kIsoDate;
        const bool hasOtherMoments = !found.text(1, 0).empty();
        for (std::size_t row = 0; row < found.rows(); ++row) {
            std::string type = readType(found.text(3, row));
            if ((type == "DATE" && hasOtherDates) || (type == "TIMESTAMP" && hasOtherMoments))
                type = "VARCHAR";
            _columns.push_back({_form.hasHeader ? found.text(2, row) : "", std::move(type)});
        }
        nameColumns();
        setTypes();
        readValues(options);
        return tableOf(options);
    }

    std::string tableOf(const std::string& options) const
    {
        std::vector<std::string> columns;
        for (const ImportColumn& column : _columns)
            columns.push_back(quotedLiteral(column.name) + ": " +
                              quotedLiteral(column.value.empty() ? column.type : "VARCHAR"));
        return "read_csv(" + quotedLiteral(datafile::literalPath(_readable)) + options +
               ", auto_detect = false, columns = {" + base::joined(columns, ", ") + "})";
    }

    const CFField::StorageType* givenType(const ImportColumn& column) const
    {
        for (const auto& [name, storage] : _form.types)
            if (name == column.name)
                return &storage;
        return nullptr;
    }

    /// Finds expressions for the texts that the database does not read itself. Such a file is read
    /// once more, as texts.
    void readValues(const std::string& options)
    {
        std::vector<TextColumn> columns;
        for (std::size_t i = 0; i < _columns.size(); ++i)
            if (auto column = textColumn(i))
                columns.push_back(std::move(*column));
        if (columns.empty())
            return;
        std::vector<ImportColumn> typed = _columns;
        for (const TextColumn& column : columns)
            _columns[column.index].type = "VARCHAR";
        const std::string table = tableOf(options);
        _columns = std::move(typed);
        try {
            chooseForms(*_connection, table, columns, _form.look);
        } catch (const duck::QueryError& error) {
            fail(error.what());
        }
        for (const TextColumn& column : columns)
            take(column);
    }

    bool isBoolean(const ImportColumn& column) const
    {
        return std::ranges::find(_form.booleans, column.name) != _form.booleans.end();
    }

    /// A column whose texts may have another form; nullopt if the database reads it.
    std::optional<TextColumn> textColumn(std::size_t index) const
    {
        const ImportColumn& column = _columns[index];
        const CFField::StorageType* const given = givenType(column);
        TextColumn text{.index = index, .name = quotedIdentifier(column.name)};
        const bool isNumber = column.type == "BIGINT" || column.type == "DOUBLE";
        text.needsForm = isBoolean(column) || (given != nullptr && isNumber);
        if (isBoolean(column))
            text.forms = booleanForms(text.name);
        else if (text.needsForm)
            text.forms = numberForms(text.name, column.type, _form);
        else if (_form.dateFormat.empty() &&
                 ((given == nullptr && column.type == "VARCHAR") ||
                  (given != nullptr && (column.type == "DATE" || column.type == "TIMESTAMP"))))
            text.forms = dateForms(text.name, column.type);
        return text.forms.empty() ? std::nullopt : std::optional(std::move(text));
    }

    void take(const TextColumn& text)
    {
        ImportColumn& column = _columns[text.index];
        if (text.misfit)
            throw CaseFileError(
                _path,
                ": record " + std::to_string(text.misfit->record) + ": field \"" + column.name +
                    "\": \"" + text.misfit->text + "\" is not " +
                    (isBoolean(column) ? std::string(kBooleanWords) : typeWordOf(column.type)),
                {}, datafile::faults::kBadRecord);
        column.value = text.chosen;
        if (text.isDayFirst)
            _told.dayFirst.push_back(column.name);
        if (text.hasShortYears)
            _told.yearUnclear.push_back(column.name);
    }

    std::string commonOptions() const
    {
        std::string options = _mark + datafile::csvLimits();
        options += ", quote = " + character(_form.quote) + ", escape = " + character(_form.escape);
        if (_form.separator != '\0')
            options += ", delim = " + character(_form.separator);
        options += std::string(", header = ") + (_form.hasHeader ? "true" : "false");
        if (hasQuote(_readable, _form.quote))
            options += ", parallel = false";
        if (_form.skippedLines > 0)
            options += ", skip = " + std::to_string(_form.skippedLines);
        if (_form.comment != '\0')
            options += ", comment = " + character(_form.comment);
        if (_form.decimalComma)
            options += ", decimal_separator = ','";
        if (_form.thousands != '\0')
            options += ", thousands = " + character(_form.thousands);
        std::vector<std::string> missing = {"''"};
        for (const std::string& text : _form.missing)
            missing.push_back(quotedLiteral(text));
        options += ", nullstr = [" + base::joined(missing, ", ") + "]";
        if (!_form.dateFormat.empty())
            options += ", dateformat = " + quotedLiteral(_form.dateFormat);
        return options;
    }

    /// By the rule for plain CSV files.
    void nameColumns()
    {
        std::vector<std::string> names;
        for (const ImportColumn& column : _columns)
            names.push_back(column.name);
        names = datafile::uniqueNames(std::move(names));
        for (std::size_t i = 0; i < names.size(); ++i)
            _columns[i].name = names[i];
    }

    void setTypes()
    {
        for (const auto& [name, storage] : _form.types)
            columnNamed(name).type = datafile::sqlTypeOf(storage);
        for (const std::string& name : _form.booleans)
            columnNamed(name).type = datafile::sqlTypeOf(CFField::Integer);
    }

    ImportColumn& columnNamed(const std::string& name)
    {
        const auto column = std::ranges::find(_columns, name, &ImportColumn::name);
        if (column == _columns.end())
            throw CaseFileError(_path, ": there is no field \"" + name + "\"" +
                                           base::suggestion(name, _columns, &ImportColumn::name));
        return *column;
    }

    /// Describes the fields of true and false in the file.
    std::string modelOption() const
    {
        if (_form.booleans.empty())
            return {};
        CFMetaData model;
        for (const std::string& name : _form.booleans) {
            CFField field(name, CFField::Flag, CFField::Integer);
            field.SetValueLabels({CFValue(CFDatum(std::int64_t{0}), "false"),
                                  CFValue(CFDatum(std::int64_t{1}), "true")});
            model.AppendField(field);
        }
        std::string xml;
        model.ExportXMLDoc(xml);
        return ", KV_METADATA {" + quotedLiteral(datafile::kDataModelKey) + ": " +
               quotedLiteral(xml) + "}";
    }

    const std::string& _path;
    const TextImport& _form;
    std::string _readable; ///< the file, or its copy unpacked or in UTF-8
    const char* _mark = "";
    std::string _jsonLimit;
    std::optional<WideDatabase> _wide;
    std::unique_ptr<duck::Connection> _connection;
    std::shared_ptr<datafile::ScratchFile> _copy;
    std::vector<ImportColumn> _columns;
    TextImported _told;
};

} // namespace

TextImported ImportTextFile(const std::string& path, const TextImport& form,
                            const std::string& target)
{
    return Import(path, form).write(target);
}
