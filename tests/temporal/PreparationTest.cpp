#include <chrono>
#include <cmath>
#include <cstdlib>
#include <map>
#include <thread>

#include <nlohmann/json.hpp>

#include "engine/EngineFixture.h"
#include "engine/TestRows.h"
#include "runtime/Database.h"
#include "runtime/ExactSums.h"
#include "runtime/KeyedCells.h"
#include "temporal/DocumentChecks.h"

using namespace EmbeddedHV;
using namespace EngineTest;

namespace {

using Json = nlohmann::ordered_json;

const std::string kContainer = R"([{"name": "JSON", "uri": "$DIR/prep.zip"}])";

std::string tsdp(const std::string& settings)
{
    return "tsdp:tsdp(" + settings + ", _, " + kContainer + ")";
}

std::string rtsdp(const std::string& settings = "{}")
{
    return "rtsdp:rtsdp(" + settings + ", " + kContainer + ", _)";
}

class Preparation : public EngineFixture
{
protected:
    /// Runs steps over a CSV text; gives their records as CSV, or the fault.
    std::string steps(const std::string& csv, const std::string& chain)
    {
        write("in.csv", csv);
        return finish(run(readCsv("in.csv") + " -> " + chain + " -> " + writeCsv("out.csv")));
    }
    std::string prepare(const std::string& csv, const std::string& settings)
    {
        std::filesystem::remove(path("out.csv"));
        std::filesystem::remove(path("prep.zip"));
        return steps(csv, tsdp(settings));
    }
    std::string finish(RecordingListener done)
    {
        listener = std::move(done);
        return listener.ending == "success" ? read("out.csv") : listener.fault();
    }

    Json document() const { return Json::parse(member("prep.zip", "TSDPOutput.json")); }
    std::string resolved() const { return document()["settings"].dump(); }
    /// The texts of all messages of that id, a line each.
    std::string told(const std::string& id) const
    {
        std::string texts;
        for (const auto& [messageId, text] : listener.messages)
            if (messageId == id)
                texts += text + "\n";
        return texts;
    }
    void expectValidDocument()
    {
        TemporalTest::expectValid(HV_SCHEMAS "/tsdp-output.schema.json", "TSDPOutput.json",
                                  member("prep.zip", "TSDPOutput.json"));
    }

