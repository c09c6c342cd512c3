#include "render/CellReader.h"

#include "render/KeyWalk.h"

bool CellReader::hasValues(const JsonValue& block)
{
    return block["cells"]["compactCells"]["value"].size() > 0;
}

void CellReader::readCells(const JsonValue& blocks)
{
    for (const JsonValue block : blocks) {
        readCompact(block["cells"]["compactCells"]);
        readSparse(block["cells"]["sparse"]);
    }
}

/// Reads values of neighbouring cells from a start key; a gap leaves its cell unchanged.
void CellReader::readCompact(const JsonValue& json)
{
    const JsonValue values = json["value"];
    KeyWalk walk = KeyWalk::from(_store.layout(), json["index"].text());
    for (const JsonValue value : values) {
        if (!walk.isAtKey())
            return;
        if (value.isText())
            _store.inRun(walk.key()).text = _store.keepText(value.text());
        else if (value.isNumber())
            _store.inRun(walk.key()).value = value.number();
        walk.next();
    }
}

/// Keys and values are two arrays. Pairs without a key or a number are ignored.
void CellReader::readSparse(const JsonValue& json)
{
    const JsonValue keys = json["index"];
    const JsonValue values = json["value"];
    auto value = values.begin();
    for (auto key = keys.begin(); key != keys.end() && value != values.end(); ++key, ++value)
        if ((*key).isText() && (*value).isNumber())
            _store.at((*key).text()).value = (*value).number();
}
