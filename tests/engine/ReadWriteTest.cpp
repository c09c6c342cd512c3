#include "engine/EngineFixture.h"

#include <fstream>
#include <tuple>

#include <sys/stat.h>
#include <unistd.h>

#include "CFMetaData.h"

using namespace EngineTest;
using testing::HasSubstr;

namespace {

class ReadWriteTest : public EngineFixture
{
protected:
    /// Reads a file of the given form and gives it as CSV, or the fault.
    std::string asCsv(const std::string& name, const std::string& parser,
                      const std::string& source = "")
    {
        std::filesystem::remove(path("as.csv"));
        last = run(readFile(name, parser, source) + " -> " + writeCsv("as.csv"));
        return last.ending == "success" ? read("as.csv") : last.fault();
    }
    static constexpr const char* kCsv = R"({"name": "csv", "config": {"hasHeader": true}})";
    static constexpr const char* kBareCsv = R"({"name": "csv"})";
    static constexpr const char* kHvbf = R"({"name": "hvbf", "config": {}})";
    static constexpr const char* kSav = R"({"name": "sav", "config": {}})";

    RecordingListener last;
};

/// The types are those of the fields, in the words of the data model.
constexpr std::tuple<const char*, const char*, const char*, const char*> kValues[] = {
    {"plain types", "i,r,s,d,t,z\n1,1.5,x,2012-02-29,9:05,2012-02-29T10:00\n",
     "integer real string date time timestamp",
     "i,r,s,d,t,z\n1,1.5,x,2012-02-29,09:05:00,2012-02-29 10:00:00\n"},
    {"codes with leading zeros stay texts", "zip\n01234\n99999\n", "string", "zip\n01234\n99999\n"},
    {"an invalid day makes a text", "d\n2012-02-30\n", "string", "d\n2012-02-30\n"},
    {"integers beyond 64 bits are real", "n\n9223372036854775808\n", "real",
     "n\n9.223372036854776e+18\n"},
    {"the largest integers stay exact", "n\n9223372036854775807\n-9223372036854775808\n", "integer",
     "n\n9223372036854775807\n-9223372036854775808\n"},
    {"dates and timestamps are timestamps", "t\n2012-01-01\n2012-01-01 10:00:00.5\n", "timestamp",
     "t\n2012-01-01 00:00:00\n2012-01-01 10:00:00.5\n"},
    {"quotes, commas and line ends", "a,b\n\"x,\"\"y\"\"\",\"1\n2\"\n", "string string",
     "a,b\n\"x,\"\"y\"\"\",\"1\n2\"\n"},
    {"an empty text is not a missing one", "a,b\n\"\",\nx,y\n", "string string",
     "a,b\n\"\",\nx,y\n"},
    {"names are made unique", "a,A,,a_1\n1,2,3,4\n", "integer integer integer integer",
     "a,A_2,field3,a_1\n1,2,3,4\n"},
    {"byte order mark, carriage returns, no last line end",
     "\xEF\xBB\xBF"
     "a,b\r\n1,2\r\n3,4",
     "integer integer", "a,b\n1,2\n3,4\n"},
    {"no record", "a,b\n", "string string", "a,b\n"},
    {"blank lines before the names and between", "\xEF\xBB\xBF\n\na,b\n\n1,2\n\n3,4\n",
     "integer integer", "a,b\n1,2\n3,4\n"},
    {"comment signs and other delimiters are data", "#a;b\n#1;2\n", "string",
     "\"#a;b\"\n\"#1;2\"\n"},
    {"not a number and infinity", "r\nnan\n-inf\n1\n", "real", "r\nnan\n-inf\n1.0\n"},
    {"blanks around values, which may not follow the minutes",
     "d,t,u,z\n 2012-01-02 ,12:30 , 1:05:09 , 2012-01-01 10:00\n", "date string time timestamp",
     "d,t,u,z\n2012-01-02,12:30 ,01:05:09,2012-01-01 10:00:00\n"},
    {"true and false stay as they are", "b\ntrue\nfalse\n", "string", "b\ntrue\nfalse\n"},
};

TEST_F(ReadWriteTest, CsvValuesKeepTheirMeaning)
{
    for (const auto& [what, content, types, result] : kValues) {
        SCOPED_TRACE(what);
        write("in.csv", content);
        EXPECT_EQ(asCsv("in.csv", kCsv), result);
        // What was written reads back as the same.
        std::filesystem::copy_file(path("as.csv"), path("again.csv"));
        EXPECT_EQ(asCsv("again.csv", kCsv), result);
        std::filesystem::remove(path("again.csv"));
        // And through the binary form, whose document tells the storages.
        run(readCsv("in.csv") + R"( -> write({"dataDestination": "$DIR/b.hvbf",
            "dataModelDestination": "$DIR/b.xml", "type": "hvbf"}))");
        EXPECT_EQ(asCsv("b.hvbf", kHvbf), result);
        std::string storages;
        const std::string xml = read("b.xml");
        for (auto at = xml.find("storage=\""); at != std::string::npos;
             at = xml.find("storage=\"", at + 1))
            storages +=
                (storages.empty() ? "" : " ") + xml.substr(at + 9, xml.find('"', at + 9) - at - 9);
        EXPECT_EQ(storages, types);
    }
}

