#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <tuple>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MultiByte.h"
#include "VexaCases.h"
#include "datafile/Duck.h"
#include "host/CaseFiles.h"
#include "support/FullDisk.h"
#include "support/HostScopes.h"
#include "support/ScratchFolder.h"

using namespace casefiles;
using testing::HasSubstr;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLowest = std::numeric_limits<double>::lowest();
constexpr double kHighest = std::numeric_limits<double>::max();

std::string missingOf(const VEXA_Variable& variable)
{
    const OBS* values[3] = {};
    std::string all =
        std::to_string(variable.GetMissingValues(values[0], values[1], values[2])) + ":";
    for (const OBS* value : values)
        if (value)
            all += " " + (variable.GetType() > 0
                              ? std::string(value->text, variable.MissingTextWidth())
                              : testing::PrintToString(value->number));
    return all;
}

std::string labelsOf(const VEXA_Variable& variable)
{
    VEXA_ValueLabelMap labels = variable.GetValueLabels();
    labels.Reset();
    const OBS* value = nullptr;
    const char* label = nullptr;
    std::string all;
    while (labels.GetNextPair(value, label))
        all += (variable.GetType() > 0
                    ? std::string(value->text, static_cast<std::size_t>(variable.GetType()))
                    : testing::PrintToString(value->number)) +
               "=" + label + ";";
    return all;
}

void expectSame(const VEXA_Variable& read, const VEXA_Variable& written)
{
    SCOPED_TRACE(written.GetName());
    EXPECT_EQ(read.GetName(), written.GetName());
    EXPECT_STREQ(read.GetLabel(), written.GetLabel());
    EXPECT_EQ(read.GetType(), written.GetType());
    EXPECT_EQ(read.GetFormat(), written.GetFormat());
    EXPECT_EQ(read.GetWriteFormat(), written.GetWriteFormat());
    EXPECT_EQ(read.GetMeasurementLevel(), written.GetMeasurementLevel());
    EXPECT_EQ(read.GetRole(), written.GetRole());
    EXPECT_EQ(labelsOf(read), labelsOf(written));
    EXPECT_EQ(missingOf(read), missingOf(written));
}

/// One variable of each kind, with all that a dictionary can say.
std::vector<VEXA_Variable> everything()
{
    std::vector<VEXA_Variable> all;
    all.push_back(variable("größe \"x\"", 0, {12, kFormatComma, 3}));
    all.back().SetWriteFormat({9, kFormatGeneral, 1});
    all.back().SetLabel("'Label' with; all\nsorts");
    all.back().SetMeasurementLevel(MeasurementLevel::Ordinal);
    all.back().SetRole(kRolePartition);
    all.back().SetMissingRange(kLowest, -5, 99);
    VEXA_ValueLabelMap numbers;
    numbers.SetLabel(-1.5, "minus");
    numbers.SetLabel(1e300, "");
    all.back().SetValueLabels(numbers);

    all.push_back(variable("filename", 9));
    all.back().SetMeasurementLevel(MeasurementLevel::Nominal);
    all.back().SetRole(kRoleTarget);
    all.back().SetMissingValues(std::vector<std::string>{"a'b", " ", "日本語"});
    VEXA_ValueLabelMap texts(9);
    texts.SetLabel("a'b", "an apostrophe");
    texts.SetLabel("123456789", "to the brim");
    all.back().SetValueLabels(texts);

    const double from = day(-150000);
    for (const auto& [name, type] :
         {std::pair("rowid", kFormatDate), {"t", kFormatTime}, {"ts", kFormatDateTimeYearFirst}}) {
        all.push_back(variable(name, 0, {11, static_cast<std::uint8_t>(type), 0}));
        VEXA_ValueLabelMap dates;
        dates.SetLabel(day(1), "second");
        all.back().SetValueLabels(dates);
        all.back().SetMissingRange(from, kHighest);
        all.back().SetMeasurementLevel(MeasurementLevel::Scale);
    }
    all.push_back(variable("W"));
    all.back().SetMissingValues(std::vector<double>{1, 0.1, -3});
    all.back().SetRole(kRoleBoth);
    return all;
}

} // namespace

