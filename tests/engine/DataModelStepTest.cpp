#include "engine/EngineFixture.h"

#include <memory>
#include <tuple>

#include "CFMetaData.h"
#include "Container.h"
#include "EngineException.h"
#include "MetadataService.h"

using namespace EngineTest;
using testing::HasSubstr;

namespace {

class DataModelStep : public EngineFixture
{
protected:
    CFMetaData model(const std::string& name) const { return CFMetaData(read(name)); }

    static std::string exportTo(const std::string& name)
    {
        return R"({"export": true, "name": "model", "uri": "$DIR/)" + name + R"("})";
    }

    std::string describe(const std::string& job,
                         const EmbeddedHV::Container& container = NamedFile("model", "")) const
    {
        void* reserved = nullptr;
        return service().getMetaDataService()->getMetadata(nullptr, expanded(job), reserved, 0,
                                                           container);
    }
};

std::string update(const std::string& entries)
{
    return R"(updateDataModel({"fields": [)" + entries + "]})";
}

/// An update of the field x.
std::string ofX(const std::string& settings)
{
    return update(R"({"name": "x", )" + settings + "}");
}

/// Values of the field x (and of k, so that a missing x is no empty line), the storage that x gets,
/// and the whole file or a part of the fault.
constexpr std::tuple<const char*, const char*, const char*> kChanges[] = {
    {"x,k\n2.0,1\n-3.0,1\n,1\n", "integer", "x,k\n2,1\n-3,1\n,1\n"},
    {"x,k\n2.0,1\n2.5,1\n", "integer",
     R"(HVEEX0012E updateDataModel: a value of the field "x" cannot be stored as integer: "2.5")"},
    {"x,k\n1e300,1\n", "integer", R"("x" cannot be stored as integer: "1e+300")"},
    {"x,k\n4503599627370495.5,1\n", "integer", "HVEEX0012E"},
    {"x,k\n9007199254740992,1\n", "real", "x,k\n9007199254740992.0,1\n"},
    {"x,k\n9007199254740993,1\n", "real", R"(cannot be stored as real: "9007199254740993")"},
    {"x,k\n9223372036854775807,1\n", "real", "HVEEX0012E"},
    {"x,k\n0012,1\n\"  \",1\n\" 7 \",1\n", "integer", "x,k\n12,1\n,1\n7,1\n"},
    {"x,k\n0012,1\nNo space left on device,1\n", "real",
     R"(HVEEX0012E updateDataModel: a value of the field "x" cannot be stored as real: "No space)"},
    {"x,k\n01,1\n1.5,1\n", "real", "x,k\n1.0,1\n1.5,1\n"},
    {"x,k\na,1\n2020-01-31,1\n", "date", R"("x" cannot be stored as date: "a")"},
    {"x,k\n2020-01-31,1\n", "timestamp", "x,k\n2020-01-31 00:00:00,1\n"},
    {"x,k\n2020-01-31 00:00:00,1\n", "date", "x,k\n2020-01-31,1\n"},
    {"x,k\n2020-01-31 00:00:01,1\n", "date", "HVEEX0012E"},
    {"x,k\n2020-01-31,1\n", "string", "x,k\n2020-01-31,1\n"},
    {"x,k\n1.5,1\n", "string", "x,k\n1.5,1\n"},
    {"x,k\n2020-01-31,1\n", "real",
     R"(HVEPL0004E updateDataModel: the setting "fields[0].storage" is "real", but the field "x" )"
     R"(is Date, whose values do not convert)"},
};

TEST_F(DataModelStep, AStorageChangeConvertsWithoutLossOrNamesFieldAndValue)
{
    for (const auto& [csv, storage, result] : kChanges) {
        SCOPED_TRACE(std::string(csv) + " to " + storage);
        const std::string got = through(csv, ofX(R"("storage": ")" + std::string(storage) + "\""));
        const bool fault = std::string(result).find('\n') == std::string::npos;
        if (fault)
            EXPECT_THAT(got, HasSubstr(result));
        else
            EXPECT_EQ(got, result);
        EXPECT_EQ(files().size(), fault ? 1U : 2U);
    }
}

