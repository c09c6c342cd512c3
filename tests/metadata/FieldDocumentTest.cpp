#include <cmath>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>

#include <gtest/gtest.h>

#include "CFMetaData.h"

// What a field holds, in the document and back.

namespace {

constexpr double kPositiveInfinity = std::numeric_limits<double>::infinity();

CFField realField()
{
    return {"x", CFField::Continuous, CFField::Real};
}

std::vector<CFValue> valuesOfEveryKind()
{
    return {CFValue(CFDatum(1.0), "one", 0, 0),
            CFValue(CFDatum(0.1), "", CFValue::Invalid, -3),
            CFValue(CFDatum(-kPositiveInfinity)),
            CFValue(CFDatum(1e-320)),
            CFValue(CFDatum(std::numeric_limits<std::int64_t>::min()), "least", 99, 1),
            CFValue(CFDatum(7)),
            CFValue(CFDatum(" a\t<\"&'\n\x01 "), " tab\t\"quote\" \r\n "),
            CFValue(CFDatum(""), "empty"),
            CFValue(CFDatum(), "null", CFValue::Missing)};
}

std::string documentOf(const CFMetaData& model)
{
    std::string xml = "left over";
    model.ExportXMLDoc(xml);
    return xml;
}

std::string documentOf(const CFField& field)
{
    CFMetaData model;
    model.AppendField(field);
    return documentOf(model);
}

std::string docsExample()
{
    std::ifstream file(HV_DATA_MODEL_DOCS);
    const std::string docs{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string fence = "```xml\n";
    const std::size_t begin = docs.find(fence) + fence.size();
    return docs.substr(begin, docs.find("```", begin) - begin);
}

CFField withMissing(CFRange range, std::vector<CFValue> values, bool null, bool whiteSpace)
{
    CFField field = realField();
    field.SetMissingValues(CFMissingValues(std::move(range), std::move(values), null, whiteSpace));
    return field;
}

CFField withGeo(const std::function<void(CFGeo&)>& configure)
{
    CFField field = realField();
    CFGeo geo(CFGeo::MultiPolygon, 3);
    configure(geo);
    field.SetGeo(geo);
    return field;
}

} // namespace

TEST(FieldDocument, EveryPropertySurvivesAndIsWrittenTheSame)
{
    std::vector<CFField> fields;
    for (int storage = 0; storage < 7; ++storage) {
        CFField& field =
            fields.emplace_back("x", CFField::Nominal, static_cast<CFField::StorageType>(storage));
        field.SetValues(valuesOfEveryKind());
        field.SetValueLabels(valuesOfEveryKind());
        field.SetMissingValues(
            CFMissingValues(CFRange(CFDatum("a"), CFDatum(3.5)), valuesOfEveryKind(), false, true));
    }
    fields.emplace_back(realField()).SetPrivateFormat(CFFormat());
    fields.emplace_back(realField()).SetPrivateFormat(CFFormat(255, 65535, 254));
    fields.push_back(withMissing({}, {}, true, false));
    fields.push_back(withMissing({}, {}, false, false));
    fields.push_back(withMissing(CFRange(CFDatum(-1.5), CFDatum()), {}, true, true));
    fields.push_back(withMissing(CFRange(CFDatum(), CFDatum(9)), {CFValue()}, true, false));
    for (int type = 0; type < 6; ++type)
        fields.emplace_back(realField()).SetGeo(CFGeo(static_cast<CFGeo::Type>(type), -type));
    fields.push_back(withGeo([](CFGeo& geo) {
        geo.SetCoordinateSystem(3857, "Pseudo \"M\"\x01", true, "PROJCS[\"<a>\"\n  ]");
        geo.SetEnvelope({-20037508.342789244, 0.1, kPositiveInfinity, -1e-300});
    }));
    fields.push_back(withGeo([](CFGeo& geo) { geo.SetCoordinateSystem(0, "", false, " "); }));
    CFField inner("code", CFField::Ordinal, CFField::Integer, CFField::Target);
    inner.SetBaseField(fields.front());
    fields.emplace_back(realField()).SetBaseField(inner);
    // Each differs from the first in one property.
    fields.push_back(realField());
    fields.emplace_back("X", CFField::Continuous, CFField::Real);
    fields.emplace_back("x", CFField::Flag, CFField::Real);
    fields.emplace_back("x", CFField::Continuous, CFField::Date);
    fields.emplace_back("x", CFField::Continuous, CFField::Real, CFField::Target);
    fields.emplace_back(realField()).SetLabel("label");
    fields.emplace_back(realField()).SetValues({CFValue()});
    fields.emplace_back(realField()).SetValueLabels({CFValue()});
    fields.emplace_back(realField()).SetBaseField(realField());

    for (const CFField& field : fields) {
        const std::string xml = documentOf(field);
        const CFMetaData read(xml);
        EXPECT_TRUE(*read.GetField(0U) == field) << xml;
        EXPECT_EQ(documentOf(read), xml);
        for (const CFField& other : fields)
            EXPECT_EQ(field == other, &field == &other) << xml << documentOf(other);
    }
}

TEST(FieldDocument, TheDocumentedExampleIsWhatIsWritten)
{
    const std::string example = docsExample();
    const CFMetaData model(example);
    EXPECT_EQ(documentOf(model), example);
    ASSERT_EQ(model.FieldCount(), 4U);

    const CFField& age = *model.GetField("age");
    EXPECT_EQ(*age.GetPrivateFormat(), CFFormat(5, 3, 0));
    EXPECT_EQ(age.GetMissingValues(),
              CFMissingValues(CFRange(CFDatum(120), CFDatum()), {CFValue(CFDatum(-1), "refused")},
                              true, false));
    const CFField& sex = *model.GetField("sex");
    EXPECT_EQ(sex.GetValues().size(), 2U);
    EXPECT_EQ(sex.GetValueLabels()[2], CFValue(CFDatum("x"), "not told"));
    EXPECT_FALSE(sex.GetMissingValues().IsValid());
    const CFGeo& place = *model.GetField("place")->GetGeo();
    EXPECT_EQ(place.GetWkid(), 4326);
    EXPECT_EQ(place.GetWkt(), "GEOGCS[\"WGS 84\"]");
    EXPECT_EQ(place.GetEnvelope()->rightLowerX, 33);
    EXPECT_EQ(model.GetField("region")->GetBaseField()->GetStorage(), CFField::String);
    EXPECT_EQ(age.GetBaseField(), nullptr);
    EXPECT_EQ(model.GetField("Age"), nullptr);
}

TEST(FieldDocument, WhatNoDocumentTellsIsLeftOut)
{
    CFField field = withGeo([](CFGeo& geo) {
        geo.SetEnvelope({1, 2, 3, 4});
        geo.SetEnvelope({0, 0, std::nan(""), 0});
    });
    EXPECT_FALSE(CFMetaData(documentOf(field)).GetField(0U)->GetGeo()->GetEnvelope());
    field.SetGeo(CFGeo(static_cast<CFGeo::Type>(6)));
    field.SetValues({CFValue(CFDatum(std::nan("")))});
    const CFMetaData read(documentOf(field));
    EXPECT_EQ(read.GetField(0U)->GetGeo(), nullptr);
    EXPECT_TRUE(read.GetField(0U)->GetValues().at(0).GetDatum().IsNull());
}

TEST(FieldDocument, AbsentAttributesHaveTheirDefaults)
{
    const CFMetaData model("<DataModel><Field name='x' storage='date'><MissingValues><Range/>"
                           "<Value/><Note/></MissingValues><Values/><Geo type='Point'/><Format/>"
                           "<Geo type='Polygon'/></Field></DataModel>");
    const CFField& field = *model.GetField(0U);
    EXPECT_EQ(field.GetMissingValues(), CFMissingValues(CFRange(), {CFValue()}, true, false));
    EXPECT_EQ(*field.GetGeo(), CFGeo(CFGeo::Point));
    EXPECT_EQ(field.GetGeo()->GetWkid(), -1);
    EXPECT_EQ(*field.GetPrivateFormat(), CFFormat());
}

TEST(FieldDocument, WhatIsInAFieldMustBeRight)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<Values><Value value='1.5x'/></Values>", "is \"1.5x\", not a number"},
        {"<Values><Value value=''/></Values>", "not a number"},
        {"<Values><Value value=' 1'/></Values>", "not a number"},
        {"<Values><Value value='1,5'/></Values>", "not a number"},
        {"<Values><Value value='0x10'/></Values>", "not a number"},
        {"<Values><Value value='nan'/></Values>", "not a number"},
        {"<Values><Value value='1e999'/></Values>", "not a number"},
        {"<Values><Value type='integer' value='1.0'/></Values>", "not a whole number"},
        {"<Values><Value type='integer' value='9223372036854775808'/></Values>", "not a whole"},
        {"<ValueLabels><Value type='date' value='1'/></ValueLabels>", "\"type\" of <Value>"},
        {"<Values><Value value='1' property='x'/></Values>", "\"property\" of <Value> is \"x\""},
        {"<Values><Value value='1' order='2147483648'/></Values>", "\"order\" of <Value>"},
        {"<MissingValues nullMissing='yes'/>", "not true or false"},
        {"<MissingValues><Range><Upper value='a'/></Range></MissingValues>", "<Upper>"},
        {"<Format type='256'/>", "\"type\" of <Format> is \"256\""},
        {"<Format width='-1'/>", "\"width\""},
        {"<Geo/>", "<Geo> has no attribute \"type\""},
        {"<Geo type='point'/>", "not one of its words"},
        {"<Geo type='Point' wkid='4326.0'/>", "\"wkid\""},
        {"<Geo type='Point'><GeoEnvelope leftUpperX='1'/></Geo>", "attribute \"leftUpperY\""},
        {"<BaseField name='y'/>", "line 2: <BaseField> has no attribute \"storage\""},
    };
    for (const auto& [inside, part] : cases) {
        try {
            const CFMetaData model(std::string("<DataModel><Field name='x' storage='real'>\n") +
                                   inside + "</Field></DataModel>");
            ADD_FAILURE() << inside << " was read";
        } catch (const CFMetaDataError& error) {
            EXPECT_NE(std::string(error.what()).find(part), std::string::npos) << error.what();
            EXPECT_NE(std::string(error.what()).find("line 2"), std::string::npos) << error.what();
        }
    }
}

