#include "engine/EngineFixture.h"
#include "engine/TestRows.h"

#include <atomic>
#include <thread>
#include <tuple>

#include "EngineException.h"
#include "RowTotal.h"

using namespace EngineTest;
using EmbeddedHV::RowDataIterator;
using testing::HasSubstr;

namespace {

class RowIteratorTest : public EngineFixture
{
protected:
    static constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string _copy = R"(read({"dataSource": "rows"}) -> )" + writeCsv("out.csv");
};

/// Knows, or only believes to know, how many records there are.
class CountedRows : public TestRows, public EmbeddedHV::RowTotal
{
public:
    explicit CountedRows(long long total)
        : TestRows("rows", {{"r", "real"}}, std::vector<std::vector<Value>>(kRecords, {1.0})),
          _total(total)
    {
    }
    long long totalRecords() const override { return _total; }

    static constexpr std::size_t kRecords = 20000;

private:
    long long _total;
};

class FirstProgress : public RecordingListener
{
public:
    explicit FirstProgress(std::atomic<float>& seen) : _seen(seen) {}
    void onProgress(float fraction) override
    {
        float none = 0;
        _seen.compare_exchange_strong(none, fraction);
        RecordingListener::onProgress(fraction);
    }

private:
    std::atomic<float>& _seen;
};

TEST_F(RowIteratorTest, AnIteratorThatKnowsItsNumberOfRecordsGivesProgress)
{
    for (const auto& [total, least, most] :
         {std::tuple(20000LL, 0.6F, 0.75F), {40000LL, 0.3F, 0.4F}, {100LL, 1.0F, 1.0F}}) {
        SCOPED_TRACE(total);
        CountedRows rows(total);
        std::atomic<float> seen = 0;
        // A report comes a few times in a second.
        rows.beforeRecord = [&](std::size_t record) {
            for (int i = 0; record == 15000 && seen == 0 && i < 2000; ++i)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        };
        const auto execution = newExecution(_copy);
        execution->addInputIterator(nullptr, &rows, nullptr);
        FirstProgress listener(seen);
        execution->execute(nullptr, &listener);
        execution->dispose(nullptr);
        EXPECT_EQ(listener.ending, "success");
        EXPECT_GE(seen, least);
        EXPECT_LE(seen, most);
    }
}

TEST_F(RowIteratorTest, ValuesComeOnTheScaleOfTheProtocol)
{
    TestRows rows("rows",
                  {{"i", "integer"},
                   {"r", "real"},
                   {"s", "string"},
                   {"d", "date"},
                   {"t", "time"},
                   {"z", "timestamp"}},
                  {{3.0, 0.1, "a,b", 15400.0, 3661.5, 1330560000.123456},
                   {{}, {}, {}, {}, {}, {}},
                   {-3.0, kInfinity, "", -0.5, 86399.999999, -1.5}});
    const auto listener = feed(rows, _copy);
    succeeded(listener);
    ASSERT_EQ(listener.messages.size(), 1U);
    EXPECT_THAT(
        listener.messages[0].second,
        HasSubstr(
            R"(field "d" of the row iterator "rows": dates with a time of day, which was dropped: 1)"));
    EXPECT_EQ(read("out.csv"), "i,r,s,d,t,z\n"
                               "3,0.1,\"a,b\",2012-03-01,01:01:01.5,2012-03-01 00:00:00.123456\n"
                               ",,,,,\n"
                               "-3,inf,\"\",1969-12-31,23:59:59.999999,1969-12-31 23:59:58.5\n");
}

using BadValue = std::tuple<const char*, TestRows::Value, const char*>;

TEST_F(RowIteratorTest, AValueWithoutAPlaceFailsTheJob)
{
    const BadValue kBad[] = {
        {"integer", kNaN, "not a number (NaN), which no integer holds"},
        {"integer", 1e300, "which no integer holds"},
        {"date", kInfinity, "infinite, which no date holds"},
        {"time", 90000.0, "is 90000, which no time of day holds"},
        {"timestamp", -kInfinity, "minus infinite, which no timestamp holds"},
        {"string", std::string("x\xC3"), "the text is not UTF-8"},
        {"string", std::string("\xED\xA0\x80"), "the text is not UTF-8"},
    };
    for (const auto& [storage, value, fault] : kBad) {
        TestRows rows("rows", {{"good", "real"}, {"bad", storage}},
                      {{1.0, std::monostate{}}, {2.0, value}});
        const auto listener = feed(rows, _copy);
        EXPECT_EQ(listener.errorId, "HVEIO0020E");
        EXPECT_THAT(listener.errorText,
                    testing::AllOf(HasSubstr(R"(field "bad" of the row iterator "rows", record 2)"),
                                   HasSubstr(fault)));
        EXPECT_TRUE(files().empty());
    }
}

TEST_F(RowIteratorTest, OnlyWhatAJobNeedsIsAskedFor)
{
    const std::vector<std::vector<TestRows::Value>> many(5000, {1.0, 2.0, 3.0});
    TestRows rows("rows", {{"a", "real"}, {"b", "real"}, {"c", "real"}}, many);
    succeeded(feed(rows, R"(read({"dataSource": "rows"}) ->
        aggregate({"output": [{"function": "sum", "input": "b"}]}) -> )" +
                             writeCsv("out.csv")));
    EXPECT_EQ(read("out.csv"), "sum_b\n10000.0\n");
    EXPECT_EQ(rows.valueCalls, many.size()) << "two fields are not used";

