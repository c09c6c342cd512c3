#include <set>
#include <tuple>

#include "JNIException.h"
#include "VexaJVM.h"
#include "render/Rendering.h"
#include "render/jsonToTarn.h"
#include "support/HostScopes.h"

namespace {

const std::string kTable = "{'footnotes':[],'cells':[{'cells':{'compactCells':{'value':[1]}}}]}";
const std::string kShownTable = "table t [s] ..260\n";

OutputOrder order(const std::string& title, const std::string& location, OutputOrder::Type type)
{
    OutputOrder made;
    made.setHeading(title).addLocation(location).setType(type).setOutlineTitle("t", false);
    return made.setOMSSubType("s");
}

} // namespace

class DispatchTest : public RenderTest
{
protected:
    /// Shows one result object, `r`, and tells what came of it.
    std::string shown(const std::string& document, const std::vector<OutputOrder>& orders,
                      bool expected = true)
    {
        OutputTree::instance().clear();
        {
            jsonToTarn output(procedure.get(), &source, strings, json(document));
            for (const OutputOrder& one : orders)
                output.addObjectToOutput(one);
            output.setGeoJSONMap({{"m2", "two"}, {"m1", "one"}, {"", "none"}});
            EXPECT_EQ(output.generateOutput("r"), expected) << document;
        }
        return outputText();
    }

    FacSTDictionary strings;
};

TEST_F(DispatchTest, OutputFollowsTheOrders)
{
    const std::string document =
        "{'r':{'notifications':[{'text':{'stringText':{'value':'n'}},'severity':'Fatal'},null,"
        "{'severity':'Error'},{'text':{'stringText':{'value':'w'}},'severity':'fatal'}],'a':{'b':" +
        kTable + "},'t':'text','e':{}}}";
    EXPECT_EQ(
        shown(document,
              {order("Two.Deep", "a.b", OutputOrder::Pivot),
               order("", ".a..b.", OutputOrder::Pivot), order("Empty", "t", OutputOrder::Pivot),
               order("Empty", "a.missing.b", OutputOrder::Pivot),
               order("", "t.x", OutputOrder::Chart), order("None", "e", OutputOrder::Pivot)}),
        "heading P\n message 4 n\n message 2 w\n heading Two\n  heading Deep\n   " + kShownTable +
            " " + kShownTable + " heading Empty\n heading None\n");
    EXPECT_EQ(shown("{'x':{}}", {order("", "", OutputOrder::Pivot)}, false), "heading P\n");
    EXPECT_EQ(shown("{'r':" + kTable + "}", {order("", "", OutputOrder::Pivot)}),
              "heading P\n " + kShownTable);
    EXPECT_EQ(shown("{'r':{}}", {OutputOrder().setHeading("Lone")}), "heading P\n heading Lone\n");
}

TEST_F(DispatchTest, SeveritiesAreLevels)
{
    const std::pair<const char*, int> rows[] = {
        {"'NoScreen'", 0}, {"'Comment'", 1}, {"'Warning'", 2},     {"7", 2},
        {"'Error'", 3},    {"'Fatal'", 4},   {"'Catastrophic'", 5}};
    for (const auto& [severity, level] : rows)
        EXPECT_EQ(shown(std::string("{'r':{'notifications':[{'text':{'stringText':{'value':'n'}},"
                                    "'severity':") +
                            severity + "}]}}",
                        {}),
                  "heading P\n message " + std::to_string(level) + " n\n");
    jsonToTarn quiet(procedure.get(), &source, strings,
                     json("{'r':{'notifications':[{'text':{'stringText':{'value':'n'}}}]}}"));
    quiet.showNotifications(false);
    OutputTree::instance().clear();
    EXPECT_TRUE(quiet.generateOutput("r"));
    EXPECT_EQ(outputText(), "heading P\n");
}