TEST(SavFile, TheDictionaryComesBackWhole)
{
    const ScratchFolder scratch;
    const std::string name = scratch.name("all.sav");
    const std::vector<VEXA_Variable> variables = everything();
    {
        const UserOutputCaseFile file(specOf(name, true));
        IndependentDataStore& store = *file.DataSource();
        for (const VEXA_Variable& one : variables)
            store.MakeVariable(one);
        store.SetWeightVar(5);
        store.SetSplitVars({1, 0});
        store.SetDocuments({"first line", "", "ünd 'one' \"more\""});
        store.CommitDictionary();
        EXPECT_FALSE(scratch.has("all.sav"));
        store.Close();
    }
    ProcedureDataSource procedure;
    EXPECT_THROW(procedure.GetVariable(0), ErrorText);
    {
        const UserInputCaseFile file(specOf(name, false), &procedure);
        const VEXA_DataSource& source = *file.DataSource();
        ASSERT_EQ(source.ColumnCount(), 6);
        for (int i = 0; i < source.ColumnCount(); ++i)
            expectSame(source.GetVariable(i), variables[static_cast<std::size_t>(i)]);
        EXPECT_EQ(source.GetWeightVarIndex(), 5);
        EXPECT_EQ(source.GetNSplitVars(), 2);
        EXPECT_EQ(source.GetSplitVarIndex(0), 1);
        EXPECT_EQ(source.GetSplitVarIndex(1), 0);
        EXPECT_EQ(source.GetSplitVarIndex(2), -1);
        EXPECT_EQ(file.Documents(),
                  (std::vector<std::string>{"first line", "", "ünd 'one' \"more\""}));
        EXPECT_EQ(file.Encoding(), "UTF-8");
        EXPECT_EQ(file.CaseCount(), 0);
        EXPECT_TRUE(casesOf(source).empty());
        EXPECT_EQ(source.FindVarIndex("GRÖSSE \"X\"", 0), 0);
        EXPECT_EQ(source.FindVarIndex("FileName", 0), 1);
        EXPECT_EQ(source.FindVarIndex("\uFB01lename", 0), 1); // a ligature of f and i
        EXPECT_EQ(source.FindVarIndex("filename", 2), -1);
        EXPECT_EQ(source.FindVarIndex("w", -7), 5);
        EXPECT_THROW(source.GetVariable(6), ErrorText);
        EXPECT_EQ(procedure.ColumnCount(), 6);
        EXPECT_EQ(procedure.GetWeightVarIndex(), 5);
    }
    EXPECT_EQ(procedure.ColumnCount(), 0);
}

TEST(SavFile, ValuesComeBackAsTheyAre)
{
    const std::tuple<const char*, std::uint8_t, std::vector<double>> columns[] = {
        {"numbers", kFormatNumber, {0.1, -1e300, 4.9e-324, kInfinity, 9007199254740993.0}},
        {"whole days", kFormatDate, {day(0), day(-141427), day(11016), 0}},
        {"days before the calendar", kFormatDate, {-86400, day(-800000)}},
        {"a time of day", kFormatDateYearFirst, {day(0) + 0.5, day(1)}},
        {"days no calendar has", kFormatDate, {1e18, day(0), -1e200}},
        {"times", kFormatTime, {0, 86399.999999, 0.000001}},
        {"a time of 24 hours", kFormatTime, {86400, 1}},
        {"a time that a microsecond is too coarse for", kFormatTime, {0.1 / 3, 1}},
        {"durations", kFormatTimeWithDays, {90061, -1, 86400}},
        {"timestamps", kFormatDateTime, {day(0) + 0.25, day(-100) + 86399, 0}},
        {"timestamps no calendar has", kFormatDateTime, {1e300, day(0)}},
        {"weekdays are numbers", kFormatWeekday, {1, 7, 2.5}},
    };
    const ScratchFolder scratch;
    for (const auto& [what, format, values] : columns) {
        SCOPED_TRACE(what);
        VEXA_Variable described = variable("v", 0, {12, format, 2});
        VEXA_ValueLabelMap labels;
        labels.SetLabel(values.front(), "first");
        described.SetMissingValues(std::vector<double>{values.back()});
        if (std::isfinite(values.front()))
            described.SetValueLabels(labels);
        std::vector<Row> rows = {{kSystemMissing}};
        for (const double value : values)
            rows.push_back({value});
        writeSav(scratch.name("v.sav"), {described}, rows);
        const UserInputCaseFile file(specOf(scratch.name("v.sav"), false), nullptr);
        EXPECT_EQ(casesOf(*file.DataSource()), rows);
        EXPECT_EQ(file.CaseCount(), static_cast<long long>(rows.size()));
        expectSame(file.DataSource()->GetVariable(0), described);
    }
}

