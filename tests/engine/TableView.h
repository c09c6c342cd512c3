#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace EngineTest {

/// The English of a text item: names of fields as they are, values as JSON writes them.
std::string shownText(const nlohmann::json& item);

/// A table of a result document, read cell by cell. A leaf is named by its labels from the
/// outermost group on, with slashes; a cell by its leaves in the order of the dimensions.
class TableView
{
public:
    explicit TableView(nlohmann::json table);

    /// All leaves of a dimension.
    const std::vector<std::string>& leaves(std::size_t dimension) const
    {
        return _leaves[dimension];
    }
    /// A number, or null.
    nlohmann::json cell(const std::vector<std::string>& leaves) const;
    nlohmann::json format(const std::vector<std::string>& leaves) const;
    /// The footnotes of a cell, and of the title, one a line.
    std::string notes(const std::vector<std::string>& leaves) const;
    std::string titleNotes() const;

private:
    std::vector<std::size_t> places(const std::vector<std::string>& leaves) const;
    std::string keyOf(const std::vector<std::string>& leaves) const;
    std::string notesOf(const nlohmann::json& numbers) const;

    nlohmann::json _table;
    std::vector<std::vector<std::string>> _leaves;
};

} // namespace EngineTest