TEST(FieldDocument, ACopyGoesItsOwnWay)
{
    CFField field = realField();
    field.SetPrivateFormat(CFFormat(5, 8, 2));
    field.SetGeo(CFGeo(CFGeo::Point));
    field.SetBaseField(realField());
    CFMetaData model;
    model.AppendField(field);
    CFMetaData copy = model;
    field.SetLabel("changed");
    field.SetPrivateFormat(CFFormat(1, 1, 0));
    field.SetBaseField(field);
    copy.ReplaceField(0, field);
    copy.AppendField(CFField("b", CFField::Flag, CFField::Integer));
    EXPECT_EQ(model.FieldCount(), 1U);
    EXPECT_EQ(model.GetField(0U)->GetLabel(), "");
    EXPECT_EQ(model.GetField(0U)->GetPrivateFormat()->GetWidth(), 8);
    EXPECT_EQ(model.GetField(0U)->GetBaseField()->GetLabel(), "");
    EXPECT_EQ(copy.GetField(0U)->GetBaseField()->GetLabel(), "changed");
    EXPECT_EQ(copy.GetField(0U)->GetBaseField()->GetBaseField()->GetLabel(), "");

    CFField other = field;
    other.SetName("other");
    EXPECT_THROW(copy.ReplaceField(0, other), CFMetaDataError);
    EXPECT_THROW(copy.ReplaceField(2, field), std::out_of_range);
}
