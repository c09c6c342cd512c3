#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "CFEntry.h"
#include "CFMetaData.h"

namespace {

struct AsciiUpper final : CFUpperFunc
{
    std::string ToUpper(const std::string& name) const override
    {
        std::string result = name;
        std::transform(result.begin(), result.end(), result.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        return result;
    }
};

std::string exported(const CFMetaData& model)
{
    std::string xml = "left over";
    model.ExportXMLDoc(xml);
    return xml;
}

std::string inModel(const std::string& fields)
{
    return "<DataModel>\n" + fields + "\n</DataModel>";
}

std::string errorOf(const std::string& xml)
{
    try {
        const CFMetaData model(xml);
        return "no error, " + std::to_string(model.FieldCount()) + " fields";
    } catch (const CFMetaDataError& error) {
        return error.what();
    }
}

} // namespace

TEST(DataModel, TheDocumentHasThisForm)
{
    CFMetaData model;
    EXPECT_EQ(exported(model), "<DataModel></DataModel>\n");
    CFField field("age", CFField::Ordinal, CFField::Integer, CFField::FrequencyWeight);
    field.SetLabel("Age <years>");
    model.AppendField(field);
    EXPECT_EQ(exported(model), "<DataModel>\n"
                               "  <Field name=\"age\" storage=\"integer\" measure=\"ordinal\""
                               " role=\"freqWeight\">\n"
                               "    <Label>Age &lt;years&gt;</Label>\n"
                               "  </Field>\n"
                               "</DataModel>\n");
}

TEST(DataModel, EveryMeasureStorageAndRoleSurvivesTheRoundTrip)
{
    CFMetaData model;
    for (int storage = 0; storage < 7; ++storage)
        for (int type = 0; type < 6; ++type)
            for (int role = 0; role < 8; ++role)
                model.AppendField(CFField(std::to_string(model.FieldCount()),
                                          static_cast<CFField::FieldType>(type),
                                          static_cast<CFField::StorageType>(storage),
                                          static_cast<CFField::RoleType>(role)));
    const CFMetaData read(exported(model));
    ASSERT_EQ(read.FieldCount(), 7U * 6U * 8U);
    for (std::size_t i = 0; i < read.FieldCount(); ++i)
        EXPECT_TRUE(*read.GetField(i) == *model.GetField(i)) << i;
}

TEST(DataModel, NamesAndLabelsSurviveWhateverTheyHold)
{
    using namespace std::literals;
    const std::string_view texts[] = {"größe 🐧",
                                      "a<b>&\"c'",
                                      " blanks ",
                                      "  ",
                                      "tab\tline\nend",
                                      "carriage\r\nreturn",
                                      "bell\x07 esc\x1B",
                                      "nul\0inside"sv,
                                      "_x0007_",
                                      "_x0000_",
                                      "_x005F_x0007_",
                                      "_x0041_",
                                      "_x0007",
                                      "_x0007\x07",
                                      "__x000D_",
                                      "\xEF\xBF\xBF",
                                      "\xEF\xBF\xBE_xFFFF_",
                                      "&#7; &amp;",
                                      "]]><![CDATA[",
                                      "\xE4 alone",
                                      "end \xE2\x82",
                                      "\xED\xB3\xA4",
                                      "_xDCE4_",
                                      "\xC0\xAF\xFF",
                                      "_xDCE4\xE4",
                                      "\xF0\x9F\x90\xA7\xF0\x9F"};
    for (const std::string_view given : texts) {
        const std::string text(given);
        CFMetaData model;
        CFField field(text, CFField::Nominal, CFField::String);
        field.SetLabel(text);
        model.AppendField(field);
        const std::string xml = exported(model);
        const CFMetaData read(xml);
        ASSERT_EQ(read.FieldCount(), 1U) << xml;
        EXPECT_EQ(read.GetField(0U)->GetName(), text) << xml;
        EXPECT_EQ(read.GetField(0U)->GetLabel(), text) << xml;
        // XML 1.0 has no place for these, raw or as references.
        for (const char c : xml)
            EXPECT_TRUE(static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t') << xml;
        EXPECT_EQ(xml.find("&#7;"), std::string::npos);
    }
}

TEST(DataModel, WhatItDoesNotKnowIsPassedOver)
{
    const CFMetaData model(
        "<?xml version=\"1.0\"?><!-- head -->\n"
        "<DataModel future=\"yes\"><Notes><Field name=\"no\"/></Notes>\n"
        "<Field name='x' storage='date' colour='red'><Other/>"
        "<Label>a<!-- no -->b<![CDATA[<c>]]></Label><Label>second</Label></Field>"
        "</DataModel>\n<!-- tail -->\n");
    ASSERT_EQ(model.FieldCount(), 1U);
    EXPECT_EQ(model.GetField(0U)->GetLabel(), "ab<c>");
    EXPECT_EQ(model.GetField(1U), nullptr);
}

TEST(DataModel, AnAbsentMeasureFollowsFromTheStorage)
{
    const std::pair<const char*, CFField::FieldType> cases[] = {{"string", CFField::Nominal},
                                                                {"real", CFField::Continuous},
                                                                {"integer", CFField::Continuous},
                                                                {"timestamp", CFField::Continuous},
                                                                {"unknown", CFField::Typeless}};
    for (const auto& [storage, measure] : cases) {
        const CFMetaData model(inModel(std::string("<Field name='x' storage='") + storage + "'/>"));
        EXPECT_EQ(model.GetField(0U)->GetType(), measure) << storage;
        EXPECT_EQ(model.GetField(0U)->GetRole(), CFField::Input);
    }
}

TEST(DataModel, ADocumentThatCannotBeReadSaysWhatAndWhere)
{
    const std::string nested = [] {
        std::string xml;
        for (int i = 0; i < 100000; ++i)
            xml += "<a>";
        return xml;
    }();
    std::string closed = nested;
    for (int i = 0; i < 100000; ++i)
        closed += "</a>";
    const std::pair<std::string, const char*> cases[] = {
        {"", "line 1"},
        {"\n\n", "line 1"},
        {"plain text", "line 1"},
        {"<Model/>", "<Model>"},
        {"<DataModel version='2'/>", "version \"2\""},
        {"<DataModel/>\n<DataModel/>", "line 2: there is more than one root"},
        {"text\n<DataModel/>", "text outside"},
        {"<DataModel/>text", "text outside"},
        {"<StatXML></DataModel>", "not well-formed"},
        {"<!DOCTYPE DataModel [<!ENTITY a \"b\">]>\n<DataModel/>", "document type"},
        {inModel("<Field name='a' storage='real'>"), "not well-formed"},
        {inModel("<Field name='\xE4' storage='real'/>"),
         "line 2: there is a byte that is not UTF-8"},
        {inModel("<Field name='\xC0\x80' storage='real'/>"), "not UTF-8"},
        {inModel("<Field name='\xED\xA0\x80' storage='real'/>"), "not UTF-8"},
        {inModel("<Field name='\xF4\x90\x80\x80' storage='real'/>"), "not UTF-8"},
        {inModel("<Field name='a\x07' storage='real'/>"), "U+0007"},
        {inModel("<Field name='\xEF\xBF\xBF' storage='real'/>"), "U+FFFF"},
        {std::string("<DataModel/>\0<a>", 16), "U+0000"},
        {inModel("<Field name='a&#0;b' storage='real'/>"), "line 2: there is a reference"},
        {inModel("<Field name='&#xD800;' storage='real'/>"), "reference"},
        {inModel("<Field name='&#x110000;' storage='real'/>"), "reference"},
        {inModel("<Field name='&#4294967361;' storage='real'/>"), "reference"},
        {inModel("<Field name='&#65' storage='real'/>"), "reference"},
        {inModel("<Field name='&#65;&#0;' storage='real'/>"), "reference"},
        {inModel("\n<Field storage='real'/>"), "line 3: <Field> has no attribute \"name\""},
        {inModel("<Field name='' storage='real'/>"), "line 2: <Field> has an empty name"},
        {inModel("<Field name='a'/>"), "no attribute \"storage\""},
        {inModel("<Field name='a' storage='Real'/>"),
         "\"storage\" of <Field> is \"Real\", not one of its words"},
        {inModel("<Field name='a' storage=''/>"), "\"storage\" of <Field> is \"\""},
        {inModel("<Field name='a' storage='real' measure='scale'/>"), "\"measure\" of <Field>"},
        {inModel("<Field name='a' storage='real' role='boss'/>"), "\"role\" of <Field>"},
        {inModel("<Field name='a' storage='real'/>\n<Field name='a' storage='date'/>"),
         "line 3: the name \"a\" is there twice"},
        {inModel(closed), "inside each other"},
        {nested, "not well-formed"},
    };
    for (const auto& [xml, part] : cases) {
        const std::string error = errorOf(xml);
        EXPECT_NE(error.find(part), std::string::npos) << error << "\n" << xml.substr(0, 200);
    }
}

TEST(DataModel, ALargerDocumentMayBeCutAtItsStartAlone)
{
    const std::string model = inModel("<Field name='a' storage='real'/>");
    for (const char* rest : {"\n", "</StatXML>", "<Summaries/></StatXML>\n", "<Open><Deep", "\xE4"})
        EXPECT_EQ(errorOf(model + rest), "no error, 1 fields") << rest;
    EXPECT_NE(errorOf(model + model).find("line 3: there is more than one"), std::string::npos);
}

TEST(DataModel, ReferencesStandForTheirCharacters)
{
    const CFMetaData model(inModel("<!-- &#0; -->\n<Field name='&#x41;&#66;&#x1F427;&#13;' "
                                   "storage='real'><Label><![CDATA[&#0;]]>&#9;</Label></Field>"));
    EXPECT_EQ(model.GetField(0U)->GetName(), "AB\xF0\x9F\x90\xA7\r");
    EXPECT_EQ(model.GetField(0U)->GetLabel(), "&#0;\t");
    // Entities are never expanded.
    const CFMetaData entity(inModel("<Field name='&lol;' storage='real'/>"));
    EXPECT_EQ(entity.GetField(0U)->GetName(), "&lol;");
}

TEST(DataModel, FieldsAreFoundByNameAndWithAFunctionByLetters)
{
    const std::string xml = inModel("<Field name='Age' storage='real'/><Field name='AGE' "
                                    "storage='real'/><Field name='sex' storage='string'/>");
    const CFMetaData exact(xml);
    EXPECT_EQ(exact.GetFieldIndex("AGE"), 1);
    EXPECT_EQ(exact.GetFieldIndex("age"), -1);
    const AsciiUpper upper;
    const CFMetaData folded(xml, &upper);
    EXPECT_EQ(folded.GetFieldIndex("AGE"), 1);
    EXPECT_EQ(folded.GetFieldIndex("age"), 0);
    EXPECT_EQ(folded.GetFieldIndex("SEX"), 2);
    EXPECT_EQ(folded.GetFieldIndex("none"), -1);
}

TEST(DataModel, ANameIsTakenOnce)
{
    CFMetaData model;
    model.AppendField(CFField("a", CFField::Flag, CFField::Integer));
    EXPECT_THROW(model.AppendField(CFField("a", CFField::Flag, CFField::Integer)), CFMetaDataError);
    EXPECT_EQ(model.FieldCount(), 1U);
}

TEST(DataModel, ValuesOutsideTheEnumerationsHaveNoWord)
{
    EXPECT_EQ(WordOf(CFField::Unknown), nullptr);
    EXPECT_EQ(WordOf(static_cast<CFField::FieldType>(6)), nullptr);
    EXPECT_EQ(WordOf(static_cast<CFField::StorageType>(7)), nullptr);
}

TEST(MetadataEntry, RemembersItsHost)
{
    struct Callback final : CFHostingCallback
    {
        const char* locale() const override { return "fr_FR"; }
    };
    static Callback callback;
    const int before = CFEntry::initializations();
    CFEntry::initialize(&callback);
    EXPECT_STREQ(CFEntry::callback()->locale(), "fr_FR");
    EXPECT_EQ(CFEntry::initializations(), before + 1);
}