TEST(SavFile, WhatNoNumeralSaysIsLeftOutOfTheDictionary)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    VEXA_ValueLabelMap labels;
    labels.SetLabel(nan, "none");
    labels.SetLabel(kInfinity, "endless");
    labels.SetLabel(1, "one");
    EXPECT_STREQ(labels.GetLabel(nan), "none");
    EXPECT_STREQ(labels.GetLabel(1), "one");
    VEXA_Variable described = variable("v");
    described.SetValueLabels(labels);
    described.SetMissingValues(std::vector<double>{nan, 2, -kInfinity});
    VEXA_Variable open = variable("open");
    open.SetMissingRange(-kInfinity, 3);
    const ScratchFolder scratch;
    writeSav(scratch.name("v.sav"), {described, open}, {});
    const UserInputCaseFile file(specOf(scratch.name("v.sav"), false), nullptr);
    EXPECT_EQ(labelsOf(file.DataSource()->GetVariable(0)), "1=one;");
    EXPECT_EQ(missingOf(file.DataSource()->GetVariable(0)), "1: 2");
    EXPECT_TRUE(file.DataSource()->GetVariable(1).IsUserMissing(-1e308));
    EXPECT_FALSE(file.DataSource()->GetVariable(1).IsUserMissing(3.5));
}

TEST(SavFile, TextsOfAllWidths)
{
    const std::string widest(32767, 'w');
    const std::tuple<int, std::string, std::string> texts[] = {
        {1, "", ""},
        {1, "x", "x"},
        {1, "é", ""},
        {8, "12345678", "12345678"},
        {8, "1234567é", "1234567"},
        {9, "12345678é", "12345678"},
        {9, " lead  ", " lead"},
        {9, "1234567\xC3\xA9", "1234567é"},
        {32767, widest, widest},
        {32767, widest + "é", widest},
    };
    std::vector<VEXA_Variable> variables;
    Row written;
    Row expected;
    for (const auto& [width, given, kept] : texts) {
        variables.push_back(variable("v" + std::to_string(variables.size()), width));
        written.emplace_back(given);
        expected.emplace_back(kept);
    }
    const ScratchFolder scratch;
    writeSav(scratch.name("t.sav"), variables, {written});
    const UserInputCaseFile file(specOf(scratch.name("t.sav"), false), nullptr);
    KeepingMonitor monitor;
    EXPECT_EQ(casesOf(*file.DataSource(), &monitor), (std::vector<Row>{expected}));
    EXPECT_THAT(monitor.reports, testing::IsEmpty());
}

TEST(SavFile, ManyCasesInOrder)
{
    std::vector<Row> rows;
    for (int i = 0; i < 300000; ++i)
        rows.push_back({i * 0.5, "c" + std::to_string(i)});
    const ScratchFolder scratch;
    writeSav(scratch.name("m.sav"), {variable("n"), variable("t", 12)}, rows, "secret");
    const UserInputCaseFile file(specOf(scratch.name("m.sav"), false, "secret"), nullptr);
    // Compared as a whole: a difference would be printed for ever.
    EXPECT_TRUE(casesOf(*file.DataSource()) == rows);
}