    RecordingListener listener;
};

struct RecordsCase
{
    std::string name;
    std::string csv;
    std::string settings;
    std::string records;
    std::string again; ///< what rtsdp makes of them
};

const RecordsCase kRecordsCases[] = {
    {"columns, days, a gap on the way and one at the end",
     "day,a,b\n2024-02-28,1,10\n2024-03-01,3,\n2024-03-02,4,30\n2024-03-02,6,30\n2024-02-29,,20\n"
     "2024-03-03,6,\n",
     R"({"dateTimeField": "day", "dimFieldList": [""], "metricFieldList": ["a", "b"],
         "missingValues": {"maxShare": 0.5}})",
     "$TimeIndex,1,2\n0,1.0,10.0\n1,2.0,20.0\n2,3.0,25.0\n3,5.0,30.0\n4,6.0,\n",
     "day,a,b\n2024-02-28,1.0,10.0\n2024-02-29,2.0,20.0\n2024-03-01,3.0,25.0\n"
     "2024-03-02,5.0,30.0\n2024-03-03,6.0,\n"},
    {"dimensions, ends of months",
     "day,region,size,sales\n2024-01-31,south,2,1\n2024-02-29,south,2,2\n2024-03-31,south,2,3\n"
     "2024-01-31,north,1.5,5\n2024-02-29,north,1.5,6\n2024-02-29,north,-1,8\n"
     "2024-03-31,north,-1,9\n",
     R"({"dateTimeField": "day", "dimFieldList": ["region", "size"],
         "metricFieldList": ["sales"]})",
     "$TimeIndex,1-1-1,1-2-1,2-3-1\n0,,5.0,1.0\n1,8.0,6.0,2.0\n2,9.0,,3.0\n",
     "day,region,size,sales\n"
     "2024-01-31,north,-1.0,\n2024-01-31,north,1.5,5.0\n2024-01-31,south,2.0,1.0\n"
     "2024-02-29,north,-1.0,8.0\n2024-02-29,north,1.5,6.0\n2024-02-29,south,2.0,2.0\n"
     "2024-03-31,north,-1.0,9.0\n2024-03-31,north,1.5,\n2024-03-31,south,2.0,3.0\n"},
    {"working days, found", // from Friday 2023-12-29 on for six weeks
     [] {
         std::string csv = "day,x\n";
         const char* days[] = {"2023-12-29", "2024-01-01", "2024-01-02", "2024-01-03", "2024-01-04",
                               "2024-01-05", "2024-01-08", "2024-01-09", "2024-01-10", "2024-01-11",
                               "2024-01-12", "2024-01-15", "2024-01-16", "2024-01-17", "2024-01-18",
                               "2024-01-19", "2024-01-22", "2024-01-23", "2024-01-24", "2024-01-25",
                               "2024-01-26", "2024-01-29"};
         for (const char* day : days)
             csv += std::string(day) + ",1\n";
         return csv;
     }(),
     R"({"dateTimeField": "day", "dimFieldList": [], "metricFieldList": ["x"]})",
     [] {
         std::string csv = "$TimeIndex,1\n";
         for (int i = 0; i < 22; ++i)
             csv += std::to_string(i) + ",1.0\n";
         return csv;
     }(),
     ""},
    {"working hours, given; a day is left out by hand",
     "t,x\n2024-01-05 15:10:00,1\n2024-01-05 16:59:59,2\n2024-01-08 09:00:00,3\n"
     "2024-01-06 10:00:00,99\n2024-01-08 17:00:00,99\n",
     R"({"dateTimeField": "t", "metricFieldList": ["x"],
         "timeInterval": {"unit": "hour", "workingDays": [1, 2, 3, 4, 5],
                          "workingHours": {"from": 9, "to": 17}}})",
     "$TimeIndex,1\n0,1.0\n1,2.0\n2,3.0\n",
     "t,x\n2024-01-05 15:00:00,1.0\n2024-01-05 16:00:00,2.0\n2024-01-08 09:00:00,3.0\n"},
    {"times of a day", "t,x\n10:00:00,1\n10:15:00,2\n10:45:00,4\n",
     R"({"dateTimeField": "t", "metricFieldList": ["x"], "missingValues": {"method": "last"}})",
     "$TimeIndex,1\n0,1.0\n1,2.0\n2,2.0\n3,4.0\n",
     "t,x\n10:00:00,1.0\n10:15:00,2.0\n10:30:00,2.0\n10:45:00,4.0\n"},
    {"years and weeks, over week 53; no week 53 in 2021",
     "year,week,x\n2020,52,1\n2020,53,2\n2021,1,3\n2021,53,99\n2021,2,4\n",
     R"({"dateTimeField": "", "cyclicFieldList": ["year", "week"], "metricFieldList": ["x"]})",
     "$TimeIndex,1\n0,1.0\n1,2.0\n2,3.0\n3,4.0\n",
     "year,week,x\n2020,52,1.0\n2020,53,2.0\n2021,1,3.0\n2021,2,4.0\n"},
    {"years and quarters told by what they hold, in reals",
     "y,q,x\n2023.0,4.0,1\n2024.0,2.0,3\n2024.0,1.5,99\n2024.0,3.0,4\n",
     R"({"cyclicFieldList": ["y", "q"], "metricFieldList": ["x"],
         "missingValues": {"method": "neighbours", "maxShare": 1}})",
     "$TimeIndex,1\n0,1.0\n1,2.0\n2,3.0\n3,4.0\n",
     "y,q,x\n2023.0,4.0,1.0\n2024.0,1.0,2.0\n2024.0,2.0,3.0\n2024.0,3.0,4.0\n"},
    {"the order of the records, by combination", "region,x\nn,1\ns,10\nn,2\nn,\ns,20\nn,4\n,99\n",
     R"({"cyclicFieldList": ["$casecount"], "dimFieldList": ["region"],
         "metricFieldList": ["x"]})",
     "$TimeIndex,1-1,2-1\n0,1.0,10.0\n1,2.0,20.0\n2,3.0,\n3,4.0,\n",
     "$casecount,region,x\n1,n,1.0\n1,s,10.0\n2,n,2.0\n2,s,20.0\n3,n,3.0\n3,s,\n4,n,4.0\n4,s,\n"},
    {"dates and texts with hyphens as dimensions",
     "day,made,kind,x\n2024-01-01,2020-05-01,a-b,1\n2024-01-02,2020-05-01,a-b,2\n"
     "2024-01-01,2019-05-01,a,3\n2024-01-02,2019-05-01,a,4\n",
     R"({"dateTimeField": "day", "dimFieldList": ["made", "kind"], "metricFieldList": ["x"]})",
     "$TimeIndex,1-1-1,2-2-1\n0,3.0,1.0\n1,4.0,2.0\n",
     "day,made,kind,x\n2024-01-01,2019-05-01,a,3.0\n2024-01-01,2020-05-01,a-b,1.0\n"
     "2024-01-02,2019-05-01,a,4.0\n2024-01-02,2020-05-01,a-b,2.0\n"},
    {"a start that is given, with records before it",
     "day,x\n2024-01-09,99\n2024-01-15,1\n2024-02-10,3\n2024-01-31,2\n",
     R"({"dateTimeField": "day", "metricFieldList": ["x"], "start": "2024-01-10",
         "timeInterval": {"unit": "month"}, "aggregation": "sum"})",
     "$TimeIndex,1\n0,3.0\n1,3.0\n", "day,x\n2024-01-10,3.0\n2024-02-10,3.0\n"},
};

