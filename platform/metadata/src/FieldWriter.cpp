#include "FieldWriter.h"

#include "DataModelText.h"
#include "DataModelWords.h"
#include "DatumKind.h"
#include "NumberText.h"
#include "base/NumberText.h"

namespace {

void addText(pugi::xml_node node, const char* attribute, const std::string& text)
{
    node.append_attribute(attribute) = escapeText(text).c_str();
}

// A value without a word gets no attribute; the reader then uses the default.
void addWord(pugi::xml_node node, const char* attribute, const char* word)
{
    if (word)
        node.append_attribute(attribute) = word;
}

void addTextElement(pugi::xml_node node, const char* element, const std::string& text)
{
    if (!text.empty())
        node.append_child(element).text() = escapeText(text).c_str();
}

void writeDatum(pugi::xml_node node, const CFDatum& datum, CFField::StorageType storage)
{
    if (datum.IsNull())
        return;
    // Write the kind only if it differs from the storage's default, so that documents are short.
    if (const DatumKind kind = kindOf(datum); kind != usualKind(storage))
        node.append_attribute(datamodel::kDatumType) = WordOf(kind);
    addText(node, datamodel::kDatum, datum.ToString(-1));
}

void writeValues(pugi::xml_node list, const std::vector<CFValue>& values,
                 CFField::StorageType storage)
{
    for (const CFValue& value : values) {
        pugi::xml_node node = list.append_child(datamodel::kValue);
        writeDatum(node, value.GetDatum(), storage);
        if (!value.GetLabel().empty())
            addText(node, datamodel::kValueLabel, value.GetLabel());
        if (value.GetProperty() != CFValue::Valid)
            node.append_attribute(datamodel::kProperty) = value.GetProperty();
        if (value.GetOrder() != 0)
            node.append_attribute(datamodel::kOrder) = value.GetOrder();
    }
}

void writeRange(pugi::xml_node parent, const CFRange& range, CFField::StorageType storage)
{
    if (range.IsEmpty())
        return;
    pugi::xml_node node = parent.append_child(datamodel::kRange);
    if (!range.GetLower().IsNull())
        writeDatum(node.append_child(datamodel::kLower), range.GetLower(), storage);
    if (!range.GetUpper().IsNull())
        writeDatum(node.append_child(datamodel::kUpper), range.GetUpper(), storage);
}

void writeMissingValues(pugi::xml_node parent, const CFMissingValues& missing,
                        CFField::StorageType storage)
{
    if (!missing.IsValid())
        return;
    pugi::xml_node node = parent.append_child(datamodel::kMissingValues);
    node.append_attribute(datamodel::kNullMissing) = missing.IsNullMissing();
    node.append_attribute(datamodel::kWhiteSpMissing) = missing.IsWhiteSpMissing();
    writeRange(node, missing.GetRange(), storage);
    writeValues(node, missing.GetValues(), storage);
}

void writeFormat(pugi::xml_node parent, const CFFormat& format)
{
    pugi::xml_node node = parent.append_child(datamodel::kFormat);
    node.append_attribute(datamodel::kFormatType) = static_cast<unsigned>(format.GetType());
    node.append_attribute(datamodel::kFormatWidth) = static_cast<unsigned>(format.GetWidth());
    node.append_attribute(datamodel::kFormatDecimals) = static_cast<unsigned>(format.GetDecimals());
}

void writeEnvelope(pugi::xml_node parent, const CFGeo::Envelope& envelope)
{
    pugi::xml_node node = parent.append_child(datamodel::kEnvelope);
    addText(node, datamodel::kLeftUpperX, base::shortestNumber(envelope.leftUpperX));
    addText(node, datamodel::kLeftUpperY, base::shortestNumber(envelope.leftUpperY));
    addText(node, datamodel::kRightLowerX, base::shortestNumber(envelope.rightLowerX));
    addText(node, datamodel::kRightLowerY, base::shortestNumber(envelope.rightLowerY));
}

void writeGeo(pugi::xml_node parent, const CFGeo& geo)
{
    pugi::xml_node node = parent.append_child(datamodel::kGeo);
    addWord(node, datamodel::kGeoType, WordOf(geo.GetType()));
    node.append_attribute(datamodel::kCoordinates) = geo.GetCoordinates();
    node.append_attribute(datamodel::kWkid) = geo.GetWkid();
    if (!geo.GetCsname().empty())
        addText(node, datamodel::kCsname, geo.GetCsname());
    node.append_attribute(datamodel::kIsProjected) = geo.IsProjected();
    addTextElement(node, datamodel::kWkt, geo.GetWkt());
    if (geo.GetEnvelope())
        writeEnvelope(node, *geo.GetEnvelope());
}

void writeValueList(pugi::xml_node parent, const char* element, const std::vector<CFValue>& values,
                    CFField::StorageType storage)
{
    if (!values.empty())
        writeValues(parent.append_child(element), values, storage);
}

void writeAttributes(pugi::xml_node node, const CFField& field)
{
    addText(node, datamodel::kName, field.GetName());
    const char* storage = WordOf(field.GetStorage());
    node.append_attribute(datamodel::kStorage) = storage ? storage : datamodel::kUnknownStorage;
    addWord(node, datamodel::kMeasure, WordOf(field.GetType()));
    addWord(node, datamodel::kRole, WordOf(field.GetRole()));
}

} // namespace

void writeField(pugi::xml_node parent, const char* element, const CFField& field)
{
    pugi::xml_node node = parent.append_child(element);
    writeAttributes(node, field);
    addTextElement(node, datamodel::kLabel, field.GetLabel());
    if (field.GetPrivateFormat())
        writeFormat(node, *field.GetPrivateFormat());
    const CFField::StorageType storage = field.GetStorage();
    writeValueList(node, datamodel::kValues, field.GetValues(), storage);
    writeValueList(node, datamodel::kValueLabels, field.GetValueLabels(), storage);
    writeMissingValues(node, field.GetMissingValues(), storage);
    if (field.GetGeo() && WordOf(field.GetGeo()->GetType()))
        writeGeo(node, *field.GetGeo());
    if (field.GetBaseField())
        writeField(node, datamodel::kBaseField, *field.GetBaseField());
}
