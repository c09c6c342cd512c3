#include "ValueReader.h"

#include <cstdint>

#include "DataModelWords.h"
#include "DatumKind.h"

CFDatum ValueReader::readDatum(pugi::xml_node node) const
{
    const DatumKind kind = _reader.wordOr(node, datamodel::kDatumType, usualKind(_storage));
    if (!node.attribute(datamodel::kDatum))
        return {};
    switch (kind) {
    case DatumKind::Integer:
        return CFDatum(_reader.integerOr(node, datamodel::kDatum, std::int64_t{0}));
    case DatumKind::Real:
        return CFDatum(_reader.requiredReal(node, datamodel::kDatum));
    default:
        return CFDatum(NodeReader::textOr(node, datamodel::kDatum));
    }
}

std::vector<CFValue> ValueReader::readValues(pugi::xml_node list) const
{
    std::vector<CFValue> values;
    for (const pugi::xml_node node : list.children(datamodel::kValue))
        values.emplace_back(readDatum(node), NodeReader::textOr(node, datamodel::kValueLabel),
                            _reader.integerOr<int>(node, datamodel::kProperty, CFValue::Valid),
                            _reader.integerOr<int>(node, datamodel::kOrder, 0));
    return values;
}

CFRange ValueReader::readRange(pugi::xml_node node) const
{
    const pugi::xml_node lower = node.child(datamodel::kLower);
    const pugi::xml_node upper = node.child(datamodel::kUpper);
    return {lower ? readDatum(lower) : CFDatum(), upper ? readDatum(upper) : CFDatum()};
}

CFMissingValues ValueReader::readMissingValues(pugi::xml_node node) const
{
    if (!node)
        return {};
    return {readRange(node.child(datamodel::kRange)), readValues(node),
            _reader.flagOr(node, datamodel::kNullMissing, true),
            _reader.flagOr(node, datamodel::kWhiteSpMissing, false)};
}