TEST(SavFile, ABadFileIsRefusedByItsName)
{
    const ScratchFolder scratch;
    writeSav(scratch.name("sealed.sav"), {variable("n")}, {{1.0}}, "pass wörd");
    writeSav(scratch.name("open.sav"), {variable("n")}, {{1.0}});
    const std::string sealed = scratch.read("sealed.sav");
    const std::string open = scratch.read("open.sav");
    EXPECT_EQ(sealed.find("hvinteg.dictionary"), std::string::npos);
    scratch.put("sealed_cut.sav", sealed.substr(0, sealed.size() - 1));
    scratch.put("sealed_long.sav", sealed + "x");
    scratch.put("open_cut.sav", open.substr(0, open.size() - 1));
    scratch.put("empty.sav", "");
    scratch.put("text.sav", "a,b\n1,2\n");
    const std::tuple<const char*, const char*, const char*> files[] = {
        {"sealed.sav", "pass word", "password"},
        {"sealed.sav", "", "sealed with a password, and none is given"},
        {"sealed_cut.sav", "pass wörd", "sealed_cut.sav: "},
        {"sealed_long.sav", "pass wörd", "sealed_long.sav: "},
        {"open_cut.sav", "", "not a SAV file, or it is cut short"},
        {"empty.sav", "", "empty.sav"},
        {"text.sav", "", "not a SAV file"},
        {"nowhere.sav", "", "nowhere.sav"},
        {"", "", ": "}, // the folder
    };
    for (const auto& [name, password, says] : files)
        EXPECT_THAT(refusalOf([&, name = name, password = password] {
                        const UserInputCaseFile file(specOf(scratch.name(name), false, password),
                                                     nullptr);
                    }),
                    HasSubstr(says))
            << name;
    const UserInputCaseFile right(specOf(scratch.name("sealed.sav"), false, "pass wörd"), nullptr);
    EXPECT_EQ(right.CaseCount(), 1);
    // A password that is not needed does no harm.
    const UserInputCaseFile plain(specOf(scratch.name("open.sav"), false, "x"), nullptr);
    EXPECT_EQ(plain.CaseCount(), 1);
    UserCaseFileSpec nothing;
    EXPECT_FALSE(nothing.Init("", true, false));
    EXPECT_EQ(UserInputCaseFile(nothing, nullptr).DataSource(), nullptr);
    EXPECT_EQ(UserOutputCaseFile(nothing).DataSource(), nullptr);
}

TEST(SavFile, ADictionaryIsReadWithoutTheContent)
{
    const ScratchFolder scratch;
    duckdb_database database = datafile::duck::openInMemory();
    const std::unique_ptr<duckdb_database, void (*)(duckdb_database*)> closing(&database,
                                                                               &duckdb_close);
    datafile::duck::Connection connection(database);
    connection.query(
        "COPY (SELECT i, repeat('lorem ', i::INTEGER) AS t FROM range(1000) r(i)) TO '" +
        (scratch.path / "t.parquet").string() + "' (FORMAT PARQUET, COMPRESSION uncompressed)");
    // The texts of the file become unreadable; its dictionary at the end does not.
    std::string bytes = scratch.read("t.parquet");
    const std::size_t from = bytes.find("lorem lorem");
    ASSERT_LT(from + 1000, bytes.size());
    std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(from), 1000, '\xff');
    scratch.put("t.parquet", bytes);

    UserCaseFileSpec spec = specOf(scratch.name("t.parquet"), false);
    EXPECT_NE(refusalOf([&] { const UserInputCaseFile file(spec, nullptr); }), "");
    spec.SetDictionaryOnly(true);
    const UserInputCaseFile file(spec, nullptr);
    ASSERT_EQ(file.DataSource()->ColumnCount(), 2);
    EXPECT_EQ(file.DataSource()->GetVariable(1).GetName(), "t");
    EXPECT_EQ(file.DataSource()->GetVariable(1).GetType(), 32767);
    EXPECT_EQ(file.CaseCount(), 1000);
}

