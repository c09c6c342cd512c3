#include "spark/SparkUpload.h"

#include <cstring>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "expression/FieldTypes.h"
#include "runtime/DataModel.h"
#include "spark/SparkColumns.h"
#include "spark/SparkDialect.h"
#include "spark/SparkEngine.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kBlockBytes = std::size_t{8} << 20;
/// A server with a heap of one gigabyte, its default, failed for blocks of 650,000 short records.
constexpr std::size_t kBlockRecords = 131072;
constexpr std::size_t kAlignment = 8; ///< of the parts of a block

template <class Number>
void append(std::vector<std::uint8_t>& bytes, Number value)
{
    const std::size_t end = bytes.size();
    bytes.resize(end + sizeof(Number));
    std::memcpy(bytes.data() + end, &value, sizeof(Number));
}

template <class Number>
Number valueAt(const BatchColumn& column, std::size_t row)
{
    return static_cast<const Number*>(column.data)[row];
}

/// The name of a type in the Java client.
const char* sentType(CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
        return "BIGINT";
    case CFField::Real:
        return "DOUBLE";
    case CFField::Date:
        return "DATE";
    case CFField::Time:
        return "TIME";
    case CFField::Timestamp:
        return "TIMESTAMP_NTZ";
    default:
        return "STRING";
    }
}

void setValid(std::vector<std::uint8_t>& validity, std::size_t row, bool isValid)
{
    if (row / 8 >= validity.size())
        validity.push_back(0);
    if (isValid)
        validity[row / 8] = static_cast<std::uint8_t>(validity[row / 8] | (1U << (row % 8)));
}

void appendValue(std::vector<std::uint8_t>& values, CFField::StorageType storage,
                 const BatchColumn& from, std::size_t row)
{
    switch (storage) {
    case CFField::Real:
        return append(values, valueAt<double>(from, row));
    case CFField::Date:
        return append(values, valueAt<std::int32_t>(from, row));
    case CFField::Time:
        return append(values, valueAt<std::int64_t>(from, row) * kNanosecondsPerMicrosecond);
    default:
        return append(values, valueAt<std::int64_t>(from, row));
    }
}

/// Appends a part and notes its place in the layout.
void addPart(std::vector<std::uint8_t>& bytes, const void* part, std::size_t size,
             std::vector<std::int64_t>& layout)
{
    layout.push_back(static_cast<std::int64_t>(bytes.size()));
    layout.push_back(static_cast<std::int64_t>(size));
    const std::size_t begin = bytes.size();
    bytes.resize(begin + (size + kAlignment - 1) / kAlignment * kAlignment);
    if (size > 0)
        std::memcpy(bytes.data() + begin, part, size);
}

} // namespace

SparkUpload::SparkUpload(SparkSession& session, const Fields& fields, std::string view,
                         std::string source)
    : _session(session), _fields(fields), _view(std::move(view)), _source(std::move(source)),
      _number(unusedName(fields, "hv_record"))
{
    std::vector<std::string> names{_number};
    std::vector<std::string> types{sentType(CFField::Integer)};
    _columns.resize(fields.size() + 1);
    _columns.front().storage = CFField::Integer;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        names.push_back(fields[i].GetName());
        types.emplace_back(sentType(fields[i].GetStorage()));
        _columns[i + 1].storage = fields[i].GetStorage();
    }
    _upload = _session.client().upload(names, types);
    startBlock();
}

void SparkUpload::startBlock()
{
    _rows = 0;
    for (Column& column : _columns) {
        column.missing = 0;
        column.validity.clear();
        column.offsets.assign(1, 0);
        column.values.clear();
    }
}

void SparkUpload::takeNumbers(std::size_t rows)
{
    for (std::size_t row = 0; row < rows; ++row) {
        setValid(_columns.front().validity, _rows + row, true);
        append(_columns.front().values, ++_allRows);
    }
}