/// A value far behind the head of the file, which alone is looked at before the job runs.
TEST_F(ReadWriteTest, LateValuesDecideOnTypesToo)
{
    const auto late = [this](const std::string& value, const std::string& more = "") {
        std::ofstream file(path("late.csv"));
        file << "n,k\n";
        for (int i = 0; i < 60000; ++i)
            file << i << "," << (i == 50000 ? value : "7") << "\n";
        file.close();
        succeeded(run("val d = " + readCsv("late.csv", more) + R"(
                d -> filterRecords(_, c => x => x.n == 50000) -> )" +
                      writeCsv("one.csv") + R"(
                d -> aggregate({"output": [{"function": "max", "input": "k"}]}) -> )" +
                      writeCsv("max.csv")));
        return read("one.csv") + read("max.csv");
    };
    EXPECT_EQ(late("7"), "n,k\n50000,7\nmax_k\n7\n");
    EXPECT_EQ(late("7.5"), "n,k\n50000,7.5\nmax_k\n7.5\n"); // the database alone would read 8
    EXPECT_EQ(late("oops"), "n,k\n50000,oops\nmax_k\noops\n");
    EXPECT_EQ(late("07"), "n,k\n50000,07\nmax_k\n7\n");
    EXPECT_EQ(late("oops", R"(, "readErrorThreshold": -1)"), "n,k\n50000,oops\nmax_k\noops\n");
}

TEST_F(ReadWriteTest, ADataModelFixesTypesNamesAndLabels)
{
    write("m.xml", R"(<DataModel version="1"><Field name="k" storage="string" measure="ordinal"
        role="target"><Label>The key</Label></Field><Field name="v" storage="real"
        measure="continuous" role="input"/></DataModel>)");
    write("in.csv", "v,k\n1,007\n2,8\n");
    const auto read = [&](const char* parser) { return asCsv("in.csv", parser, kWithModel); };
    EXPECT_EQ(read(kCsv), "v,k\n1.0,007\n2.0,8\n");

    write("in.csv", "x,1.5\n");
    EXPECT_EQ(read(kBareCsv), "k,v\nx,1.5\n");
    write("in.csv", "k,v,w\nx,1,2\n");
    EXPECT_EQ(read(kCsv), "k,v,w\nx,1.0,2\n");
    EXPECT_THAT(read(kBareCsv), HasSubstr("the file has 3 fields, the data model 2"));
    write("in.csv", "k,vv\nx,1\n");
    EXPECT_THAT(read(kCsv), HasSubstr(R"(a field "v", which the file lacks)"));
    write("in.csv", "k,v\nx,1\ny,bad\n");
    EXPECT_THAT(read(kCsv), HasSubstr(R"(in.csv:3: field "v": "bad" is not Real)"));
    write("m.xml", "<DataModel><Field/></DataModel>");
    EXPECT_THAT(read(kCsv), HasSubstr("HVEIO0011E read: the data model " + path("m.xml")));

    write("m.xml", R"(<DataModel version="1"><Field name="n" storage="integer"
        measure="ordinal" role="target"><Label>How many</Label></Field></DataModel>)");
    write("in.csv", "n\n1\n2.5\n");
    EXPECT_THAT(read(kCsv), HasSubstr(R"(in.csv:3: field "n": "2.5" is not Integer)"));
    write("in.csv", "n,g\n1,a\n2,b\n");
    run(readCsv("in.csv", "", kWithModel) +
        R"( -> aggregate({"output": [{"function": "key", "input": "n", "outName": "m"}]})
        -> write({"dataDestination": "$DIR/o.hvbf", "dataModelDestination": "$DIR/o.xml",
                  "type": "hvbf"}))");
    EXPECT_THAT(EngineFixture::read("o.xml"),
                testing::AllOf(HasSubstr("How many"), HasSubstr("ordinal"), HasSubstr("target")));
}

TEST_F(ReadWriteTest, WhatIsKnownOfValuesTravelsWithTheField)
{
    write("m.xml", R"(<DataModel><Field name="n" storage="integer" role="split"><Label>N</Label>
        <Format type="5" width="8" decimals="2"/><Values><Value value="1"/></Values>
        <ValueLabels><Value value="1" label="one"/></ValueLabels>
        <MissingValues><Range><Lower value="9"/></Range></MissingValues></Field></DataModel>)");
    write("in.csv", "n,s\n1,a\n2,b\n");
    // The model of a field that went through steps, by way of a file.
    const auto through = [&](const std::string& steps) {
        succeeded(run("val d = " + readCsv("in.csv", "", kWithModel) + "\n" + steps +
                      R"( -> write({"dataDestination": "$DIR/o.hvbf", "type": "hvbf",
                              "dataModelDestination": "$DIR/o.xml"}))" +
                      readFile("o.hvbf", kHvbf) +
                      R"( -> write({"dataDestination": "$DIR/p.csv", "type": "text/csv",
                              "dataModelDestination": "$DIR/p.xml"}))"));
        EXPECT_EQ(EngineFixture::read("p.xml"), EngineFixture::read("o.xml"));
        return *CFMetaData(EngineFixture::read("p.xml")).GetField("n");
    };
    const CFField known = *CFMetaData(EngineFixture::read("m.xml")).GetField("n");
    EXPECT_EQ(through(R"(d -> filterRecords(_, c => x => x.n < 2))"), known);
    EXPECT_EQ(through(R"(d -> aggregate({"output": [{"function": "key", "input": "n",
        "outName": "n"}]}))"),
              known);

    write("r.csv", "n\n1.5\n");
    // As numbers become real, so do those that something is said of.
    std::string real = EngineFixture::read("m.xml");
    real.replace(real.find("integer"), 7, "real");
    CFField expected = *CFMetaData(real).GetField("n");
    EXPECT_EQ(through("val e = " + readCsv("r.csv") + " union({}, a: d, b: e)"), expected);
    expected = known;
    expected.SetValues({});
    EXPECT_EQ(through(R"(d -> reclassifyField(_, c => x => ("n", x.n + 1)))"), expected);
    expected = CFField("n", CFField::Nominal, CFField::String, CFField::Split);
    expected.SetLabel("N");
    EXPECT_EQ(through(R"(d -> reclassifyField(_, c => x => ("n", x.s)))"), expected);
}