    TestRows limited("rows", {{"a", "real"}, {"b", "real"}, {"c", "real"}}, many);
    succeeded(feed(limited, R"(read({"dataSource": "rows", "maxRecordsCount": 7}) -> )" +
                                writeCsv("out.csv")));
    EXPECT_EQ(limited.calls, 7U);

    TestRows unused("other", {{"a", "real"}}, {{1.0}});
    write("in.csv", "a\n1\n");
    feed(unused, readCsv("in.csv") + " -> " + writeCsv("out.csv"));
    EXPECT_EQ(unused.calls, 0U);
}

TEST_F(RowIteratorTest, RowsThatComeOnceServeSeveralReaders)
{
    TestRows rows("rows", {{"k", "integer"}, {"v", "real"}}, {{1.0, 5.0}, {2.0, 7.0}, {1.0, 9.0}});
    succeeded(feed(rows, R"(
        val all = read({"dataSource": "rows"})
        val first = read({"dataSource": "rows", "maxRecordsCount": 1})
        val sums = all -> aggregate({"output": [{"function": "key", "input": "k"},
                                                {"function": "sum", "input": "v"}]})
        first -> )" + writeCsv("first.csv") +
                             R"(
        join({"matchFields": [{"s": "k", "a": "k"}], "outputFields": {"s": ["sum_v"], "a": ["v"]}},
             s: sums, a: all) -> aggregate({"output": [{"function": "count"},
             {"function": "sum", "input": "sum_v"}]}) -> )" +
                             writeCsv("joined.csv")));
    EXPECT_EQ(read("joined.csv"), "count,sum_sum_v\n3,35.0\n");
    EXPECT_EQ(read("first.csv"), "k,v\n1,5.0\n");
    EXPECT_EQ(rows.calls, 4U);
}

TEST_F(RowIteratorTest, AFailedOutputRevokesTheModelOfItsChain)
{
    TestRows rows("rows", {{"v", "real"}}, {{1.0}});
    rows.beforeRecord = [&](std::size_t) { std::filesystem::create_directory(path("out.csv")); };
    const auto listener = feed(rows, R"(read({"dataSource": "rows"}) -> dataModelBuilder(_,
        {"export": true, "name": "m", "uri": "$DIR/m.xml"}) -> )" +
                                         writeCsv("out.csv"));
    EXPECT_THAT(listener.errorText, HasSubstr("out.csv"));
    EXPECT_EQ(files(), std::vector<std::string>{"out.csv"});
}

TEST_F(RowIteratorTest, RowsThatEndWithACancellationAreNoResult)
{
    TestRows rows("rows", {{"v", "real"}}, {{1.0}, {2.0}, {3.0}});
    const auto execution = newExecution(_copy);
    rows.beforeRecord = [&](std::size_t call) {
        if (call == 2)
            execution->cancel(nullptr);
    };
    RecordingListener listener;
    execution->addInputIterator(nullptr, &rows, nullptr);
    execution->execute(nullptr, &listener);
    execution->dispose(nullptr);
    EXPECT_EQ(listener.ending, "cancel");
    EXPECT_TRUE(files().empty());
}

