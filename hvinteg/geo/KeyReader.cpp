#include "geo/KeyReader.h"

#include <utility>

#include "support/Conversions.h"

namespace {

using EmbeddedHV::RowDataIterator;

constexpr int kAllRows = -1;

} // namespace

KeyReader::KeyReader(RowDataIterator& rows, const std::vector<std::string>& keys)
    : _rows(rows), _model(rows.getDataModel())
{
    for (const std::string& key : keys)
        _fields.push_back(_model.GetFieldIndex(key));
}

bool KeyReader::read(int maxRows, std::vector<std::vector<std::string>>& result)
{
    // One row more than the limit shows the caller that there are more.
    int count = 0;
    do {
        const unsigned int status = _rows.nextRecord();
        if (status != RowDataIterator::RecordAvailable)
            return status == RowDataIterator::EndOfData;
        if (auto row = presentRow()) {
            result.push_back(std::move(*row));
            ++count;
        }
    } while (maxRows == kAllRows || count <= maxRows);
    return true;
}

/// Returns nothing if a key is missing.
std::optional<std::vector<std::string>> KeyReader::presentRow()
{
    std::vector<std::string> row;
    for (const int field : _fields) {
        auto value = valueOf(field);
        if (!value)
            return std::nullopt;
        row.push_back(std::move(*value));
    }
    return row;
}

/// Formats numbers as the host does in texts, so that a caller can compare them.
std::optional<std::string> KeyReader::valueOf(int field)
{
    if (field < 0)
        return std::nullopt;
    void* value = nullptr;
    unsigned long long length = 0;
    if (_rows.getRecordValue(static_cast<unsigned long long>(field), value, length) !=
            RowDataIterator::RecordAvailable ||
        value == nullptr)
        return std::nullopt;
    if (_model.GetField(static_cast<std::size_t>(field))->GetStorage() == CFField::String)
        return std::string(static_cast<const char*>(value), length);
    std::string text;
    ConvertObsValToStr(static_cast<const OBS*>(value), 0, text);
    return text;
}