TEST(SavFile, WhoeverWaitsForAFileIsAskedNowAndThen)
{
    const ScratchFolder scratch;
    scratch.put("a.csv", "a;b\n1;2\n");
    writeSav(scratch.name("s.sav"), {variable("n")}, {{1.0}}, "pass");
    const auto looksAt = [&](const char* name, const auto& set) {
        UserCaseFileSpec spec = specOf(scratch.name(name), false, "pass");
        set(spec);
        int looks = 0;
        spec.SetLook([&looks] { ++looks; });
        const UserInputCaseFile file(spec, nullptr);
        return looks;
    };
    const int plain = looksAt("a.csv", [](auto&) {});
    EXPECT_GT(plain, 0);
    EXPECT_GT(looksAt("a.csv", [](auto& spec) { spec.SetCodePage("windows-1252"); }), plain);
    EXPECT_GT(looksAt("a.csv", [](auto& spec) { spec.SetCsvForm({';', false}); }), plain);
    EXPECT_GT(looksAt("s.sav", [](auto&) {}), 0);

    struct Stop
    {
    };
    UserCaseFileSpec spec = specOf(scratch.name("a.csv"), false);
    spec.SetLook([] { throw Stop(); });
    EXPECT_THROW(UserInputCaseFile(spec, nullptr), Stop);
}

TEST(ValueLabels, ThousandsAreQuicklySetAndACopyKeepsItsOwn)
{
    constexpr int kCount = 100000;
    VEXA_ValueLabelMap labels;
    for (int value = 0; value < kCount; ++value)
        labels.SetLabel(value, std::to_string(value));
    const VEXA_ValueLabelMap copy = labels;
    labels.SetLabel(7, "seven");
    EXPECT_STREQ(labels.GetLabel(7.0), "seven");
    EXPECT_STREQ(copy.GetLabel(7.0), "7");
    EXPECT_EQ(copy.size(), kCount);
}

TEST(SavFile, ADictionaryThatContradictsIsRefused)
{
    using Bad = std::pair<const char*, const char*>;
    const Bad dictionaries[] = {
        {R"({"variables":[{"name":"t"}]})", "\"t\" is a number in the dictionary"},
        {R"({"variables":[{"name":"z"}]})", "\"z\" of the dictionary has no data"},
        {R"({"variables":[{"name":"n"},{"name":"N"}]})", "two variables are named \"N\""},
        {R"({"weight":"t","variables":[{"name":"t","type":"text"}]})", "weight variable \"t\""},
        {R"({"split":["n"],"variables":[]})", "the split variable \"n\" is not there"},
        {R"({"variables":[{"name":"n","width":8}]})", "a number has a width"},
        {R"({"variables":[{"name":"n","valueLabels":[{"value":"x","label":"l"}]}]})",
         "is not a number"},
        {R"({"variables":[{"name":"t","type":"text","missing":{"range":{}}}]})", "range"},
        {R"({"variables":[{"name":"n","missing":{"values":[1,2,3,4]}}]})", "too many"},
        {R"({"variables":[{"name":"n","missing":{"values":[1,2],"range":{}}}]})", "too many"},
        {R"({"variables":[{"name":"n","level":"high"}]})", "\"high\""},
        {R"({"variables":[{"name":"n","print":{"type":256}}]})", "above 255"},
        {R"({"schema":2,"variables":[]})", "later version"},
        {R"({"variables":[[[[[[[[[[]]]]]]]]]]})", "nested"},
        {R"({"variables":[1]})", "not an object"},
        {R"([])", "not an object"},
        {R"({})", "no variables"},
    };
    const ScratchFolder scratch;
    duckdb_database database = datafile::duck::openInMemory();
    const std::unique_ptr<duckdb_database, void (*)(duckdb_database*)> closing(&database,
                                                                               &duckdb_close);
    datafile::duck::Connection connection(database);
    for (const auto& [dictionary, says] : dictionaries) {
        connection.query(
            "COPY (SELECT 1 AS n, 'x' AS t) TO '" + (scratch.path / "bad.sav").string() +
            "' (FORMAT PARQUET, KV_METADATA {'hvinteg.dictionary': '" + dictionary + "'})");
        EXPECT_THAT(refusalOf([&] {
                        const UserInputCaseFile file(specOf(scratch.name("bad.sav"), false),
                                                     nullptr);
                    }),
                    HasSubstr(says))
            << dictionary;
    }
}

