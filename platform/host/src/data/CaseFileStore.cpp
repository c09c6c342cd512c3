#include "data/CaseFileStore.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <set>
#include <system_error>

#include "FileServices.h"
#include "HostConversions.h"
#include "StorageOfFormat.h"
#include "base/CivilTime.h"
#include "base/FileDescriptor.h"
#include "base/NativePath.h"
#include "data/CaseFileFault.h"
#include "data/CaseText.h"
#include "data/DictionaryVariables.h"
#include "datafile/Dictionary.h"
#include "datafile/PendingFile.h"
#include "datafile/ScratchFile.h"
#include "datafile/SqlQuoting.h"
#include "text/NameCase.h"

namespace {

namespace duck = datafile::duck;

/// The number of values in a row group, which are in memory while a file is written.
constexpr std::size_t kValuesPerRowGroup = std::size_t{4} * 1024 * 1024;
constexpr std::size_t kMostRowsPerGroup = 122880;
constexpr std::size_t kLeastRowsPerGroup = 2048;

/// A column of host numbers in a more specific type, and the condition that this changes no value.
struct StoredAs
{
    std::string sql;
    std::string condition;
};

/// SQL for the microseconds behind a whole second: the multiple of 10 with the same host number,
/// otherwise the nearest one, as in base::timestampOfRow.
std::string microsecondsSql(const std::string& column, const std::string& wholeSecond)
{
    const std::string exact = "((" + column + " - (" + wholeSecond + ")) * 1e6)";
    const std::string roundest = "(round(" + exact + " / 1e1) * 1e1)";
    return "(CASE WHEN " + wholeSecond + " + " + roundest + " / 1e6 = " + column + " THEN " +
           roundest + " ELSE round(" + exact + ") END)";
}

/// The condition tests a round trip: whole days, times within a day, and points in time that
/// microseconds can distinguish.
StoredAs storedAs(const std::string& column, CFField::StorageType storage)
{
    const std::string base =
        std::to_string(static_cast<long long>(GetBaseDateNumber())) + "::DOUBLE";
    const std::string day = std::to_string(static_cast<int>(base::kSecondsPerDay));
    const std::string since1970 = "(" + column + " - " + base + ")";
    switch (storage) {
    case CFField::Date:
        return {"(DATE '1970-01-01' + CAST(" + since1970 + " / " + day + " AS INTEGER))",
                since1970 + " / " + day + " = trunc(" + since1970 + " / " + day + ") AND abs(" +
                    since1970 + ") < " + day + ".0 * 1e6"};
    case CFField::Time:
        return {"(TIME '00:00:00' + to_microseconds(CAST(round(" + column + " * 1e6) AS BIGINT)))",
                column + " >= 0 AND " + column + " < " + day + " AND round(" + column +
                    " * 1e6) / 1e6 = " + column};
    case CFField::Timestamp: {
        const std::string whole = "floor(" + since1970 + ")";
        const std::string micro = microsecondsSql(column, base + " + " + whole);
        return {"make_timestamp(CAST(" + whole + " AS BIGINT) * 1000000 + CAST(" + micro +
                    " AS BIGINT))",
                "abs(" + since1970 + ") < 1e11 AND " + base + " + " + whole + " + " + micro +
                    " / 1e6 = " + column};
    }
    default:
        return {column, ""};
    }
}

} // namespace

CaseFileStore::CaseFileStore(const UserCaseFileSpec& spec)
    : _spec(spec), _path(base::nativePath(hostToUtf8(spec.GetName()))), _page(hostCodePage())
{
    // A name with the extension of another format could not be read back.
    if (spec.GetKind() == CaseFileKind::Csv)
        throw ErrorText(_path + ": the host writes SAV files, and this name is one of a CSV file");
    // Report an unwritable destination before the cases are added.
    try {
        const datafile::PendingFile probe(_path, "");
    } catch (const datafile::Fault& fault) {
        throw errorTextOf(fault);
    }
}

const VEXA_Variable& CaseFileStore::GetVariable(int column) const
{
    if (column < 0 || column >= ColumnCount())
        throw ErrorText(_path + " has no column " + std::to_string(column));
    return *_variables[static_cast<std::size_t>(column)];
}