TEST_F(ReadWriteTest, ADataModelBesideABinaryFileSuitsIt)
{
    write("in.csv", "n,d\n1,2024-02-29\n");
    run(readCsv("in.csv") + R"( -> write({"dataDestination": "$DIR/b.hvbf", "type": "hvbf"}))");
    const auto read = [this](const std::string& field) {
        write("m.xml", R"(<DataModel version="1"><Field )" + field +
                           R"( measure="nominal" role="input"/></DataModel>)");
        return asCsv("b.hvbf", kHvbf, kWithModel);
    };
    EXPECT_EQ(read(R"(name="n" storage="real")"), "n,d\n1.0,2024-02-29\n");
    EXPECT_EQ(read(R"(name="d" storage="timestamp")"), "n,d\n1,2024-02-29 00:00:00\n");
    EXPECT_THAT(read(R"(name="n" storage="string")"),
                HasSubstr(R"(HVEIO0012E read: )" + path("b.hvbf") +
                          R"(: the field "n" is Integer, and in the data model String)"));
    EXPECT_THAT(read(R"(name="nn" storage="integer")"),
                HasSubstr(R"(a field "nn", which the file lacks; did you mean "n"?)"));
}

/// The files are made by the test.
constexpr std::tuple<const char*, const char*, const char*, const char*> kFaults[] = {
    {"missing", "none.csv", R"({"name": "csv"})", "HVEIO0001E read: $DIR/none.csv: there is no"},
    {"a folder", "folder", R"({"name": "csv"})", "HVEIO0002E read: $DIR/folder: this is a folder"},
    {"empty", "empty.csv", R"({"name": "csv"})", "HVEIO0004E read: $DIR/empty.csv: the file is"},
    {"empty, binary", "empty.csv", R"({"name": "hvbf"})", "HVEIO0004E read: $DIR/empty.csv"},
    {"blank lines only", "blank.csv", R"({"name": "csv"})", "HVEIO0004E read: $DIR/blank.csv"},
    {"too few fields", "ragged.csv", R"({"name": "csv", "config": {"hasHeader": true}})",
     "HVEIO0006E read: $DIR/ragged.csv:3: the record has 1 field, not 2"},
    {"too many fields", "ragged2.csv", R"({"name": "csv", "config": {"hasHeader": true}})",
     "HVEIO0006E read: $DIR/ragged2.csv:2: the record has 3 fields, not 2"},
    {"an open quote", "quote.csv", R"({"name": "csv", "config": {"hasHeader": true}})",
     "HVEIO0006E read: $DIR/quote.csv:2:3: a quote is not closed"},
    {"not UTF-8", "latin.csv", R"({"name": "csv", "config": {"hasHeader": true}})",
     "HVEIO0006E read: $DIR/latin.csv:2: the text is not UTF-8"},
    {"binary for text", "data.hvbf", R"({"name": "csv"})", "HVEIO0005E read: $DIR/data.hvbf:1"},
    {"text for binary", "ragged.csv", R"({"name": "hvbf"})",
     "HVEIO0005E read: $DIR/ragged.csv: this is not an HVBF file"},
    {"cut short", "cut.hvbf", R"({"name": "sav"})",
     "HVEIO0005E read: $DIR/cut.hvbf: this is not a SAV file, or it is cut short"},
    {"damaged where it does not show at once", "damaged.hvbf", R"({"name": "hvbf"})",
     "HVEIO0005E read: $DIR/damaged.hvbf: the file is damaged"},
    {"an unknown parser", "ragged.csv", R"({"name": "xls"})",
     R"(HVEPL0004E read: the setting "filesystem.locations[0].parser.name" is "xls")"},
};

