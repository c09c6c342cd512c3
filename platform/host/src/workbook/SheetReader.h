#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/SerialDate.h"
#include "workbook/XmlStream.h"

class Workbook;

/// A cell with a value.
struct SheetCell
{
    std::size_t column = 0; ///< from 0
    CellValue value;
};

/// Reads the cells of a sheet row by row. Of merged cells only the first has a value. Errors such
/// as #N/A have none, and neither have numbers in a date format that are not dates. True and false
/// are the texts "true" and "false". Borrows the workbook.
class SheetReader : private XmlHandler
{
public:
    /// Takes a row with values; `row` counts from 1. The cells are in the order of their columns.
    using TakeRow = std::function<void(std::uint64_t row, const std::vector<SheetCell>& cells)>;

    SheetReader(const Workbook& workbook, TakeRow take)
        : _workbook(workbook), _take(std::move(take))
    {
    }

    /// Calls `look` for each block. Throws WorkbookFault, and what `take` and `look` throw.
    void read(const std::string& part, const std::function<void()>& look);
    /// How many numbers in a date format are not dates.
    std::uint64_t impossibleDates() const { return _impossibleDates; }

private:
    void startElement(std::string_view name, const char** attributes) override;
    void endElement(std::string_view name) override;
    void takeText(std::string_view text) override;
    void startRow(const char** attributes);
    void startCell(const char** attributes);
    void endCell();
    CellValue value();
    CellValue numberValue();
    CellValue sharedText() const;

    const Workbook& _workbook;
    TakeRow _take;
    std::uint64_t _row = 0;
    std::size_t _nextColumn = 0;
    std::vector<SheetCell> _cells; ///< of the row
    std::size_t _column = 0;
    std::string _type;
    std::size_t _style = 0;
    std::string _text; ///< of the cell, as the file has it
    bool _isInData = false;
    bool _isInPhonetic = false; ///< a reading aid, which is not a part of the text
    bool _isInValue = false;
    std::uint64_t _impossibleDates = 0;
};