TEST(SavFile, AStoreRefusesWhatCannotBeWritten)
{
    const ScratchFolder scratch;
    const auto commit = [&](const std::vector<VEXA_Variable>& variables) {
        return refusalOf([&] {
            const UserOutputCaseFile file(specOf(scratch.name("no.sav"), true));
            for (const VEXA_Variable& one : variables)
                file.DataSource()->MakeVariable(one);
            file.DataSource()->CommitDictionary();
        });
    };
    EXPECT_THAT(commit({}), HasSubstr("needs a variable"));
    EXPECT_THAT(commit({variable("")}), HasSubstr("no name"));
    EXPECT_THAT(commit({variable("ärger"), variable("b"), variable("ÄRGER")}),
                HasSubstr("two variables are named \"ÄRGER\""));
    EXPECT_THAT(commit({variable("t", 32768)}), HasSubstr("wider than 32767"));
    for (const char* name : {"none\\x.sav", "x.csv"})
        EXPECT_NE(refusalOf([&] { const UserOutputCaseFile no(specOf(scratch.name(name), true)); }),
                  "")
            << name;

    const UserOutputCaseFile file(specOf(scratch.name("no.sav"), true));
    IndependentDataStore& store = *file.DataSource();
    store.MakeVariable(variable("t", 3));
    EXPECT_THAT(refusalOf([&] { store.SetWeightVar(0); }), HasSubstr("weight variable \"t\""));
    EXPECT_NE(refusalOf([&] { store.SetSplitVars({1}); }), "");
    EXPECT_NE(refusalOf([&] { store.Close(); }), "");
    store.CommitDictionary();
    EXPECT_NE(refusalOf([&] { store.CommitDictionary(); }), "");
    EXPECT_NE(refusalOf([&] { store.MakeVariable(variable("u")); }), "");
    EXPECT_NE(refusalOf([&] { store.MakeIterator(nullptr); }), "");
    addCases(store, {{"abc"}});
    store.Close();
    EXPECT_NE(refusalOf([&] { store.Close(); }), "");
    EXPECT_TRUE(scratch.has("no.sav"));
}

TEST(SavFile, AFullDiskLeavesTheOldFile)
{
    const ScratchFolder scratch;
    writeSav(scratch.name("v.sav"), {variable("t", 16)}, {{"old"}});
    std::vector<Row> rows;
    for (int i = 0; i < 40000; ++i)
        rows.push_back({std::to_string(i * 7919LL % 100003)});
    std::vector<std::string> said;
    std::optional<FullDisk> full(65536);
    for (const char* password : {"", "p"})
        said.push_back(refusalOf(
            [&] { writeSav(scratch.name("v.sav"), {variable("t", 16)}, rows, password); }));
    full.reset();
    EXPECT_THAT(said, testing::Each(HasSubstr("ulimit -f")));
    const auto files = std::filesystem::directory_iterator(scratch.path);
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
    const UserInputCaseFile file(specOf(scratch.name("v.sav"), false), nullptr);
    EXPECT_EQ(casesOf(*file.DataSource()), (std::vector<Row>{{"old"}}));
}

TEST(SavFile, AFileThatIsCutOrRemovedWhileItIsReadEndsInAnError)
{
    const ScratchFolder scratch;
    std::vector<Row> rows;
    for (int i = 0; i < 400000; ++i)
        rows.push_back({i * 0.37});
    writeSav(scratch.name("v.sav"), {variable("n")}, rows);
    const UserInputCaseFile file(specOf(scratch.name("v.sav"), false), nullptr);
    const std::unique_ptr<VEXA_InputCaseIterator> cases(file.DataSource()->MakeIterator(nullptr));
    ASSERT_EQ(cases->NextCase(), 1);
    std::filesystem::resize_file(scratch.path / "v.sav", 4096);
    EXPECT_THAT(refusalOf([&] {
                    while (cases->NextCase() != 0) {
                    }
                }),
                HasSubstr("v.sav: the cases cannot be read"));
    EXPECT_EQ(cases->NextCase(), 0);
    std::filesystem::remove(scratch.path / "v.sav");
    EXPECT_THAT(refusalOf([&] { casesOf(*file.DataSource()); }),
                HasSubstr("v.sav: the file is no longer there"));
}