TEST_F(ReadWriteTest, FilesThatCannotBeReadAreNamed)
{
    std::filesystem::create_directory(path("folder"));
    write("empty.csv", "");
    write("blank.csv", "\n\r\n\n");
    write("ragged.csv", "a,b\n1,2\n3\n");
    write("ragged2.csv", "a,b\n1,2,3\n");
    write("quote.csv", "a,b\n1,\"2\n");
    write("latin.csv", "a,b\n1,\xFC\n");
    run(readCsv("latin.csv", R"(, "maxRecordsCount": 0)") + R"( -> write({"dataDestination":
        "$DIR/data.hvbf", "type": "hvbf"}))");
    const std::string whole = read("data.hvbf");
    write("cut.hvbf", whole.substr(0, whole.size() / 2));
    write("numbers.csv", numbers(5000));
    run(readCsv("numbers.csv") + R"( -> write({"dataDestination": "$DIR/damaged.hvbf",
        "type": "hvbf"}))");
    std::string damaged = read("damaged.hvbf");
    damaged.replace(4, 400, std::string(400, '\x55'));
    write("damaged.hvbf", damaged);
    const auto before = files();
    for (const auto& [what, file, parser, fault] : kFaults) {
        SCOPED_TRACE(what);
        std::string expected = fault;
        if (const auto mark = expected.find("$DIR"); mark != std::string::npos)
            expected.replace(mark, 4, path("").substr(0, path("").size() - 1));
        EXPECT_THAT(asCsv(file, parser), HasSubstr(expected));
        EXPECT_EQ(files(), before);
    }
    if (geteuid() != 0) {
        chmod(path("ragged.csv").c_str(), 0);
        EXPECT_THAT(asCsv("ragged.csv", kCsv), HasSubstr("HVEIO0003E"));
    }
}

/// A statement may leave fields unread, but it must not take their types from the head of the file
/// for the next statement.
TEST_F(ReadWriteTest, TheFieldsThatAStatementReadsDecideOnItsTypes)
{
    std::ofstream file(path("late.csv"));
    file << "n,k,m\n";
    for (int i = 0; i < 60000; ++i)
        file << i << (i == 50000 ? ",7.5,8.5\n" : ",7,8\n");
    file.close();
    const auto aggregate = [](const std::string& function, const std::string& input) {
        return R"( -> aggregate({"output": [{"function": ")" + function + R"(", "input": ")" +
               input + R"("}]}) -> )";
    };
    const std::pair<std::string, const char*> kSteps[] = {
        {aggregate("max", "k"), "max_k\n7.5\n"},
        {R"( -> filterFields({"fields": ["m"]}))" + aggregate("max", "m"), "max_m\n8.5\n"},
        {R"( -> filterRecords(_, c => x => x.k > 7 && x.k < 8))" + aggregate("count", "n"),
         "count_n\n1\n"},
        {R"( -> deriveField(_, c => x => ("s", x.k + x.m)))" + aggregate("max", "s"),
         "max_s\n16.0\n"},
        {R"( -> deriveField(_, c => x => ("s", x.k))
             -> deriveField(_, c => x => ("t", x.s)))" +
             aggregate("max", "t"),
         "max_t\n7.5\n"},
        {R"( -> reclassifyField(_, c => x => ("n", x.k)))" + aggregate("max", "n"), "max_n\n7.5\n"},
    };
    for (const auto& [steps, result] : kSteps) {
        SCOPED_TRACE(steps);
        const std::string job = readCsv("late.csv") + steps + writeCsv("out.csv");
        succeeded(run(job));
        EXPECT_EQ(read("out.csv"), result);
        // The third statement is planned when the first one, which reads only n, has written.
        succeeded(run(readCsv("late.csv") + aggregate("max", "n") + writeCsv("first.csv") +
                      readCsv("first.csv") + " -> " + writeCsv("second.csv") + job));
        EXPECT_EQ(read("second.csv"), "max_n\n59999\n");
        EXPECT_EQ(read("out.csv"), result);
    }
}

/// A thread that begins to read within such a file does not know what is quoted.
TEST_F(ReadWriteTest, ThreadsReadFilesWithQuotes)
{
    constexpr std::streamoff kSeveralBlocks = 5'000'000;
    const std::string count = R"( -> aggregate({"output": [{"function": "count"},
                                     {"function": "max", "input": "n"}]}) -> )";
    write("m.xml", R"(<DataModel version="1"><Field name="t" storage="string"/>
        <Field name="n" storage="integer"/></DataModel>)");
    std::string likeRecords = "\"";
    for (int i = 0; i < 3000; ++i)
        likeRecords += "5,6\n";
    constexpr int kBeyondHead = 40000; // the plan looks only at the head of the file
    struct Text
    {
        std::string text;
        const char* lineEnd;
        int plainRecords; ///< before those with the text
    };
    const Text kTexts[] = {{"\",\t\"", "\n", 0},
                           {"\"a\nb,c\n\"", "\n", kBeyondHead},
                           {likeRecords + "b,c\n\"", "\n", 0},
                           {likeRecords + "b,c\n\"", "\n", kBeyondHead},
                           {likeRecords + "\"", "\r\n", kBeyondHead},
                           {"\"a \"\"b, \"\"\"", "\r\n", 0}};
    for (const auto& [text, lineEnd, plainRecords] : kTexts) {
        SCOPED_TRACE(text.substr(0, 20) + lineEnd + std::to_string(plainRecords));
        std::ofstream file(path("in.csv"));
        file << "t,n" << lineEnd;
        int records = 0;
        while (file.tellp() < kSeveralBlocks) {
            ++records;
            file << (records > plainRecords ? text : "plain") << ',' << records << lineEnd;
        }
        file.close();
        const std::string number = std::to_string(records);
        for (const char* more : {"", R"(, "readErrorThreshold": 10)"}) {
            for (const std::string& model : {std::string(), kWithModel}) {
                const auto listener =
                    succeeded(run(readCsv("in.csv", more, model) + count + writeCsv("out.csv")));
                EXPECT_TRUE(listener.messages.empty());
                EXPECT_EQ(read("out.csv"), "count,max_n\n" + number + "," + number + "\n");
            }
        }
    }
}

