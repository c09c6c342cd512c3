#include "workbook/SheetReader.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "base/AsciiText.h"
#include "base/NumberText.h"
#include "workbook/Workbook.h"
#include "workbook/WorkbookFault.h"

namespace {

using datafile::CsvKind;

constexpr std::size_t kMostColumns = 16'384;
constexpr std::size_t kMostOfCell = std::size_t{1} << 20;
constexpr std::size_t kDigitsThatFit = 18;
constexpr double kExactIntegers = 9007199254740992.0;
constexpr std::size_t kLettersInAlphabet = 26;

/// The whole text as a number.
template <class Number>
std::optional<Number> numberOf(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && !text.empty() ? std::optional(number) : std::nullopt;
}

/// The column in a reference such as "AB12".
std::size_t columnOf(std::string_view reference)
{
    std::size_t column = 0;
    for (const char letter : reference) {
        if (letter < 'A' || letter > 'Z' || column > kMostColumns)
            break;
        column = column * kLettersInAlphabet + static_cast<std::size_t>(letter - 'A') + 1;
    }
    if (column == 0 || column > kMostColumns)
        throw WorkbookFault("the sheet has the cell " + std::string(reference) +
                            ", which is not a valid one");
    return column - 1;
}

/// A date and time as in "2024-01-31T10:30:00Z", which some programs write.
CellValue isoValue(std::string text)
{
    if (text.ends_with('Z'))
        text.pop_back();
    const CsvKind kind = datafile::kindOf({text, false});
    return {std::move(text), kind};
}

bool isPlainInteger(std::string_view text)
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    const bool hasNoZero = text == "0" || !text.starts_with('0');
    return !text.empty() && text.size() <= kDigitsThatFit && hasNoZero &&
           std::ranges::all_of(text, base::isDigit);
}

} // namespace

void SheetReader::read(const std::string& part, const std::function<void()>& look)
{
    XmlStream stream(*this);
    _workbook.package().read(part, [&](std::string_view block) {
        look();
        stream.take(block);
    });
}

void SheetReader::startElement(std::string_view name, const char** attributes)
{
    _isInValue = false;
    if (name == "sheetData")
        _isInData = true;
    else if (!_isInData)
        return;
    else if (name == "row")
        startRow(attributes);
    else if (name == "c")
        startCell(attributes);
    else if (name == "rPh")
        _isInPhonetic = true;
    else
        _isInValue = name == "v" || (name == "t" && !_isInPhonetic);
}

void SheetReader::endElement(std::string_view name)
{
    _isInValue = false;
    if (!_isInData)
        return;
    if (name == "c")
        endCell();
    else if (name == "row") {
        if (!_cells.empty())
            _take(_row, _cells);
    } else if (name == "rPh")
        _isInPhonetic = false;
    else if (name == "sheetData")
        _isInData = false;
}

void SheetReader::takeText(std::string_view text)
{
    if (!_isInValue)
        return;
    _text += text;
    if (_text.size() > kMostOfCell)
        throw WorkbookFault("row " + std::to_string(_row) + ": a cell has more than 1 MiB");
}

void SheetReader::startRow(const char** attributes)
{
    const auto number = numberOf<std::uint64_t>(attributeOf(attributes, "r"));
    if (number && *number <= _row)
        throw WorkbookFault("row " + std::to_string(*number) + " is in the sheet twice");
    _row = number.value_or(_row + 1);
    _cells.clear();
    _nextColumn = 0;
}

void SheetReader::startCell(const char** attributes)
{
    const std::string_view reference = attributeOf(attributes, "r");
    _column = reference.empty() ? _nextColumn : columnOf(reference);
    if (_column < _nextColumn || _column >= kMostColumns)
        throw WorkbookFault("row " + std::to_string(_row) +
                            ": the cells are not in the order of their columns");
    _nextColumn = _column + 1;
    _type = attributeOf(attributes, "t");
    _style = numberOf<std::size_t>(attributeOf(attributes, "s")).value_or(0);
    _text.clear();
}

void SheetReader::endCell()
{
    if (_text.empty())
        return;
    CellValue found = value();
    if (!found.text.empty())
        _cells.push_back({_column, std::move(found)});
}

CellValue SheetReader::value()
{
    if (_type == "s")
        return sharedText();
    if (_type == "b")
        return {_text == "1" || _text == "true" ? "true" : "false", CsvKind::Text};
    if (_type == "e")
        return {};
    if (_type == "d")
        return isoValue(_text);
    if (_type == "str" || _type == "inlineStr") {
        CellValue found{{}, CsvKind::Text};
        appendCellText(found.text, _text);
        return found;
    }
    return numberValue();
}

CellValue SheetReader::sharedText() const
{
    const auto number = numberOf<std::size_t>(_text);
    if (!number || *number >= _workbook.strings().count())
        throw WorkbookFault("row " + std::to_string(_row) + ": a cell refers to text number " +
                            _text + ", which the workbook lacks");
    return {std::string(_workbook.strings().text(*number)), CsvKind::Text};
}

CellValue SheetReader::numberValue()
{
    const auto number = numberOf<double>(_text);
    if (!number || !std::isfinite(*number))
        return {_text, CsvKind::Text};
    const CellFormat format =
        _style < _workbook.formats().size() ? _workbook.formats()[_style] : CellFormat::Number;
    if (format != CellFormat::Number) {
        if (auto date = serialDate(*number, format, _workbook.is1904()))
            return *std::move(date);
        ++_impossibleDates;
        return {};
    }
    if (isPlainInteger(_text))
        return {_text, CsvKind::Integer};
    CellValue found;
    if (*number == std::trunc(*number) && std::abs(*number) < kExactIntegers) {
        found.kind = CsvKind::Integer;
        base::appendNumber(found.text, static_cast<std::int64_t>(*number));
    } else {
        found.kind = CsvKind::Real;
        base::appendNumber(found.text, *number);
    }
    return found;
}
