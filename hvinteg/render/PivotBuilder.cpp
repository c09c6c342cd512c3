#include "render/PivotBuilder.h"

#include <algorithm>

#include "render/CellLabels.h"
#include "render/CellPlacer.h"
#include "render/CellReader.h"
#include "render/DimensionReader.h"
#include "render/HostString.h"
#include "render/TableWalk.h"

namespace {
constexpr int kWidestDataColumn = 260;
}

std::unique_ptr<TnPivotTable> PivotBuilder::build(TnHeading& heading, const std::string& title,
                                                  bool translate, const std::string& subType)
{
    if (!isWhole())
        return nullptr;
    // First, since title, categories and cells all refer to them by number.
    _footnotes.read(_json["footnotes"], _texts, _settings.translates);
    _table.reset(heading.PivotTable(hostString(title, translate), hostString(subType, false),
                                    _settings.supportsSplits));
    setTitle();
    setCaption();
    setCornerAndWidths();
    fill();
    return std::move(_table);
}

bool PivotBuilder::isWhole() const
{
    const JsonValue blocks = _json["cells"];
    const bool isNamed = !_json["tableId"].text().empty() && _json["title"] && _json["dimensions"];
    if (!blocks || (!_json["footnotes"] && !isNamed))
        return false;
    bool hasValues = false;
    for (const JsonValue block : blocks)
        hasValues = hasValues || CellReader::hasValues(block);
    return hasValues;
}

void PivotBuilder::setTitle()
{
    const JsonValue title = _json["title"];
    if (!title["show"].flag(true))
        _table->HideTitle();
    _footnotes.forEach(Footnotes::indexesOf(title["text"]["footnotes"]),
                       [&](const TnAnnotation& note) { _table->Note(note); });
}

void PivotBuilder::setCaption()
{
    const JsonValue caption = _json["caption"];
    if (!_settings.caption.empty())
        _table->Caption(hostString(_settings.caption, false));
    else if (caption["show"].flag(true) && caption["text"].isArray())
        setOwnCaption(caption["text"]);
}

/// One line for each item. Only the last item's footnotes count.
void PivotBuilder::setOwnCaption(const JsonValue& items)
{
    std::string text;
    JsonValue last;
    bool isFirst = true;
    for (const JsonValue item : items) {
        text += (isFirst ? "" : "\n") + _texts.cellTextString(item);
        isFirst = false;
        last = item;
    }
    _table->Caption(TnUTF8String(text));
    _footnotes.forEach(Footnotes::indexesOf(last["text"]["footnotes"]),
                       [&](const TnAnnotation& note) { _table->CaptionNote(note); });
}

void PivotBuilder::setCornerAndWidths()
{
    if (const auto text = _texts.cellTextOf(_json["cornerText"]["text"], _settings.translates))
        _table->CornerText(*text);
    _table->MaxDataColumnWidth(_json["maxDataColumnWidth"].integer(kWidestDataColumn));
    const JsonValue least = _json["minDataColumnWidth"];
    if (least.isNumber())
        _table->MinDataColumnWidth(least.integer());
}

void PivotBuilder::fill()
{
    const JsonValue dimensions = _json["dimensions"];
    CellStore store(KeyLayout(DimensionReader::leafCounts(dimensions)));
    CellLabels labels;
    labels.read(_json["cellLabels"], _texts);
    CellReader reader(store);
    reader.readFormats(_json["formats"]);
    reader.readCells(_json["cells"]);

    DimensionReader dimensionReader(_texts, _settings);
    std::vector<PivotDimension> ready;
    for (const JsonValue dimension : dimensions)
        ready.push_back(dimensionReader.read(dimension, store.layout().segments()[ready.size()]));
    const CellPlacer placer(store, labels, _footnotes);
    TableWalk(*_table, ready, store, placer, _footnotes).run();
}
