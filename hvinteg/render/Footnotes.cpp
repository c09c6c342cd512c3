#include "render/Footnotes.h"

#include <utility>

void Footnotes::read(const JsonValue& items, const TextItems& texts, bool translate)
{
    for (const JsonValue item : items)
        if (auto text = texts.cellTextOf(item, translate))
            _texts.push_back(std::move(text));
}

std::vector<int> Footnotes::indexesOf(const JsonValue& array)
{
    std::vector<int> indexes;
    for (const JsonValue index : array)
        if (index.isNumber())
            indexes.push_back(index.integer());
    return indexes;
}

TnAnnotation Footnotes::noteOf(const TnCellText& text)
{
    constexpr long kNoMarker = -1;
    return {TnHandle(text.Replicate()), TnHandle(kNoMarker), false};
}
