#include <limits>

#include "data/HVSimpleContainer.h"
#include "hvl/BuilderText.h"
#include "hvl/HVLDataModelBuilder.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLUpdateDataModel.h"

// The two steps that work on the data model, by the text of the whole job.

namespace {

using DataModelStep = BuilderText;
using Update = HVLUpdateDataModel;

/// The configuration of an update of the field "x".
std::string ofX(const std::string& properties)
{
    return R"({"fields":[{"name":"x")" + properties + "}]}";
}

/// Updates a field with each value of an enumeration, and one below and one past the words; these
/// are listed by value from 0 on, with null for a value without a word.
template <typename Enumeration>
std::vector<std::pair<std::string, std::string>> jobsOf(const std::string& key,
                                                        const std::vector<const char*>& words)
{
    std::vector<std::pair<std::string, std::string>> jobs;
    for (int value = -1; value <= static_cast<int>(words.size()); ++value) {
        JNIHvlProgram program;
        HVLUpdateDataModel update(&program);
        update.Update("x", static_cast<Enumeration>(value));
        EXPECT_EQ(update.SizeOfUpdate(), 1);
        EXPECT_TRUE(update.GenerateHVL());
        std::string text;
        program.getHvlText(text);
        const bool inTable = value >= 0 && value < static_cast<int>(words.size());
        const char* word = inTable ? words[static_cast<std::size_t>(value)] : nullptr;
        const std::string property = word ? std::string(",\"") + key + "\":\"" + word + "\"" : "";
        jobs.emplace_back(text, "val f1Conf = " + ofX(property) + "\nupdateDataModel(f1Conf)");
    }
    return jobs;
}

CFMissingValues missing(CFRange range, std::vector<CFValue> values)
{
    return {std::move(range), std::move(values), true, false};
}

} // namespace

TEST_F(DataModelStep, BuilderExportsToItsContainer)
{
    HVSimpleContainer file("Modell ü", "C:\\data\\a b.xml");
    const std::pair<std::function<void(HVLDataModelBuilder&)>, const char*> cases[] = {
        {[](HVLDataModelBuilder&) {}, "val f2Conf = {\"export\":true,\"name\":\"\",\"uri\":\"\"}\n"
                                      "read(f1Conf) -> dataModelBuilder(_, f2Conf)"},
        {[](HVLDataModelBuilder& builder) {
             builder.SetNormalizeDataModel(true);
             builder.SetNormalizeDataModel(false);
             builder.SetOutputContainer("model", "file:///a.xml");
         },
         "val f2Conf = {\"export\":true,\"name\":\"model\",\"uri\":\"file:///a.xml\"}\n"
         "read(f1Conf) -> dataModelBuilder(_, f2Conf)"},
        {[&](HVLDataModelBuilder& builder) {
             builder.SetNormalizeDataModel(true);
             builder.SetOutputContainer(file);
         },
         "val f2Conf = {\"normalizeDataModel\":true}\n"
         "val f2Conf2 = {\"export\":true,\"name\":\"Modell ü\",\"uri\":\"file:///C:/data/a "
         "b.xml\"}\n"
         "read(f1Conf) -> dataModelBuilder(f2Conf, f2Conf2)"},
    };
    for (const auto& [configure, job] : cases) {
        JNIHvlProgram own;
        HVLRead read(&own);
        read.ReadHVDatasource("rows");
        HVLDataModelBuilder builder(&own);
        EXPECT_EQ(builder.GetFunctionType(), DataModelBuilderFunction);
        configure(builder);
        builder.AddPredFunction(&read);
        EXPECT_TRUE(builder.GenerateHVL());
        EXPECT_TRUE(builder.GenerateHVL());
        std::string text;
        own.getHvlText(text);
        EXPECT_EQ(text, std::string("val f1Conf = {\"dataSource\":\"rows\"}\n") + job);
        expectToParse(text);
    }
    HVLDataModelBuilder alone(&program);
    EXPECT_TRUE(alone.GenerateHVL());
    EXPECT_EQ(text(), "val f1Conf = {\"export\":true,\"name\":\"\",\"uri\":\"\"}\n"
                      "dataModelBuilder(_, f1Conf)");
}

