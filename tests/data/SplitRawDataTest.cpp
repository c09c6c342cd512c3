#include "data/HVSplitRawData.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "Journal.h"
#include "TnOutput.h"
#include "data/SourceRows.h"
#include "support/FullDisk.h"
#include "support/HostScopes.h"

namespace {

namespace fs = std::filesystem;

/// Finished and unfinished ones.
std::vector<fs::path> temporaryFiles()
{
    const fs::path folder = ExtNameStr(GetVexaTempPath()).GetNative();
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().find("hvadatafile_") != std::string::npos)
            files.push_back(entry.path());
    return files;
}

/// Two groups of a split by a text of ten bytes.
class SplitRawData : public testing::Test
{
protected:
    SplitRawData()
        : source({text("group", 10), numeric("x"), numeric("w")}, {{std::string("one"), 1.0, 2.0},
                                                                   {std::string("one"), 2.0, 1.0},
                                                                   {std::string("two"), 3.0, 1.0}})
    {
        source.split = {0};
        source.weight = 2;
        procedure.SetDataset(&source);
    }
    ~SplitRawData() override { EXPECT_TRUE(temporaryFiles().empty()); }

    /// Fills a file from the first case on.
    bool filled(HVSplitRawData& data) const
    {
        const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
        cases->NextCase();
        return data.FillDataFile(*cases);
    }

    /// A file that has failed says so in each of its operations, and has told why in one line.
    void expectFailed(HVSplitRawData& data, const std::string& why, int level)
    {
        const auto lines = HostJournal::instance().entries(HostJournal::Kind::Error);
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_NE(lines[0].text.find(why), std::string::npos) << lines[0].text;
        EXPECT_EQ(lines[0].show, 2);
        EXPECT_EQ(lines[0].level, level);
        EXPECT_EQ(data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false), nullptr);
        EXPECT_FALSE(data.ClearHVRawDataIter());
        EXPECT_FALSE(data.AddNewCase(nullptr));
        EXPECT_FALSE(data.CompleteDataFile());
        EXPECT_FALSE(filled(data));
        EXPECT_EQ(HostJournal::instance().entries(HostJournal::Kind::Error).size(), 1U);
        HostJournal::instance().clear();
    }

    MemorySource source;
    ProcedureDataSource procedure;
};

TEST_F(SplitRawData, ServesOneGroupAfterTheOther)
{
    const std::unique_ptr<VEXA_InputCaseIterator> cases(procedure.MakeIterator(nullptr));
    auto& groups = dynamic_cast<ProcDSIterator&>(*cases);
    ASSERT_EQ(cases->NextCase(), 1);
    const std::tuple<const char*, const char*, double> expected[] = {
        {"one", "'one' 1 2; 'one' 2 1; ", 3}, {"two", "'two' 3 1; ", 1}};
    for (const auto& [group, records, weight] : expected) {
        HVSplitRawData data(procedure, {0, 1, 2}, {}, false);
        EXPECT_EQ(data.CreateHVRawDataIter("early", kWeightRound, true, nullptr, false), nullptr);
        EXPECT_TRUE(data.IsDataWriteFileOpen());
        ASSERT_TRUE(data.FillDataFile(*cases));
        EXPECT_EQ(procedure.SplitValues(), std::vector<std::string>{group});
        ASSERT_EQ(data.GetSplitValues().size(), 1U);
        EXPECT_EQ(std::string(data.GetSplitValues()[0]->text, 16),
                  std::string(group) + std::string(13, ' '));
        HVRawDataIterator* iterator =
            data.CreateHVRawDataIter("cases", kWeightRound, true, nullptr, true);
        ASSERT_NE(iterator, nullptr);
        EXPECT_EQ(iterator->getName(), "cases");
        EXPECT_TRUE(iterator->GetScoreIteration());
        EXPECT_TRUE(iterator->GetExcludeUserMissing());
        EXPECT_EQ(recordsOf(*iterator), records);
        EXPECT_EQ(iterator->GetWeightNCases(), weight);
        EXPECT_EQ(data.CreateHVRawDataIter("again", kWeightRound, true, nullptr, true), iterator);
        EXPECT_TRUE(data.ClearHVRawDataIter());
        EXPECT_FALSE(data.IsDataReadFileOpen());
        EXPECT_EQ(recordsOf(*data.CreateHVRawDataIter("cases", kWeightNone, true, nullptr, false)),
                  records);
        if (groups.SplitGroupEnd())
            groups.StartNextGroup();
    }
    EXPECT_EQ(cases->NextCase(), 0);
}