VEXA_InputCaseIterator* CaseFileStore::MakeIterator(ErrorMonitor*) const
{
    throw ErrorText(_path + ": the cases can be read when the file is closed");
}

/// The dictionary determines the layout of cases, so it must not change after the first.
void CaseFileStore::needOpenDictionary() const
{
    if (_committed)
        throw ErrorText(_path + ": the dictionary is complete and cannot be changed");
}

VEXA_Variable* CaseFileStore::MakeVariable(const VEXA_Variable& variable)
{
    needOpenDictionary();
    _variables.push_back(std::make_unique<VEXA_Variable>(variable));
    return _variables.back().get();
}

void CaseFileStore::SetWeightVar(int column)
{
    needOpenDictionary();
    if (column >= 0 && GetVariable(column).GetType() > 0)
        throw ErrorText(_path + ": the weight variable \"" +
                        hostToUtf8(GetVariable(column).GetName()) + "\" is a text");
    _roles.weight = column;
}

void CaseFileStore::SetSplitVars(const std::vector<int>& columns)
{
    needOpenDictionary();
    for (const int column : columns)
        GetVariable(column); // throws if it does not exist
    _roles.split = columns;
}

void CaseFileStore::SetDocuments(const std::vector<std::string>& lines)
{
    needOpenDictionary();
    _documents = lines;
}

void CaseFileStore::CommitDictionary()
{
    needOpenDictionary();
    std::vector<int> widths;
    std::set<std::u16string> names;
    for (const auto& variable : _variables) {
        const std::string name = hostToUtf8(variable->GetName());
        if (name.empty())
            throw ErrorText(_path + ": a variable has no name");
        if (!names.insert(foldedName(variable->GetName())).second)
            throw ErrorText(_path + ": two variables are named \"" + name +
                            "\", letter case apart");
        if (variable->GetType() > kWidestText)
            throw ErrorText(_path + ": variable \"" + name + "\" is wider than " +
                            std::to_string(kWidestText) + " bytes");
        widths.push_back(variable->GetType());
    }
    if (widths.empty())
        throw ErrorText(_path + ": a file needs a variable");
    _table = std::make_unique<CaseTable>(widths, CaseTableText::Utf8);
    // Set it last: the caller may correct a refused dictionary.
    _committed = true;
}

int CaseFileStore::GetObsAreaSize() const
{
    std::size_t units = 0;
    for (const auto& variable : _variables)
        units += unitsOfWidth(variable->GetType());
    return static_cast<int>(units);
}

void CaseFileStore::AddCase(const VEXA_Case& newCase)
{
    if (!_table)
        throw ErrorText(_path + ": the file is not open for cases");
    for (std::size_t i = 0; i < _variables.size(); ++i) {
        const OBS* value = newCase.GetObsPointer(static_cast<int>(i));
        const int width = _variables[i]->GetType();
        if (width == 0) {
            _table->setNumber(i, value->number);
            continue;
        }
        const std::string_view whole(value->text, static_cast<std::size_t>(width));
        const std::string_view text = whole.substr(0, trimmedLength(whole));
        // Convert UTF-8 too: invalid bytes would corrupt the file.
        _page->toUtf8(text, _converted);
        _table->setText(i, _converted);
    }
    _table->endCase();
}

/// Its values are on the scales of the columns, so it needs their storages.
std::string CaseFileStore::dictionary(const Storages& storages) const
{
    datafile::Dictionary dictionary;
    dictionary.encoding = _page->name();
    for (std::size_t i = 0; i < _variables.size(); ++i)
        dictionary.variables.push_back(descriptionOf(*_variables[i], storages[i]));
    if (_roles.weight >= 0)
        dictionary.weight = dictionary.variables[static_cast<std::size_t>(_roles.weight)].name;
    for (const int column : _roles.split)
        dictionary.split.push_back(dictionary.variables[static_cast<std::size_t>(column)].name);
    for (const std::string& line : _documents)
        dictionary.documents.push_back(hostToUtf8(line));
    return datafile::dictionaryText(dictionary);
}

