#include "engine/TableView.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace EngineTest {
namespace {

using nlohmann::json;

void addLeaves(const json& categories, const std::string& group, std::vector<std::string>& leaves)
{
    for (const json& category : categories) {
        const std::string name = group + shownText(category.at("text"));
        if (category.contains("children"))
            addLeaves(category["children"], name + "/", leaves);
        else
            leaves.push_back(name);
    }
}

bool matches(const std::string& index, const std::string& key)
{
    return index.size() == key.size() &&
           std::equal(index.begin(), index.end(), key.begin(),
                      [](char wanted, char digit) { return wanted == '*' || wanted == digit; });
}

} // namespace

std::string shownText(const json& item)
{
    const auto only = item.at("text").begin();
    const std::string& variant = only.key();
    const json& content = only.value();
    if (variant == "variableText")
        return content.at("variable");
    if (variant == "numericText" || variant == "numericDataText")
        return content.at("value").dump();
    if (variant != "compositeText")
        return content.at("value");
    std::string whole;
    for (const json& child : content.at("children"))
        whole += shownText(child);
    return whole;
}

TableView::TableView(json table) : _table(std::move(table))
{
    for (const json& dimension : _table.at("dimensions"))
        addLeaves(dimension.at("children"), "", _leaves.emplace_back());
}

std::vector<std::size_t> TableView::places(const std::vector<std::string>& leaves) const
{
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        const auto found = std::find(_leaves.at(i).begin(), _leaves[i].end(), leaves[i]);
        EXPECT_NE(found, _leaves[i].end()) << "no leaf " << leaves[i];
        result.push_back(static_cast<std::size_t>(found - _leaves[i].begin()));
    }
    return result;
}

std::string TableView::keyOf(const std::vector<std::string>& leaves) const
{
    const std::string digits = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ "
                               "%&()+,-./:;<=>?@[]^_`|~";
    std::string key;
    const std::vector<std::size_t> at = places(leaves);
    for (std::size_t i = 0; i < at.size(); ++i) {
        if (_leaves[i].size() > digits.size())
            key += digits[at[i] / digits.size()];
        key += digits[at[i] % digits.size()];
    }
    return key;
}

json TableView::cell(const std::vector<std::string>& leaves) const
{
    std::size_t position = 0;
    const std::vector<std::size_t> at = places(leaves);
    for (std::size_t i = 0; i < at.size(); ++i)
        position = position * _leaves[i].size() + at[i];
    return _table.at("cells").at(0).at("cells").at("compactCells").at("value").at(position);
}

json TableView::format(const std::vector<std::string>& leaves) const
{
    json last;
    for (const json& entry : _table.at("formats"))
        if (matches(entry.at("index"), keyOf(leaves)))
            last = entry.at("format");
    return last;
}

std::string TableView::notesOf(const json& numbers) const
{
    std::string text;
    for (const json& number : numbers)
        text += (text.empty() ? "" : "\n") +
                shownText(_table.at("footnotes").at(number.get<std::size_t>()));
    return text;
}

std::string TableView::notes(const std::vector<std::string>& leaves) const
{
    json last;
    for (const json& entry : _table.at("formats"))
        if (matches(entry.at("index"), keyOf(leaves)) && entry.contains("footnotes"))
            last = entry["footnotes"];
    return notesOf(last);
}

std::string TableView::titleNotes() const
{
    return notesOf(_table.at("title").at("text").value("footnotes", json()));
}

} // namespace EngineTest
