#include "data/HVSplitRawData.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "Journal.h"
#include "MemorySource.h"

namespace {

namespace fs = std::filesystem;

std::size_t temporaryFiles()
{
    const fs::path folder = ExtNameStr(GetVexaTempPath()).GetNative();
    std::size_t count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        count += entry.path().filename().string().starts_with("hvadatafile_") ? 1 : 0;
    return count;
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
    ~SplitRawData() override { EXPECT_EQ(temporaryFiles(), 0U); }

    std::string served(HVRawDataIterator* cases)
    {
        std::string all;
        void* value = nullptr;
        unsigned long long length = 0;
        while (cases->nextRecord() == 0) {
            for (std::size_t i = 0; i < cases->getMetaData().FieldCount(); ++i) {
                cases->getRecordValue(i, value, length);
                if (!value)
                    all += "- ";
                else if (cases->getMetaData().GetField(i)->GetStorage() == CFField::String)
                    all += std::string(static_cast<char*>(value), length) + " ";
                else
                    all += CFDatum(*static_cast<double*>(value)).ToString(-1) + " ";
            }
            all += "; ";
        }
        return all;
    }

    MemorySource source;
    ProcedureDataSource procedure;
};

TEST_F(SplitRawData, ServesOneGroupAfterTheOther)
{
    const std::unique_ptr<VEXA_InputCaseIterator> cases(procedure.MakeIterator(nullptr));
    auto& groups = dynamic_cast<ProcDSIterator&>(*cases);
    ASSERT_EQ(cases->NextCase(), 1);
    const std::pair<const char*, const char*> expected[] = {{"one", "one 1 2 ; one 2 1 ; "},
                                                            {"two", "two 3 1 ; "}};
    for (const auto& [group, records] : expected) {
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
        EXPECT_EQ(served(iterator), records);
        EXPECT_EQ(data.CreateHVRawDataIter("again", kWeightRound, true, nullptr, true), iterator);
        EXPECT_TRUE(data.ClearHVRawDataIter());
        EXPECT_FALSE(data.IsDataReadFileOpen());
        EXPECT_EQ(served(data.CreateHVRawDataIter("cases", kWeightNone, true, nullptr, false)),
                  records);
        if (groups.SplitGroupEnd())
            groups.StartNextGroup();
    }
    EXPECT_EQ(cases->NextCase(), 0);
}

TEST_F(SplitRawData, MakesADictionaryOfItsOwn)
{
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    cases->NextCase();
    HVSplitRawData data(
        source, {1, -1, 0}, {"renamed", "empty", ""},
        {MeasurementLevel::Ordinal, MeasurementLevel::Nominal, MeasurementLevel::Nominal}, true);
    ASSERT_TRUE(data.FillDataFile(*cases));
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
    // The weight is not among the variables: the file is not weighted.
    EXPECT_EQ(served(iterator), "1 - one 1 ; 2 - one 2 ; 3 - two 3 ; ");

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
    EXPECT_TRUE(data.CompleteDataFile());
    EXPECT_FALSE(data.IsDataWriteFileOpen());
    EXPECT_EQ(served(data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false)),
              "5 ; 6 ; ");
}

TEST_F(SplitRawData, FailsForGoodAndSaysWhy)
{
    HostJournal::instance().clear();
    // Two variables of one name make no dictionary.
    HVSplitRawData data(source, {1, 1}, {}, false);
    const auto lines = HostJournal::instance().entries(HostJournal::Kind::Error);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].text.find("\"x\""), std::string::npos) << lines[0].text;
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    cases->NextCase();
    EXPECT_FALSE(data.FillDataFile(*cases));
    EXPECT_FALSE(data.AddNewCase(nullptr));
    EXPECT_FALSE(data.CompleteDataFile());
    EXPECT_EQ(data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false), nullptr);
    EXPECT_FALSE(data.ClearHVRawDataIter());
}

} // namespace
