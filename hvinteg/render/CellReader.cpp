#include "render/CellReader.h"

#include "render/Footnotes.h"
#include "render/KeyWalk.h"

namespace {
/// A format without a type of its own keeps the cell's.
VEXA_Format formatOfType(std::uint8_t type)
{
    VEXA_Format format{CellFormat::kWidth, type, CellFormat::generalNumber.decimals};
    if (isTextFormat(format))
        format.decimals = 0;
    return format;
}
} // namespace

void CellReader::readFormats(const JsonValue& formats)
{
    for (const JsonValue entry : formats)
        readFormat(entry);
}

/// One entry: for the cell of its key, or for all cells of its pattern.
void CellReader::readFormat(const JsonValue& json)
{
    const std::string_view index = json["index"].text();
    if (index.empty())
        return;
    const Entry entry{CellFormat::formatOf(json["format"]), CellFormat::isInfinite(json["format"]),
                      _store.keepFootnotes(Footnotes::indexesOf(json["footnotes"]))};
    if (index.find(CellKey::kAny) == index.npos) {
        apply(entry, _store.at(index));
        return;
    }
    for (KeyWalk walk = KeyWalk::of(_store.layout(), index); walk.isAtKey(); walk.next())
        applyToPattern(entry, _store.at(walk.key()));
}

/// What the entry does not say stays as it was, but whether the number is infinite: that is said by
/// silence, too.
void CellReader::apply(const Entry& entry, Cell& cell)
{
    if (entry.format.type != CellFormat::kNoType)
        cell.format = entry.format;
    if (entry.footnotes != 0)
        cell.footnotes = entry.footnotes & 0x7FFFFFFFU;
    cell.infinite = entry.isInfinite ? 1 : 0;
}

void CellReader::applyToPattern(const Entry& entry, Cell& cell)
{
    if (entry.format.type == CellFormat::kNoType)
        cell.format = formatOfType(cell.format.type);
    apply(entry, cell);
}

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

/// Values of neighbouring cells, from a start on; a hole leaves its cell as it is.
void CellReader::readCompact(const JsonValue& json)
{
    const JsonValue values = json["value"];
    KeyWalk walk = KeyWalk::from(_store.layout(), json["index"].text());
    for (const JsonValue value : values) {
        if (!walk.isAtKey())
            return;
        if (value.isText())
            _store.at(walk.key()).text = _store.keepText(value.text());
        else if (value.isNumber())
            _store.at(walk.key()).value = value.number();
        walk.next();
    }
}

/// Keys and values stand in two lists; pairs that are not a key and a number are passed over.
void CellReader::readSparse(const JsonValue& json)
{
    const JsonValue keys = json["index"];
    const JsonValue values = json["value"];
    auto value = values.begin();
    for (auto key = keys.begin(); key != keys.end() && value != values.end(); ++key, ++value)
        if ((*key).isText() && (*value).isNumber())
            _store.at((*key).text()).value = (*value).number();
}
