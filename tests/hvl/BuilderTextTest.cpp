#include <utility>
#include <vector>

#include "bridge/JNIHvlExpression.h"
#include "data/SourceRows.h"
#include "hvl/BuilderText.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLReprojection.h"
#include "hvl/HVLWrite.h"

// What each builder writes for its settings, by the text of the whole job.

TEST_F(BuilderText, ReadWritesItsSource)
{
    check<HVLRead>(
        "read", ReadFunction,
        {
            {"no source", [](HVLRead& read) { read.SetMaxCaseCount(1); }, ""},
            {"iterator: its name at the moment of the call, no data model",
             [](HVLRead& read) {
                 const MemorySource source({});
                 SourceRows rows(source);
                 read.ReadIterator(rows);
                 rows.SetName("renamed");
                 read.SetDataModel("model.xml");
             },
             R"({"dataSource":"rows"})"},
            {"named source", [](HVLRead& read) { read.ReadHVDatasource("Städte \"a\""); },
             R"({"dataSource":"Städte \"a\""})"},
            {"SAV without a password", [](HVLRead& read) { read.ReadSAV("file:///a.sav", ""); },
             R"({"filesystem":{"locations":[{"path":"file:///a.sav",)"
             R"("parser":{"name":"sav","config":{}}}]}})"},
            {"SAV with a password and a data model",
             [](HVLRead& read) {
                 read.ReadSAV("a.sav", "secret");
                 read.SetDataModel("a.xml");
             },
             R"({"filesystem":{"dataModel":"a.xml","locations":[{"path":"a.sav",)"
             R"("parser":{"name":"sav","config":{"dataPassword":"secret"}}}]}})"},
            {"CSV after SAV: the last source holds, without the password",
             [](HVLRead& read) {
                 read.ReadSAV("a.sav", "secret");
                 read.ReadCSV("a.csv", false);
             },
             R"({"filesystem":{"locations":[{"path":"a.csv",)"
             R"("parser":{"name":"csv","config":{"hasHeader":false}}}]}})"},
            {"HVBF after CSV",
             [](HVLRead& read) {
                 read.ReadCSV("a.csv", true);
                 read.ReadHVBF("a.hvbf");
             },
             R"({"filesystem":{"locations":[{"path":"a.hvbf",)"
             R"("parser":{"name":"hvbf","config":{}}}]}})"},
            {"shape file",
             [](HVLRead& read) {
                 read.ReadMapService("http://maps", 3);
                 read.ReadShape("a.shp");
                 read.SetDataModel("a.xml");
             },
             R"({"geospatial":{"dataModel":"a.xml","location":"a.shp","type":"shp"}})"},
            {"map service", [](HVLRead& read) { read.ReadMapService("http://maps/a", 3); },
             R"({"geospatial":{"location":"http://maps/a","type":"mps","queryLayer":3}})"},
            {"map service with a number in text",
             [](HVLRead& read) { read.ReadMapService("http://maps", "12abc"); },
             R"({"geospatial":{"location":"http://maps","type":"mps","queryLayer":12}})"},
            {"map service without a number",
             [](HVLRead& read) { read.ReadMapService("http://maps", "roads"); },
             R"({"geospatial":{"location":"http://maps","type":"mps","queryLayer":0}})"},
            {"limits at the edges",
             [](HVLRead& read) {
                 read.ReadHVDatasource("a");
                 read.SetErrorThreshold(5'000'000'000);
                 read.SetMaxCaseCount(0);
             },
             R"({"dataSource":"a","maxRecordsCount":0,"readErrorThreshold":5000000000})"},
            {"all bits set is no limit; the largest other count is the largest number of Java",
             [](HVLRead& read) {
                 read.ReadHVDatasource("a");
                 read.SetErrorThreshold(~0ULL);
                 read.SetMaxCaseCount(~0ULL - 1);
             },
             R"({"dataSource":"a","maxRecordsCount":9223372036854775807})"},
        });
}

TEST_F(BuilderText, WriteWritesItsDestination)
{
    check<HVLWrite>(
        "write", WriteFunction,
        {
            {"no destination", [](HVLWrite& write) { write.SetDataModel("a.xml"); }, ""},
            {"named source: overwritten, no data model",
             [](HVLWrite& write) {
                 write.SetDataModel("a.xml");
                 write.WriteHVDatasource("a", false);
             },
             R"({"dataSource":"a","mode":"overwrite"})"},
            {"named source: appended", [](HVLWrite& write) { write.WriteHVDatasource("a", true); },
             R"({"dataSource":"a","mode":"append"})"},
            {"SAV without a password", [](HVLWrite& write) { write.WriteSAV("a.sav", ""); },
             R"({"dataDestination":"a.sav","dataModelDestination":"",)"
             R"("type":"application/x-vexa-sav"})"},
            {"SAV with a password",
             [](HVLWrite& write) {
                 write.WriteSAV("a.sav", "secret");
                 write.SetDataModel("a.xml");
             },
             R"({"dataDestination":"a.sav","dataModelDestination":"a.xml",)"
             R"("type":"application/x-vexa-sav","dataPassword":"secret"})"},
            {"CSV after SAV",
             [](HVLWrite& write) {
                 write.WriteSAV("a.sav", "secret");
                 write.WriteCSV("a.csv");
             },
             R"({"dataDestination":"a.csv","dataModelDestination":"","type":"text/csv"})"},
            {"HVBF", [](HVLWrite& write) { write.WriteHVBF("a.hvbf"); },
             R"({"dataDestination":"a.hvbf","dataModelDestination":"","type":"hvbf"})"},
            {"GeoJSON", [](HVLWrite& write) { write.WriteGeoJSON("a.json", "text/geojson"); },
             R"({"dataDestination":"a.json","dataModelDestination":"","type":"text/geojson"})"},
            {"GeoJSON with its map",
             [](HVLWrite& write) { write.WriteGeoJSON("a.json", "text/geojson", "r", "k"); },
             R"({"dataDestination":"a.json","dataModelDestination":"","type":"text/geojson",)"
             R"("metadata":{"resourceId":"r","key":"k"}})"},
            {"GeoJSON without the map of an earlier one",
             [](HVLWrite& write) {
                 write.WriteGeoJSON("a.json", "text/geojson", "r", "k");
                 write.WriteGeoJSON("b.json", "text/geojson");
             },
             R"({"dataDestination":"b.json","dataModelDestination":"","type":"text/geojson"})"},
            {"GeoJSON with a resource id alone",
             [](HVLWrite& write) { write.WriteGeoJSON("a.json", "text/geojson", "r", ""); },
             R"({"dataDestination":"a.json","dataModelDestination":"","type":"text/geojson"})"},
            {"GeoJSON with a key alone",
             [](HVLWrite& write) { write.WriteGeoJSON("a.json", "text/geojson", "", "k"); },
             R"({"dataDestination":"a.json","dataModelDestination":"","type":"text/geojson"})"},
        });
}

TEST_F(BuilderText, AggregateAddsWhatCanBeComputed)
{
    check<HVLAggregate>(
        "aggregate", AggregateFunction,
        {
            {"none", [](HVLAggregate&) {}, R"({"output":[]})"},
            {"only count works without an input",
             [](HVLAggregate& aggregate) {
                 aggregate.AddAggregate("count", "", "n");
                 aggregate.AddAggregate("Count", "", "n");
                 aggregate.AddAggregate("mean", "", "m");
             },
             R"({"output":[{"function":"count","outName":"n"}]})"},
            {"order of the calls; an output name is optional",
             [](HVLAggregate& aggregate) {
                 aggregate.AddAggregate("key", "sex", "sex");
                 aggregate.AddAggregate("max", "mass", "");
             },
             R"({"output":[{"input":"sex","function":"key","outName":"sex"},)"
             R"({"input":"mass","function":"max"}]})"},
            {"percentiles from 1 to 100",
             [](HVLAggregate& aggregate) {
                 for (const int centile : {-1, 0, 1, 100, 101})
                     aggregate.AddPercentileAggregate(centile, "a", "");
                 aggregate.AddPercentileAggregate(50, "", "p");
                 aggregate.AddPercentileAggregate(90, "a", "p90");
             },
             R"({"output":[{"input":"a","function":"percentile","centile":1},)"
             R"({"input":"a","function":"percentile","centile":100},)"
             R"({"input":"a","function":"percentile","outName":"p90","centile":90}]})"},
            {"a copy and its source both go away",
             [](HVLAggregate& aggregate) {
                 HVLAggregate copy(aggregate);
                 copy.AddAggregate("min", "a", "");
                 aggregate = copy;
             },
             R"({"output":[{"input":"a","function":"min"}]})"},
        });
}

TEST_F(BuilderText, FilterFieldsKeepsNamesInOrder)
{
    check<HVLFilterFields>("filterFields", FilterFieldsFunction,
                           {
                               {"none", [](HVLFilterFields&) {}, R"({"fields":[]})"},
                               {"one, then some",
                                [](HVLFilterFields& fields) {
                                    fields.KeepFieldNames("z");
                                    fields.KeepFieldNames(std::vector<std::string>{"a", "z"});
                                },
                                R"({"fields":["z","a","z"]})"},
                           });
}

TEST_F(BuilderText, ReprojectionTellsTheSystemsThatAreSet)
{
    check<HVLReprojection>(
        "reprojection", ReprojectionFunction,
        {
            {"nothing", [](HVLReprojection&) {}, R"({"type":"all","reprojectionFields":[{}]})"},
            {"a transformation without a target",
             [](HVLReprojection& step) {
                 step.SetTransMethodsName("t");
                 step.SetOriCoorSystem("ED50");
             },
             R"({"type":"all","reprojectionFields":[{"inSR":{"csName":"ED50"}}]})"},
            {"all of it, for one field",
             [](HVLReprojection& step) {
                 step.SetProjectionFieldName("at");
                 step.SetOriCoorSystem(4326);
                 step.SetOriCoorSystem("WGS 84");
                 step.SetDesCoorSystem("Web");
                 step.SetDesCoorSystem(3857);
                 step.SetTransMethodsName("t");
             },
             R"({"type":"part","reprojectionFields":[{"name":"at",)"
             R"("inSR":{"csName":"WGS 84","wkid":4326},)"
             R"("outSR":{"csName":"Web","wkid":3857,"transMethodsName":"t"}}]})"},
            {"a wkid of 0, and one taken back",
             [](HVLReprojection& step) {
                 step.SetOriCoorSystem(5);
                 step.SetOriCoorSystem(-1);
                 step.SetDesCoorSystem(0);
             },
             R"({"type":"all","reprojectionFields":[{"outSR":{"wkid":0}}]})"},
        });
}

TEST_F(BuilderText, ExpressionsStandInTheirStep)
{
    const std::pair<HVFunction, const char*> expected[] = {
        {DeriveFieldFunction, "val f2Lambda = ctx => x => (\"double\", x.a * 2)\n"
                              "f1 -> deriveField(_, f2Lambda)"},
        {ReclassifyFieldFunction, "val f3Lambda = ctx => x => (\"a\", x.a * 2)\n"
                                  "f1 -> reclassifyField(_, f3Lambda)"},
        {FilterRecordsFunction, "val f4Lambda = ctx => x => x.a * 2\n"
                                "f1 -> filterRecords(_, f4Lambda)"},
        {BalanceRecordsFunction, "val f5Lambda = ctx => x => x.a * 2\n"
                                 "f1 -> balanceRecords(_, f5Lambda)"},
    };
    JNIHvlExpression* expression = program.createHvlExpression("x.a * 2", nullptr);
    HVLRead read(&program);
    read.ReadHVDatasource("rows");
    std::string job = "val f1Conf = {\"dataSource\":\"rows\"}\nval f1 = read(f1Conf)";
    for (const auto& [type, step] : expected) {
        HVLExpressionFun fun(&program);
        EXPECT_EQ(fun.GetFunctionType(), GenericFunction);
        // Later setters win, and a null expression changes nothing.
        fun.SetBalanceRecords(expression);
        if (type == DeriveFieldFunction)
            fun.SetDeriveField("double", expression);
        else if (type == ReclassifyFieldFunction)
            fun.SetReclassifyField("a", expression);
        else if (type == FilterRecordsFunction)
            fun.SetFilterRecords(expression);
        fun.SetDeriveField("other", nullptr);
        fun.SetReclassifyField("other", nullptr);
        fun.SetFilterRecords(nullptr);
        fun.SetBalanceRecords(nullptr);
        EXPECT_EQ(fun.GetFunctionType(), type);
        EXPECT_FALSE(fun.GenerateHVL()) << "without an input";
        fun.AddPredFunction(&read);
        EXPECT_TRUE(fun.GenerateHVL());
        job += std::string("\n") + step;
    }
    EXPECT_EQ(text(), job);
    expectToParse(job);
}
