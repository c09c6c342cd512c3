#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "components/result/CellKey.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A category of a dimension: a leaf, or a group of categories.
struct Category
{
    explicit Category(Json shown, std::vector<Category> inside = {})
        : text(std::move(shown)), members(std::move(inside))
    {
    }

    Json text; ///< a text item
    std::vector<Category> members;
};

/// A table of a result document, filled cell by cell. See docs/result-document.md.
class PivotTable
{
public:
    /// A dimension and its outermost categories, in order.
    struct Dimension
    {
        Json text;        ///< a text item
        const char* role; ///< "row", "column" or "layer"
        std::vector<Category> categories;
        bool hidesName = false;
    };
    using Places = std::vector<std::size_t>;

    /// `id` must not be empty; `title` is a text item.
    PivotTable(std::string id, Json title, std::vector<Dimension> dimensions);

    /// Adds a footnote and returns its number. The same text is added only once.
    std::size_t footnote(const Json& text);
    void noteTitle(std::size_t footnote) { _titleNotes.push_back(footnote); }
    void addCaption(Json text) { _caption.push_back(std::move(text)); }

    /// Sets the number of a cell. A cell without a number is empty.
    void set(const Places& places, std::optional<double> value);
    /// Sets a text item instead of a number.
    void setText(const Places& places, const Json& text);
    /// Sets the format of cells. Positions may be CellKeys::kAny. The format of a single cell takes
    /// precedence.
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
    std::vector<Json> _cellLabels; ///< the texts for the numbers of cells that show a text
    Json _wideFormats = Json::array();
    Json _cellFormats = Json::array();
};

} // namespace EmbeddedHV
