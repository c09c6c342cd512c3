#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

#include "CFMetaData.h"
#include "bridge/JNIHvlExpression.h"
#include "data/HVSimpleContainer.h"
#include "hvl/Composing.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLDataModelBuilder.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLJoin.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLUnion.h"
#include "hvl/HVLUpdateDataModel.h"
#include "hvl/HVLWrite.h"
#include "runner/HVProgressListener.h"
#include "runner/HVStatDataIterator.h"
#include "support/Paths.h"

// Jobs from the builders through the program's text, the runner and the engine to a file.

namespace {

/// Columns of doubles in memory; an absent value is missing.
class MemoryRows : public HVStatDataIterator
{
public:
    using Row = std::vector<std::optional<double>>;

    MemoryRows(std::vector<std::string> names, std::vector<Row> rows)
        : _names(std::move(names)), _rows(std::move(rows))
    {
    }

    std::string getName() override { return "memory"; }

    std::string getDataModel() override
    {
        CFMetaData model;
        for (const std::string& name : _names)
            model.AppendField(CFField(name, CFField::Continuous, CFField::Real));
        std::string xml;
        model.ExportXMLDoc(xml);
        return xml;
    }

    unsigned int nextRecord() override
    {
        return _next++ < _rows.size() ? RecordAvailable : EndOfData;
    }

    unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                unsigned long long& length) override
    {
        auto& cell = _rows.at(_next - 1).at(fieldIndex);
        value = cell ? &*cell : nullptr;
        length = cell ? sizeof(double) : 0;
        return RecordAvailable;
    }

    void dispose(JNIEnv*) override {}

private:
    std::vector<std::string> _names;
    std::vector<Row> _rows;
    std::size_t _next = 0;
};