TEST_F(DispatchTest, ChartsAndViewsGetValidEnvelopes)
{
    const std::string result = "'r':{'c':{'k':{},'parameters':[{'externalSource':'m1'},null,"
                               "{'externalSource':'m9'},{'externalSource':''},5]},'l':[1],'s':'}'}";
    const std::string item = json("{'k':{},'parameters':[{'externalSource':'m1'},null,"
                                  "{'externalSource':'m9'},{'externalSource':''},5]}");
    const std::string model = json("'0':{'name':'M'}");
    const std::string one = json("'1':") + item;
    OutputOrder view = order("", "c", OutputOrder::Interactive);
    view.addLocation("gone").addLocation("s").addLocation("c.k").setNeedsGEOJson(true);
    view.setOptions("o").setOptions("p");
    OutputOrder nothing = order("", "gone.on", OutputOrder::Interactive);
    nothing.setPathId("id");
    for (const bool hasModel : {true, false}) {
        const std::string document =
            std::string("{") + (hasModel ? "'dataModel':{'name':'M'}," : "") + result + "}";
        const std::string start = hasModel ? "{" + model + "," : "{";
        EXPECT_EQ(shown(document, {order("", "c", OutputOrder::Chart)}),
                  "heading P\n chart t {} " + start + one + "}\n");
        EXPECT_EQ(shown(document, {order("", "c", OutputOrder::MapChart)}),
                  "heading P\n chart t {} " + start + one + "} m1~one\n");
        EXPECT_EQ(shown(document, {view}), "heading P\n view t {o,p} r:c " + start + one +
                                               json(",'4':{}} ~none m1~one m2~two\n"));
        EXPECT_EQ(shown(document, {nothing}),
                  "heading P\n view t {} r:id {" + (hasModel ? model : "") + "}\n");
        EXPECT_EQ(shown(document, {order("", "l", OutputOrder::Chart)}), "heading P\n");
    }
    EXPECT_EQ(shown("{'dataModel':'M','r':{}}", {order("", "", OutputOrder::Chart)}),
              json("heading P\n chart t {} {'1':{}}\n"));
    EXPECT_EQ(shown("{'dataModel':[5],'r':{}}", {order("", "", OutputOrder::Chart)}),
              json("heading P\n chart t {} {'0':[5],'1':{}}\n"));
}

TEST_F(DispatchTest, WithoutADocumentOnlyViewsCome)
{
    jsonToTarn output(procedure.get(), nullptr, strings);
    output.addObjectToOutput("H", "a", "t", "s", OutputOrder::Pivot);
    output.addObjectToOutput(order("", "a.b", OutputOrder::Interactive));
    EXPECT_FALSE(output.generateOutput("r"));
    EXPECT_EQ(outputText(), "heading P\n heading H\n view t {} r:a.b {}\n");
    EXPECT_FALSE(output.hasItem("r"));

    EXPECT_THAT(shown("{'r':", {order("", "", OutputOrder::Pivot)}, false),
                testing::MatchesRegex("heading P\n message 2 Unknown error. line 1.*\n"));
    const std::string deep(10000, '[');
    EXPECT_THAT(shown("{'r':" + deep, {}, false), testing::HasSubstr("500 levels"));
}

// Callers and documents speak UTF-8, whatever the host does.
TEST_F(DispatchTest, TextsReachAHostOfAnotherEncoding)
{
    const ScopedCodePage page("windows-1252");
    OutputOrder table = order("Größe", "a", OutputOrder::Pivot);
    table.setOutlineTitle("é", false).addTextToCaption("ö").setOMSSubType("ü");
    OutputOrder chart = order("", "e", OutputOrder::Chart);
    chart.setOutlineTitle("é", true);
    EXPECT_EQ(
        shown("{'r':{'notifications':[{'text':{'stringText':{'value':'ß'}}}],'e':{'k':'ä'},'a':" +
                  kTable + "}}",
              {table, chart}),
        "heading P\n message 2 ß\n heading Größe\n  table é [ü] ..260\n  caption ö\n chart é {} " +
            json("{'1':{'k':'ä'}}\n"));
    EXPECT_THAT(shown("{'r':ä}", {}, false), testing::HasSubstr("ä"));
    EXPECT_EQ(textOf("{'text':{'stringText':{'key':'ä'}}}", true)->text(), "ä");
}