/// Threads would lose records where a block of the file ends in the right place, and the database
/// would not notice.
TEST_F(ReadWriteTest, QuotedLineEndsThatOccurLateLoseNothing)
{
    constexpr int kBeyondHead = 40000; // the plan looks only at the head of the file
    constexpr int kRecords = 984'000;
    for (const char* name : {"n", "na", "nam"}) {
        SCOPED_TRACE(name);
        std::ofstream file(path("in.csv"));
        file << name << "\r\n";
        for (int i = 0; i < kRecords; ++i)
            file << (i < kBeyondHead ? "plain" : "\"\n\"") << "\r\n";
        file.close();
        succeeded(run(readCsv("in.csv") +
                      R"( -> aggregate({"output": [{"function": "count"}]}) -> )" +
                      writeCsv("out.csv")));
        EXPECT_EQ(read("out.csv"), "count\n" + std::to_string(kRecords) + "\n");
    }
}

TEST_F(ReadWriteTest, BadRecordsAreSkippedUpToAThreshold)
{
    write("in.csv", "a,b\n1,2\n3\n4,5\n6,7,8\n9,1\n");
    const auto read = [this](const std::string& threshold) {
        last = run(readCsv("in.csv", threshold) + " -> " + writeCsv("out.csv"));
        return last.ending == "success" ? EngineFixture::read("out.csv") : last.errorText;
    };
    EXPECT_THAT(read(R"(, "readErrorThreshold": 1)"),
                HasSubstr("in.csv:5: the record has 3 fields, not 2; more than 1 record "));
    EXPECT_EQ(files(), std::vector<std::string>{"in.csv"});
    for (const char* threshold : {"2", "-1", "18446744073709551614"}) {
        EXPECT_EQ(read(std::string(R"(, "readErrorThreshold": )") + threshold),
                  "a,b\n1,2\n4,5\n9,1\n");
        ASSERT_EQ(last.messages.size(), 1U);
        EXPECT_EQ(last.messages[0].first, "HVEIO0008W");
        EXPECT_THAT(last.messages[0].second, HasSubstr("2 records were skipped, the first on line "
                                                       "3: the record has 1 field, not 2"));
    }
    EXPECT_THAT(read(R"(, "readErrorThreshold": 0)"), HasSubstr("in.csv:3"));
    EXPECT_THAT(read(R"(, "readErrorThreshold": -2)"), HasSubstr("is below -1"));
    // A record with a broken quote is skipped only if no reader can end it elsewhere.
    constexpr std::pair<const char*, const char*> kQuotes[] = {
        {"a,b\n1,2\n\"x\"y,3\n4,5\n", "a,b\n1,2\n4,5\n"},
        {"a,b\n1,2\n4,\"5\n6,7\n", "a,b\n1,2\n"},
        {"a,b\n1,2\n\"x\" \"y\",3\n4,5\n",
         "HVEIO0003E read: $DIRin.csv:3:5: text follows a closing"},
        {"a,b\n\"v\" \"w,7\n9,8\n", "HVEIO0003E read: $DIRin.csv:2:5: text follows a closing"},
        {"a,b\n1\n\"Pedro \"the\" legend\",3\n", "HVEIO0003E read: $DIRin.csv:3:9: text follows"},
        {"a,b\n1,2\r\n3,4\n", "HVEIO0003E read: $DIRin.csv:2: the line ends in CR LF"},
    };
    for (const auto& [text, result] : kQuotes) {
        SCOPED_TRACE(text);
        write("in.csv", text);
        std::string expected = result;
        if (const auto mark = expected.find("$DIR"); mark != std::string::npos)
            expected.replace(mark, 4, path(""));
        const std::string got = read(R"(, "readErrorThreshold": 5)");
        EXPECT_THAT(last.ending == "success" ? got : last.errorId + " " + got, HasSubstr(expected));
    }
    // The limit counts wanted records, and a broken one after these does not matter.
    write("in.csv", "a,b\n1,2\n3\n4,5\n\"x\" \"y\",3\n");
    const std::string skips = R"(, "readErrorThreshold": 5, "maxRecordsCount": )";
    EXPECT_EQ(read(skips + "2"), "a,b\n1,2\n4,5\n");
    EXPECT_THAT(read(skips + "3"), HasSubstr("in.csv:5:5: text follows a closing quote"));
    // Records of other sources are not read one by one.
    write("b.csv", "a\n1\n");
    last = run(readCsv("b.csv") + R"( -> write({"dataSource": "b", "mode": "overwrite"})
        read({"dataSource": "b", "readErrorThreshold": 1}) -> )" +
               writeCsv("out.csv"));
    ASSERT_EQ(last.messages.size(), 1U);
    EXPECT_THAT(last.messages[0].second, HasSubstr("\"readErrorThreshold\" is for CSV files"));
}

