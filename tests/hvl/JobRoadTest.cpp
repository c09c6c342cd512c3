#include <filesystem>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

#include "CFMetaData.h"
#include "bridge/JNIHvlExpression.h"
#include "data/HVSimpleContainer.h"
#include "data/SourceRows.h"
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
#include "support/Paths.h"
#include "support/ScratchFolder.h"

// Jobs from the builders through the program's text, the runner and the engine to a file.

namespace {

class JobRoad : public Composing
{
protected:
    void SetUp() override
    {
        folder.put("in.csv", "name,amount,note\n"
                             "a,1.5,first\n"
                             "b,2.5,\"with, comma\"\n"
                             "a,4,\n"
                             "c,0.5,last\n");
    }

    std::string url(const std::string& name) const
    {
        return NormalizeHvlPathU(folder.name(name), "file");
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

    /// The CSV text of what a step gives, with its records in the order of their texts.
    std::string sortedResultOf(HVLFunction& last)
    {
        HVLWrite write(&program);
        write.WriteCSV(url("out.csv"));
        write.AddPredFunction(&last);
        EXPECT_EQ(run(write), "");
        std::istringstream lines(folder.read("out.csv"));
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

    const ScratchFolder folder;
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
    EXPECT_EQ(folder.read("out.csv"), "name,total,n,largest\na,11.0,2,4.0\nb,5.0,1,2.5\n");
    const CFMetaData model(folder.read("out.xml"));
    ASSERT_EQ(model.FieldCount(), 4U);
    EXPECT_EQ(model.GetField(0)->GetStorage(), CFField::String);
    EXPECT_EQ(model.GetField(2)->GetStorage(), CFField::Integer);
}

TEST_F(JobRoad, FeedsRowsFromMemoryReclassifiesThemAndBalances)
{
    const MemorySource source({numeric("id"), numeric("a b")},
                              {{1.0, 10.0}, {2.0, kSystemMissing}, {3.0, 20.0}, {4.0, 7.0}});
    SourceRows rows(source);
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
    EXPECT_EQ(folder.read("out.csv"), "a b\n0.5\n\n20.0\n20.0\n");
}

TEST_F(JobRoad, JoinsAndUnitesFiles)
{
    folder.put("towns.csv", "town,Amount\na,10\nd,20\nc,\n");
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
    HVSimpleContainer container("model", folder.name("model.xml"));
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
        EXPECT_FALSE(folder.has("model.xml"));
        EXPECT_EQ(runText(job), "");
        EXPECT_EQ(folder.read("model.xml"), described);
        std::filesystem::remove(folder.path / "model.xml");

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
