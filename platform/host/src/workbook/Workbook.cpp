#include "workbook/Workbook.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "base/AsciiText.h"
#include "base/ListText.h"
#include "workbook/WorkbookFault.h"
#include "workbook/XmlNames.h"

namespace {

/// A relation of a part to another one.
struct Relation
{
    std::string type; ///< the last component of its address
    std::string part;
};

std::string folderOf(const std::string& part)
{
    return part.substr(0, part.rfind('/') + 1);
}

/// The part that a relation of a part in `folder` names.
std::string targetIn(std::string folder, std::string target)
{
    if (target.starts_with('/'))
        return target.substr(1);
    for (; target.starts_with("../"); target.erase(0, 3)) {
        if (!folder.empty())
            folder.pop_back();
        folder = folderOf(folder);
    }
    return folder + target;
}

/// The relations of a part by their ids; those of the whole workbook for an empty name.
std::map<std::string, Relation> relationsOf(const WorkbookPackage& package, const std::string& part)
{
    const std::string folder = folderOf(part);
    std::map<std::string, Relation> relations;
    const std::string name = folder + "_rels/" + part.substr(folder.size()) + ".rels";
    if (!package.has(name))
        return relations;
    const pugi::xml_document document = parsedXml(package.content(name));
    for (const pugi::xml_node& node : document.document_element()) {
        const std::string type = attributeNamed(node, "Type");
        relations[attributeNamed(node, "Id")] = {type.substr(type.rfind('/') + 1),
                                                 targetIn(folder, attributeNamed(node, "Target"))};
    }
    return relations;
}

/// The part of the first relation with this type. Empty if no relation has it.
std::string partOfType(const std::map<std::string, Relation>& relations, const std::string& type)
{
    const auto found = std::ranges::find_if(
        relations, [&](const auto& entry) { return entry.second.type == type; });
    return found == relations.end() ? std::string() : found->second.part;
}

bool isTrue(const std::string& word)
{
    return word == "1" || word == "true";
}

} // namespace

Workbook::Workbook(const std::string& path) : _package(path)
{
    const std::string part = partOfType(relationsOf(_package, ""), "officeDocument");
    if (part.ends_with(".bin"))
        throw WorkbookFault("this is an xlsb workbook; save it as xlsx");
    if (part.empty() || !_package.has(part))
        throw WorkbookFault("this is not an xlsx workbook, or it is cut short");
    readSheets(part);
}

void Workbook::readSheets(const std::string& part)
{
    const auto relations = relationsOf(_package, part);
    const pugi::xml_document document = parsedXml(_package.content(part));
    const pugi::xml_node root = document.document_element();
    _is1904 = isTrue(attributeNamed(childNamed(root, "workbookPr"), "date1904"));
    for (const pugi::xml_node& sheet : childNamed(root, "sheets")) {
        const auto target = relations.find(attributeNamed(sheet, "id"));
        // Charts can also be sheets.
        if (target != relations.end() && target->second.type == "worksheet")
            _sheets.push_back({attributeNamed(sheet, "name"), target->second.part,
                               !attributeNamed(sheet, "state").empty() &&
                                   attributeNamed(sheet, "state") != "visible"});
    }
    if (const std::string styles = partOfType(relations, "styles"); !styles.empty())
        _formats = cellFormats(_package.content(styles));
    if (const std::string texts = partOfType(relations, "sharedStrings"); !texts.empty())
        _strings = SharedStrings(_package, texts);
}

const std::string& Workbook::sheetPart(const std::string& wanted) const
{
    if (_sheets.empty())
        throw WorkbookFault("the workbook has no sheet");
    auto found = _sheets.end();
    if (wanted.empty()) {
        found = std::ranges::find(_sheets, false, &Sheet::isHidden);
        return found == _sheets.end() ? _sheets.front().part : found->part;
    }
    found = std::ranges::find(_sheets, wanted, &Sheet::name);
    if (found != _sheets.end())
        return found->part;
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
    if (error == std::errc() && end == wanted.data() + wanted.size() && number > 0 &&
        number <= _sheets.size())
        return _sheets[number - 1].part;
    throw WorkbookFault("there is no sheet \"" + wanted + "\"; the sheets are " +
                        base::quotedList(_sheets, &Sheet::name));
}