constexpr const char* kWholeUpdate =
    R"({"name": "x", "displayLabel": "The \"x\"", "measure": "ordinal", "storage": "integer",
        "role": "freqWeight",
        "valueLabels": [{"value": "1", "displayLabel": "one"}, {"value": "1e+2",
                         "displayLabel": "many"}, {"value": "", "displayLabel": "none"}],
        "missingValues": {"minValue": 90, "Value": ["-1", "7"]}},
       {"name": "s", "measure": "typeless", "role": "none",
        "valueLabels": [{"value": "a", "displayLabel": "A"}], "missingValues": {"Value": ["", "b"]},
        "Geo": {"type": "Polygon", "coordinates": "3", "wkid": "4326", "csname": "WGS 84",
                "isProjected": true, "wkt": "W",
                "GeoEnvelope": {"leftUpperX": -9.5, "leftUpperY": 71, "rightLowerX": 33.0,
                                "rightLowerY": 34.5}}},
       {"name": "k"})";

TEST_F(DataModelStep, AnUpdateChangesWhatIsKnownAndTravelsWithTheFile)
{
    write("in.csv", "x,s,k\n1.0,a,1\n7.0,b,2\n");
    const auto wrote =
        succeeded(run(readCsv("in.csv") + " -> " + update(kWholeUpdate) +
                      R"( -> write({"dataDestination": "$DIR/x.hvbf", "type": "hvbf"}))"));
    EXPECT_TRUE(wrote.messages.empty());
    const CFMetaData found(describe(readFile("x.hvbf", R"({"name": "hvbf"})")));

    CFField x("x", CFField::Ordinal, CFField::Integer, CFField::FrequencyWeight);
    x.SetLabel("The \"x\"");
    x.SetValueLabels(
        {CFValue(CFDatum(1), "one"), CFValue(CFDatum(100), "many"), CFValue(CFDatum(), "none")});
    x.SetMissingValues({CFRange(CFDatum(90), CFDatum()),
                        {CFValue(CFDatum(-1)), CFValue(CFDatum(7))},
                        true,
                        false});
    CFField s("s", CFField::Typeless, CFField::String, CFField::None);
    s.SetValueLabels({CFValue(CFDatum("a"), "A")});
    s.SetMissingValues({{}, {CFValue(CFDatum("")), CFValue(CFDatum("b"))}, true, false});
    CFGeo geo(CFGeo::Polygon, 3);
    geo.SetCoordinateSystem(4326, "WGS 84", true, "W");
    geo.SetEnvelope({-9.5, 71, 33, 34.5});
    s.SetGeo(geo);
    ASSERT_EQ(found.FieldCount(), 3U);
    EXPECT_TRUE(*found.GetField(0) == x);
    EXPECT_TRUE(*found.GetField(1) == s);
    EXPECT_TRUE(*found.GetField(2) == CFField("k", CFField::Continuous, CFField::Integer));
}

TEST_F(DataModelStep, DeclaredMissingValuesStayValuesInTheirOwnJob)
{
    EXPECT_EQ(through("x\n1\n9\n", ofX(R"("missingValues": {"Value": ["9"]})") +
                                       R"( -> aggregate({"output": [{"function": "sum",
                                           "input": "x"}]}))"),
              "sum_x\n10\n");
}