/// Whether a record is bad depends neither on what the job does with it nor on what follows the
/// last one that is asked for.
TEST_F(ReadWriteTest, BadRecordsAreThoseThatAreAskedFor)
{
    write("in.csv", "a,b\n1,2\n3,x\n4,5\n6\n");
    write("m.xml", R"(<DataModel version="1"><Field name="a" storage="integer"/>
        <Field name="b" storage="integer"/></DataModel>)");
    const std::string count = R"( -> aggregate({"output": [{"function": "count"}]}))";
    const std::string none = " -> filterRecords(_, c => x => false)";
    const auto read = [this](const std::string& more, const std::string& steps, bool modelled) {
        std::string source = readCsv("in.csv", more);
        if (modelled)
            source.replace(source.find("\"locations"), 0, "\"dataModel\": \"$DIR/m.xml\", ");
        last = run(source + steps + " -> " + writeCsv("out.csv"));
        return last.ending == "success" ? EngineFixture::read("out.csv") : last.errorText;
    };
    const std::string any = R"(, "readErrorThreshold": -1)";
    EXPECT_EQ(read(any, "", true), "a,b\n1,2\n4,5\n");
    EXPECT_EQ(read(any, count, true), "count\n2\n");
    EXPECT_EQ(read(any, R"( -> filterFields({"fields": ["a"]}))", true), "a\n1\n4\n");
    EXPECT_EQ(read(any, none, false), "a,b\n");
    const std::string most = R"(, "maxRecordsCount": )";
    EXPECT_EQ(read(most + "1", "", true), "a,b\n1,2\n");
    EXPECT_EQ(read(most + "3", "", false), "a,b\n1,2\n3,x\n4,5\n");
    EXPECT_THAT(read(most + "2", "", true), HasSubstr("in.csv:3: field \"b\": \"x\" is not"));
    EXPECT_EQ(last.errorId, "HVEIO0006E");
    EXPECT_THAT(read(most + "4", "", false), HasSubstr("in.csv:5: the record has 1 field, not 2"));
    EXPECT_EQ(read(most + "2" + any, "", true), "a,b\n1,2\n4,5\n");
    ASSERT_EQ(last.messages.size(), 1U);
    EXPECT_THAT(last.messages[0].second, HasSubstr("1 record was skipped"));
}

TEST_F(ReadWriteTest, NoMoreRecordsThanAskedFor)
{
    write("in.csv", "a\n1\n2\n3\n");
    for (const auto& [most, result] :
         {std::pair{"0", "a\n"}, {"2", "a\n1\n2\n"}, {"9", "a\n1\n2\n3\n"}}) {
        run(readCsv("in.csv", std::string(R"(, "maxRecordsCount": )") + most) + " -> " +
            writeCsv("out.csv"));
        EXPECT_EQ(read("out.csv"), result);
    }
}

TEST_F(ReadWriteTest, PathsComeInSeveralForms)
{
    // A bare name is a file of the analytic root, in the host's spelling a path may have
    // backslashes, and characters of patterns mean themselves.
    write("a [1]*.csv", "v\n1\n");
    write("a 1x.csv", "v\n2\n");
    std::string backslashes = expanded("$DIR/a [1]*.csv").substr(7);
    std::replace(backslashes.begin(), backslashes.end(), '/', '\\');
    std::string escaped;
    for (const char character : backslashes)
        escaped += character == '\\' ? "\\\\" : std::string(1, character);
    const std::string absolute = path("a [1]*.csv");
    for (const std::string& spelling : {escaped, absolute, "file://" + absolute,
                                        "file:///" + absolute, "file:///" + absolute.substr(1)}) {
        SCOPED_TRACE(spelling);
        succeeded(run(R"(read({"filesystem": {"locations": [{"path": ")" + spelling +
                      R"(", "parser": {"name": "csv", "config": {"hasHeader": true}}}]}}) -> )" +
                      R"(write({"dataDestination": "bare.csv", "type": "text/csv"}))"));
        std::ifstream bare(root() + "/analytic-root/zor/public/bare.csv");
        std::string line;
        std::getline(bare, line);
        std::getline(bare, line);
        EXPECT_EQ(line, "1");
    }
    EXPECT_THAT(run(R"(read({"filesystem": {"locations": [{"path": "bare.csv", "parser": )" +
                    std::string(kCsv) + "}]}}) -> " + writeCsv("out.csv"))
                    .ending,
                "success");
}

TEST_F(ReadWriteTest, SealedFilesOpenWithTheirPasswordOnly)
{
    std::string csv = "id,text\n";
    for (int i = 0; i < 30000; ++i)
        csv += std::to_string(i) + ",secret text " + std::to_string(i) + "\n";
    write("in.csv", csv);
    succeeded(run(readCsv("in.csv") + R"( -> write({"dataDestination": "$DIR/s.sav",
        "type": "application/x-vexa-sav", "dataPassword": "open sesame"}))"));
    const std::string sealed = read("s.sav");
    EXPECT_EQ(sealed.find("PAR1"), std::string::npos);
    EXPECT_EQ(sealed.find("secret"), std::string::npos);
    const auto open = [&](const std::string& config) {
        return asCsv("s.sav", R"({"name": "sav", "config": )" + config + "}");
    };
    EXPECT_TRUE(open(R"({"dataPassword": "open sesame"})") == csv);
    EXPECT_THAT(open(R"({"dataPassword": "Open sesame"})"),
                HasSubstr("HVEIO0010E read: " + path("s.sav") + ": the password is wrong"));
    EXPECT_THAT(open("{}"), HasSubstr("HVEIO0009E read: " + path("s.sav")));
    for (const std::size_t size : {sealed.size() - 1, sealed.size() / 2, std::size_t{30}}) {
        write("s.sav", sealed.substr(0, size));
        EXPECT_THAT(open(R"({"dataPassword": "open sesame"})"), HasSubstr("HVEIO0005E"));
    }
    std::string changed = sealed;
    changed[changed.size() / 2] ^= 1;
    write("s.sav", changed);
    EXPECT_THAT(open(R"({"dataPassword": "open sesame"})"), HasSubstr("damaged"));
    EXPECT_TRUE(std::filesystem::is_empty(root() + "/af")) << "plain content left behind";
}