TEST_F(SplitRawData, MakesADictionaryOfItsOwn)
{
    HVSplitRawData data(
        source, {1, -1, 0}, {"renamed", "empty", ""},
        {MeasurementLevel::Ordinal, MeasurementLevel::Nominal, MeasurementLevel::Nominal}, true);
    ASSERT_TRUE(filled(data));
    EXPECT_EQ(data.GetNSysFileCases(), 3);
    EXPECT_EQ(data.GetNRecVars(), 3);
    HVRawDataIterator* iterator =
        data.CreateHVRawDataIter("cases", kWeightRound, nullptr, nullptr, false);
    ASSERT_NE(iterator, nullptr);
    const CFMetaData& model = iterator->getMetaData();
    ASSERT_EQ(model.FieldCount(), 4U);
    EXPECT_EQ(model.GetField(0)->GetName(), "renamed");
    EXPECT_EQ(model.GetField(0)->GetType(), CFField::Ordinal);
    EXPECT_EQ(model.GetField(2)->GetName(), "group");
    EXPECT_EQ(recordsOf(*iterator), "1 - 'one' 1; 2 - 'one' 2; 3 - 'two' 3; ");
    // The weight is not among the variables: the file is not weighted.
    EXPECT_EQ(iterator->GetWeightNCases(), 3);

    std::vector<std::string> names{"left over"};
    std::vector<std::string> labels{"left over", "too"};
    EXPECT_EQ(data.GetSplitNamesAndLabels(names, labels), 1);
    EXPECT_EQ(names, std::vector<std::string>{"group"});
    EXPECT_EQ(labels, std::vector<std::string>{""});
}

TEST_F(SplitRawData, TakesCasesThatTheCallerComposes)
{
    HVSplitRawData data(source, {1}, {}, false);
    for (const double value : {5.0, 6.0}) {
        data.GetBufferCase()->SetNumericValue(0, value);
        EXPECT_TRUE(data.AddNewCase(data.GetBufferCase()));
    }
    EXPECT_TRUE(data.AddNewCase(nullptr));
    EXPECT_TRUE(data.IsDataWriteFileOpen());
    data.CloseDataWriteFile();
    EXPECT_FALSE(data.IsDataWriteFileOpen());
    EXPECT_TRUE(data.CompleteDataFile());
    EXPECT_EQ(recordsOf(*data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false)),
              "5; 6; ");
}

TEST_F(SplitRawData, FailsForGoodAndSaysWhy)
{
    HostJournal::instance().clear();
    // Two variables of one name make no dictionary.
    HVSplitRawData twice(source, {1, 1}, {}, false);
    expectFailed(twice, "\"x\"", kLevelError);
    source.weight = 0;
    HVSplitRawData textWeight(source, {1, 0}, {}, false);
    expectFailed(textWeight, "weight variable \"group\" is a text", kLevelError);
    source.weight = -1;

    source.readable = 2;
    HVSplitRawData lost(source, {1}, {}, false);
    EXPECT_FALSE(filled(lost));
    EXPECT_EQ(lost.GetBufferCase(), nullptr);
    expectFailed(lost, "the source is lost", kLevelWarning);
    source.readable = 3;

    HVSplitRawData vanished(source, {1}, {}, false);
    ASSERT_TRUE(filled(vanished));
    ASSERT_EQ(temporaryFiles().size(), 1U);
    const fs::path file = temporaryFiles()[0];
    fs::rename(file, file.string() + ".away");
    EXPECT_EQ(vanished.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false), nullptr);
    fs::rename(file.string() + ".away", file);
    expectFailed(vanished, "hvadatafile_", kLevelError);
}