TEST_F(RowIteratorTest, AnEarlyEndIsAnEnd)
{
    for (const unsigned int status : {RowDataIterator::EndOfData, RowDataIterator::Cancelled}) {
        TestRows rows("rows", {{"v", "real"}}, {{1.0}, {2.0}, {3.0}});
        rows.beforeRecord = [&](std::size_t call) {
            if (call == 3)
                rows.status = status;
        };
        succeeded(feed(rows, _copy));
        EXPECT_EQ(read("out.csv"), "v\n1.0\n2.0\n");
        EXPECT_EQ(rows.calls, 3U) << "no call after the end";
    }
}

TEST_F(RowIteratorTest, ExceptionsOfIteratorsAreFaultsOfTheJob)
{
    const std::function<void()> kThrowers[] = {
        [] { throw EmbeddedHV::Exception("boom"); },
        [] { throw EmbeddedHV::JavaException("java.lang.Error", "boom", "trace"); },
        [] { throw std::runtime_error("boom"); },
        [] { throw 5; },
    };
    for (const auto& thrower : kThrowers) {
        TestRows rows("rows", {{"v", "real"}}, {{1.0}, {2.0}});
        rows.beforeRecord = [&](std::size_t call) {
            if (call == 2)
                thrower();
        };
        const auto listener = feed(rows, _copy);
        EXPECT_EQ(listener.errorId, "HVEIO0019E");
        EXPECT_THAT(listener.errorText, HasSubstr(R"(the row iterator "rows" failed at record 2)"));
        EXPECT_TRUE(files().empty());
    }
    TestRows rows("rows", {{"v", "real"}}, {{1.0}});
    // The engine is as good as before.
    succeeded(feed(rows, _copy));
    TestRows odd("rows", {{"v", "real"}}, {{1.0}});
    odd.model = "<Nothing/>";
    EXPECT_THAT(feed(odd, _copy).errorText,
                HasSubstr(R"(the data model of the row iterator "rows" cannot be used)"));
}

/// Whatever rows do, a job that reads them in blocks ends in the same way.
TEST_F(RowIteratorTest, BlocksAreReadAsRowsAre)
{
    struct BlockCase
    {
        const char* what;
        std::size_t special; ///< the record that is not plain
        TestRows::Value value;
        std::function<void(TestRows&)> event; ///< before that record
        const char* limit;
    };
    const BlockCase kBlocks[] = {
        {"all", 3, {}, {}, ""},
        {"fewer than a block", 3, {}, {}, R"(, "maxRecordsCount": 5)"},
        {"more than a block", 3000, {}, {}, R"(, "maxRecordsCount": 2049)"},
        {"a date with a time of day", 2500, 7.5, {}, ""},
        {"no date", 2500, kNaN, {}, ""},
        {"a throw", 2500, {}, [](TestRows&) { throw EmbeddedHV::Exception("boom"); }, ""},
        {"an end", 2500, {}, [](TestRows& rows) { rows.status = RowDataIterator::EndOfData; }, ""},
        {"a cancel",
         2500,
         {},
         [](TestRows& rows) { rows.status = RowDataIterator::Cancelled; },
         ""},
    };
    for (const BlockCase& block : kBlocks) {
        SCOPED_TRACE(block.what);
        std::vector<std::vector<TestRows::Value>> values;
        for (std::size_t i = 1; i <= 5000; ++i) {
            const auto number = static_cast<double>(i);
            values.push_back({number * 0.5, number - 9, number * 1e3 + 0.001, 4.0});
        }
        values[block.special - 1] = {{}, block.value, {}, {}};
        const auto outcomeOf = [&](TestRows& rows) {
            rows.beforeRecord = [&](std::size_t call) {
                if (call == block.special && block.event)
                    block.event(rows);
            };
            const auto listener =
                feed(rows, R"(read({"dataSource": "rows")" + std::string(block.limit) + "}) -> " +
                               writeCsv("out.csv"));
            std::string outcome = listener.ending + listener.errorId + listener.errorText;
            for (const auto& [id, text] : listener.messages)
                outcome += id + text;
            return outcome + (listener.ending == "success" ? read("out.csv") : "");
        };
        const std::vector<TestRows::Field> fields = {
            {"r", "real"}, {"d", "date"}, {"z", "timestamp"}, {"i", "integer"}};
        TestRows rows("rows", fields, values);
        TestBlocks blocks("rows", fields, values);
        EXPECT_EQ(outcomeOf(rows), outcomeOf(blocks));
        EXPECT_LE(rows.calls, blocks.calls);
        EXPECT_GT(blocks.blocks, 0U);
    }
}