TEST(CsvFile, CasesThatWereCountedAndAreNoLongerThereAreAnError)
{
    const ScratchFolder scratch;
    std::ofstream(scratch.path / "v.csv") << "n\n1\n2\n3\n";
    const UserInputCaseFile file(specOf(scratch.name("v.csv"), false), nullptr);
    EXPECT_EQ(casesOf(*file.DataSource()).size(), 3U);
    std::filesystem::resize_file(scratch.path / "v.csv", 4);
    EXPECT_THAT(refusalOf([&] { casesOf(*file.DataSource()); }),
                HasSubstr("v.csv: the file changed while it was read: it had 3 cases, and now has "
                          "1"));
}

TEST(SavFile, AnotherCodePageReadsWhatItHoldsAndReportsTheRest)
{
    const ScratchFolder scratch;
    VEXA_Variable name = variable("名前", 12);
    name.SetMissingValues(std::vector<std::string>{"replaced"});
    name.SetMissingValues(std::vector<std::string>{"なし"});
    writeSav(scratch.name("u.sav"), {name, variable("Ä", 4)},
             {{"東京", "é"}, {"なし", ""}, {"ascii", "ü"}});
    {
        const ScopedCodePage page("Shift_JIS");
        const UserInputCaseFile file(specOf(scratch.name("u.sav"), false), nullptr);
        const VEXA_Variable& read = file.DataSource()->GetVariable(0);
        EXPECT_EQ(read.GetName(), "\x96\xBC\x91\x4F");
        EXPECT_EQ(read.GetType(), 12);
        EXPECT_TRUE(read.IsUserMissing("\x82\xC8\x82\xB5        "));
        KeepingMonitor monitor;
        EXPECT_EQ(casesOf(*file.DataSource(), &monitor),
                  (std::vector<Row>{
                      {"\x93\x8C\x8B\x9E", "?"}, {"\x82\xC8\x82\xB5", ""}, {"ascii", "?"}}));
        EXPECT_EQ(monitor.ErrorCount(), 2);
        writeSav(scratch.name("j.sav"), {read}, {{"\x93\x8C\x8B\x9E"}});
        // The second bytes of these two are one letter in two cases.
        writeSav(scratch.name("k.sav"), {variable("\x83\x41"), variable("\x83\x61")}, {{1.0, 2.0}});
        const UserInputCaseFile kana(specOf(scratch.name("k.sav"), false), nullptr);
        EXPECT_EQ(kana.DataSource()->FindVarIndex("\x83\x61", 0), 1);
    }
    // Every text of the other encoding has room, and what is missing stays so.
    const UserInputCaseFile file(specOf(scratch.name("j.sav"), false), nullptr);
    EXPECT_EQ(file.Encoding(), "Shift_JIS");
    EXPECT_EQ(file.DataSource()->GetVariable(0).GetType(), 36);
    EXPECT_EQ(missingOf(file.DataSource()->GetVariable(0)), "1: なし  ");
    EXPECT_EQ(casesOf(*file.DataSource()), (std::vector<Row>{{"東京"}}));

    const ScopedCodePage page("windows-1252");
    writeSav(scratch.name("w.sav"), {variable("\xC4", 3)}, {{"\x80\xE4\x80"}});
    const UserInputCaseFile again(specOf(scratch.name("w.sav"), false), nullptr);
    EXPECT_EQ(casesOf(*again.DataSource()), (std::vector<Row>{{"\x80\xE4\x80"}}));
    EXPECT_EQ(again.DataSource()->GetVariable(0).GetName(), "\xC4");
}
