#include "render/PivotBuilder.h"

#include "TnOutput.h"
#include "render/CellLabels.h"
#include "render/CellPlacer.h"
#include "render/CellReader.h"
#include "render/CellStyles.h"
#include "render/HostString.h"
#include "render/TableWalk.h"

namespace {
constexpr int kWidestDataColumn = 260;
/// Limit for categories and cells. A short document can request any number, but larger tables
/// cannot be read or shown in a page.
constexpr std::uint64_t kMostDeclared = 10'000'000;
} // namespace

std::unique_ptr<TnPivotTable> PivotBuilder::build(TnHeading& heading, const std::string& title,
                                                  bool translate, const std::string& subType)
{
    if (!isWhole())
        return nullptr;
    readDimensions();
    if (TableWalk::length(_dimensions) > kMostDeclared) {
        refuse(title, translate);
        return nullptr;
    }
    // First: title, categories and cells refer to footnotes by number.
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

void PivotBuilder::readDimensions()
{
    DimensionReader reader(_texts, _settings);
    for (const JsonValue dimension : _json["dimensions"])
        _dimensions.push_back(reader.read(dimension, _layout.segments()[_dimensions.size()]));
}

/// Tells the user why the table is missing.
void PivotBuilder::refuse(const std::string& title, bool translate) const
{
    TnComposite text("The table \"^1\" is not shown: it has more than ^2 cells.", true);
    if (title.empty())
        text.Add(TnUTF8String(std::string(_json["tableId"].text())));
    else
        text.Add(hostString(title, translate));
    text.Add(TnUTF8String(std::to_string(kMostDeclared)));
    text.Finish();
    TnError(text, kShowInOutput, kLevelWarning);
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

/// One line for each item. Only the footnotes of the last item are used.
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
    CellStore store(_layout);
    CellLabels labels;
    labels.read(_json["cellLabels"], _texts);
    CellStyles styles(_layout);
    styles.read(_json["formats"]);
    CellReader(store).readCells(_json["cells"]);
    const CellPlacer placer(store, labels, _footnotes);
    TableWalk(*_table, _dimensions, store, styles, placer, _footnotes).run();
}
