#include "CFMetaData.h"
#include "tcm/ModelFile.h"
#include "tcm/SeriesNames.h"
#include "tcm/ViewerFixture.h"

// How a model knows its series.

namespace {

CFField coded(const std::string& name, const std::vector<std::pair<CFDatum, const char*>>& codes)
{
    CFField field(name, CFField::Nominal, CFField::Integer);
    std::vector<CFValue> values;
    for (const auto& [code, label] : codes)
        values.emplace_back(code, label);
    field.SetValues(values);
    return field;
}

CFField dimension(const std::string& name, CFField::StorageType storage,
                  const std::vector<std::pair<CFDatum, const char*>>& codes)
{
    CFField field = coded(name, codes);
    field.SetBaseField({name, CFField::Nominal, storage});
    return field;
}

CFMetaData metadata()
{
    CFMetaData model;
    model.AppendField(dimension(
        "town", CFField::String,
        {{CFDatum("none"), "Ulm"}, {CFDatum(4), "Ulm"}, {CFDatum(5), "Ulm"}, {CFDatum(6), "1.0"}}));
    model.AppendField(dimension("store", CFField::Integer, {{CFDatum(2), "7"}, {CFDatum(3), "8"}}));
    model.AppendField(dimension("size", CFField::Real, {{CFDatum(0), "1.0"}, {CFDatum(1), "1.5"}}));
    model.AppendField(coded("plain", {{CFDatum(0), "x"}}));
    model.AppendField(coded("metricField", {{CFDatum(0), "cost"}, {CFDatum(1), "sales"}}));
    return model;
}

std::string statXml(const CFMetaData& model)
{
    std::string xml;
    model.ExportXMLDoc(xml);
    return "<StatXML>" + xml + "<Summaries/></StatXML>";
}

using SeriesName = ViewerTest;

} // namespace

TEST_F(SeriesName, IsEncodedByTheStorageOfItsFields)
{
    struct
    {
        Names names;
        Names dimFields;
        const char* id; ///< null if the model has no such series
    } const cases[] = {
        {{"sales"}, {}, "1"},
        {{"Ulm", "sales"}, {"town"}, "4-1"}, // the first of its label that has a code
        {{"07", "cost"}, {"store"}, "2-0"},
        {{"1", "1.50", "Ulm", "cost"}, {"size", "size", "town"}, "0-1-4-0"},
        {{"1", "sales"}, {"town"}, nullptr}, // a text is not a number
        {{"1.0", "sales"}, {"town"}, "6-1"},
        {{"ulm", "sales"}, {"town"}, nullptr},
        {{"Ulm", "Sales"}, {"town"}, nullptr},
        {{"x", "sales"}, {"plain"}, nullptr}, // stands for no field of the data
        {{"x", "sales"}, {"missing"}, nullptr},
        {{"Ulm", "sales"}, {}, nullptr},
        {{"sales"}, {"town"}, nullptr},
        {{}, {}, nullptr},
    };
    for (const auto& [names, dimFields, id] : cases) {
        SCOPED_TRACE(BuildSeriesIDStr(names));
        std::string seriesId = "before";
        EXPECT_EQ(EncodeSeriesName(names, dimFields, metadata(), seriesId), id != nullptr);
        EXPECT_EQ(seriesId, id == nullptr ? "before" : id);
    }
    std::string seriesId;
    EXPECT_FALSE(EncodeSeriesName({"sales"}, {}, CFMetaData(), seriesId)) << "no metrics";
    EXPECT_EQ(BuildSeriesIDStr({}), "");
    EXPECT_EQ(BuildSeriesIDStr({"4"}), "4");
}

TEST_F(SeriesName, TellsWhetherTheSeriesIsATarget)
{
    const Entries whole = {
        {"StatXML.xml", statXml(metadata())},
        {"TCMGraph.json",
         R"({"targets": [{"series": "4-1", "predictors": [{"series": "6-1"}]}]})"}};
    Entries unclosed = whole;
    unclosed["StatXML.xml"].resize(unclosed["StatXML.xml"].find("</DataModel>"));
    Entries noModel = whole;
    noModel["StatXML.xml"] = "<StatXML></StatXML>";
    Entries noGraph = whole;
    noGraph.erase("TCMGraph.json");
    Entries badGraph = whole;
    badGraph["TCMGraph.json"] = "{";
    Entries notXml = whole;
    notXml["StatXML.xml"] = "<DataModel><Field</DataModel>";
    struct
    {
        Entries model;
        const char* town;
        bool isKnown;
        bool isTarget;
    } const cases[] = {{whole, "Ulm", true, true},     {whole, "1.0", true, false},
                       {whole, "Bonn", false, true},   {unclosed, "Ulm", true, true},
                       {noModel, "Ulm", false, true},  {noGraph, "Ulm", false, true},
                       {badGraph, "Ulm", true, false}, {notXml, "Ulm", false, true},
                       {{}, "Ulm", false, true}};
    for (const auto& [model, town, isKnown, isTarget] : cases) {
        SCOPED_TRACE(testing::PrintToString(model) + town);
        bool answer = true; // what stays where there is none
        EXPECT_EQ(IsTargetSeries(putModel(model), "sales", {"town"}, {town}, answer), isKnown);
        EXPECT_EQ(answer, isTarget);
    }
}
