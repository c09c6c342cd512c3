#include "FieldReader.h"

#include <cstdint>

#include "DataModelWords.h"
#include "ValueReader.h"

namespace {

CFField::FieldType defaultMeasure(CFField::StorageType storage)
{
    if (storage == CFField::Unknown)
        return CFField::Typeless;
    return storage == CFField::String ? CFField::Nominal : CFField::Continuous;
}

CFField::StorageType readStorage(const NodeReader& reader, pugi::xml_node node)
{
    if (reader.required(node, datamodel::kStorage) == datamodel::kUnknownStorage)
        return CFField::Unknown;
    return reader.wordOr(node, datamodel::kStorage, CFField::Unknown);
}

CFFormat readFormat(const NodeReader& reader, pugi::xml_node node)
{
    return {reader.integerOr<std::uint8_t>(node, datamodel::kFormatType, 0),
            reader.integerOr<std::uint16_t>(node, datamodel::kFormatWidth, 0),
            reader.integerOr<std::uint8_t>(node, datamodel::kFormatDecimals, 0)};
}

CFGeo::Envelope readEnvelope(const NodeReader& reader, pugi::xml_node node)
{
    return {reader.requiredReal(node, datamodel::kLeftUpperX),
            reader.requiredReal(node, datamodel::kLeftUpperY),
            reader.requiredReal(node, datamodel::kRightLowerX),
            reader.requiredReal(node, datamodel::kRightLowerY)};
}

CFGeo readGeo(const NodeReader& reader, pugi::xml_node node)
{
    reader.required(node, datamodel::kGeoType);
    CFGeo geo(reader.wordOr(node, datamodel::kGeoType, CFGeo::Point),
              reader.integerOr<int>(node, datamodel::kCoordinates, 0));
    geo.SetCoordinateSystem(reader.integerOr<int>(node, datamodel::kWkid, -1),
                            NodeReader::textOr(node, datamodel::kCsname),
                            reader.flagOr(node, datamodel::kIsProjected, false),
                            textOf(node.child(datamodel::kWkt)));
    if (const pugi::xml_node envelope = node.child(datamodel::kEnvelope))
        geo.SetEnvelope(readEnvelope(reader, envelope));
    return geo;
}

void readValueLists(const NodeReader& reader, pugi::xml_node node, CFField& field)
{
    const ValueReader values(reader, field.GetStorage());
    field.SetValues(values.readValues(node.child(datamodel::kValues)));
    field.SetValueLabels(values.readValues(node.child(datamodel::kValueLabels)));
    field.SetMissingValues(values.readMissingValues(node.child(datamodel::kMissingValues)));
}

} // namespace

// NOLINTNEXTLINE(misc-no-recursion): the nesting of elements is limited.
CFField readField(const NodeReader& reader, pugi::xml_node node)
{
    const std::string name = reader.required(node, datamodel::kName);
    if (name.empty())
        reader.fail(std::string("<") + node.name() + "> has an empty name.", node);
    const CFField::StorageType storage = readStorage(reader, node);
    CFField field(name, reader.wordOr(node, datamodel::kMeasure, defaultMeasure(storage)), storage,
                  reader.wordOr(node, datamodel::kRole, CFField::Input));
    field.SetLabel(textOf(node.child(datamodel::kLabel)));
    if (const pugi::xml_node format = node.child(datamodel::kFormat))
        field.SetPrivateFormat(readFormat(reader, format));
    readValueLists(reader, node, field);
    if (const pugi::xml_node geo = node.child(datamodel::kGeo))
        field.SetGeo(readGeo(reader, geo));
    if (const pugi::xml_node base = node.child(datamodel::kBaseField))
        field.SetBaseField(readField(reader, base));
    return field;
}
