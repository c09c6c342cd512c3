#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "components/result/CellKey.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A category of a dimension: a leaf, or a group of others.
struct Category
{
    explicit Category(Json shown, std::vector<Category> inside = {})
        : text(std::move(shown)), members(std::move(inside))
    {
    }

    Json text; ///< a text item
    std::vector<Category> members;
};

/// A table of a result document, filled cell by cell: docs/result-document.md tells its form.
class PivotTable
{
public:
    /// One dimension, with its outermost categories in order.
    struct Dimension
    {
        Json text;        ///< a text item
        const char* role; ///< "row", "column" or "layer"
        std::vector<Category> categories;
    };
    using Places = std::vector<std::size_t>;

    /// `id` is not empty; `title` is a text item.
    PivotTable(std::string id, Json title, std::vector<Dimension> dimensions);

    /// The number of a footnote; the same text is one footnote.
    std::size_t footnote(const Json& text);
    void noteTitle(std::size_t footnote) { _titleNotes.push_back(footnote); }
    void addCaption(Json text) { _caption.push_back(std::move(text)); }

    /// The number at one leaf of each dimension; a cell without one is empty.
    void set(const Places& places, std::optional<double> value);
    /// A text item in place of a number.
    void setText(const Places& places, const Json& text);
    /// How cells are shown; places may be CellKeys::kAny. Formats of single cells hold over others.
    void format(const Places& places, const Json& format);
    void note(const Places& place, std::size_t footnote, const Json& format);

    Json json() const;

private:
    std::string _id;
    Json _title;
    std::vector<Dimension> _dimensions;
    CellKeys _keys;
    std::vector<Json> _footnotes;
    std::vector<std::size_t> _titleNotes;
    std::vector<Json> _caption;
    std::vector<std::optional<double>> _cells;
    std::vector<Json> _cellLabels; ///< what the numbers of cells that are texts stand for
    Json _wideFormats = Json::array();
    Json _cellFormats = Json::array();
};

} // namespace EmbeddedHV