TEST_F(DataModelStep, AWrongUpdateNamesItsSetting)
{
    write("in.csv", "agee,x,s\n1,2,a\n");
    const std::pair<std::string, const char*> faults[] = {
        {update(R"({"name": "age"})"),
         R"(HVEPL0005E updateDataModel: the input has no field "age"; did you mean "agee"?)"},
        {update(R"({"name": "X"})"), "HVEPL0005E"},
        {update(R"({"name": "x"}, {"name": "x"})"), R"("fields[1].name" is "x", as that of)"},
        {update("{}"), R"(HVEPL0003E updateDataModel: the setting "fields[0].name" is missing)"},
        {"updateDataModel({})", R"(the setting "fields" is missing)"},
        {ofX(R"("measure": "Nominal")"), R"(did you mean "nominal"?; known are continuous, )"},
        {ofX(R"("storage": "unknown")"), R"("fields[0].storage" is "unknown")"},
        {ofX(R"("role": 1)"), R"("fields[0].role" must be a text, not a)"},
        {ofX(R"("valueLabels": [{"value": "2.5", "displayLabel": "l"}])"),
         R"("fields[0].valueLabels[0].value" is "2.5", which no value of the field "x" can be)"},
        {ofX(R"("missingValues": {"Value": ["1", "nan"]})"),
         R"("fields[0].missingValues.Value[1]" is "nan")"},
        {ofX(R"("missingValues": {"minValue": "1"})"), R"(missingValues.minValue" must be a num)"},
        {update(R"({"name": "s", "missingValues": {"maxValue": 1}})"),
         R"(maxValue" is a number, but the field "s" is String)"},
        {update(R"({"name": "s", "role": "freqWeight"})"), R"(the field "s" is String)"},
        {ofX(R"("Geo": {"type": "point"})"), R"("fields[0].Geo.type" is "point")"},
        {ofX(R"("Geo": {})"), R"("fields[0].Geo.type" is missing)"},
        {ofX(R"("Geo": {"type": "Point", "wkid": "x"})"), R"(Geo.wkid" is "x", not a whole)"},
        {ofX(R"("Geo": {"type": "Point", "GeoEnvelope": {"leftUpperX": 1}})"),
         R"(Geo.GeoEnvelope.leftUpperY" is missing)"},
        {ofX(R"("Geo": {"type": "Point"})"),
         R"("fields[0].Geo" is given, but the field "x" is Integer)"},
    };
    for (const auto& [step, text] : faults) {
        SCOPED_TRACE(step);
        const auto listener = run(readCsv("in.csv") + " -> " + step + " -> " + writeCsv("o.csv"));
        EXPECT_THAT(listener.fault(), HasSubstr(text));
        EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
    }
}

TEST_F(DataModelStep, SettingsThatAreNotKnownAreToldAndIgnored)
{
    write("in.csv", "x\na\n");
    const auto listener = succeeded(
        run(readCsv("in.csv", R"(, "maxRecordCount": 0)") + " -> " +
            ofX(R"("label": "a", "missingValues": {"value": ["1"]}, "Geo": {"type": "Point",
                   "csName": "n"})")));
    std::string told;
    for (const auto& [id, text] : listener.messages)
        told.append(id).append(" ").append(text).append("\n");
    EXPECT_EQ(listener.messages.size(), 4U) << told;
    EXPECT_THAT(told,
                HasSubstr(R"(HVEPL0015W read: the setting "maxRecordCount" is not known here )"
                          R"(and is ignored; did you mean "maxRecordsCount"?)"));
    EXPECT_THAT(told, HasSubstr(R"("fields[0].label" is not known)"));
    EXPECT_THAT(told, HasSubstr(R"(missingValues.value" is not known here and is ignored; did you )"
                                R"(mean "Value"?)"));
    EXPECT_THAT(told, HasSubstr(R"(did you mean "csname"?)"));
}

TEST_F(DataModelStep, TheBuilderExportsWhatItLetsThrough)
{
    write("in.csv", "x,s\n1,a\n");
    succeeded(run(readCsv("in.csv") + " -> " + ofX(R"("displayLabel": "L")") +
                  " -> dataModelBuilder(_, " + exportTo("m.xml") +
                  R"() -> filterFields({"fields": ["s"]}) -> )" + writeCsv("out.csv")));
    EXPECT_EQ(read("out.csv"), "s\na\n");
    ASSERT_EQ(model("m.xml").FieldCount(), 2U);
    EXPECT_EQ(model("m.xml").GetField(0)->GetLabel(), "L");
}

