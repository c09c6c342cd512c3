#include "data/IteratorConversion.h"

#include <cstdlib>

#include "CFMetaData.h"
#include "OutputTree.h"
#include "data/SourceRows.h"
#include "support/HVDebug.h"
#include "support/JobFixture.h"
#include "support/ScratchFolder.h"

// The program runs once for each value of HV_STAT_ITER_OPT, since a process asks for it once.

namespace {

const char* const kOption = std::getenv("HV_STAT_ITER_OPT");
/// What the environment asks for; 0 for no copy.
const int kWanted = kOption && std::atoi(kOption) <= 3 ? std::atoi(kOption) : 0;
const char* const kWords[] = {"", "HVBF", "CSV", "SAV"};
const char* const kExtensions[] = {"", ".hvbf", ".csv", ".sav"};

std::vector<std::shared_ptr<OutputTable>> tablesUnder(const TnHeading& heading)
{
    std::vector<std::shared_ptr<OutputTable>> tables;
    for (const OutputItem& item : heading.node()->items)
        if (const auto* table = std::get_if<std::shared_ptr<OutputTable>>(&item))
            tables.push_back(*table);
    return tables;
}

class Conversion : public JobTest
{
protected:
    const ScratchFolder& folder() const { return *_folder; }

    int convert(const std::string& data, const std::string& model, HVDebug* debug = nullptr)
    {
        return IteratorConversion(&rows, &*runner, debug, folder().name(data),
                                  folder().name(model));
    }

    /// Whether a file holds the two records, as its kind has them.
    void expectRecords(const std::string& file) const
    {
        const std::string content = folder().read(file);
        if (kWanted == 2)
            EXPECT_EQ(content, "x,name\n1.5,a\n,b\n");
        else
            EXPECT_EQ(content.substr(0, 4), "PAR1");
    }

    void TearDown() override
    {
        _folder.reset();
        JobTest::TearDown();
    }

    MemorySource source{{numeric("x"), text("name", 4)}, {{1.5, "a"}, {kSystemMissing, "b"}}};
    SourceRows rows{source, "cases", kWeightNone};

private:
    std::optional<ScratchFolder> _folder{std::in_place};
};

TEST_F(Conversion, CopiesWhatTheEnvironmentAsksFor)
{
    EXPECT_EQ(convert("data", "model.xml"), kWanted);
    EXPECT_EQ(folder().has("data"), kWanted != 0);
    EXPECT_EQ(folder().has("model.xml"), kWanted != 0);
    if (kWanted != 0) {
        expectRecords("data");
        EXPECT_EQ(CFMetaData(folder().read("model.xml")).GetFieldIndex("name"), 1);
    }
    // The process has made up its mind.
    setenv("HV_STAT_ITER_OPT", kWanted == 2 ? "3" : "2", 1);
    EXPECT_EQ(convert("again", "again.xml"), kWanted);
    if (kWanted == 2)
        expectRecords("again");
}

TEST_F(Conversion, MakesUpNamesThatAreFree)
{
    const std::string extension = kExtensions[kWanted];
    for (const std::string number : {"", "_1"}) {
        std::string data = "as it was";
        std::string model = data;
        EXPECT_EQ(
            IteratorConversion(&rows, &*runner, nullptr, folder().name(std::string()), data, model),
            kWanted);
        if (kWanted == 0) {
            EXPECT_EQ(data + model, "as it wasas it was");
            continue;
        }
        EXPECT_EQ(data, folder().name("hv_stats_cases" + number + extension));
        EXPECT_EQ(model, folder().name("hv_stats_cases" + number + ".xml"));
        expectRecords("hv_stats_cases" + number + extension);
    }
}

TEST_F(Conversion, WithoutIteratorOrRunnerIsAnError)
{
    std::string data;
    std::string model;
    const std::string directory = folder().name(std::string());
    EXPECT_EQ(IteratorConversion(nullptr, &*runner, nullptr, "a", "b"), -1);
    EXPECT_EQ(IteratorConversion(nullptr, &*runner, nullptr, directory, data, model), -1);
    EXPECT_EQ(IteratorConversion(&rows, nullptr, nullptr, "a", "b"), kWanted == 0 ? 0 : -1);
    EXPECT_EQ(IteratorConversion(&rows, nullptr, nullptr, directory, data, model), 0);
}

TEST_F(Conversion, AFailedCopyLeavesTheRunnerUsable)
{
    EXPECT_EQ(convert("missing\\data", "missing\\model.xml"), 0);
    EXPECT_EQ(convert("data", "model.xml"), kWanted);
}

TEST_F(Conversion, WhatTheEngineThrowsIsAFailedCopyAtMost)
{
    for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown}) {
        SCOPED_TRACE(nameOf(fault));
        ScriptedEngine engine;
        engine.throwAt("execute", fault);
        EXPECT_EQ(convert("data", "model.xml"), 0);
        EXPECT_EQ(openExecutions(engine), 0);
        engine.throwAt("execute", Fault::None);
        engine.throwAt("addInputIterator", fault);
        if (kWanted != 0) {
            EXPECT_ANY_THROW(convert("data", "model.xml"));
        }
        EXPECT_EQ(openExecutions(engine), 0);
    }
    EXPECT_EQ(convert("data", "model.xml"), kWanted);
}

TEST_F(Conversion, TellsTheTimingLogBeforeAndAfter)
{
    OutputTree::instance().clear();
    {
        HVDebug debug(&procedure);
        convert("data", "model.xml", &debug);
    }
    std::vector<std::string> lines;
    for (const auto& table : tablesUnder(procedure))
        for (int row = 0; row < table->dimensions[0].leafCount; ++row)
            lines.push_back(table->cells.at({row, 0})->content.text);
    const std::string what = std::string("converting HVRawDataIterator to ") + kWords[kWanted];
    EXPECT_EQ(lines, kWanted == 0
                         ? std::vector<std::string>()
                         : (std::vector<std::string>{"Start " + what + " cases", "Done " + what}));
}

} // namespace