TEST_F(DataModelStep, UpdateHasAWordForEachMeasureStorageAndRole)
{
    const auto check = [](const auto& jobs) {
        for (const auto& [text, expected] : jobs)
            EXPECT_EQ(text, expected);
    };
    check(jobsOf<CFField::FieldType>(
        "measure", {"continuous", "nominal", "ordinal", "flag", "discrete", "typeless"}));
    check(jobsOf<CFField::StorageType>(
        "storage", {nullptr, "integer", "real", "string", "date", "time", "timestamp"}));
    check(jobsOf<CFField::RoleType>("role", {"input", "target", "both", "partition", "split",
                                             "freqWeight", "recordId", "none"}));
}

TEST_F(DataModelStep, UpdateKeepsOneEntryAField)
{
    const std::string label = "L \"x\" ä";
    HVLUpdateDataModel update(&program);
    EXPECT_FALSE(update.IsFieldSensitive());
    update.FieldSensitive(true);
    EXPECT_TRUE(update.IsFieldSensitive());
    update.Update("b", std::string("old"));
    update.Update("b", CFField::Flag);
    update.Update("B", static_cast<CFField::RoleType>(8));
    update.Update("ä", CFField::Target);
    update.Update("b", label);
    EXPECT_EQ(update.SizeOfUpdate(), 3);

    // Neither says anything, so they make no entry.
    update.Update("c", CFMissingValues());
    update.Update("c", missing({}, {}));
    update.Update("c", std::vector<CFValue>());
    EXPECT_EQ(update.SizeOfUpdate(), 3);

    EXPECT_TRUE(update.GenerateHVL());
    EXPECT_EQ(text(), "val f1Conf = {\"fields\":[{\"name\":\"B\"},"
                      "{\"name\":\"b\",\"displayLabel\":\"L \\\"x\\\" ä\",\"measure\":\"flag\"},"
                      "{\"name\":\"ä\",\"role\":\"target\"}]}\nupdateDataModel(f1Conf)");
}

TEST_F(DataModelStep, UpdateWritesValues)
{
    const std::vector<CFValue> labels = {CFValue(CFDatum(0.1), "tenth"), CFValue(CFDatum(2.0), ""),
                                         CFValue(CFDatum(-3), "three"), CFValue(CFDatum("a"), "A"),
                                         CFValue(CFDatum(), "none")};
    const std::string listed =
        R"([{"value":"0.1","displayLabel":"tenth"},{"value":"2","displayLabel":""},)"
        R"({"value":"-3","displayLabel":"three"},{"value":"a","displayLabel":"A"},)"
        R"({"value":"","displayLabel":"none"}])";
    const std::pair<CFMissingValues, const char*> cases[] = {
        {missing(CFRange(CFDatum(1.5), CFDatum(9.0)), {}), R"("minValue":1.5,"maxValue":9.0)"},
        {missing(CFRange(CFDatum(std::numeric_limits<std::int64_t>::min()), CFDatum(9)), {}),
         R"("minValue":-9223372036854775808,"maxValue":9)"},
        {missing(CFRange(CFDatum(), CFDatum(9)), {}), R"("maxValue":9)"},
        {missing(CFRange(CFDatum(1), CFDatum("9")), {CFValue(CFDatum(0.1), "label")}),
         R"("minValue":1,"Value":["0.1"])"},
        {missing(CFRange(CFDatum("a"), CFDatum("b")), {}), ""},
        {missing(CFRange(CFDatum("a"), CFDatum("b")), {CFValue(CFDatum("x")), CFValue()}),
         R"("Value":["x",""])"},
        {missing({}, {CFValue(CFDatum(99)), CFValue(CFDatum(-99.5))}), R"("Value":["99","-99.5"])"},
    };
    std::vector<std::string> expected = {ofX(",\"valueLabels\":" + listed)};
    std::vector<Case<Update>> updates = {
        {"value labels, the last ones hold",
         [&](Update& update) {
             update.Update("x", std::vector<CFValue>{CFValue(CFDatum(7), "seven")});
             update.Update("x", labels);
             update.Update("x", std::vector<CFValue>());
         },
         ""}};
    for (const auto& [declared, properties] : cases) {
        expected.push_back(ofX(std::string(",\"missingValues\":{") + properties + "}"));
        updates.push_back({"missing values",
                           [&values = declared](Update& update) { update.Update("x", values); },
                           ""});
    }
    for (std::size_t i = 0; i < updates.size(); ++i)
        updates[i].configuration = expected[i].c_str();
    check<Update>("updateDataModel", UpdateDataModelFunction, updates);
}

