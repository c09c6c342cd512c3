#include "render/DictionaryReader.h"

#include "bridge/JsonImage.h"
#include "bridge/LocalRef.h"
#include "support/Conversions.h"

namespace {
std::string textOf(const JsonValue& object, const char* key)
{
    return std::string(object[key].text());
}

/// The decimal places of a format description; -1 if it has none. Time formats have none.
int decimalsOf(const JsonValue& description)
{
    int decimals = -1;
    for (const char* member : {"numberFormat", "decoratedFormat", "dateFormat"})
        decimals = description[member]["decimalPlaces"].integer(decimals);
    return decimals;
}

/// The storage of the field decides how the value is stored, whatever its form in the document.
void addLabel(dataField& field, const JsonValue& value, const std::string& label)
{
    const std::string text(value.text());
    if (value.isNumber())
        // Numeric keys of labels are integers; a fraction is written as a text.
        field.addValueLabel(static_cast<double>(value.integer()), label);
    else if (value.isText() && field.getStorage() != "string")
        field.addValueLabel(String2Double(text), label);
    else if (!text.empty())
        field.addValueLabel(text, label);
}
} // namespace

void DictionaryReader::read()
{
    const JsonImage image = JsonImage::of(_object, _dataModel);
    const JsonValue model = image.root();
    _dictionary.setName(textOf(model, "name"));
    int index = 0;
    const JsonValue fields = model["fields"];
    for (const JsonValue field : fields) {
        if (field)
            readField(field, index);
        ++index;
    }
}

void DictionaryReader::readField(const JsonValue& json, int index)
{
    dataField field;
    field.setName(textOf(json, "id"));
    field.setMeasurementLevel(textOf(json, "measurementLevel"));
    field.setStorage(textOf(json, "storage"));
    field.setRole(textOf(json, "role"));
    const std::string label = textOf(json, "label");
    field.setLabel(label.empty() ? field.getName() : label);
    const int decimals = decimalsOf(json["format"]);
    if (decimals >= 0)
        field.setDecimalPlaces(decimals);
    readLabels(json["valueLabels"], index, field);
    _dictionary.addField(field);
}

/// Values and labels are two arrays; the shorter one determines the number of pairs.
void DictionaryReader::readLabels(const JsonValue& json, int index, dataField& field)
{
    const JsonValue values = json["values"];
    const JsonValue labels = json["labels"];
    auto value = values.begin();
    auto label = labels.begin();
    for (int pair = 0; value != values.end() && label != labels.end(); ++value, ++label, ++pair) {
        const std::string text = labelText(*label, index, pair);
        if (*value && !text.empty())
            addLabel(field, *value, text);
    }
}

/// A label that is not a text is converted by Java's toString.
std::string DictionaryReader::labelText(const JsonValue& label, int fieldIndex, int labelIndex)
{
    if (!label || label.isText())
        return std::string(label.text());
    JNIEnv* const env = _object.getEnv();
    const LocalRef<> fields(env, _object.get(_dataModel, "fields"));
    const LocalRef<> field(env, _array.get(fields.get(), fieldIndex));
    const LocalRef<> pairs(env, _object.get(field.get(), "valueLabels"));
    const LocalRef<> labels(env, _object.get(pairs.get(), "labels"));
    return _object.toString(LocalRef<>(env, _array.get(labels.get(), labelIndex)).get());
}