TEST_F(DataModelStep, TheExportHasTheTypesThatTheRecordsTurnOutToHave)
{
    // Far behind what the reader looks at first, so that the job is planned a second time.
    write("in.csv", onesThen("text"));
    const std::string job =
        readCsv("in.csv") + " -> dataModelBuilder(_, " + exportTo("m.xml") + ")";
    EXPECT_EQ(CFMetaData(describe(job)).GetField(0)->GetStorage(), CFField::String);
    succeeded(run(job));
    EXPECT_EQ(model("m.xml").GetField(0)->GetStorage(), CFField::String);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "m.xml"}));
}

TEST_F(DataModelStep, AnExportHasItsNameWhenItsStatementIsDone)
{
    write("in.csv", "x\n2.5\n");
    write("m.xml", "old");
    const std::string builder = " -> dataModelBuilder(_, " + exportTo("m.xml") + ")";
    const std::string failing = ofX(R"("storage": "integer")");
    // A failure after the step leaves what was there, and nothing half-written.
    EXPECT_EQ(
        run(readCsv("in.csv") + builder + " -> " + failing + " -> " + writeCsv("o.csv")).errorId,
        "HVEEX0012E");
    EXPECT_EQ(read("m.xml"), "old");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "m.xml"}));

    // A chain of two statements exports once, and a later statement reads the document.
    succeeded(run("val c = " + readCsv("in.csv") + " -> " + ofX(R"("displayLabel": "L")") +
                  builder + "\nc -> " + writeCsv("a.csv") + "\nc -> " + writeCsv("b.csv") +
                  readCsv("a.csv", "", kWithModel) + " -> dataModelBuilder(_, " +
                  exportTo("n.xml") + ")"));
    EXPECT_EQ(model("n.xml").GetField(0)->GetLabel(), "L");
    EXPECT_EQ(files(), (std::vector<std::string>{"a.csv", "b.csv", "in.csv", "m.xml", "n.xml"}));
}

TEST_F(DataModelStep, AnExportNeedsAPlaceOfItsOwn)
{
    write("in.csv", "x\n1\n");
    const std::string builder = "dataModelBuilder(_, " + exportTo("m.xml") + ")";
    const std::pair<std::string, const char*> faults[] = {
        {builder + " -> " + builder, "m.xml twice"},
        {builder + " -> " + writeCsv("./m.xml"), "m.xml twice"},
        {"dataModelBuilder(_, " + exportTo("none/m.xml") + ")", "HVEIO0015E dataModelBuilder: "},
        {R"(dataModelBuilder(_, {"export": true, "name": "m", "uri": ""}))",
         R"("uri" is empty, and the job has no container "m")"},
        {R"(dataModelBuilder(_, {"name": "m", "uri": "$DIR/m.xml"}))", R"("export" is not true)"},
        {R"(dataModelBuilder({"normalizeDataModel": 1}))", R"("normalizeDataModel" must be true)"},
        {"dataModelBuilder(_, _, _)", "is written dataModelBuilder(configuration, export)"},
    };
    for (const auto& [step, text] : faults) {
        SCOPED_TRACE(step);
        const auto listener = run(readCsv("in.csv") + " -> " + step);
        EXPECT_THAT(listener.fault(), HasSubstr(text));
        EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
    }
    NamedFile container("m", path("c.xml"));
    succeeded(run(
        readCsv("in.csv") + R"( -> dataModelBuilder(_, {"export": true, "name": "m", "uri": ""}))",
        [&](EmbeddedHV::Execution& job) { job.addOutputContainer(nullptr, &container); }));
    EXPECT_EQ(model("c.xml").FieldCount(), 1U);
}