TEST_F(Preparation, MakesSeriesAndGivesTheirNamesBack)
{
    for (const RecordsCase& wanted : kRecordsCases) {
        SCOPED_TRACE(wanted.name);
        ASSERT_EQ(prepare(wanted.csv, wanted.settings), wanted.records);
        expectValidDocument();
        const std::string prepared = member("prep.zip", "TSDPOutput.json");
        // The settings that come back prepare the same records and the same document.
        EXPECT_EQ(prepare(wanted.csv, resolved()), wanted.records);
        Json replayed = document();
        Json first = Json::parse(prepared);
        EXPECT_EQ(replayed["settings"].dump(), first["settings"].dump());
        EXPECT_EQ(replayed["output"]["series"].dump(), first["output"]["series"].dump());
        if (!wanted.again.empty()) {
            std::filesystem::copy_file(path("out.csv"), path("prepared.csv"),
                                       std::filesystem::copy_options::overwrite_existing);
            EXPECT_EQ(steps(wanted.csv, tsdp(wanted.settings) + " -> " + rtsdp()), wanted.again);
        }
    }
}

TEST_F(Preparation, AggregatesByMetric)
{
    const std::string csv = "t,g,x,y\n2024-01-01 12:00:00,a,4,1\n2024-01-01 06:00:00,a,1,1\n"
                            "2024-01-01 18:00:00,a,4,1\n2024-01-01 18:00:00,a,0.5,1\n"
                            "2024-01-02 00:00:00,a,7,2\n2024-01-02 05:00:00,a,,\n";
    // Of 4, 1, 4 and 0.5 in this order, the last two of them at one time.
    const std::pair<std::string, std::string> cases[] = {
        {"sum", "9.5"},   {"mean", "2.375"}, {"min", "0.5"}, {"max", "4.0"},
        {"first", "1.0"}, {"last", "0.5"},   {"mode", "4.0"}};
    // With dimensions, the database collects the times of each group.
    for (const std::string dimensions : {"", R"("g")"})
        for (const auto& [word, result] : cases) {
            const std::string prepared =
                prepare(csv, R"({"dateTimeField": "t", "metricFieldList": ["x", "y"],
                                 "timeInterval": {"unit": "day"}, "dimFieldList": [)" +
                                 dimensions + R"(],
                                 "aggregation": {"default": "sum", "fields": {"x": ")" +
                                 word + R"("}}})");
            EXPECT_EQ(prepared.substr(std::min(prepared.find('\n'), prepared.size())),
                      "\n0," + result + ",4.0\n1,7.0,2.0\n")
                << word << " " << prepared;
        }
}

TEST_F(Preparation, TellsWhatItLeavesOut)
{
    EXPECT_EQ(prepare("day,region,a,b\n2024-01-01,n,1,1\n,n,9,9\n2024-01-02,n,2,\n,n,9,9\n"
                      "2024-01-04,n,4,4\n2024-01-03,,9,9\n2024-01-03,n,3,\n2024-01-01,s,,1\n",
                      R"({"dateTimeField": "day", "dimFieldList": ["region"],
                          "metricFieldList": ["a", "b"], "maxShare": 1})"),
              "$TimeIndex,1-1,2-2\n0,1.0,1.0\n1,2.0,\n2,3.0,\n3,4.0,\n");
    EXPECT_EQ(told("HVEPL0015W"),
              "tsdp:tsdp: the setting \"maxShare\" is not known here and is ignored\n");
    EXPECT_EQ(told("HVETC0007W"), "tsdp:tsdp: record 2 has no valid time in \"day\", as have 1 "
                                  "more: left out\n");
    EXPECT_EQ(told("HVETC0008W"), "tsdp:tsdp: records without a value of each dimension, which "
                                  "are left out: 1\n");
    EXPECT_EQ(told("HVETC0010W"),
              "tsdp:tsdp: the series \"n\", \"b\" is left out: it has no value at 2 of 4 points "
              "of time, which is 50 %, more than 25 %\n"
              "tsdp:tsdp: the series \"s\", \"a\" is left out: it has no value\n");
    EXPECT_EQ(document()["output"]["leftOut"].size(), 2U);
    expectValidDocument();
    // The preparation is the first half of the only statement.
    const auto isInside = [](float part) { return part > 0.3F && part < 0.5F; };
    EXPECT_GE(std::count_if(listener.progress.begin(), listener.progress.end(), isInside), 2);
}