TEST_F(DataModelStep, UpdateWritesGeospatialProperties)
{
    check<Update>(
        "updateDataModel", UpdateDataModelFunction,
        {
            {"none", [](Update&) {}, R"({"fields":[]})"},
            {"each kind of shape; numbers are strings",
             [](Update& update) {
                 for (int type = -1; type <= 6; ++type)
                     update.Update(std::to_string(type + 2), static_cast<CFGeo::Type>(type), 2);
             },
             R"({"fields":[{"name":"1"},{"name":"2","Geo":{"type":"Point","coordinates":"2"}},)"
             R"({"name":"3","Geo":{"type":"MultiPoint","coordinates":"2"}},)"
             R"({"name":"4","Geo":{"type":"LineString","coordinates":"2"}},)"
             R"({"name":"5","Geo":{"type":"MultiLineString","coordinates":"2"}},)"
             R"({"name":"6","Geo":{"type":"Polygon","coordinates":"2"}},)"
             R"({"name":"7","Geo":{"type":"MultiPolygon","coordinates":"2"}},{"name":"8"}]})"},
            {"one coordinate, or nothing above 0",
             [](Update& update) {
                 update.Update("a", CFGeo::Point, 0);
                 update.Update("b", CFGeo::Point, -1, 0, "name", true, "WKT");
                 update.Update("c", CFGeo::Point, -1, -1, "name", true, "", 0, 0, 0, 0);
                 update.Update("d", CFGeo::Point, 1);
             },
             R"({"fields":[{"name":"a","Geo":{"type":"Point"}},)"
             R"({"name":"b","Geo":{"type":"Point","wkt":"WKT"}},)"
             R"({"name":"c","Geo":{"type":"Point","GeoEnvelope":{"leftUpperX":0.0,)"
             R"("leftUpperY":0.0,"rightLowerX":0.0,"rightLowerY":0.0}}},)"
             R"({"name":"d","Geo":{"type":"Point","coordinates":"1"}}]})"},
            {"all of it, after another kind",
             [](Update& update) {
                 update.Update("x", CFGeo::Point, 1, 1, "a", false, "b", 9, 9, 9, 9);
                 update.Update("x", CFField::Typeless);
                 update.Update("x", CFGeo::Polygon, 3, 4326, "WGS 84", true, "W \"84\"", -9.5,
                               71.25, 33, 34.5);
             },
             R"({"fields":[{"name":"x","Geo":{"type":"Polygon","coordinates":"3","wkid":"4326",)"
             R"("csname":"WGS 84","isProjected":true,"wkt":"W \"84\"","GeoEnvelope":{)"
             R"("leftUpperX":-9.5,"leftUpperY":71.25,"rightLowerX":33.0,"rightLowerY":34.5}},)"
             R"("measure":"typeless"}]})"},
            {"a type without a word leaves what was there",
             [](Update& update) {
                 update.Update("x", CFGeo::Point, 0, 5, "", false, "");
                 update.Update("x", static_cast<CFGeo::Type>(6), 2);
             },
             R"({"fields":[{"name":"x","Geo":{"type":"Point","wkid":"5","csname":"",)"
             R"("isProjected":false}}]})"},
            {"a copy and its source both go away",
             [](Update& update) {
                 update.Update("x", CFField::Integer);
                 HVLUpdateDataModel copy(update);
                 copy.Update("x", CFField::Nominal);
                 copy.Update("y", CFField::Nominal);
                 EXPECT_EQ(update.SizeOfUpdate(), 1);
                 update = copy;
             },
             R"({"fields":[{"name":"x","storage":"integer","measure":"nominal"},)"
             R"({"name":"y","measure":"nominal"}]})"},
        });
}