TEST_F(ReadWriteTest, BothFilesOfAPairOrNone)
{
    write("in.csv", "a\n1\n");
    std::filesystem::create_directory(path("folder"));
    const auto into = [&](const std::string& data, const std::string& model) {
        return run(readCsv("in.csv") + R"( -> write({"dataDestination": "$DIR/)" + data +
                   R"(", "dataModelDestination": "$DIR/)" + model + R"(", "type": "text/csv"}))");
    };
    EXPECT_EQ(into("folder", "m.xml").errorId, "HVEIO0002E");
    EXPECT_EQ(into("d.csv", "folder").errorId, "HVEIO0002E");
    EXPECT_EQ(into("none/d.csv", "m.xml").errorId, "HVEIO0015E");
    EXPECT_THAT(into("d.csv", "none/m.xml").errorText, HasSubstr("there is no folder"));
    EXPECT_EQ(into("same", "same").errorId, "HVEPL0004E");
    EXPECT_EQ(into("same", "folder/../same").errorId, "HVEPL0004E");
    EXPECT_EQ(into(std::string(300, 'x'), "m.xml").errorId, "HVEIO0016E");
    EXPECT_THAT(into(R"(d\u0000.csv)", "m.xml").errorText, HasSubstr("holds the character NUL"));
    mkfifo(path("pipe").c_str(), 0600);
    EXPECT_THAT(into("pipe", "m.xml").errorText, HasSubstr("this is not a regular file"));
    EXPECT_EQ(files(), (std::vector<std::string>{"folder", "in.csv", "pipe"}));
    succeeded(into("d.csv", "m.xml"));
    // A file that is there is replaced.
    succeeded(into("d.csv", "m.xml"));
}

TEST_F(ReadWriteTest, AFailedJobLeavesTheOldFile)
{
    write("in.csv", "a\n1\n9223372036854775807\n");
    write("out.csv", "old\n");
    EXPECT_EQ(run(readCsv("in.csv") + " -> deriveField(_, c => x => (\"b\", x.a * 2)) -> " +
                  writeCsv("out.csv"))
                  .ending,
              "error");
    EXPECT_EQ(read("out.csv"), "old\n");
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "out.csv"}));
    // A job may well write the file that it reads.
    succeeded(run(readCsv("in.csv") + " -> " + writeCsv("in.csv")));
    EXPECT_EQ(read("in.csv"), "a\n1\n9223372036854775807\n");
}

TEST_F(ReadWriteTest, NamedDataSourcesLastAcrossJobs)
{
    write("in.csv", "a,b\n1,x\n");
    const std::string read = readCsv("in.csv");
    const auto show = [this](const std::string& name) {
        const auto listener =
            run(R"(read({"dataSource": ")" + name + R"("}) -> )" + writeCsv("out.csv"));
        return listener.ending == "success" ? EngineFixture::read("out.csv") : listener.errorText;
    };
    EXPECT_THAT(show("kept"), HasSubstr(R"(no data source "kept")"));
    // Statements of one job add to the same source, whoever of them makes it.
    const std::string append = read + R"( -> write({"dataSource": "added", "mode": "append"}) )";
    succeeded(run(append + append));
    EXPECT_EQ(show("added"), "a,b\n1,x\n1,x\n");
    succeeded(run(read +
                  R"( -> filterFields({"fields": ["a"]}) -> write({"dataSource": "added"}) )" +
                  read + R"( -> filterFields({"fields": ["a"]}) ->
                      write({"dataSource": "added", "mode": "append"}))"));
    EXPECT_EQ(show("added"), "a\n1\n1\n");
    EXPECT_THAT(show("addded"), HasSubstr(R"(did you mean "added"?)"));
    succeeded(run(read + R"( -> write({"dataSource": "kept", "mode": "append"}))"));
    succeeded(run(read + R"( -> write({"dataSource": "kept", "mode": "append"}))"));
    EXPECT_EQ(show("kept"), "a,b\n1,x\n1,x\n");
    EXPECT_THAT(run(read + R"( -> filterFields({"fields": ["a"]}) ->
                              write({"dataSource": "kept", "mode": "append"}))")
                    .errorText,
                HasSubstr(R"(they lack the field "b")"));
    EXPECT_THAT(run(read + R"( -> deriveField(_, c => x => ("c", 1)) ->
                              write({"dataSource": "kept", "mode": "append"}))")
                    .errorText,
                HasSubstr(R"(it has no field "c")"));
    succeeded(
        run(read + R"( -> filterFields({"fields": ["a"]}) -> write({"dataSource": "kept"}))"));
    EXPECT_EQ(show("kept"), "a\n1\n");
    // One job may read what its earlier statement writes, replace what it reads, and add to it.
    succeeded(run(read + R"( -> write({"dataSource": "kept"})
        read({"dataSource": "kept"}) -> deriveField(_, c => x => ("c", x.a + 1)) ->
            write({"dataSource": "kept"})
        read({"dataSource": "kept"}) -> )" +
                  writeCsv("out.csv")));
    EXPECT_EQ(EngineFixture::read("out.csv"), "a,b,c\n1,x,2\n");
    EXPECT_THAT(run(read + R"( -> write({"dataSource": "kept", "mode": "upsert"}))").errorText,
                HasSubstr("known are append and overwrite"));
}

