#include "CFMetaData.h"
#include "tcm/ModelFile.h"
#include "tcm/SeriesNames.h"
#include "tcm/ViewerFixture.h"

// The ids of a model's series.

namespace {

using Codes = std::vector<std::pair<CFDatum, const char*>>;

CFField coded(const std::string& name, const Codes& codes)
{
    CFField field(name, CFField::Nominal, CFField::Integer);
    std::vector<CFValue> values;
    for (const auto& [code, label] : codes)
        values.emplace_back(code, label);
    field.SetValues(values);
    return field;
}

CFField dimension(const std::string& name, CFField::StorageType storage, const Codes& codes)
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
    model.AppendField(dimension("id", CFField::Integer,
                                {{CFDatum(1), "5000000001"}, {CFDatum(2), "5000000002"}}));
    model.AppendField(dimension("opened", CFField::Date,
                                {{CFDatum(1), "2024-01-31"}, {CFDatum(2), "2024-02-29"}}));
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
        const char* id; ///< null if the model has no series of this name
    } const cases[] = {
        {{"sales"}, {}, "1"},
        {{"Ulm", "sales"}, {"town"}, "4-1"}, // the first of its label that has a code
        {{"07", "cost"}, {"store"}, "2-0"},
        {{"5000000002", "cost"}, {"id"}, "2-0"}, // beyond int
        {{"2024-02-29", "cost"}, {"opened"}, "2-0"},
        {{"1", "1.50", "Ulm", "cost"}, {"size", "size", "town"}, "0-1-4-0"},
        {{"1", "sales"}, {"town"}, nullptr}, // a text is not a number
        {{"1.0", "sales"}, {"town"}, "6-1"},
        {{"ulm", "sales"}, {"town"}, nullptr},
        {{"Ulm", "Sales"}, {"town"}, nullptr},
        {{"x", "sales"}, {"plain"}, nullptr}, // has no field of the data
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

TEST_F(SeriesName, IsThatOfATargetOrNot)
{
    const Entries whole = {
        {"StatXML.xml", statXml(metadata())},
        {"TCMGraph.json",
         R"({"targets": [{"series": "4-1", "predictors": [{"series": "6-1"}]}]})"}};
    const std::string xml = whole.at("StatXML.xml");
    const std::string unclosed = xml.substr(0, xml.find("</DataModel>"));
    struct
    {
        Entries model;
        const char* town;
        bool isKnown;
        bool isTarget;
    } const cases[] = {
        {whole, "Ulm", true, true},
        {whole, "1.0", true, false},
        {whole, "Bonn", false, true},
        {with(whole, "StatXML.xml", unclosed), "Ulm", true, true},
        {with(whole, "StatXML.xml", "<StatXML></StatXML>"), "Ulm", false, true},
        {with(whole, "StatXML.xml", "<DataModel><Field</DataModel>"), "Ulm", false, true},
        {without(whole, "TCMGraph.json"), "Ulm", false, true},
        {with(whole, "TCMGraph.json", "{"), "Ulm", true, false},
        {{}, "Ulm", false, true},
    };
    for (const auto& [model, town, isKnown, isTarget] : cases) {
        SCOPED_TRACE(testing::PrintToString(model) + town);
        bool answer = true; // unchanged without an answer
        EXPECT_EQ(IsTargetSeries(putModel(model), "sales", {"town"}, {town}, answer), isKnown);
        EXPECT_EQ(answer, isTarget);
    }
}