class JobRoad : public Composing
{
protected:
    void SetUp() override
    {
        std::string name = (std::filesystem::temp_directory_path() / "job_road_XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        _directory = name;
        std::ofstream(path("in.csv")) << "name,amount,note\n"
                                         "a,1.5,first\n"
                                         "b,2.5,\"with, comma\"\n"
                                         "a,4,\n"
                                         "c,0.5,last\n";
    }

    void TearDown() override { std::filesystem::remove_all(_directory); }

    std::string path(const std::string& name) const { return _directory + "/" + name; }
    std::string url(const std::string& name) const { return NormalizeHvlPathU(path(name), "file"); }

    std::string content(const std::string& name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /// Generates the chain that ends here and runs it; the error's text, empty for none.
    std::string run(HVLFunction& last, HVStatDataIterator* rows = nullptr)
    {
        if (!last.GenerateHVL())
            return "not generated";
        return runText(text(), rows);
    }

    std::string runText(const std::string& job, HVStatDataIterator* rows = nullptr)
    {
        runner.prepareHVLJob(job);
        if (rows != nullptr)
            runner.addInputIterator(rows);
        const bool isDone = runner.execute();
        std::string id;
        std::string error;
        std::string detail;
        const bool hasError = runner.getProgressListener()->hasError(id, error, detail);
        EXPECT_NE(isDone, hasError) << job;
        runner.cleanExecution();
        return error;
    }

    /// Reads with one builder and writes with another, in a program of its own.
    std::string convert(const std::function<void(HVLRead&)>& source,
                        const std::function<void(HVLWrite&)>& destination)
    {
        JNIHvlProgram own;
        HVLRead read(&own);
        source(read);
        HVLWrite write(&own);
        destination(write);
        write.AddPredFunction(&read);
        EXPECT_TRUE(write.GenerateHVL());
        std::string job;
        own.getHvlText(job);
        return runText(job);
    }

    /// The CSV text of what a step gives, with its records in the order of their texts.
    std::string sortedResultOf(HVLFunction& last)
    {
        HVLWrite write(&program);
        write.WriteCSV(url("out.csv"));
        write.AddPredFunction(&last);
        EXPECT_EQ(run(write), "");
        std::istringstream lines(content("out.csv"));
        std::string header;
        std::getline(lines, header);
        std::multiset<std::string> records;
        for (std::string line; std::getline(lines, line);)
            records.insert(line);
        std::string result = header + "\n";
        for (const std::string& record : records)
            result += record + "\n";
        return result;
    }

private:
    std::string _directory;
};

} // namespace

TEST_F(JobRoad, DerivesFiltersAndAggregatesAFile)
{
    HVLRead read(&program);
    read.ReadCSV(url("in.csv"), true);
    HVLExpressionFun derive(&program);
    std::vector<JNIHvlExpression*> fields = {program.createHvlExpressionFieldReference("amount"),
                                             program.createHvlExpressionLiteral(2)};
    derive.SetDeriveField("twice the amount", program.createHvlExpression("%s * %s", &fields));
    derive.AddPredFunction(&read);
    HVLExpressionFun filter(&program);
    std::vector<JNIHvlExpression*> compared = {
        program.createHvlExpressionFieldReference("twice the amount"),
        program.createHvlExpressionLiteral(1.5)};
    filter.SetFilterRecords(program.createHvlExpression("%s > %s", &compared));
    filter.AddPredFunction(&derive);
    HVLAggregate aggregate(&program);
    aggregate.AddAggregate("key", "name", "name");
    aggregate.AddAggregate("sum", "twice the amount", "total");
    aggregate.AddAggregate("count", "", "n");
    aggregate.AddPercentileAggregate(100, "amount", "largest");
    aggregate.AddPredFunction(&filter);
    HVLWrite write(&program);
    write.WriteCSV(url("out.csv"));
    write.SetDataModel(url("out.xml"));
    write.AddPredFunction(&aggregate);

    EXPECT_EQ(run(write), "");
    EXPECT_EQ(content("out.csv"), "name,total,n,largest\na,11.0,2,4.0\nb,5.0,1,2.5\n");
    const CFMetaData model(content("out.xml"));
    ASSERT_EQ(model.FieldCount(), 4U);
    EXPECT_EQ(model.GetField(0)->GetStorage(), CFField::String);
    EXPECT_EQ(model.GetField(2)->GetStorage(), CFField::Integer);
}

TEST_F(JobRoad, CarriesEveryFileFormBackToTheSameTable)
{
    const std::string expected = "name,amount,note\na,1.5,first\nb,2.5,\"with, comma\"\na,4.0,\n"
                                 "c,0.5,last\n";
    const auto csv = [&](HVLRead& read) { read.ReadCSV(url("in.csv"), true); };
    const auto out = [&](HVLWrite& write) { write.WriteCSV(url("out.csv")); };
    EXPECT_EQ(convert(csv, [&](HVLWrite& write) { write.WriteSAV(url("a.sav"), ""); }), "");
    EXPECT_EQ(convert(csv, [&](HVLWrite& write) { write.WriteSAV(url("b.sav"), "Ünlocked"); }), "");
    EXPECT_EQ(convert(csv, [&](HVLWrite& write) { write.WriteHVBF(url("a.hvbf")); }), "");
    EXPECT_EQ(convert(csv, [&](HVLWrite& write) { write.WriteHVDatasource("kept", false); }), "");
    const std::function<void(HVLRead&)> sources[] = {
        [&](HVLRead& read) { read.ReadSAV(url("a.sav"), ""); },
        [&](HVLRead& read) { read.ReadSAV(url("b.sav"), "Ünlocked"); },
        [&](HVLRead& read) { read.ReadHVBF(url("a.hvbf")); },
        [&](HVLRead& read) { read.ReadHVDatasource("kept"); },
    };
    for (const auto& source : sources) {
        EXPECT_EQ(convert(source, out), "");
        EXPECT_EQ(content("out.csv"), expected);
        std::filesystem::remove(path("out.csv"));
    }

    // A wrong password names the file and leaves nothing behind.
    const std::string error =
        convert([&](HVLRead& read) { read.ReadSAV(url("b.sav"), "locked"); }, out);
    EXPECT_NE(error.find("b.sav"), std::string::npos) << error;
    EXPECT_FALSE(std::filesystem::exists(path("out.csv")));
}

TEST_F(JobRoad, FeedsRowsFromMemoryReclassifiesThemAndBalances)
{
    MemoryRows rows({"id", "a b"}, {{1, 10}, {2, std::nullopt}, {3, 20}, {4, 7}});
    HVLRead read(&program);
    read.ReadIterator(rows);
    read.SetMaxCaseCount(3);
    HVLExpressionFun reclassify(&program);
    reclassify.SetReclassifyField(
        "a b", program.createHvlExpression("if (x.id == 1) 0.5 else x.`a b`", nullptr));
    reclassify.AddPredFunction(&read);
    HVLExpressionFun balance(&program);
    balance.SetBalanceRecords(program.createHvlExpression("if (x.id == 3) 2 else 1", nullptr));
    balance.AddPredFunction(&reclassify);
    HVLFilterFields fields(&program);
    fields.KeepFieldNames(std::vector<std::string>{"a b"});
    fields.AddPredFunction(&balance);
    HVLWrite write(&program);
    write.WriteCSV(url("out.csv"));
    write.AddPredFunction(&fields);
    EXPECT_EQ(run(write, &rows), "");
    EXPECT_EQ(content("out.csv"), "a b\n0.5\n\n20.0\n20.0\n");
}

TEST_F(JobRoad, JoinsAndUnitesFiles)
{
    std::ofstream(path("towns.csv")) << "town,Amount\na,10\nd,20\nc,\n";
    HVLRead people(&program);
    people.ReadCSV(url("in.csv"), true);
    HVLRead towns(&program);
    towns.ReadCSV(url("towns.csv"), true);
    HVLAggregate names(&program);
    names.AddAggregate("key", "name", "name");
    names.AddPredFunction(&people);

    struct JoinCase
    {
        HVLJoin::JoinType type;
        std::vector<std::size_t> nonMatching;
        std::vector<std::string> fields;
        const char* result; ///< in the order of the rows' texts
    };
    const JoinCase cases[] = {
        {HVLJoin::Inner, {}, {"name"}, "name,town\na,a\nc,c\n"},
        {HVLJoin::Outer, {0}, {"name"}, "name,town\na,a\nb,\nc,c\n"},
        {HVLJoin::Outer, {1}, {"name"}, "name,town\n,d\na,a\nc,c\n"},
        {HVLJoin::Anti, {0}, {"name"}, "name\nb\n"},
        {HVLJoin::Anti, {1}, {}, "town\nd\n"},
        {HVLJoin::Cartesian,
         {},
         {"name"},
         "name,town\na,a\na,c\na,d\nb,a\nb,c\nb,d\nc,a\nc,c\nc,d\n"},
    };
    for (const auto& [type, nonMatching, fields, result] : cases) {
        SCOPED_TRACE(result);
        HVLJoin join(&program);
        join.AddPredFunction(&names);
        join.AddPredFunction(&towns);
        join.SetJoinType(type);
        join.AddMatchField(0, "name", 1, "town");
        join.SetOutputFieldNames(0, fields);
        if (type != HVLJoin::Anti || fields.empty())
            join.SetOutputFieldNames(1, {"town"});
        for (const std::size_t source : nonMatching)
            join.AddNonMatchingSource(source);
        EXPECT_EQ(sortedResultOf(join), result);
    }

    for (const auto& [byPosition, matchCase, result] :
         {std::tuple{false, false, "name,town\n,a\n,c\n,d\na,\nb,\nc,\n"},
          std::tuple{true, true, "name\na\na\nb\nc\nc\nd\n"}}) {
        HVLFilterFields town(&program);
        town.KeepFieldNames("town");
        town.AddPredFunction(&towns);
        HVLUnion all(&program);
        all.SetMatchByPosition(byPosition);
        all.SetMatchCase(matchCase);
        all.AddPredFunction(&names);
        all.AddPredFunction(&town);
        EXPECT_EQ(sortedResultOf(all), result);
    }
}

TEST_F(JobRoad, UpdatesAndExportsADataModelAndTellsItWithoutRunning)
{
    HVSimpleContainer container("model", path("model.xml"));
    for (const bool isNormalized : {false, true}) {
        SCOPED_TRACE(isNormalized);
        JNIHvlProgram own;
        HVLRead read(&own);
        read.ReadCSV(url("in.csv"), true);
        HVLUpdateDataModel update(&own);
        update.Update("amount", std::string("Amount \"a\""));
        update.Update("amount", CFField::Target);
        update.Update("amount", CFMissingValues({CFDatum(1.5), CFDatum(9)}, {CFValue(CFDatum(-1))},
                                                true, false));
        update.Update("amount", std::vector<CFValue>{CFValue(CFDatum(0.5), "half")});
        update.Update("note", CFField::Typeless);
        update.Update("name", CFGeo::Polygon, 2, 4326, "WGS 84", true, "W", -9.5, 71.25, 33, 34.5);
        update.AddPredFunction(&read);
        HVLDataModelBuilder builder(&own);
        builder.SetOutputContainer(container);
        builder.SetNormalizeDataModel(isNormalized);
        builder.AddPredFunction(&update);
        ASSERT_TRUE(builder.GenerateHVL());
        std::string job;
        own.getHvlText(job);

        std::string described;
        EXPECT_TRUE(runner.getMetadata(job, container, described));
        EXPECT_FALSE(std::filesystem::exists(path("model.xml")));
        EXPECT_EQ(runText(job), "");
        EXPECT_EQ(content("model.xml"), described);
        std::filesystem::remove(path("model.xml"));

        const CFMetaData model(described);
        ASSERT_EQ(model.FieldCount(), 3U);
        CFField amount("amount", CFField::Continuous, CFField::Real, CFField::Target);
        amount.SetLabel("Amount \"a\"");
        amount.SetValueLabels({CFValue(CFDatum(0.5), "half")});
        amount.SetMissingValues(
            {{CFDatum(1.5), CFDatum(9.0)}, {CFValue(CFDatum(-1.0))}, true, false});
        EXPECT_TRUE(*model.GetField("amount") == amount) << described;
        ASSERT_NE(model.GetField("name")->GetGeo(), nullptr);
        EXPECT_EQ(model.GetField("name")->GetGeo()->GetWkid(), 4326);
        EXPECT_EQ(model.GetField("note")->GetType(),
                  isNormalized ? CFField::Nominal : CFField::Typeless);
    }
    // A job that cannot run has no data model; the empty text alone says so.
    std::string described = "before";
    EXPECT_TRUE(runner.getMetadata("dataModelBuilder(_)", container, described));
    EXPECT_EQ(described, "");
}