/// A file whose types change far behind its head makes the job start again; rows that come once
/// must not be gone by then.
TEST_F(RowIteratorTest, LateTypesAndRowsThatComeOnceGoTogether)
{
    write("late.csv", onesThen("1.5"));
    TestRows rows("rows", {{"v", "real"}}, {{1.0}, {1.5}});
    succeeded(feed(rows, "val f = " + readCsv("late.csv") + R"(
        val r = read({"dataSource": "rows"})
        join({"matchFields": [{"f": "x", "r": "v"}]}, f: f, r: r)
            -> aggregate({"output": [{"function": "count"}]}) -> )" +
                             writeCsv("out.csv")));
    EXPECT_EQ(read("out.csv"), "count\n30001\n");
}

TEST_F(RowIteratorTest, RowsOfAWrittenFileComeBackInTheSameProtocol)
{
    std::vector<std::vector<TestRows::Value>> many;
    for (int i = 0; i < 5000; ++i)
        many.push_back({double(i), i % 3 == 0 ? TestRows::Value{} : TestRows::Value{i * 0.5},
                        "text " + std::to_string(i), 100.0 + i, 3.25, -1.5});
    const std::vector<TestRows::Field> fields = {{"i", "integer"}, {"r", "real"},
                                                 {"s", "string"},  {"d", "date"},
                                                 {"t", "time"},    {"z", "timestamp"}};
    for (const char* destination :
         {R"("file.hvbf", "type": "hvbf")", R"("file.csv", "type": "text/csv")",
          R"("file.sav", "type": "application/x-vexa-sav", "dataPassword": "p")"}) {
        SCOPED_TRACE(destination);
        TestRows rows("rows", fields, many);
        const auto execution = newExecution(
            std::string(R"(read({"dataSource": "rows"}) -> write({"dataDestination": )") +
            destination + R"(, "dataModelDestination": "file.xml"}))");
        execution->addInputIterator(nullptr, &rows, nullptr);
        RecordingListener listener;
        execution->execute(nullptr, &listener);
        ASSERT_EQ(listener.ending, "success") << listener.errorText;
        const std::string name = std::string(destination)
                                     .substr(1, 9)
                                     .substr(0, std::string(destination).find('"', 1) - 1);
        RowDataIterator* back = execution->getOutputIterator(nullptr, name);
        EXPECT_EQ(back->getName(), name);
        EXPECT_THAT(back->getDataModel(), HasSubstr(R"(storage="timestamp")"));
        void* value = nullptr;
        unsigned long long length = 99;
        EXPECT_EQ(back->getRecordValue(0, value, length), RowDataIterator::EndOfData)
            << "no record yet";
        EXPECT_EQ(length, 99U);
        for (const auto& row : many) {
            ASSERT_EQ(back->nextRecord(), RowDataIterator::RecordAvailable);
            for (std::size_t i = 0; i < row.size(); ++i) {
                ASSERT_EQ(back->getRecordValue(i, value, length), 0U);
                if (const auto* text = std::get_if<std::string>(&row[i]))
                    ASSERT_EQ(std::string(static_cast<char*>(value), length), *text);
                else if (const auto* number = std::get_if<double>(&row[i]))
                    ASSERT_EQ(*static_cast<double*>(value), *number) << "field " << i;
                else
                    ASSERT_EQ(value, nullptr);
            }
        }
        EXPECT_EQ(back->nextRecord(), RowDataIterator::EndOfData);
        EXPECT_EQ(back->nextRecord(), RowDataIterator::EndOfData);
        EXPECT_EQ(back->getRecordValue(0, value, length), RowDataIterator::EndOfData);
        back->dispose(nullptr);
        EXPECT_EQ(back->nextRecord(), RowDataIterator::EndOfData);
        try {
            execution->getOutputIterator(nullptr, "nothing.hvbf");
            ADD_FAILURE() << "an iterator over a file that the job did not write";
        } catch (const EmbeddedHV::Exception& exception) {
            EXPECT_THAT(exception.getMessage(), HasSubstr("nothing.hvbf"));
        }
        execution->dispose(nullptr);
    }
}

} // namespace
