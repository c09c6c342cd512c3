#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Attention.h"
#include "CommonBlocks.h"
#include "TnOutput.h"
#include "VexaDataSource.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "runner/HVStatContainer.h"
#include "runner/HVStatDataIterator.h"
#include "support/JournalTexts.h"
#include "support/ScriptedEngine.h"

/// A container that is only a name.
class NamedContainer : public HVStatContainer
{
public:
    explicit NamedContainer(std::string name) : _name(std::move(name)) {}
    std::string getName() const override { return _name; }
    std::string getAbsolutePath() const override { return "c:\\" + _name; }

private:
    std::string _name;
};

/// So many records without a field.
class CountedRows : public HVStatDataIterator
{
public:
    CountedRows(std::string name, int count) : _name(std::move(name)), _left(count) {}
    std::string getName() override { return _name; }
    std::string getDataModel() override { return "<DataModel/>"; }
    unsigned int nextRecord() override { return _left-- > 0 ? RecordAvailable : EndOfData; }
    unsigned int getRecordValue(unsigned long long, void*&, unsigned long long&) override
    {
        return EndOfData;
    }
    void dispose(JNIEnv*) override {}

private:
    std::string _name;
    int _left;
};

/// A scripted engine and a procedure over a dataset of three columns. After each test the host must
/// be as it was before: its weight and split, its interrupt handler.
class RunnerFixture : public ::testing::Test
{
protected:
    RunnerFixture() : procedure("TEST", &source)
    {
        source.SetColumns({"age", "sex", "price"});
        HostJournal::instance().clear();
        ClearAttention();
        pvGetCmnSys()->runIndicator = 0;
        pvGetCmnGlb()->weight = 3;
        pvGetCmnGlb()->split = 2;
    }
    ~RunnerFixture() override
    {
        EXPECT_EQ(pvGetCmnGlb()->weight, expectedWeight);
        EXPECT_EQ(pvGetCmnGlb()->split, expectedSplit);
        EXPECT_EQ(GetAdapter()->getInterruptHandler(), nullptr);
        ClearAttention();
    }

    static std::vector<HostJournal::Entry> journal(HostJournal::Kind kind)
    {
        return HostJournal::instance().entries(kind);
    }

    ScriptedEngine engine;
    ProcedureDataSource source;
    TnProcedure procedure;
    std::int64_t expectedWeight = 3;
    std::int64_t expectedSplit = 2;
};