TEST_F(SplitRawData, AFullDiskFailsAndLeavesNothing)
{
    HostJournal::instance().clear();
    HVSplitRawData data(source, {0, 1, 2}, {}, false);
    {
        const FullDisk full(64);
        EXPECT_FALSE(filled(data));
    }
    EXPECT_TRUE(temporaryFiles().empty());
    expectFailed(data, "ulimit -f", kLevelError);
}

TEST_F(SplitRawData, HoldsOneGroup)
{
    HVSplitRawData data(source, {1}, {}, false);
    EXPECT_TRUE(data.OpenDataWriteFile());
    EXPECT_TRUE(data.OpenDataReadFile());
    EXPECT_FALSE(data.IsDataReadFileOpen());
    ASSERT_TRUE(filled(data));
    const std::unique_ptr<VEXA_InputCaseIterator> last(source.MakeIterator(nullptr));
    for (int i = 0; i < 3; ++i)
        last->NextCase();
    EXPECT_FALSE(data.FillDataFile(*last));
    EXPECT_EQ(std::string(data.GetSplitValues().at(0)->text, 3), "one");
    HVSplitRawData other(source, {1}, {}, false);
    EXPECT_FALSE(data.AddNewCase(other.GetBufferCase()));
    EXPECT_EQ(data.GetNSysFileCases(), 3);
    CFMetaData fields;
    fields.AppendField(CFField("days", CFField::Continuous, CFField::Integer, CFField::Target));
    const ACAVarValidSpecs specs;
    HVRawDataIterator* iterator =
        data.CreateHVRawDataIter("c", kWeightTruncate, &specs, &fields, false);
    ASSERT_NE(iterator, nullptr);
    EXPECT_EQ(iterator->getMetaData().GetField(0)->GetName(), "days");
    EXPECT_EQ(iterator->GetFreqWeightAdj(), kWeightTruncate);
    EXPECT_EQ(iterator->GetVarValidSpecs(), &specs);
    EXPECT_EQ(recordsOf(*iterator), "1; 2; 3; ");
    data.CloseDataReadFile(); // the iterator is left to the end
    EXPECT_EQ(data.GetHVRawDataIter(), iterator);
}

TEST_F(SplitRawData, TextsOfACodePageTakeTheirRoadThroughTheFile)
{
    const ScopedCodePage page("windows-1252");
    VEXA_Variable word = text("w\xf6rt", 4);
    word.SetMissingValues(std::vector<std::string>{"\xe4"});
    MemorySource latin({word}, {{std::string("\xf6\xf6\xf6\xf6")}, {std::string("\xe4")}});
    latin.split = {0};
    HVSplitRawData data(latin, {0}, {}, false);
    const std::unique_ptr<VEXA_InputCaseIterator> cases(latin.MakeIterator(nullptr));
    cases->NextCase();
    ASSERT_TRUE(data.FillDataFile(*cases));
    EXPECT_EQ(std::string(data.GetSplitValues().at(0)->text, 4), "\xf6\xf6\xf6\xf6");
    HVRawDataIterator* iterator = data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false);
    ASSERT_NE(iterator, nullptr);
    EXPECT_EQ(iterator->getMetaData().GetField(0)->GetName(), "wört");
    EXPECT_EQ(recordsOf(*iterator), "'öööö'; -; ");
}

TEST_F(SplitRawData, NamesVariablesWithoutValues)
{
    HVSplitRawData data(source, {-1, 1, -1}, {"", "EMPTY_1", ""}, {}, false);
    ASSERT_TRUE(filled(data));
    HVRawDataIterator* iterator =
        data.CreateHVRawDataIter("c", kWeightRound, false, nullptr, false);
    ASSERT_NE(iterator, nullptr);
    EXPECT_EQ(iterator->getMetaData().GetField(0)->GetName(), "empty_2");
    EXPECT_EQ(iterator->getMetaData().GetField(2)->GetName(), "empty_3");
    EXPECT_EQ(recordsOf(*iterator), "- 1 -; - 2 -; - 3 -; ");
}

} // namespace
