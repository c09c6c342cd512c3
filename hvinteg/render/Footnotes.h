#pragma once

#include <memory>
#include <vector>

#include "TnAnnotation.h"
#include "TnCellText.h"
#include "bridge/JsonValue.h"
#include "render/TextItems.h"

/// The footnotes of a table. Those that give no text leave no gap: what follows moves up.
class Footnotes
{
public:
    void read(const JsonValue& items, const TextItems& texts, bool translate);

    /// Gives a part of the table, or its title or caption, its notes. Indexes outside the list are
    /// passed over.
    template <class Function>
    void forEach(const std::vector<int>& indexes, Function give) const
    {
        for (const int index : indexes)
            if (index >= 0 && static_cast<std::size_t>(index) < _texts.size())
                give(noteOf(*_texts[static_cast<std::size_t>(index)]));
    }
    /// The indexes that an array holds; what is no number in it does not count.
    static std::vector<int> indexesOf(const JsonValue& array);

private:
    static TnAnnotation noteOf(const TnCellText& text);

    std::vector<std::unique_ptr<TnCellText>> _texts;
};
