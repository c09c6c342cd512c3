#include "hvhost/base/FaultWording.h"

#include <gtest/gtest.h>

#include <string>

namespace {

JobOrigin origin()
{
    JobOrigin origin;
    origin.inputs = {{"/tmp/in.csv", "in.csv"}};
    origin.outputs = {{"/tmp/out.csv", "out.csv"}};
    origin.aggregates = {"--by city", "--stat mean:pay"};
    origin.composed = {{"--stat mean:pay", "\"temporary 1\""}};
    origin.settings = {{"interval", "--interval"}, {"interval.days", "--days"}};
    return origin;
}

/// An error of the engine: its id, and its detail. The text is always "TEXT".
struct Case
{
    const char* id;
    const char* detail;
    const char* shown; ///< the text, and after a bar the hint
};

/// The text must not be searched, so none of these has a text with a place.
constexpr Case kCases[] = {
    {"HVEIO0001E", R"({"step":"read","file":{"path":"/tmp/in.csv"},"what":"missing"})",
     "in.csv: missing|"},
    {"HVEIO0006E",
     R"({"step":"read","file":{"path":"/tmp/in.csv","line":3,"column":4},"what":"bad",)"
     R"("kind":"notUtf8"})",
     "in.csv:3:4: bad|--encoding NAME, as in windows-1252, names its encoding"},
    {"HVEIO0016E",
     R"({"step":"write","file":{"path":"/tmp/out.csv"},"what":"exists","kind":"fileExists"})",
     "out.csv: exists|--force replaces it"},
    {"HVEIO0019E", R"({"step":"read","iterator":"r","record":2,"what":"/tmp/in.csv: damaged"})",
     "in.csv: damaged|"},
    {"HVEIO0020E", R"({"step":"read","iterator":"r","record":2,"field":"a\"b","what":"NaN"})",
     "in.csv: field \"a\"b\", record 2: NaN|"},
    {"HVEPL0004E",
     R"({"step":"aggregate","setting":"output[1].function","what":"is \"x\"",)"
     R"("kind":"noSuchFunction"})",
     "--stat mean:pay: the function is \"x\"|hvhost help aggregate lists the functions"},
    {"HVEPL0005E",
     R"({"step":"aggregate","namedBy":"output[0].input","field":"city","what":"no field"})",
     "--by city: no field|hvhost info lists the variables"},
    {"HVEPL0005E", R"({"step":"filterFields","field":"x","what":"no field","hasSuggestion":true})",
     "--keep: no field|"},
    {"HVEPL0004E", R"({"step":"tsdp:tsdp","setting":"interval.unit","what":"is odd"})",
     "--interval: is odd|"},
    {"HVEPL0004E", R"({"step":"tsdp:tsdp","setting":"interval.days[1]","what":"is 8"})",
     "--days: is 8|"},
    {"HVETC0030E", R"({"step":"tcm:score","file":{"path":"/tmp/in.csv"},"what":"damaged"})",
     "in.csv: damaged|"},
    {"HVETC0041E", R"({"step":"tcm:score","series":["a","b"],"what":"no equation"})",
     "no equation|"},
    // Not what this engine reports.
    {"HVEPL0004E", R"({"step":"aggregate","setting":"output[99].function","what":"is wrong"})",
     "TEXT|"},
    {"HVEIO0001E", "", "TEXT|"},
    {"HVEIO0001E", "a stack trace", "TEXT|"},
    {"HVEIO0001E", R"(["read"])", "TEXT|"},
    {"HVEIO0001E", R"({"step":5,"file":"/tmp/in.csv","job":{"line":-1},"what":{}})", "TEXT|"},
    {"X", R"({"step":"read")", "TEXT|"},
};

TEST(FaultWording, UsesThePartsAndNotTheText)
{
    for (const Case& row : kCases) {
        const CommandFault fault = wordFault({row.id, "TEXT", row.detail}, "", origin());
        EXPECT_EQ(fault.what() + ("|" + fault.hint()), row.shown) << row.detail;
    }
}

TEST(FaultWording, RewordsMessagesByTheirParts)
{
    const std::pair<const char*, const char*> kMessages[] = {
        {R"({"step":"read","file":{"path":"/tmp/in.csv"},"what":"2 records were skipped"})",
         "in.csv: 2 records were skipped"},
        {R"({"step":"deriveField","field":"temporary 1","what":"1 value is missing"})",
         "TEXT of --stat mean:pay"},
        {R"({"step":"tsdp:tsdp","setting":"interval","what":"is ignored"})",
         "--interval: is ignored"},
        {R"({"step":"tcm:train","series":["a","b"],"what":"the series is constant"})",
         "the series is constant"},
        {R"({"step":"tsdp:tsdp","record":4,"what":"record 4 has no valid time"})",
         "in.csv: record 4 has no valid time"},
        {R"({"step":"union","field":"b","what":"the field is renamed"})",
         "TEXT of \"temporary 1\""},
        {"", "TEXT of \"temporary 1\""},
    };
    for (const auto& [detail, shown] : kMessages)
        EXPECT_EQ(wordMessage("TEXT of \"temporary 1\"", detail, origin()), shown) << detail;
}

TEST(FaultWording, KeepsTheDetailForTheLog)
{
    const std::pair<const char*, const char*> kDetails[] = {
        {R"({"what":"TEXT","detail":"from the database"})", "from the database"},
        {"a plain text", "a plain text"},
        {"{\"what\":", "{\"what\":"},
        {R"({"cause":"foreign"})", R"({"cause":"foreign"})"},
        {R"({"what":"TEXT"})", ""},
    };
    for (const auto& [detail, kept] : kDetails) {
        const EngineFault fault{"ID", "TEXT", detail};
        EXPECT_EQ(wordFault(fault, "", origin()).detail(), std::string("ID ") + kept);
        EXPECT_EQ(logText(fault), std::string("ID TEXT ") + kept);
    }
}

} // namespace
