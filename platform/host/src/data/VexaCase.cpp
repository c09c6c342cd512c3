#include "UserCaseFile.h"
#include "VexaCases.h"
#include "data/CaseText.h"

VEXA_Case::VEXA_Case(const IndependentDataStore* store, OBS* buffer) : _buffer(buffer)
{
    std::size_t offset = 0;
    for (int column = 0; column < store->ColumnCount(); ++column) {
        _widths.push_back(store->GetVariable(column).GetType());
        _offsets.push_back(offset);
        offset += unitsOfWidth(_widths.back());
    }
}

void VEXA_Case::SetNumericValue(int column, double value)
{
    _buffer[_offsets[at(column)]].number = value;
}

void VEXA_Case::SetStringValue(int column, const char* text, int width)
{
    const std::size_t units = unitsOfWidth(_widths[at(column)]);
    const auto given = static_cast<std::size_t>(std::max(width, 0));
    const auto most = static_cast<std::size_t>(_widths[at(column)]);
    putText(_buffer + _offsets[at(column)], units, {text, std::min(given, most)});
}
