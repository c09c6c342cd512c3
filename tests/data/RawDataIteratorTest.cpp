#include "data/HVRawDataIterator.h"

#include <gtest/gtest.h>

#include <sstream>

#include "ErrorText.h"
#include "HostConversions.h"
#include "VexaDataViews.h"
#include "data/HVDataModel.h"
#include "data/SourceRows.h"
#include "host/CaseFiles.h"
#include "support/CountedAllocations.h"
#include "support/HostScopes.h"

namespace {

constexpr double kMissing = kSystemMissing;

TEST(RawDataIterator, ServesEachStorageOnTheEnginesScale)
{
    const double base = GetBaseDateNumber();
    MemorySource source({numeric("real"), numeric("date", kFormatDate),
                         numeric("time", kFormatTime), numeric("stamp", kFormatDateTime),
                         text("text", 10)},
                        {{2.5, base + 2 * 86400, 3600.0, base + 1.5, std::string("ab \n ")},
                         {kMissing, kMissing, kMissing, kMissing, std::string(" ")}});
    SourceRows cases(source, "rows", kWeightRound, true);
    EXPECT_EQ(recordsOf(cases), "2.5 2 3600 1.5 'ab' 1; - - - - ' ' 2; ");
    void* value = &source;
    unsigned long long length = 42;
    EXPECT_EQ(cases.getRecordValue(0, value, length), 1U);
    EXPECT_EQ(value, &source);
    EXPECT_EQ(length, 42U);
    EXPECT_EQ(cases.nextRecord(), 1U);
    EXPECT_EQ(cases.GetStatDSIter(), nullptr);
}

TEST(RawDataIterator, TrimsTexts)
{
    struct Row
    {
        const char* text;
        const char* inUtf8;
        const char* inCodePage;
    };
    for (const Row& row : {Row{" ", "' '; ", "' '; "}, Row{"\t\n\t", "'\t'; ", "'\t\n\t'; "},
                           Row{" a\t \n", "' a'; ", "' a\t'; "}}) {
        const std::string text_(row.text);
        const MemorySource source({text("t", static_cast<int>(text_.size()))}, {{text_}});
        SourceRows cases(source);
        EXPECT_EQ(recordsOf(cases), row.inUtf8);
        const ScopedCodePage page("windows-1252");
        SourceRows converted(source);
        EXPECT_EQ(recordsOf(converted), row.inCodePage);
    }
}

TEST(RawDataIterator, ExcludesUserMissingValues)
{
    const double base = GetBaseDateNumber();
    VEXA_Variable number = numeric("n");
    number.SetMissingRange(8, 9, -1);
    VEXA_Variable date = numeric("d", kFormatDate);
    date.SetMissingValues(std::vector<double>{base});
    VEXA_Variable word = text("t", 12);
    word.SetMissingValues(std::vector<std::string>{"none"});
    const MemorySource source({number, date, word},
                              {{8.5, base, std::string("none")},
                               {-1.0, base + 86400, std::string("nonetheless")},
                               {7.0, base, std::string("x")}});
    SourceRows excluded(source);
    EXPECT_EQ(recordsOf(excluded), "- - -; - 1 'nonetheless'; 7 - 'x'; ");
    const std::string before = excluded.getDataModel();
    excluded.UpdateUserMissing();
    EXPECT_EQ(excluded.getDataModel(), before);

    SourceRows kept(source);
    kept.SetExcludeUserMissing(false);
    EXPECT_TRUE(kept.getMetaData().GetField(0)->GetMissingValues().IsValid());
    kept.UpdateUserMissing();
    EXPECT_FALSE(kept.getMetaData().GetField(0)->GetMissingValues().IsValid());
    EXPECT_FALSE(CFMetaData(kept.getDataModel()).GetField(2)->GetMissingValues().IsValid());
    EXPECT_EQ(recordsOf(kept), "8.5 0 'none'; -1 1 'nonetheless'; 7 0 'x'; ");

    // By variable: a variable without a description is not touched.
    ACAVarValidSpecs specs;
    specs.SetExclUserMiss(0, false);
    specs.SetExclUserMiss(1, true);
    SourceRows chosen(source);
    chosen.SetVarValidSpecs(&specs);
    chosen.UpdateUserMissing();
    EXPECT_FALSE(chosen.getMetaData().GetField(0)->GetMissingValues().IsValid());
    EXPECT_TRUE(chosen.getMetaData().GetField(1)->GetMissingValues().IsValid());
    EXPECT_FALSE(chosen.getMetaData().GetField(2)->GetMissingValues().IsValid());
    EXPECT_EQ(recordsOf(chosen), "8.5 - 'none'; -1 1 'nonetheless'; 7 - 'x'; ");
}

struct WeightCase
{
    WeightAdjust adjust;
    std::vector<double> weights;
    std::string served;
    int valid;
    double validWeight;
    bool good;
    bool integers;
};

TEST(RawDataIterator, WeighsCasesAndCountsThemOnce)
{
    const WeightCase cases[] = {
        {kWeightRound, {0.4}, "", 0, 0, false, false},
        {kWeightRound, {2.5, 1}, "3; 1; ", 2, 4, true, false},
        {kWeightTruncate, {2.5, 0.9}, "2; ", 1, 2, true, true},
        {kWeightUnchanged, {2.5, -1, 0, kMissing}, "2.5; ", 1, 2.5, true, true},
        {kWeightRound, {-3, kMissing, 2}, "2; ", 1, 2, true, true},
        {kWeightNone, {-3, 2.5, kMissing}, "-3; 2.5; -; ", 3, 3, true, true},
    };
    for (const WeightCase& row : cases) {
        std::vector<MemorySource::Row> rows;
        for (const double weight : row.weights)
            rows.push_back({weight});
        MemorySource source({numeric("w")}, rows);
        source.weight = 0;
        SourceRows iterator(source, "rows", row.adjust);
        EXPECT_EQ(recordsOf(iterator), row.served);
        EXPECT_EQ(iterator.Rewind(true), 0U);
        EXPECT_EQ(recordsOf(iterator), row.served);
        const int count = static_cast<int>(row.weights.size());
        EXPECT_EQ(iterator.GetNCases(), count);
        EXPECT_EQ(iterator.GetNValidCases(), row.valid);
        EXPECT_EQ(iterator.GetNInvalidCases(), count - row.valid);
        EXPECT_EQ(iterator.GetWeightNValidCases(), row.validWeight);
        EXPECT_EQ(iterator.GetWeightNCases(), row.validWeight);
        EXPECT_EQ(iterator.GetWeightNInvalidCases(), 0);
        EXPECT_EQ(iterator.AreAllWeightsGood(), row.good) << row.served;
        EXPECT_EQ(iterator.AreAllWeightsIntegers(), row.integers) << row.served;
    }
}

TEST(RawDataIterator, KnowsTheRoleOfTheWeight)
{
    MemorySource source({numeric("a"), numeric("w")}, {{1.0, 2.0}});
    source.weight = 1;
    EXPECT_EQ(SourceRows(source).getMetaData().GetField(1)->GetRole(), CFField::FrequencyWeight);
    SourceRows unweighted(source, "rows", kWeightNone);
    EXPECT_EQ(unweighted.getMetaData().GetField(1)->GetRole(), CFField::Input);
    unweighted.SetFreqWeightAdj(kWeightUnchanged);
    EXPECT_EQ(unweighted.GetFreqWeightAdj(), kWeightNone);
    SourceRows weighted(source);
    weighted.SetFreqWeightAdj(kWeightNone);
    EXPECT_EQ(weighted.GetFreqWeightAdj(), kWeightRound);
    // The weight is found among the columns that are served.
    HVRawDataIterator turned(source, std::vector<int>{1, -1, 0}, {}, false, kWeightRound, false,
                             nullptr);
    EXPECT_EQ(recordsOf(turned), "2 1; ");
    EXPECT_EQ(turned.GetWeightNCases(), 2);
}

TEST(RawDataIterator, ACopyHasNumbersOfItsOwn)
{
    const MemorySource source({numeric("n")}, {{1.0}, {2.0}});
    SourceRows first(source);
    first.nextRecord();
    HVRawDataIterator copy(first);
    first.nextRecord();
    EXPECT_EQ(recordOf(copy, copy.getMetaData()), "1");
}

TEST(RawDataIterator, IncrementsOneField)
{
    struct Row
    {
        int target;
        int source;
        double value;
        const char* served;
    };
    const MemorySource source({numeric("a"), numeric("b"), numeric("c")},
                              {{1.0, 10.0, 100.0}, {kMissing, kMissing, kMissing}});
    for (const Row& row :
         {Row{1, -1, 5, "1 5 100; - 5 -; "}, Row{1, 2, 5, "1 5 100; - 5 -; "},
          Row{1, 2, kMissing, "1 10 100; - - -; "}, Row{1, 1, 5, "1 15 100; - - -; "},
          Row{1, 0, 5, "1 6 100; - - -; "}, Row{1, 0, kMissing, "1 1 100; - - -; "}}) {
        SourceRows cases(source);
        EXPECT_EQ(cases.GetIncrTargetVarInd(), -1);
        EXPECT_EQ(cases.GetIncrSourceVarInd(), -1);
        cases.SetVariableIncrement(row.target, row.source, row.value);
        EXPECT_EQ(cases.GetIncrSourceVarInd(), row.source);
        EXPECT_EQ(cases.GetIncrVarValue(), row.value);
        EXPECT_EQ(recordsOf(cases), row.served) << row.source << " " << row.value;
    }
}

TEST(RawDataIterator, TheWeightIsIncrementedFirstAndServesAdjusted)
{
    MemorySource source({numeric("w"), numeric("x")}, {{1.4, 1.0}, {-1.0, 2.0}, {-0.6, 3.0}});
    source.weight = 0;
    SourceRows grown(source);
    grown.SetVariableIncrement(0, 0, 1);
    EXPECT_EQ(recordsOf(grown), "2 1; ");
    EXPECT_FALSE(grown.AreAllWeightsGood()); // 0.4
    SourceRows read(source);
    read.SetVariableIncrement(1, 0, 10);
    EXPECT_EQ(recordsOf(read), "1 11; ");
}

TEST(RawDataIterator, OnlyARealFieldWeighs)
{
    MemorySource source({text("w", 2), numeric("x")}, {{std::string("0"), 0.0}});
    source.weight = 0;
    SourceRows cases(source);
    EXPECT_EQ(recordsOf(cases), "'0' 0; ");
    EXPECT_EQ(cases.GetWeightNCases(), 1);
    source.weight = 1;
    CFMetaData fields;
    fields.AppendField(CFField("w", CFField::Nominal, CFField::String, CFField::Input));
    fields.AppendField(CFField("x", CFField::Continuous, CFField::Integer, CFField::Input));
    // A field without a column is the case count, whatever its description is.
    CFField count("n", CFField::Nominal, CFField::String, CFField::Input);
    count.SetMissingValues(CFMissingValues({}, {CFValue(CFDatum("1"))}, true, false));
    fields.AppendField(count);
    HVRawDataIterator whole(source, fields, {}, nullptr);
    ASSERT_EQ(whole.nextRecord(), 0U);
    void* value = nullptr;
    unsigned long long length = 0;
    EXPECT_EQ(whole.getRecordValue(2, value, length), 0U);
    ASSERT_EQ(length, 8U);
    EXPECT_EQ(*static_cast<double*>(value), 1);
    whole.SetExcludeUserMissing(false);
    whole.UpdateUserMissing();
    EXPECT_TRUE(whole.getMetaData().GetField(2)->GetMissingValues().IsValid());
}

TEST(RawDataIterator, RewindsWithinTheFirstPassOnlyAfterCountingAll)
{
    MemorySource source({numeric("a")}, {{1.0}, {2.0}, {3.0}});
    SourceRows cases(source);
    EXPECT_EQ(cases.Rewind(false), 0U); // nothing read yet: still the first pass
    EXPECT_EQ(source.iterators, 1);
    EXPECT_EQ(cases.nextRecord(), 0U);
    EXPECT_EQ(cases.Rewind(true), 0U);
    EXPECT_TRUE(cases.GetScoreIteration());
    EXPECT_EQ(source.iterators, 2);
    EXPECT_EQ(cases.GetNCases(), 3);
    EXPECT_EQ(recordsOf(cases), "1; 2; 3; ");
    EXPECT_EQ(cases.GetNCases(), 3);

    const MemorySource empty({numeric("a")});
    SourceRows none(empty);
    EXPECT_EQ(none.nextRecord(), 1U);
    EXPECT_EQ(none.Rewind(false), 0U);
    EXPECT_EQ(none.nextRecord(), 1U);
}

TEST(RawDataIterator, SurvivesTheLossOfItsSource)
{
    MemorySource source({text("t", 2)}, {{std::string("a")}, {std::string("b")}});
    SourceRows cases(source);
    const auto isNull = [&] {
        void* value = &source;
        unsigned long long length = 9;
        return cases.getRecordValue(0, value, length) == 0 && !value && length == 0;
    };
    EXPECT_TRUE(isNull()); // no record yet
    source.readable = 1;
    EXPECT_EQ(cases.nextRecord(), 0U);
    EXPECT_THROW(cases.nextRecord(), ErrorText);
    source.readable = 2;
    EXPECT_EQ(cases.Rewind(false), 0U);
    EXPECT_TRUE(isNull()); // the text of the last record is gone
    EXPECT_EQ(cases.nextRecord(), 0U);
    source.lost = true;
    EXPECT_THROW(cases.Rewind(false), ErrorText);
    EXPECT_EQ(cases.nextRecord(), 1U);
    source.lost = false;
    EXPECT_EQ(cases.Rewind(false), 0U);
    EXPECT_EQ(recordsOf(cases), "'a'; 'b'; ");
}

/// Reads all records of some fields in blocks.
std::string blocksOf(HVRawDataIterator& cases, const std::vector<std::size_t>& fields,
                     std::size_t most)
{
    std::vector<std::vector<double>> room(fields.size(), std::vector<double>(most));
    std::vector<double*> columns;
    for (std::vector<double>& column : room)
        columns.push_back(column.data());
    std::string all;
    for (unsigned int status = 0; status == 0;) {
        std::size_t count = 0;
        status = cases.nextRecords(fields, columns, most, count);
        for (std::size_t row = 0; row < count; ++row)
            for (std::size_t i = 0; i < fields.size(); ++i)
                all += (room[i][row] == EmbeddedHV::RowBlocks::kMissing
                            ? "-"
                            : CFDatum(room[i][row]).ToString(-1)) +
                       (i + 1 < fields.size() ? " " : "; ");
    }
    return all;
}

class StopAfter : public HVStopProcessor
{
public:
    explicit StopAfter(int looks) : _looks(looks) {}
    bool CheckCancel() const override
    {
        ++_asked;
        return _looks-- <= 0;
    }
    int asked() const { return _asked; }

private:
    mutable int _looks;
    mutable int _asked = 0;
};

/// Cases that the host has in memory are served in blocks too, with the same values, counts and
/// questions of the stop processor.
TEST(RawDataIterator, ServesBlocksAsItServesRecords)
{
    const double base = GetBaseDateNumber();
    VEXA_Variable number = numeric("n");
    number.SetMissingRange(8, 9, -1);
    std::vector<MemorySource::Row> rows;
    for (int i = 0; i < 5000; ++i)
        rows.push_back({i * 1.0, i % 20 / 2.0, base + i * 86400.0, i % 7 ? base + i : kMissing,
                        std::string("text")});
    const MemorySource source({numeric("key"), number, numeric("d", kFormatDate),
                               numeric("z", kFormatDateTime), text("t", 4)},
                              rows);
    const TempFileDataStore store(source, {0});
    const std::vector<std::size_t> fields = {3, 1, 2};
    const auto iterator = [](const VEXA_DataSource& cases, WeightAdjust adjust = kWeightNone) {
        return HVRawDataIterator(cases, std::vector<int>(), {}, false, adjust, false, nullptr);
    };
    for (const int stop : {100000, 3000}) {
        StopAfter stopRows(stop);
        HVRawDataIterator byRow = iterator(store);
        byRow.SetStopProcessor(&stopRows);
        std::string expected;
        const CFMetaData model(byRow.getDataModel());
        while (byRow.nextRecord() == 0) {
            std::istringstream words(recordOf(byRow, model));
            std::string key, n, d, z;
            words >> key >> n >> d >> z;
            expected += z + " " + n + " " + d + "; ";
        }
        for (const std::size_t most : {1U, 7U, 2048U, 10000U}) {
            StopAfter stopBlocks(stop);
            HVRawDataIterator byBlock = iterator(store);
            byBlock.SetStopProcessor(&stopBlocks);
            ASSERT_TRUE(byBlock.servesBlocks(fields));
            EXPECT_EQ(blocksOf(byBlock, fields, most), expected) << most;
            EXPECT_EQ(stopBlocks.asked(), stopRows.asked());
            EXPECT_EQ(byBlock.GetNCases(), byRow.GetNCases());
            EXPECT_EQ(byBlock.GetWeightNValidCases(), byRow.GetWeightNValidCases());
        }
    }
    EXPECT_FALSE(iterator(source).servesBlocks(fields)) << "the source moves case by case";
    EXPECT_FALSE(iterator(store).servesBlocks({1, 4})) << "a text";
    HVRawDataIterator incremented = iterator(store);
    incremented.SetVariableIncrement(1, 0, 1);
    EXPECT_FALSE(incremented.servesBlocks(fields));
    EXPECT_TRUE(incremented.servesBlocks({0, 2}));
    // Both ways of reading can be mixed.
    HVRawDataIterator mixed = iterator(store);
    const CFMetaData model(mixed.getDataModel());
    double first = 0;
    std::size_t count = 0;
    EXPECT_EQ(mixed.nextRecord(), 0U);
    EXPECT_EQ(mixed.nextRecords({0}, {&first}, 1, count), 0U);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(mixed.nextRecord(), 0U);
    EXPECT_EQ(recordOf(mixed, model), "2 1 2 2 'text'");
}

TEST(RawDataIterator, StopsForGood)
{
    const MemorySource source({numeric("a")}, {{1.0}, {2.0}, {3.0}});
    SourceRows cases(source);
    StopAfter stop(2);
    cases.SetStopProcessor(&stop);
    EXPECT_EQ(cases.GetStopProcessor(), &stop);
    EXPECT_EQ(recordsOf(cases), "1; 2; ");
    EXPECT_TRUE(cases.GetCancelStatus());
    cases.SetStopProcessor(nullptr);
    EXPECT_EQ(cases.Rewind(false), 3U);
    EXPECT_EQ(cases.nextRecord(), 3U);

    SourceRows flagged(source);
    flagged.nextRecord();
    flagged.SetCancelStatus();
    EXPECT_EQ(flagged.nextRecord(), 3U);
}

TEST(RawDataIterator, LooksAtTheCancellationOncePerCall)
{
    MemorySource source({numeric("w")}, {{1.0}, {-1.0}, {kMissing}, {0.0}, {2.0}, {3.0}});
    source.weight = 0;
    SourceRows cases(source);
    StopAfter stop(2);
    cases.SetStopProcessor(&stop);
    EXPECT_EQ(recordsOf(cases), "1; 2; ");
    EXPECT_EQ(cases.GetNInvalidCases(), 3);

    // Counting at the end of the first pass can be cancelled too: a look of its own, then one for
    // each record.
    SourceRows counting(source);
    EXPECT_EQ(counting.nextRecord(), 0U);
    StopAfter later(2);
    counting.SetStopProcessor(&later);
    EXPECT_EQ(counting.Rewind(false), 3U);
    EXPECT_EQ(counting.GetNCases(), 5);
}

TEST(RawDataIterator, ConvertsTextsOfACodePageAndReportsWhatIsNone)
{
    const ScopedCodePage page("Shift_JIS");
    VEXA_Variable word = text("t", 4);
    word.SetMissingValues(std::vector<std::string>{"\x93\xfa"});
    const MemorySource source({word, numeric("n")}, {{std::string("\x93\xfa\x96\x7b"), 1.0},
                                                     {std::string("\x93\xfa"), 2.0},
                                                     {std::string("\xb1\t"), 3.0},
                                                     {std::string("\xff"), 4.0}});
    casefiles::KeepingMonitor monitor;
    HVRawDataIterator cases(source, std::vector<int>(), {}, false, kWeightRound, false, &monitor);
    EXPECT_EQ(recordsOf(cases), "'日本' 1; - 2; 'ｱ\t' 3; '\xef\xbf\xbd' 4; ");
    ASSERT_FALSE(monitor.reports.empty());
    EXPECT_NE(monitor.reports.back().find("\"t\", case 4"), std::string::npos);
    cases.Rewind(false);
    EXPECT_EQ(recordsOf(cases).substr(0, 10), "'日本' 1");
}

TEST(RawDataIterator, CopiesMayBeDestroyedInAnyOrder)
{
    const ScopedCodePage page("windows-1252");
    const MemorySource source({text("t", 3)}, {{std::string("a")}, {std::string("b")}});
    auto first = std::make_unique<SourceRows>(source);
    HVRawDataIterator second(*first);
    first->nextRecord();
    first.reset();
    EXPECT_EQ(recordsOf(second), "'b'; ");
    second = SourceRows(source);
    EXPECT_EQ(recordsOf(second), "'a'; 'b'; ");
}

TEST(RawDataIterator, OpensDatasetsByTheirId)
{
    const auto source =
        std::make_shared<MemorySource>(std::vector<VEXA_Variable>{numeric("a"), text("b", 2)},
                                       std::vector<MemorySource::Row>{{1.0, std::string("x")}});
    const LocallyUniqueID id = SvrDMDataset::Register(source);
    {
        HVRawDataIterator cases(id, std::vector<std::string>{"B"}, {}, false, kWeightRound, false,
                                true);
        SvrDMDataset::Unregister(id);
        EXPECT_EQ(recordsOf(cases), "'x'; ");
    }
    EXPECT_EQ(source.use_count(), 1);
    EXPECT_THROW(HVRawDataIterator(id, std::vector<int>(), {}, false, kWeightRound, false),
                 std::runtime_error);
}

/// A million records of memory that is never touched.
class EndlessSource : public MemorySource
{
public:
    using MemorySource::MemorySource;
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor*) const override
    {
        return std::make_unique<Cases>().release();
    }

private:
    class Cases : public VEXA_InputCaseIterator
    {
    public:
        int NextCase() override { return ++_count <= 1000000 ? 1 : 0; }
        double GetNumericValue(int) const override { return 1.5; }
        const char* GetStringValue(int) const override { return "abcdefg "; }
        const OBS* GetObsPointer(int) const override { return nullptr; }
        long long GetCaseCount() const override { return _count; }

    private:
        long long _count = 0;
    };
};

TEST(RawDataIterator, AllocatesNothingPerRecord)
{
    VEXA_Variable number = numeric("n");
    number.SetMissingValues(std::vector<double>{9});
    EndlessSource source({number, numeric("w"), numeric("d", kFormatDate), text("t", 8)});
    source.weight = 1;
    SourceRows cases(source, "rows", kWeightRound, true);
    const long long before = allocations;
    void* value = nullptr;
    unsigned long long length = 0;
    while (cases.nextRecord() == 0)
        for (unsigned long long i = 0; i < 5; ++i)
            cases.getRecordValue(i, value, length);
    const long long after = allocations; // a failing comparison allocates, too
    EXPECT_EQ(after, before);
    EXPECT_EQ(cases.GetNValidCases(), 1000000);
}

} // namespace