void SparkUpload::takeColumn(Column& column, const BatchColumn& from, std::size_t rows)
{
    const bool isText = column.storage == CFField::String || column.storage == CFField::Unknown;
    for (std::size_t row = 0; row < rows; ++row) {
        const bool isMissing = from.isMissing(row);
        column.missing += isMissing ? 1 : 0;
        setValid(column.validity, _rows + row, !isMissing);
        if (!isText) {
            appendValue(column.values, column.storage, from, row);
            continue;
        }
        const std::string_view text = isMissing ? std::string_view() : from.textAt(row);
        column.values.insert(column.values.end(), text.begin(), text.end());
        column.offsets.push_back(static_cast<std::int32_t>(column.values.size()));
    }
}

std::size_t SparkUpload::size() const
{
    std::size_t bytes = 0;
    for (const Column& column : _columns)
        bytes += column.values.size();
    return bytes;
}

void SparkUpload::countBytes(std::size_t bytes)
{
    _sentBytes += static_cast<std::int64_t>(bytes);
    const std::int64_t most = _session.engine().settings().uploadBytes;
    if (_sentBytes <= most)
        return;
    throw JobError(errors::kTooMuchToSend,
                   {.step = "read",
                    .limit = most,
                    .what = _source + " has more than " + std::to_string(most) +
                            " bytes, which the setting \"engine.upload.bytes\" allows to send to "
                            "the cluster; write the records to a folder that the cluster sees, or "
                            "raise the setting"});
}

void SparkUpload::add(const RecordBatch& batch)
{
    const std::size_t rows = batch.rows();
    const std::size_t before = size();
    takeNumbers(rows);
    for (std::size_t i = 0; i < _fields.size(); ++i)
        takeColumn(_columns[i + 1], batch.column(i), rows);
    _rows += rows;
    countBytes(size() - before);
    if (size() >= kBlockBytes || _rows >= kBlockRecords)
        sendBlock();
}

void SparkUpload::buildBlock()
{
    _bytes.clear();
    _block.layout.clear();
    for (const Column& column : _columns) {
        const bool isText = column.storage == CFField::String || column.storage == CFField::Unknown;
        _block.layout.push_back(column.missing);
        addPart(_bytes, column.validity.data(), column.missing > 0 ? column.validity.size() : 0,
                _block.layout);
        addPart(_bytes, column.offsets.data(),
                isText ? column.offsets.size() * sizeof(std::int32_t) : 0, _block.layout);
        addPart(_bytes, column.values.data(), column.values.size(), _block.layout);
    }
    _block.records = _rows;
    _block.bytes = _bytes.data();
    _block.size = _bytes.size();
}

void SparkUpload::sendBlock()
{
    if (_folder.empty())
        _folder = _session.jobFolder() + "/" + _view;
    buildBlock();
    _session.client().appendRows(_upload, _folder, _block, _session.newTag());
    startBlock();
}

std::string SparkUpload::selectOf(const std::string& from) const
{
    return "SELECT " + sparkDialect().columns(_fields) + " FROM " + from;
}

void SparkUpload::finish()
{
    const Dialect& dialect = sparkDialect();
    if (_allRows == 0) {
        std::string columns;
        for (const CFField& field : _fields)
            columns += (columns.empty() ? "" : ", ") +
                       dialect.cast("NULL", valueTypeOf(field.GetStorage())) + " AS " +
                       dialect.name(field.GetName());
        _session.client().registerView(_view, "SELECT " + columns + " WHERE false");
        return;
    }
    if (!_folder.empty()) {
        if (_rows > 0)
            sendBlock();
        _session.client().registerView(_view, selectOf(dialect.parquetTable(_folder)) +
                                                  " ORDER BY " + dialect.name(_number));
        return;
    }
    const std::string rows = _view + "_rows";
    buildBlock();
    _session.client().registerRows(_upload, rows, _block);
    _session.client().registerView(_view, selectOf(dialect.name(rows)));
}

} // namespace EmbeddedHV