constexpr const char* kTraining =
    "day,region,x,y\n2024-01-01,n,0.1,1\n2024-01-02,n,0.2,2\n2024-01-03,n,0.3,3\n"
    "2024-01-03,n,1e16,3\n2024-01-03,n,1,3\n2024-01-01,s,5,1\n2024-01-03,s,7,3\n"
    "2024-01-02,t,5,1\n2024-01-02,s,,1\n";
constexpr const char* kTrainingSettings =
    R"({"dateTimeField": "day", "dimFieldList": ["region"], "metricFieldList": ["x", "y"],
        "missingValues": {"maxShare": 0.4}, "aggregation": "sum"})";

TEST_F(Preparation, ReplaysOnTheSameDataByteForByte)
{
    const std::string records = prepare(kTraining, kTrainingSettings);
    ASSERT_EQ(records.substr(0, records.find('\n')), "$TimeIndex,1-1,1-2,2-1,2-2,3-1,3-2");
    const std::string settings = resolved();
    // In another order.
    std::vector<std::string> lines;
    std::istringstream stream(kTraining);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::reverse(lines.begin() + 1, lines.end());
    std::string reversed;
    for (const std::string& line : lines)
        reversed += line + "\n";
    EXPECT_EQ(prepare(reversed, settings), records);
    EXPECT_EQ(prepare(reversed, kTrainingSettings), records);
    EXPECT_EQ(resolved(), settings);
    // From a binary file.
    write("in.csv", kTraining);
    succeeded(run(readCsv("in.csv") + R"( -> write({"dataDestination": "$DIR/b.hvbf",
                  "dataModelDestination": "$DIR/m.xml", "type": "hvbf"}))"));
    EXPECT_EQ(finish(run(readFile("b.hvbf", R"({"name": "hvbf", "config": {}})", kWithModel) +
                         " -> " + tsdp(settings) + " -> " + writeCsv("out.csv"))),
              records);
}

/// 150,000 records, which several threads read, with sums that depend on the order if they are
/// rounded on the way.
std::string wideValues(bool isReversed)
{
    std::vector<std::string> lines;
    for (std::uint64_t i = 0; i < 150000; ++i) {
        const std::uint64_t mixed = i * 2654435761U % 4294967291U;
        char line[100];
        std::snprintf(line, sizeof line, "2024-01-%02d,%d,%.17g,%.17g,%d\n",
                      static_cast<int>(i % 5 + 1), static_cast<int>(i / 5 % 7),
                      static_cast<double>(mixed) / 7,
                      std::ldexp(mixed % 2 ? 1.1 : -1.1, static_cast<int>(mixed % 600)),
                      static_cast<int>(i % 35));
        lines.emplace_back(line);
    }
    if (isReversed)
        std::reverse(lines.begin(), lines.end());
    std::string csv = "day,shop,x,y,z\n";
    for (const std::string& line : lines)
        csv += line;
    return csv;
}

