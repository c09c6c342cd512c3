#pragma once

#include <memory>
#include <vector>

#include "TnAnnotation.h"
#include "TnCellText.h"
#include "bridge/JsonValue.h"
#include "render/TextItems.h"

/// The footnotes of a table. Items without a text are dropped, and the later ones move up.
class Footnotes
{
public:
    void read(const JsonValue& items, const TextItems& texts, bool translate);

    /// Calls `give` with each note of a part of the table, its title or its caption. Ignores
    /// indexes out of range.
    template <class Function>
    void forEach(const std::vector<int>& indexes, Function give) const
    {
        for (const int index : indexes)
            if (index >= 0 && static_cast<std::size_t>(index) < _texts.size())
                give(noteOf(*_texts[static_cast<std::size_t>(index)]));
    }
    /// The indexes in an array; elements that are not numbers are ignored.
    static std::vector<int> indexesOf(const JsonValue& array);

private:
    static TnAnnotation noteOf(const TnCellText& text);

    std::vector<std::unique_ptr<TnCellText>> _texts;
};