/// Records are added once and whole, also where the statement has run before it shows that it has
/// to run again, or that it fails.
TEST_F(ReadWriteTest, AStatementThatRunsAnewDoesSoFromWhereItBegan)
{
    write("in.csv", "v\n1.5\n");
    std::ofstream late(path("late.csv"));
    late << "n,k\n";
    for (int i = 0; i < 30000; ++i)
        late << i << ",7\n";
    late << "1,7.5\n1\n1\n";
    late.close();
    ASSERT_EQ(run(readCsv("in.csv") + R"( -> write({"dataSource": "sums"}))").ending, "success");
    const auto add = [this](const char* threshold) {
        return run(readCsv("late.csv", R"(, "readErrorThreshold": )" + std::string(threshold)) +
                   R"( -> deriveField(_, c => x => ("v", toReal(x.n) * 0)) ->
                       filterFields({"fields": ["v"]}) ->
                       write({"dataSource": "sums", "mode": "append"}))");
    };
    const auto count = [this] {
        run(R"(read({"dataSource": "sums"}) ->
            aggregate({"output": [{"function": "count"}]}) -> )" +
            writeCsv("out.csv"));
        return read("out.csv");
    };
    write("other.csv", "v\n2.5\n");
    // A chain stays as it was read first, whatever has become of what it was read from.
    EXPECT_EQ(run("val d = " + readCsv("in.csv") + " d -> " + writeCsv("out.csv") +
                  readCsv("other.csv") + " -> " + writeCsv("in.csv") +
                  "val n = " + readCsv("late.csv", R"(, "readErrorThreshold": 2)") +
                  "union(_, d, n) -> filterRecords(_, c => x => !isMissing(x.v)) -> " +
                  writeCsv("out.csv"))
                  .ending,
              "success");
    EXPECT_EQ(read("out.csv"), "v,n,k\n1.5,,\n");
    EXPECT_EQ(add("1").errorId, "HVEIO0007E");
    EXPECT_EQ(count(), "count\n1\n");
    EXPECT_EQ(add("2").ending, "success");
    EXPECT_EQ(count(), "count\n30002\n");
}

/// What was learnt of a file holds until the job writes it.
TEST_F(ReadWriteTest, AFileThatTheJobHasWrittenIsReadAsItIsNow)
{
    write("in.csv", "a,b\n1,2\n");
    const auto listener =
        run(readCsv("in.csv") + R"( ->
            reclassifyField(_, c => x => ("b", x.b + 0.5)) ->
            deriveField(_, c => x => ("c", "new")) -> )" +
            writeCsv("in.csv") + readCsv("in.csv") + " -> " + writeCsv("out.csv"));
    EXPECT_EQ(listener.ending, "success") << listener.errorText;
    EXPECT_EQ(read("out.csv"), "a,b,c\n1,2.5,new\n");
}

constexpr std::pair<const char*, const char*> kConfigurationFaults[] = {
    {"read({})", "no source is given"},
    {R"(read({"geospatial": {"location": "x"}}))", R"("geospatial.type" is missing)"},
    {R"(read({"dataSource": "a", "filesystem": {}}))", "more than one source"},
    {R"(read({"dataSource": 3}))", R"("dataSource" must be a text, not a number)"},
    {R"(read({"filesystem": {"locations": []}}))", R"("filesystem.locations" is empty)"},
    {R"(read({"filesystem": {"locations": [{"path": "a", "parser": {"name": "csv"}},
        {"path": "b"}]}}))",
     "names 2 files, the second b"},
    {R"(read({"filesystem": {"locations": [{"path": "a"}]}}))",
     R"("filesystem.locations[0].parser")"},
    {R"(read({"dataSource": "a"}) -> write({}))", R"(there is no data source "a")"},
    {R"(read("a"))", "the configuration must be an object, not a text"},
    {"read()", "the step is written read(configuration)"},
};

TEST_F(ReadWriteTest, ConfigurationsAreChecked)
{
    for (const auto& [job, fault] : kConfigurationFaults)
        EXPECT_THAT(run(job).errorText, HasSubstr(fault)) << job;
    write("in.csv", "a\n1\n");
    for (const auto& [write, fault] :
         {std::pair{R"({})", "no destination is given"},
          {R"({"dataDestination": "x", "type": "text/geojson"})", "no geospatial field"},
          {R"({"dataDestination": "x", "type": "text/plain"})", R"(is "text/plain")"},
          {R"({"dataDestination": "x"})", R"("type" is missing)"},
          {R"({"dataDestination": "x", "type": "text/csv", "dataPassword": "p"})", "sealed"}})
        EXPECT_THAT(run(readCsv("in.csv") + " -> write(" + write + ")").errorText,
                    HasSubstr(fault));
}

} // namespace