TEST_F(DispatchTest, ContentIsFoundByPath)
{
    jsonToTarn output(procedure.get(), &source, strings,
                      json("{'o':{'k':1,'s':'x','e':{},'l':[],'m':[0],'n':null}}"));
    const std::tuple<const char*, bool, bool> rows[] = {
        {"o", true, true},         {".o.", true, true},   {"o.k", true, false},
        {"o.s", false, false},     {"o.e", true, false},  {"o.l", true, false},
        {"o..m", true, true},      {"o.n", false, false}, {"o.k.x", false, false},
        {"missing", false, false}, {"", false, false}};
    for (const auto& [path, isItem, hasContent] : rows) {
        EXPECT_EQ(output.hasItem(path), isItem) << path;
        EXPECT_EQ(output.hasItemContent(path), hasContent) << path;
    }
    EXPECT_EQ(output.getTop().getObject(), output.getTop().getTop());

    const std::string full = json("{'source':{'value':{'features':[1]}}}");
    EXPECT_FALSE(output.hasGeoJSONMapFeatures(""));
    output.setGeoJSONMap({{"a", full}});
    EXPECT_TRUE(output.hasGeoJSONMapFeatures(""));
    output.setGeoJSONMap({{"a", full},
                          {"b", json("{'source':{'value':{'features':[]}}}")},
                          {"c", json("{'source':{'value':{'features':{'k':1}}}}")},
                          {"d", "no JSON"}});
    EXPECT_FALSE(output.hasGeoJSONMapFeatures(""));
    EXPECT_TRUE(output.hasGeoJSONMapFeatures("a"));
    for (const char* name : {"b", "c", "d", "e"})
        EXPECT_FALSE(output.hasGeoJSONMapFeatures(name)) << name;
}

// Whichever call into the machine fails: within an order only this order fails. Ahead of the orders
// the exception passes, except from the lookup of a member, which is then absent. What is missing
// for that reason is among the failures. Nothing is left behind.
TEST_F(DispatchTest, AJavaFailureCostsOneOrderOrPasses)
{
    const std::string document =
        "{'dataModel':{'name':'M','fields':[{'id':'f','label':'F'}]},'r':{'notifications':"
        "[{'text':{'stringText':{'value':'n'}}}],'a':" +
        kTable + ",'c':{}}}";
    const std::vector<OutputOrder> orders = {order("A", "a", OutputOrder::Pivot),
                                             order("B", "c", OutputOrder::Chart)};
    const std::string whole = shown(document, orders);
    int passedFromDataModel = 0;
    int passedFromMessages = 0;
    std::set<std::size_t> failed;
    for (const auto fault : {RecordingJni::Fault::OutOfMemory, RecordingJni::Fault::Exception,
                             RecordingJni::Fault::NothingReturned}) {
        for (int call = 1, wasReached = 1; wasReached != 0; ++call) {
            OutputTree::instance().clear();
            bool isDone = false;
            int* passed = &passedFromDataModel;
            jni().failAt(call, fault);
            try {
                jsonToTarn output(procedure.get(), &source, strings, json(document));
                for (const OutputOrder& one : orders)
                    output.addObjectToOutput(one);
                passed = &passedFromMessages;
                isDone = output.generateOutput("r");
                for (const jsonToTarn::Failure& failure : output.getFailures()) {
                    failed.insert(failure.object);
                    EXPECT_FALSE(failure.reason.empty());
                    // This output has nothing of the data model.
                    if (failure.object != jsonToTarn::kDocument) {
                        EXPECT_NE(outputText(), whole);
                    }
                }
                // Nothing without an exception is taken for an absent member.
                if (output.getTop().isGood() && fault != RecordingJni::Fault::NothingReturned &&
                    output.getFailures().empty()) {
                    EXPECT_EQ(outputText(), whole) << "call " << call;
                }
            } catch (const JNIException&) {
                ++*passed;
                EXPECT_THAT(outputText(), testing::Not(testing::HasSubstr("heading A")));
            }
            wasReached = jni().endFault() ? 1 : 0;
            const std::string text = outputText();
            if (isDone) {
                EXPECT_THAT(text, testing::AllOf(testing::HasSubstr("heading A"),
                                                 testing::HasSubstr("heading B")));
            }
            if (wasReached == 0) {
                EXPECT_EQ(text, whole);
                EXPECT_GT(call, 20);
            }
        }
    }
    EXPECT_GT(passedFromDataModel, 0);
    EXPECT_GT(passedFromMessages, 0);
    EXPECT_EQ(failed, (std::set<std::size_t>{0, 1, jsonToTarn::kDocument}));
}
