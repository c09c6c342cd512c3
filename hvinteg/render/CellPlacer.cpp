#include "render/CellPlacer.h"

#include "TnStrings.h"
#include "TnValues.h"
#include "VexaCases.h"

void CellPlacer::place(TnCategory& category, const Cell* cell, const CellStyle& style) const
{
    if (cell != nullptr)
        placeContent(category, *cell, style);
    if (style.footnotes != nullptr)
        _footnotes.forEach(*style.footnotes,
                           [&](const TnAnnotation& note) { category.CellNote(note); });
}

void CellPlacer::placeContent(TnCategory& category, const Cell& cell, const CellStyle& style) const
{
    if (cell.value != Cell::kNoValue)
        placeNumber(category, cell.value, style);
    else if (cell.text != 0)
        category.Cell(TnUTF8String(_labels.labelsOf(_store.textOf(cell))));
}

/// In a string format, a cell value is the number of a label.
bool CellPlacer::placeLabel(TnCategory& category, double value, const CellStyle& style) const
{
    if (style.format.type != kFormatString)
        return false;
    const auto label = _labels.labelOf(value);
    if (label)
        category.Cell(TnUTF8String(*label));
    return label.has_value();
}

void CellPlacer::placeNumber(TnCategory& category, double value, const CellStyle& style) const
{
    if (placeLabel(category, value, style))
        return;
    const VEXA_Format& format =
        style.format.type == CellFormat::kNoType ? CellFormat::generalNumber : style.format;
    // The host cannot show infinity.
    category.Cell(
        TnNumber(style.isInfinite ? kSystemMissing : CellFormat::toHostDate(value, format, true),
                 TnFormatSpec(format)));
}