TEST_F(Preparation, GivesTheSameGroupedByTheDatabaseOrNot)
{
    const auto settings = [](const char* first, const char* second, const char* third) {
        return R"({"dateTimeField": "day", "dimFieldList": ["shop"],
                   "metricFieldList": ["x", "y", "z"], "aggregation": {"fields": {"x": ")" +
               std::string(first) + R"(", "y": ")" + second + R"(", "z": ")" + third + "\"}}}";
    };
    const std::string csv = wideValues(false);
    // The database does not group for a mode. All of z in a cell are equal.
    const std::string records = prepare(csv, settings("sum", "mean", "mode"));
    ASSERT_EQ(records.substr(0, 27), "$TimeIndex,1-1,1-2,1-3,2-1,");
    EXPECT_EQ(prepare(csv, settings("sum", "mean", "max")), records);
    EXPECT_EQ(prepare(wideValues(true), settings("sum", "mean", "min")), records);
    EXPECT_EQ(prepare(csv, settings("mean", "sum", "max")),
              prepare(csv, settings("mean", "sum", "mode")));
}

/// The sums of table t by g, in seven groups.
std::map<std::int64_t, long double> keyedSums(duck::Connection& connection)
{
    std::map<std::int64_t, long double> sums;
    duck::Prepared statement(connection, "SELECT hv_keyed_sum(DATE '1970-01-01' + "
                                         "CAST(g AS INTEGER), x) FROM t GROUP BY g % 7");
    duck::Result rows = statement.stream();
    while (const duck::Chunk chunk = duck::nextChunk(rows)) {
        auto* const bytes = static_cast<duckdb_string_t*>(duckdb_vector_get_data(chunk.column(0)));
        for (std::size_t row = 0; row < chunk.rows(); ++row)
            for (KeyedCellReader cell(
                     {duckdb_string_t_data(&bytes[row]), duckdb_string_t_length(bytes[row])});
                 cell.next();)
                sums[cell.key()] = cell.sum().rounded();
    }
    return sums;
}

std::map<std::int64_t, long double> exactSums(int threads, const std::string& order)
{
    Database database;
    const ConnectionLease connection = database.connect();
    connection->query("SET threads = " + std::to_string(threads));
    connection->query("CREATE TABLE t AS SELECT i % 1000 AS g, (i * 2654435761 % 4294967291 - 2e9) "
                      "* pow(2.0, i % 599) AS x FROM range(500000) r(i) ORDER BY " +
                      order);
    std::map<std::int64_t, long double> sums;
    duck::Prepared statement(*connection, "SELECT g, hv_exact_sum(x) FROM t GROUP BY g");
    duck::Result rows = statement.stream();
    while (const duck::Chunk chunk = duck::nextChunk(rows)) {
        const auto* const groups =
            static_cast<const std::int64_t*>(duckdb_vector_get_data(chunk.column(0)));
        const ExactSumReader reader(chunk.column(1));
        for (std::size_t row = 0; row < chunk.rows(); ++row) {
            EXPECT_EQ(reader.countAt(row), 500);
            sums[groups[row]] = reader.at(row).rounded();
        }
    }
    EXPECT_EQ(keyedSums(*connection), sums);
    return sums;
}

TEST(ExactSums, DependOnNoOrderAndNoThreads)
{
    const auto sums = exactSums(1, "i");
    ASSERT_EQ(sums.size(), 1000U);
    EXPECT_EQ(exactSums(2, "i"), sums);
    EXPECT_EQ(exactSums(1, "hash(i)"), sums);
    EXPECT_EQ(exactSums(2, "hash(i)"), sums);
}

TEST(KeyedCells, TakeNoMoreMemoryThanAllowed)
{
    duckdb_database database = duck::openInMemory();
    {
        duck::Connection connection(database);
        registerKeyedCells(connection, 1000);
        const auto sums = [&](int times) {
            connection.query("SELECT hv_keyed_sum(TIMESTAMP '2024-01-01' + to_seconds(i % " +
                             std::to_string(times) + "), i) FROM range(5000) r(i)");
        };
        EXPECT_NO_THROW(sums(200));
        EXPECT_THROW(sums(2000), duck::QueryError);
        EXPECT_NO_THROW(sums(200)) << "the room is free again";
    }
    duckdb_close(&database);
}

TEST_F(Preparation, TakesRowsOfAHost)
{
    // Dates of rows are days; the dimension is a real number there.
    TestRows rows("rows", {{"day", "date"}, {"shop", "real"}, {"x", "real"}},
                  {{19723.0, 7.0, 1.0},
                   {19724.0, 7.0, 2.0},
                   {19724.0, {}, 2.0},
                   {19723.0, std::nan(""), 2.0},
                   {19724.0, 8.5, std::nan("")},
                   {19724.0, 8.5, std::numeric_limits<double>::infinity()},
                   {19723.0, 8.5, 4.0},
                   {{}, 8.5, 4.0}});
    const std::string job = R"(read({"dataSource": "rows"}) -> )" +
                            tsdp(R"({"dateTimeField": "day", "dimFieldList": ["shop"],
                                     "metricFieldList": ["x"]})");
    const std::string records = finish(feed(rows, job + " -> " + writeCsv("out.csv")));
    EXPECT_EQ(records, "$TimeIndex,1-1,2-1\n0,1.0,4.0\n1,2.0,\n");
    EXPECT_EQ(document()["settings"]["dimValueLists"].dump(), R"({"shop":[7.0,8.5]})");
    EXPECT_EQ(told("HVETC0008W"), "tsdp:tsdp: records without a value of each dimension, which "
                                  "are left out: 2\n");
    EXPECT_EQ(told("HVETC0007W"), "tsdp:tsdp: record 8 has no valid time in \"day\": left out\n");
    // The same values as integers and texts are the same values.
    std::string settings = resolved();
    EXPECT_EQ(
        steps("day,shop,x\n2024-01-02,8.5,1\n2024-01-01,7,3\n2024-01-02,a,1\n", tsdp(settings)),
        "$TimeIndex,1-1,2-1\n0,3.0,\n1,,1.0\n");
}

TEST_F(Preparation, ContinuesOnNewerData)
{
    ASSERT_NE(prepare(kTraining, kTrainingSettings), "");
    // South has a gap, which is too wide but filled; north and y of east are missing; west is new.
    EXPECT_EQ(steps("day,region,x,y\n2024-01-04,s,1,1\n2024-01-08,s,5,5\n2024-01-05,w,1,1\n"
                    "2023-12-31,s,9,9\n2024-01-05,t,2,\n",
                    tsdp(resolved())),
              "$TimeIndex,1-1,1-2,2-1,2-2,3-1,3-2\n0,,,,,,\n1,,,,,,\n2,,,,,,\n3,,,1.0,1.0,,\n"
              "4,,,2.0,2.0,2.0,\n5,,,3.0,3.0,,\n6,,,4.0,4.0,,\n7,,,5.0,5.0,,\n");
    EXPECT_EQ(told("HVETC0009W"),
              "tsdp:tsdp: the field \"region\" has the value \"w\", which is not in its list; "
              "records that are left out: 1\n");
    EXPECT_EQ(told("HVETC0007W"),
              "tsdp:tsdp: record 4 has the time 2023-12-31 00:00:00, which is before the first "
              "point of time: left out\n");
    EXPECT_NE(told("HVETC0011W").find("the series \"s\", \"x\" has no value at 3 of 5 points"),
              std::string::npos)
        << told("HVETC0011W");
    std::string details;
    for (const EmbeddedHV::ReportedMessage& report : listener.reports)
        details += report.detail;
    EXPECT_NE(details.find(R"("series":["s","x"])"), std::string::npos) << details;
    EXPECT_EQ(steps("day,region,x,y\n2024-01-04,s,1,1\n2024-01-08,s,5,5\n",
                    tsdp(resolved()) + " -> " + rtsdp(R"({"exportFutureFlag": true})"))
                  .substr(0, 49),
              "day,$FutureFlag,region,x,y\n2024-01-01,0,n,,\n2024-");
    expectValidDocument();
}

TEST_F(Preparation, NamesScoredSeries)
{
    const std::string kSystemMissing = "-1.7976931348623157e+308";
    ASSERT_NE(prepare(kTraining, kTrainingSettings), "");
    const std::string one = "$TimeIndex,$FutureFlag,2-2,2-2_predicted,2-2_lower,2-2_upper\n"
                            "2,0,3.5,3.25,,\n3,1,,4.5,3.5,5.5\n";
    EXPECT_EQ(steps(one, rtsdp(R"({"exportFutureFlag": true})")),
              "day,$FutureFlag,y,y_predicted,y_lower,y_upper\n2024-01-03,0,3.5,3.25," +
                  kSystemMissing + "," + kSystemMissing + "\n2024-01-04,1," + kSystemMissing +
                  ",4.5,3.5,5.5\n")
        << "a viewer wants numbers";
    EXPECT_EQ(steps(one, rtsdp()), "day,y,y_predicted,y_lower,y_upper\n"
                                   "2024-01-03,3.5,3.25,,\n2024-01-04,,4.5,3.5,5.5\n");
    EXPECT_EQ(steps("$TimeIndex,$FutureFlag,2-2,1-1,1-1_predicted\n2,0,3.5,3.25,1.5\n", rtsdp()),
              "day,region,x,x_predicted,y\n2024-01-03,s,,,3.5\n2024-01-03,n,3.25,1.5,\n");
    EXPECT_EQ(steps("$TimeIndex,9-9\n2,3.5\n", rtsdp()),
              "HVETC0013E rtsdp:rtsdp: the field \"9-9\" of the input is no series of the "
              "preparation in the container");
    EXPECT_EQ(steps("a\n2\n", rtsdp()).substr(0, 10), "HVETC0013E");
    write("prep.zip", "PK");
    EXPECT_EQ(steps(one, rtsdp()).substr(0, 10), "HVEIO0005E") << listener.fault();
}

struct FaultCase
{
    std::string settings;
    std::string fault; ///< its beginning
    std::string csv = "day,region,x,y\n2024-01-01,n,1,1\n2024-01-02,n,2,2\n";
};

TEST_F(Preparation, RefusesWhatMakesNoSense)
{
    const std::string base = R"("dateTimeField": "day", "metricFieldList": ["x"])";
    const std::string plain = "{" + base + "}";
    const FaultCase cases[] = {
        {R"({"metricFieldList": ["x"]})", "HVETC0001E tsdp:tsdp: no field has the time"},
        {R"({"dateTimeField": "day"})", "HVEPL0003E tsdp:tsdp: the setting \"metricFieldList\""},
        {R"({"dateTimeField": "day", "metricFieldList": [""]})", "HVEPL0004E"},
        {R"({"dateTimeField": "dayy", "metricFieldList": ["x"]})",
         "HVEPL0005E tsdp:tsdp: the input has no field \"dayy\"; did you mean \"day\"?"},
        {R"({"dateTimeField": "region", "metricFieldList": ["x"]})",
         "HVEPL0004E tsdp:tsdp: the setting \"dateTimeField\" names \"region\", which is String, "
         "not "
         "a date, a time or a timestamp"},
        {R"({"dateTimeField": "day", "metricFieldList": ["region"]})",
         "HVEPL0004E tsdp:tsdp: the setting \"metricFieldList\" names \"region\", which is "
         "String, not a number"},
        {R"({"dateTimeField": "day", "metricFieldList": ["x", "x"]})", "HVETC0002E"},
        {R"({"dateTimeField": "day", "dimFieldList": ["x"], "metricFieldList": ["x"]})",
         "HVETC0002E tsdp:tsdp: the setting \"metricFieldList\" names the field \"x\""},
        {R"({"cyclicFieldList": ["region"], "metricFieldList": ["x"]})", "HVEPL0004E"},
        {R"({"cyclicFieldList": ["x", "y"], "metricFieldList": []})", "HVEPL0004E"},
        {"{" + base + R"(, "timeInterval": {"unit": "days"}})",
         "HVEPL0004E tsdp:tsdp: the setting \"timeInterval.unit\" has \"days\""},
        {"{" + base + R"(, "timeInterval": {"unit": "day", "increment": 0}})", "HVEPL0004E"},
        {"{" + base + R"(, "timeInterval": {"unit": "hour"}})",
         "HVEPL0004E tsdp:tsdp: the setting \"timeInterval.unit\" is hour, which is shorter than "
         "what \"day\" tells apart"},
        {"{" + base + R"(, "timeInterval": {"unit": "day", "workingDays": [8]}})", "HVEPL0004E"},
        {"{" + base + R"(, "timeInterval": {"unit": "week", "workingDays": [1]}})", "HVEPL0004E"},
        {"{" + base + R"(, "timeInterval": {"unit": "day", "workingDays": [6]}})", "HVETC0006E"},
        {"{" + base + R"(, "timeInterval": {"unit": "day"}, "start": "2024-02-30"})",
         "HVEPL0004E tsdp:tsdp: the setting \"start\" is \"2024-02-30\""},
        {"{" + base + R"(, "timeInterval": {"unit": "day"}, "start": "2025-01-01"})", "HVETC0003E"},
        {"{" + base + R"(, "timeInterval": {"unit": "year"}})",
         "HVETC0003E tsdp:tsdp: the data have 1 points of time"},
        {"{" + base + R"(, "aggregation": "median"})",
         "HVEPL0004E tsdp:tsdp: the setting \"aggregation\" is \"median\"; known are sum"},
        {"{" + base + R"(, "aggregation": {"fields": {"x": 1}}})", "HVEPL0004E"},
        {"{" + base + R"(, "missingValues": {"method": "zero"}})", "HVEPL0004E"},
        {"{" + base + R"(, "missingValues": {"maxShare": 25}})",
         "HVEPL0004E tsdp:tsdp: the setting \"missingValues.maxShare\" is 25, not from 0 to 1"},
        {"{" + base + R"(, "seriesList": ["2"]})",
         "HVEPL0004E tsdp:tsdp: the setting \"seriesList\" has \"2\" that is no id"},
        {"{" + base + R"(, "seriesList": ["1", "1"]})", "HVEPL0004E"},
        {"{" + base + R"(, "seriesList": []})", "HVETC0004E"},
        {"{" + base + R"(, "dimFieldList": ["region"], "seriesList": ["1-1"]})", "HVEPL0004E"},
        {"{" + base + R"(, "dimFieldList": ["region"], "dimValueLists": {"region": ["n", "n"]}})",
         "HVEPL0004E tsdp:tsdp: the setting \"dimValueLists.region\" has \"n\" twice"},
        // Data that make no series.
        {plain, "HVETC0003E tsdp:tsdp: the data have fewer than two points of time",
         "day,x\n2024-01-01,1\n2024-01-01,2\n"},
        {plain,
         "HVETC0004E tsdp:tsdp: no series is left; the series \"x\", the first one, is left out "
         "because it has no value",
         "day,x\n2024-01-01,\n2024-01-02,\n,1\n"},
        {plain, "HVETC0006E tsdp:tsdp: the points of time are multiples of 0.5 seconds apart",
         "day,x\n2024-01-01 00:00:00.25,1\n2024-01-01 00:00:00.75,1\n"},
        {plain,
         "HVETC0005E tsdp:tsdp: the data have 1072915213 points of time, more than 1000000: set "
         "\"timeInterval\" to a longer interval",
         "day,x\n1990-01-01 00:00:01,1\n2024-01-01 00:00:00,1\n2024-01-01 00:00:13,1\n"},
        {R"({"cyclicFieldList": ["$casecount"], "metricFieldList": ["x"]})", "HVEPL", "day,x\n"},
    };
    for (const FaultCase& wanted : cases) {
        const std::string result = prepare(wanted.csv, wanted.settings);
        EXPECT_EQ(result.substr(0, wanted.fault.size()), wanted.fault) << wanted.settings << "\n"
                                                                       << result;
        EXPECT_FALSE(std::filesystem::exists(path("prep.zip"))) << wanted.settings;
    }
    write("in.csv", cases[0].csv);
    EXPECT_EQ(run(readCsv("in.csv") + " -> tsdp:tsdp({" + base + "}, _, _)").errorId, "HVEPL0003E");
}

std::string manySeries(int regions, int points)
{
    std::string csv = "t,region,x\n";
    for (int point = 0; point < points; ++point)
        for (int region = 0; region < regions; ++region)
            csv += std::to_string(point + 1) + "," + std::to_string(region) + "," +
                   std::to_string(point + region) + ".5\n";
    return csv;
}

TEST_F(Preparation, MakesThousandsOfSeries)
{
#ifdef HV_SANITIZED
    constexpr int kSeries = 2000;
#else
    constexpr int kSeries = 10000;
#endif
    write("in.csv", manySeries(kSeries, 2));
    listener = succeeded(run(readCsv("in.csv") + " -> " +
                             tsdp(R"({"cyclicFieldList": ["t"], "cyclicPeriods": ["month"],
                                      "dimFieldList": ["region"], "metricFieldList": ["x"]})") +
                             " -> " + rtsdp() + " -> " + writeCsv("out.csv")));
    EXPECT_EQ(document()["output"]["series"].size(), std::size_t{kSeries});
    const std::string names = read("out.csv");
    EXPECT_EQ(std::count(names.begin(), names.end(), '\n'), 2 * kSeries + 1);
    EXPECT_NE(
        names.find("\n2," + std::to_string(kSeries - 1) + "," + std::to_string(kSeries) + ".5\n"),
        std::string::npos);
}

TEST_F(Preparation, StopsSoon)
{
    using namespace std::chrono_literals;
#ifdef HV_SANITIZED
    write("in.csv", manySeries(400, 400));
#else
    write("in.csv", manySeries(1000, 400));
#endif
    const std::string job = readCsv("in.csv") + " -> " +
                            tsdp(R"({"cyclicFieldList": ["t"], "dimFieldList": ["region"],
                                     "metricFieldList": ["x"]})") +
                            " -> " + rtsdp() + " -> " + writeCsv("out.csv");
    for (const auto delay : {50ms, 400ms, 1000ms}) {
        RecordingListener stopped;
        const auto time = cancelAfter(delay, job, stopped);
        EXPECT_TRUE(stopped.ending != "cancel" || time < 250ms) << delay.count();
    }
}

} // namespace