/// The storages of the columns: those of their formats, if no value changes.
CaseFileStore::Storages CaseFileStore::storages()
{
    Storages storages;
    std::string question;
    for (std::size_t i = 0; i < _variables.size(); ++i) {
        storages.push_back(_variables[i]->GetType() > 0
                               ? CFField::String
                               : storageOfFormat(_variables[i]->GetFormat()));
        const std::string condition = storedAs(CaseTable::columnName(i), storages[i]).condition;
        question += (i == 0 ? "SELECT coalesce(bool_and(" : ", coalesce(bool_and(") +
                    (condition.empty() ? "true" : condition) + "), true)::INTEGER";
    }
    duck::Result exact = _table->connection().query(question + " FROM " + _table->name());
    for (std::size_t i = 0; i < storages.size(); ++i)
        if (exact.integer(i, 0) == 0)
            storages[i] = CFField::Real;
    return storages;
}

std::string CaseFileStore::selectAsStored(const Storages& storages) const
{
    std::string sql;
    for (std::size_t i = 0; i < storages.size(); ++i)
        sql += (i == 0 ? "SELECT " : ", ") + storedAs(CaseTable::columnName(i), storages[i]).sql +
               " AS " + datafile::quotedIdentifier(hostToUtf8(_variables[i]->GetName()));
    return sql + " FROM " + _table->name();
}

/// Wider cases get smaller row groups, so that memory use stays constant.
std::string CaseFileStore::copyStatement(const std::string& target)
{
    const std::size_t rows =
        std::clamp(kValuesPerRowGroup / _variables.size(), kLeastRowsPerGroup, kMostRowsPerGroup);
    const Storages kinds = storages();
    return "COPY (" + selectAsStored(kinds) + ") TO " + datafile::quotedLiteral(target) +
           " (USE_TMP_FILE false, FORMAT PARQUET, ROW_GROUP_SIZE " + std::to_string(rows) +
           ", KV_METADATA {" + datafile::quotedLiteral(datafile::kDictionaryKey) + ": " +
           datafile::quotedLiteral(dictionary(kinds)) + "})";
}

/// A sealed file is first written unencrypted to a file without a name, because the database cannot
/// write to a stream.
void CaseFileStore::write()
{
    datafile::PendingFile pending(_path, "");
    if (_spec.GetPassword().empty()) {
        _table->connection().query(copyStatement(pending.path()));
    } else {
        const datafile::ScratchFile plain(base::nativePath(hostToUtf8(GetVexaTempPath())));
        _table->connection().query(copyStatement(plain.path()));
        plain.rewind();
        const base::FileDescriptor sealed(
            open(pending.path().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
        if (!sealed)
            datafile::PendingFile::refuse("", _path, errno);
        datafile::sealFile(plain.descriptor(), sealed.get(), _spec.GetPassword());
    }
    pending.commit();
}

/// Releases the cases even on failure: a store does not retry.
void CaseFileStore::Close()
{
    if (!_table)
        throw ErrorText(_path + ": the file is not open for cases");
    try {
        _table->finish();
        write();
    } catch (const datafile::Fault& fault) {
        _table.reset();
        throw errorTextOf(fault);
    } catch (const datafile::SealedFileError& error) {
        _table.reset();
        throw errorTextOf(_path, error);
    } catch (const duck::QueryError& error) {
        _table.reset();
        throw errorTextOf(_path, "the file cannot be written", error);
    } catch (const std::system_error& error) {
        _table.reset();
        throw ErrorText(_path + ": the file cannot be written: " + error.what());
    }
    _table.reset();
}

struct UserOutputCaseFile::Impl
{
    std::unique_ptr<CaseFileStore> store;
};

UserOutputCaseFile::UserOutputCaseFile(const UserCaseFileSpec& spec)
    : _impl(std::make_unique<Impl>())
{
    if (!spec.GetName().empty() && spec.IsForOutput())
        _impl->store = std::make_unique<CaseFileStore>(spec);
}

UserOutputCaseFile::~UserOutputCaseFile() = default;

IndependentDataStore* UserOutputCaseFile::DataSource() const
{
    return _impl->store.get();
}