TEST_F(DataModelStep, NormalizingSettlesWhatIsOpenAndOrdersValues)
{
    write("in.csv", "a,b,c,d,e\n1,x,x,1,x\n");
    write("in.xml", R"(<DataModel>
        <Field name="a" storage="integer" measure="discrete"><Values>
          <Value value="3"/><Value value="2" type="real"/><Value value="2" label="later"/>
        </Values><ValueLabels>
          <Value value="5"/><Value value="5" label="five"/><Value value="4" label="four"/>
        </ValueLabels><MissingValues>
          <Range><Lower value="90"/></Range><Value value="95"/><Value value="96" label="told"/>
          <Value value="-1"/><Value value="-1" type="real"/>
        </MissingValues></Field>
        <Field name="b" storage="string" measure="typeless"/>
        <Field name="c" storage="string" measure="typeless"><Geo type="Point"/></Field>
        <Field name="d" storage="real" measure="ordinal"><Values>
          <Value value="3" type="integer"/><Value value="1"/><Value value="3"/><Value value="2"/>
        </Values></Field>
        <Field name="e" storage="string" measure="discrete" role="target"/></DataModel>)");
    const std::string source = readCsv("in.csv", "", R"(, "dataModel": "$DIR/in.xml")");
    const std::string job =
        source + R"( -> dataModelBuilder({"normalizeDataModel": true}, )" + exportTo("m.xml") + ")";
    const std::string described = describe(job);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "in.xml"})) << "a query writes nothing";
    succeeded(run(job));
    EXPECT_EQ(read("m.xml"), described);

    CFField a("a", CFField::Flag, CFField::Integer);
    a.SetValues({CFValue(CFDatum(2)), CFValue(CFDatum(3))});
    a.SetValueLabels({CFValue(CFDatum(4), "four"), CFValue(CFDatum(5), "five")});
    a.SetMissingValues({CFRange(CFDatum(90), CFDatum()),
                        {CFValue(CFDatum(-1)), CFValue(CFDatum(96), "told")},
                        true,
                        false});
    CFField c("c", CFField::Typeless, CFField::String);
    c.SetGeo(CFGeo(CFGeo::Point));
    CFField d("d", CFField::Ordinal, CFField::Real);
    d.SetValues({CFValue(CFDatum(3.0)), CFValue(CFDatum(1.0)), CFValue(CFDatum(2.0))});
    const CFField expected[] = {a, CFField("b", CFField::Nominal, CFField::String), c, d,
                                CFField("e", CFField::Nominal, CFField::String, CFField::Target)};
    const CFMetaData found(described);
    ASSERT_EQ(found.FieldCount(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_TRUE(*found.GetField(i) == expected[i]) << described;

    // Without it, the model stays as it was.
    EXPECT_EQ(describe(source + " -> dataModelBuilder(_, _)"), describe(source));
}

TEST_F(DataModelStep, AJobIsDescribedByItsLastStatement)
{
    write("in.csv", "x\n1\n");
    const std::string first = readCsv("in.csv") + " -> " + writeCsv("out.csv") + "\n";
    EXPECT_EQ(CFMetaData(describe(first + readCsv("in.csv") + " -> " + ofX(R"("role": "both")")))
                  .GetField(0)
                  ->GetRole(),
              CFField::Both);
    const auto failure = [&](const std::string& job) -> std::string {
        try {
            return "described: " + describe(job);
        } catch (const EmbeddedHV::Exception& exception) {
            return exception.getMessage();
        }
    };
    EXPECT_THAT(failure(first + readCsv("out.csv")), HasSubstr("known only when the job has run"));
    // A source that cannot be read has no data model; that is an answer, and not a fault.
    EXPECT_EQ(failure(readCsv("none.csv") + "\n" + readCsv("in.csv")), "described: ");
    EXPECT_THAT(failure("val a = 1"), HasSubstr("no statement"));
    EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
    // The place of the document may be the container of the query.
    const std::string named =
        readCsv("in.csv") + R"( -> dataModelBuilder(_, {"export": true, "name": "m", "uri": ""}))";
    EXPECT_THAT(describe(named, NamedFile("m", path("m.xml"))), HasSubstr(R"(name="x")"));
}

} // namespace
