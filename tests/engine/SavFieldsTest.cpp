#include "engine/EngineFixture.h"

#include "CFMetaData.h"
#include "engine/MissingValues.h"

using namespace EngineTest;
using testing::HasSubstr;

namespace {

/// One field of each storage, with all that a SAV file can say.
std::vector<CFField> everything()
{
    std::vector<CFField> all;
    all.emplace_back("i", CFField::Ordinal, CFField::Integer, CFField::FrequencyWeight);
    all.back().SetLabel("'The' \"i\";\nünd");
    all.back().SetValueLabels({CFValue(CFDatum(1), "one"),
                               CFValue(CFDatum(std::int64_t{1} << 60), "many"),
                               CFValue(CFDatum(2), "")});
    all.back().SetMissingValues(missing({CFDatum(90), CFDatum()}, -1));
    all.back().SetPrivateFormat(CFFormat(3, 12, 0));
    all.emplace_back("größe \"x\"", CFField::Continuous, CFField::Real, CFField::Target);
    all.back().SetMissingValues(missing({}, 1.5, -1e300, 0.1));
    all.emplace_back("s", CFField::Nominal, CFField::String, CFField::Split);
    all.back().SetValueLabels({CFValue(CFDatum("a'b"), "an apostrophe")});
    all.back().SetMissingValues(missing({}, "", "日本"));
    all.back().SetPrivateFormat(CFFormat(1, 9, 0));
    all.emplace_back("d", CFField::Flag, CFField::Date, CFField::Both);
    all.back().SetValueLabels({CFValue(CFDatum(11016.0), "leap day")});
    all.back().SetMissingValues(missing({CFDatum(), CFDatum(-5.0)}));
    all.emplace_back("t", CFField::Discrete, CFField::Time, CFField::Partition);
    all.back().SetMissingValues(missing({CFDatum(0.5), CFDatum(1.5)}));
    all.emplace_back("ts", CFField::Typeless, CFField::Timestamp, CFField::RecordId);
    all.back().SetPrivateFormat(CFFormat(22, 20, 2));
    all.emplace_back("n", CFField::Continuous, CFField::Integer, CFField::None);
    return all;
}

class SavFields : public EngineFixture
{
protected:
    /// Reads a SAV file and writes what came: its fields to m.xml, its records to o.csv.
    void readBack(const std::string& password)
    {
        const std::string parser =
            R"({"name": "sav", "config": {"dataPassword": ")" + password + "\"}}";
        succeeded(run(readFile("f.sav", parser) +
                      R"( -> dataModelBuilder(_, {"export": true, "name": "m",
                "uri": "$DIR/m.xml"}) -> )" +
                      writeCsv("o.csv")));
    }
    static std::string writeSav(const std::string& password)
    {
        return R"( -> write({"dataDestination": "$DIR/f.sav", "type": "application/x-vexa-sav",
            "dataPassword": ")" +
               password + "\"})";
    }
};

TEST_F(SavFields, ComeBackAsTheyWereAndSoDoTheRecords)
{
    CFMetaData model;
    for (const CFField& field : everything())
        model.AppendField(field);
    std::string xml;
    model.ExportXMLDoc(xml);
    write("model.xml", xml);
    const std::string csv = "i,\"größe \"\"x\"\"\",s,d,t,ts,n\n"
                            "1,0.3,a'b,2000-02-29,10:00:00,2000-02-29 23:59:59.5,7\n"
                            ",,,1969-12-28,00:00:02,1969-12-31 00:00:00,\n";
    write("in.csv", csv);
    for (const char* password : {"", "wörd"}) {
        const auto listener = succeeded(
            run(readCsv("in.csv", "", R"(, "dataModel": "$DIR/model.xml")") + writeSav(password)));
        EXPECT_TRUE(listener.messages.empty());
        readBack(password);
        EXPECT_EQ(read("m.xml"), xml);
        EXPECT_EQ(read("o.csv"), csv);
    }
}

TEST_F(SavFields, MissingValuesBeyondWhatAFileHoldsAreToldOf)
{
    write("in.csv", "x,k\n1,1\n7,2\n95,3\n2,4\n");
    const auto listener =
        succeeded(run(readCsv("in.csv") + R"( -> updateDataModel({"fields": [{"name": "x",
        "displayLabel": "L", "missingValues": {"minValue": 90, "Value": ["7", "1"]}}]}))" +
                      writeSav("")));
    ASSERT_EQ(listener.messages.size(), 1U);
    EXPECT_EQ(listener.messages[0].first, "HVEIO0021W");
    EXPECT_THAT(listener.messages[0].second, HasSubstr("f.sav: the field \"x\" has more"));
    readBack("");
    EXPECT_EQ(CFMetaData(read("m.xml")).GetField(0)->GetLabel(), "L");
    EXPECT_EQ(read("o.csv"), "x,k\n1,1\n,2\n,3\n2,4\n");
}

} // namespace
