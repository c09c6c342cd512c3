#include "workbook/SheetCopy.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "workbook/SheetReader.h"
#include "workbook/Workbook.h"
#include "workbook/WorkbookFault.h"

namespace {

using datafile::CsvKind;

constexpr std::size_t kRowBlock = std::size_t{1} << 20;

void appendQuoted(std::string& target, const std::string& text)
{
    target += '"';
    for (const char character : text) {
        if (character == '"')
            target += '"';
        // The database reads no other control character.
        target += character == '\0' ? ' ' : character;
    }
    target += '"';
}

/// Writes the rows of a sheet.
class RowWriter
{
public:
    RowWriter(const SheetRequest& request, const std::string& folder) : _request(request)
    {
        _copy.file = std::make_shared<datafile::ScratchFile>(folder);
    }

    void take(std::uint64_t row, const std::vector<SheetCell>& cells)
    {
        if (row <= _request.skippedRows)
            return;
        if (_isFirst && _request.hasHeader)
            takeNames(cells);
        else
            takeRecord(cells);
        _isFirst = false;
    }

    SheetCopy finish()
    {
        flush();
        _copy.file->rewind();
        _copy.names.resize(std::max(_copy.names.size(), _copy.kinds.size()));
        _copy.kinds.resize(_copy.names.size(), CsvKind::Missing);
        return std::move(_copy);
    }

private:
    void takeNames(const std::vector<SheetCell>& cells)
    {
        _copy.names.resize(cells.back().column + 1);
        for (const SheetCell& cell : cells)
            _copy.names[cell.column] = cell.value.text;
    }

    bool isMissing(const CellValue& value) const
    {
        return std::ranges::find(_request.missing, value.text) != _request.missing.end();
    }

    void takeRecord(const std::vector<SheetCell>& cells)
    {
        if (cells.back().column >= _copy.kinds.size())
            _copy.kinds.resize(cells.back().column + 1, CsvKind::Missing);
        std::size_t column = 0;
        for (const SheetCell& cell : cells) {
            _block.append(cell.column - column, ',');
            column = cell.column;
            // A line without any character would be ignored.
            if (isMissing(cell.value)) {
                appendQuoted(_block, {});
                continue;
            }
            CsvKind& kind = _copy.kinds[column];
            kind = datafile::widened(kind, cell.value.kind);
            if (cell.value.kind == CsvKind::Text)
                appendQuoted(_block, cell.value.text);
            else
                _block += cell.value.text;
        }
        _block += '\n';
        if (_block.size() >= kRowBlock)
            flush();
    }

    void flush()
    {
        if (!_copy.file->write(_block))
            throw std::system_error(errno, std::generic_category());
        _block.clear();
    }

    const SheetRequest& _request;
    SheetCopy _copy;
    std::string _block;
    bool _isFirst = true;
};

} // namespace

SheetCopy copySheet(const std::string& path, const SheetRequest& request, const std::string& folder)
{
    const Workbook workbook(path);
    RowWriter writer(request, folder);
    SheetReader reader(workbook, [&](std::uint64_t row, const std::vector<SheetCell>& cells) {
        writer.take(row, cells);
    });
    reader.read(workbook.sheetPart(request.sheet), request.look);
    SheetCopy copy = writer.finish();
    copy.impossibleDates = reader.impossibleDates();
    if (copy.names.empty())
        throw WorkbookFault("no records were found in the sheet");
    return copy;
}
