#include "report/page/TableMarkup.h"

#include <ostream>

#include <nlohmann/json.hpp>

#include "report/document/PageText.h"
#include "report/page/TableBody.h"

namespace {

constexpr std::size_t kLongTable = 40;
constexpr std::size_t kManyColumns = 9;
/// More columns than a portrait page can hold.
constexpr std::size_t kLandscapeColumns = 16;

/// A table with its axes and the current layer.
class TableWriter
{
public:
    TableWriter(std::ostream& out, const OutputTable& table, const std::string& anchor)
        : _out(out), _table(table), _anchor(anchor), _rows(table, TnDimension::Row),
          _columns(table, TnDimension::Column), _layers(table, TnDimension::Layer),
          _notes(table, anchor), _heads(_layers.heads())
    {
        for (std::size_t head = 0; head < _heads.size(); ++head)
            _categories.push_back(_layers.categories(head));
    }

    void write()
    {
        _out << "<figure class=\"" << classes() << "\" id=\"" << _anchor << "\"";
        if (!_heads.empty())
            _out << " data-layers=\"" << escaped(layerList()) << "\"";
        _out << ">\n";
        for (std::size_t layer = 0; layer < _layers.size(); ++layer)
            writeLayer(layer);
        writeFoot();
        _out << "</figure>\n";
    }

private:
    std::string classes() const
    {
        const std::string width = widthClass(_table);
        return "table" + std::string(width.empty() ? "" : " ") + width +
               (_table.notes.empty() ? "" : " noted") +
               (_rows.size() > kLongTable ? " long-table" : "") +
               (_rows.levels() == 1 ? " one-stub" : "") +
               (_columns.size() >= kManyColumns ? " wide-table" : "") +
               (_columns.size() >= kLandscapeColumns ? " landscape" : "");
    }

    /// The options of the selects: names and categories of the layer dimensions.
    std::string layerList() const
    {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (std::size_t head = 0; head < _heads.size(); ++head)
            list.push_back({{"name", _heads[head].dimension->name.text},
                            {"hidesName", _heads[head].dimension->hidesName},
                            {"categories", _categories[head]}});
        return list.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
    }

    void writeLayer(std::size_t layer)
    {
        const std::string anchor = _anchor + (layer > 0 ? "l" + std::to_string(layer) : "");
        TableGrid grid{_table, _rows, _columns, _notes, anchor + "-", {}, false};
        // The scopes of labels are sufficient for two levels: each outer label has a body or a
        // group of columns of its own.
        grid.named = _rows.levels() > 2 || _columns.levels() > 2;
        grid.layer.assign(_table.dimensions.size(), 0);
        _layers.setAddress(layer, grid.layer);
        _out << "<div class=\"grid\"" << layerPlace(layer) << ">\n<table class=\"data\">\n";
        writeCaption(layer);
        if (_columns.levels() == 2 && !grid.named)
            writeColumnGroups();
        writeTableHead(_out, grid);
        writeTableBody(_out, grid);
        _out << "</table>\n</div>\n";
    }

    void writeColumnGroups()
    {
        if (_rows.levels() > 0)
            _out << "<colgroup span=\"" << _rows.levels() << "\"></colgroup>";
        for (std::size_t at = 0; at < _columns.size();) {
            const std::optional<AxisLabel> label = _columns.labelAt(at, 0);
            const std::size_t span = label ? label->span : 1;
            _out << "<colgroup span=\"" << span << "\"></colgroup>";
            at += span;
        }
        _out << "\n";
    }

    std::string layerPlace(std::size_t layer) const
    {
        std::string places;
        for (std::size_t head = 0; head < _heads.size(); ++head)
            places += (places.empty() ? "" : " ") + std::to_string(_layers.categoryAt(head, layer));
        return places.empty() ? "" : " data-layer=\"" + places + "\"";
    }

    void writeCaption(std::size_t layer)
    {
        _out << "<caption" << (_table.hidesTitle ? " class=\"unseen\"" : "") << ">"
             << isolated(_table.title.text) << _notes.marks(_table.titleNotes);
        for (const auto& [name, value] : _table.splitGroup)
            writeDetail(name, value);
        for (std::size_t head = 0; head < _heads.size(); ++head)
            writeLayerDetail(layer, head, *_heads[head].dimension);
        _out << "</caption>\n";
    }

    void writeLayerDetail(std::size_t layer, std::size_t head, const OutputDimension& dimension)
    {
        const std::string& category = _categories[head][_layers.categoryAt(head, layer)];
        if (!dimension.hidesName || !category.empty())
            writeDetail(dimension.hidesName ? "" : dimension.name.text, category,
                        _notes.marks(dimension.notes));
    }

    void writeDetail(const std::string& name, const std::string& value,
                     const std::string& marks = {})
    {
        _out << " <span class=\"detail\">";
        if (!name.empty())
            _out << labelText(name) << marks << (value.empty() ? "" : ": ");
        _out << labelText(value) << "</span>";
    }

    void writeFoot()
    {
        if (_table.caption && !_table.caption->text.empty())
            _out << "<p class=\"remark\">" << isolated(_table.caption->text)
                 << _notes.marks(_table.captionNotes) << "</p>\n";
        _notes.write(_out);
    }

    std::ostream& _out;
    const OutputTable& _table;
    std::string _anchor;
    TableAxis _rows;
    TableAxis _columns;
    TableAxis _layers;
    TableNotes _notes;
    std::vector<TableAxis::Head> _heads;               ///< of the layers
    std::vector<std::vector<std::string>> _categories; ///< of the layers
};

} // namespace

std::string widthClass(const OutputTable& table)
{
    if (!table.maxDataColumnWidth && !table.minDataColumnWidth)
        return {};
    return "width" + std::to_string(table.maxDataColumnWidth.value_or(0)) + "to" +
           std::to_string(table.minDataColumnWidth.value_or(0));
}

std::string widthRule(const OutputTable& table)
{
    std::string rule;
    if (table.maxDataColumnWidth && *table.maxDataColumnWidth > 0)
        rule += "max-width:" + std::to_string(*table.maxDataColumnWidth) + "pt;";
    if (table.minDataColumnWidth && *table.minDataColumnWidth > 0)
        rule += "min-width:" + std::to_string(*table.minDataColumnWidth) + "pt;";
    return "." + widthClass(table) + " tbody td{" + rule + "}\n";
}

void writeTable(std::ostream& out, const OutputTable& table, const std::string& anchor)
{
    TableWriter(out, table, anchor).write();
}
