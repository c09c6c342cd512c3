#include "render/Rendering.h"

#include <utility>

#include "Attention.h"

namespace {

std::string textItem(const std::string& word)
{
    return "{'text':{'stringText':{'value':'" + word + "'}}}";
}

/// A category; `more` are further members.
std::string leaf(const std::string& word, const std::string& more = "")
{
    return "{'text':" + textItem(word) + more + "}";
}

std::string group(const std::string& word, const std::string& children,
                  const std::string& more = "")
{
    return leaf(word, ",'children':[" + children + "]" + more);
}

std::string dimension(const std::string& word, const std::string& children,
                      const std::string& more = "")
{
    return group(word, children, more);
}

/// Rows a, b, c and columns x, y.
const std::string kGrid = dimension("R", leaf("a") + "," + leaf("b") + "," + leaf("c")) + "," +
                          dimension("C", leaf("x") + "," + leaf("y"), ",'role':'column'");

std::string table(const std::string& dimensions, const std::string& cells,
                  const std::string& more = "")
{
    return "{'tableId':'i','title':{},'dimensions':[" + dimensions + "],'cells':[{'cells':{" +
           cells + "}}]" + more + "}";
}

std::string values(const std::string& list, const std::string& index = "")
{
    return "'compactCells':{" + (index.empty() ? "" : "'index':'" + index + "',") + "'value':[" +
           list + "]}";
}

const std::string kHead = "heading P\n table T [S] ..260\n";
const std::string kGridHead = kHead + " row1 R: a b c\n column1 C: x y\n";

std::string notes(const std::string& list)
{
    return ",'footnotes':[" + list + "]";
}

} // namespace

class TableTest : public RenderTest
{
protected:
    /// Tells what came of a table after its head.
    void expect(const std::string& json, const std::string& shown, const std::string& head,
                Preparation prepare = nullptr)
    {
        EXPECT_EQ(tableOf(json, prepare), head + shown) << json;
    }
};

TEST_F(TableTest, CellsFillInOrder)
{
    const std::pair<std::string, const char*> rows[] = {
        {values("1,2,3,4,5"), " a/x=1:40.3\n a/y=2:40.3\n b/x=3:40.3\n b/y=4:40.3\n c/x=5:40.3\n"},
        {values("1,2", "10"), " b/x=1:40.3\n b/y=2:40.3\n"},
        {values("1,2,3,4,5,6,7,8", "11"), " b/y=1:40.3\n c/x=2:40.3\n c/y=3:40.3\n"},
        {values("1,null,3"), " a/x=1:40.3\n b/x=3:40.3\n"},
        // A start of another length, and positions that no leaf has, count as the beginning.
        {values("1", "1"), " a/x=1:40.3\n"},
        {values("1", "100"), " a/x=1:40.3\n"},
        {values("1", "3z"), " a/x=1:40.3\n"},
        {values("1", "1*"), " b/x=1:40.3\n"},
        {values("1") + ",'sparse':{'index':['21','99','0',7,'20'],'value':[5,6,7,8,null]}",
         " a/x=1:40.3\n c/y=5:40.3\n"},
        {values("1,true,[],2"), " a/x=1:40.3\n b/y=2:40.3\n"},
    };
    for (const auto& [cells, shown] : rows)
        expect(table(kGrid, cells), shown, kGridHead);
}

TEST_F(TableTest, ATableThatIsNotWholeLeavesNoTrace)
{
    const std::string cells = "'cells':[{'cells':{'compactCells':{'value':[1]}}}]";
    const std::pair<std::string, bool> rows[] = {
        {"{" + cells + ",'footnotes':[]}", true},
        {"{" + cells + ",'tableId':'','title':{},'dimensions':[]}", false},
        {"{" + cells + ",'tableId':'i','dimensions':[]}", false},
        {"{" + cells + ",'tableId':'i','title':{},'dimensions':[]}", true},
        {"{'footnotes':[]}", false},
        {"{'footnotes':[],'cells':[{'cells':{'compactCells':{'value':[]}}}]}", false},
        {"{'footnotes':[],'cells':[{'cells':{'sparse':{'index':['0'],'value':[1]}}}]}", false},
        {"{'footnotes':[],'cells':[null,{'cells':{}},{'cells':{'compactCells':{'value':[1]}}}]}",
         true},
    };
    for (const auto& [json, isBuilt] : rows)
        EXPECT_EQ(tableOf(json), isBuilt ? kHead : "heading P\n") << json;
}

TEST_F(TableTest, FormatsMeetTheirCells)
{
    const std::pair<const char*, const char*> rows[] = {
        {"{'index':'01','format':{'decimals':1}}", " a/x=1:40.3\n a/y=2:40.1\n b/x=8:40.3\n"},
        {"{'index':'*1','format':{'suffix':'%'}}", " a/x=1:40.3\n a/y=2:31.3\n b/x=8:40.3\n"},
        {"{'index':'**','format':{'decimals':0}}", " a/x=1:40.0\n a/y=2:40.0\n b/x=8:40.0\n"},
        {"{'index':'0*','format':{'prefix':'$','decimals':1}},{'index':'**'}",
         " a/x=1:4.3\n a/y=2:4.3\n b/x=8:40.3\n"},
        {"{'index':'00','format':{'prefix':'$','decimals':1}},{'index':'00'}",
         " a/x=1:4.1\n a/y=2:40.3\n b/x=8:40.3\n"},
        {"{'index':'00','format':{'positiveInfinity':true}},{'index':'**','footnotes':[]},"
         "{'index':'10','format':{'negativeInfinity':true,'decimals':1}}",
         " a/x=1:40.3\n a/y=2:40.3\n b/x=-1.79769313486232e+308:40.1\n"},
        {"{'index':'','format':{'decimals':0}},null,{'format':{'decimals':0}}",
         " a/x=1:40.3\n a/y=2:40.3\n b/x=8:40.3\n"},
        // Too short, too long, and for leaves that do not exist.
        {"{'index':'*','format':{'decimals':0}}", " a/x=1:40.3\n a/y=2:40.3\n b/x=8:40.3\n"},
        {"{'index':'*0zzz','format':{'decimals':0}}", " a/x=1:40.0\n a/y=2:40.3\n b/x=8:40.0\n"},
        {"{'index':'*~','format':{'decimals':0}},{'index':'0000','format':{'decimals':0}}",
         " a/x=1:40.3\n a/y=2:40.3\n b/x=8:40.3\n"},
        // A later pattern keeps what it does not state; one for a leaf that no position has.
        {"{'index':'*1','format':{'suffix':'%','decimals':1}},{'index':'0*'},"
         "{'index':'~*','format':{'decimals':7}}",
         " a/x=1:40.3\n a/y=2:31.3\n b/x=8:40.3\n"},
        // Days of the week and months by number are no dates; the others count from 1970.
        {"{'index':'**','format':{'dateTimePattern':'dd'}}",
         " a/x=12219379201:20.3\n a/y=12219379202:20.3\n b/x=12219379208:20.3\n"},
    };
    for (const auto& [formats, shown] : rows)
        expect(table(kGrid, values("1,2,8"), std::string(",'formats':[") + formats + "]"), shown,
               kGridHead);
}

// Leaves that state their own keys: a fixed digit meets them, a wildcard matches positions only.
TEST_F(TableTest, PatternsReachPositionsAndTheKeysTheyName)
{
    const std::string rows = dimension("R", leaf("a") + "," + leaf("b", ",'subscript':'~'"));
    const std::string columns = dimension("C", leaf("x"), ",'role':'column'");
    expect(table(rows + "," + columns, values("1") + ",'sparse':{'index':['~0'],'value':[9]}",
                 ",'formats':[{'index':'**','format':{'decimals':1}},"
                 "{'index':'~*','format':{'decimals':2}}]"),
           " a/x=1:40.1\n b/x=9:40.2\n", kHead + " row1 R: a b\n column1 C: x\n");
}

TEST_F(TableTest, CellsNameLabels)
{
    const std::string rows = dimension("R", leaf("a") + "," + leaf("b") + "," + leaf("c") + "," +
                                                leaf("d") + "," + leaf("e"));
    const std::string isText = ",'formats':[{'index':'*','format':{'string':true}}]";
    const std::string head = kHead + " row1 R: a b c d e\n";
    expect(table(rows, values("'1,2','2,9,1','9','x',''"),
                 ",'cellLabels':{'keys':[1,2],'values':['l','m']}"),
           " a=l\\nm\n b=m\\nl\n c=\n d=\n", head);
    expect(table(rows, values("'0','2',1,2.9,-1"),
                 isText + ",'cellLabels':{'values':['o'," + textItem("p") + ",{}]}"),
           " a=o\n b=\n c=p\n d=\n e=-1:1.0\n", head);
    // As many as there are labels, whatever their keys.
    expect(table(rows, values("0,1,2,3,1e300"),
                 isText + ",'cellLabels':{'keys':[3,2,2],'values':['three','gone','two']}"),
           " a=\n b=\n c=2:1.0\n d=3:1.0\n e=1e+300:1.0\n", head);
}

TEST_F(TableTest, DimensionsAreDeclaredAsTheySay)
{
    const std::string notesHere =
        ",'footnotes':[" + textItem("n") + ",{'text':{}}," + textItem("m") + "]";
    const std::string noted =
        "{'text':{'text':{'stringText':{'value':'a'},'footnotes':[0]},'footnotes':[1,-1,2]}";
    EXPECT_EQ(tableOf(table(dimension("R",
                                      noted + ",'show':false}," + noted + ",'children':[" +
                                          leaf("b") + "],'sort':{'order':'descending'}}",
                                      ",'sort':'ascending','position':3,'hideName':true") +
                                "," + dimension("C", leaf("x", ",'show':false"), ",'role':'layer'"),
                            values("1,2"), notesHere)),
              kHead + " row3< -R: -a^m a^n>(b)\n layer1 C:- -x\n"
                      " a/x=1:40.3\n b/x=2:40.3\n");
    EXPECT_EQ(
        tableOf(table(
            dimension("R", leaf("x", ",'show':false") + "," + leaf("y"), ",'hideChildren':3") +
                "," +
                dimension("C", leaf("x", ",'show':false"), ",'role':'column','hideChildren':false"),
            values("1,2"))),
        kHead + " row1 R: -x y\n column1 C: -x\n x/x=1:40.3\n y/x=2:40.3\n");
    // Without a name there is no dimension, and no cell; a name without a text is a substitute.
    EXPECT_EQ(tableOf(table(dimension("R", leaf("a")) + ",{'children':[" + leaf("x") + "]}",
                            values("1"))),
              kHead + " row1 R: a\n");
    EXPECT_EQ(tableOf(table("{'text':{},'children':[" + leaf("a") + "]}", values("1"))),
              kHead + " row1 Unknown: a\n a=1:40.3\n");
    EXPECT_EQ(tableOf(table("null," + dimension("R", leaf("a")), values("1"))), kHead);
}

TEST_F(TableTest, LeavesCountUnlessTheyNameTheirPlace)
{
    // What has no text does not count, though its cells are there; a label without text does.
    expect(table(dimension("R", "{},null," + leaf("a") + ",{'text':{'text':{}}}," + leaf("b")),
                 values("1,2,3,4,5")),
           " a=1:40.3\n b=2:40.3\n", kHead + " row1 R: a b\n");
    expect(table(dimension("R", leaf("a", ",'subscript':'2'") + "," + leaf("b") + "," +
                                    leaf("c", ",'subscript':''") + "," +
                                    leaf("d", ",'subscript':'00'") + "," +
                                    leaf("e", ",'subscript':7")),
                 values("1,2,3,4,5")),
           " a=3:40.3\n b=1:40.3\n c=1:40.3\n e=2:40.3\n", kHead + " row1 R: a b c d e\n");
    // Keys that no leaf has by right can be met all the same.
    expect(table(dimension("R", leaf("a", ",'subscript':'~'") + "," + leaf("b")),
                 values("1") + ",'sparse':{'index':['~'],'value':[9]}"),
           " a=9:40.3\n b=1:40.3\n", kHead + " row1 R: a b\n");

    std::string many;
    for (int number = 0; number < 87; ++number)
        many += (number == 0 ? "" : ",") + leaf("l" + std::to_string(number));
    EXPECT_THAT(tableOf(table(dimension("R", many + "," + leaf("own", ",'subscript':'5'")),
                              values("5,6,7", "05") + ",'sparse':{'index':['10'],'value':[86]}")),
                testing::AllOf(testing::HasSubstr(" l5=5:40.3\n l6=6:40.3\n l7=7:40.3\n"),
                               testing::HasSubstr(" l86=86:40.3\n own=5:40.3\n")));
}

TEST_F(TableTest, FiltersKeepWhatTheyLetThrough)
{
    const std::string rows =
        dimension("R", group("g", leaf("a") + "," + group("h", leaf("b") + "," + leaf("c"))) + "," +
                           leaf("d") + "," + leaf("e"));
    const std::pair<Preparation, const char*> cases[] = {
        {nullptr, ": g(a h(b c)) d e\n a=1:40.3\n b=2:40.3\n c=3:40.3\n d=4:40.3\n e=5:40.3\n"},
        {[](jsonPivot& pivot) { pivot.hideCategories({"d"}, true); }, ": \n"},
        {[](jsonPivot& pivot) {
             pivot.hideAllCategoriesExcept({"g", "c"}, true);
         },
         ": g(a h(c))\n a=1:40.3\n c=3:40.3\n"},
        {[](jsonPivot& pivot) { pivot.hideAllCategoriesExcept({"g"}, true); },
         ": g(a h)\n a=1:40.3\n"},
        {[](jsonPivot& pivot) {
             pivot.hideAllCategoriesExcept({"d", "e"}, true);
             pivot.hideCategories({"d"}, true);
         },
         ": e\n e=5:40.3\n"},
        {[](jsonPivot& pivot) { pivot.hideAllCategoriesExcept({"g"}, false); },
         ": g(a h(b c)) d e\n a=1:40.3\n b=2:40.3\n c=3:40.3\n d=4:40.3\n e=5:40.3\n"},
    };
    for (const auto& [prepare, shown] : cases) {
        std::string expected = shown;
        if (expected.find("h)") != expected.npos)
            expected.replace(expected.find("h)"), 2, "h())");
        expect(table(rows, values("1,2,3,4,5")), expected, kHead + " row1 R", prepare);
    }
    EXPECT_EQ(tableOf(table(dimension("L", leaf("a") + "," + leaf("b"), ",'role':'layer'"),
                            values("1,2")),
                      [](jsonPivot& pivot) { pivot.hideAllCategoriesExcept({"b"}, false); }),
              kHead + " layer1 L: b\n b=2:40.3\n");
}

TEST_F(TableTest, TitleCaptionCornerAndNotes)
{
    const std::string more =
        notes(textItem("n0") + "," + textItem("n1")) +
        ",'title':{'show':false,'text':{'footnotes':[1,2]}},'cornerText':{'text':" + textItem("k") +
        "},'minDataColumnWidth':20,'maxDataColumnWidth':99,"
        "'formats':[{'index':'1','footnotes':[1,0,9]},{'index':'1'}],'caption':{'text':[" +
        textItem("one") + ",null,{'text':{'stringText':{'value':'two'},'footnotes':[0]}}]}";
    const std::string rows = dimension("R", leaf("a") + "," + leaf("b"));
    const std::string title = "heading P\n table -T^n1 [S] 20..99\n";
    const std::string rest = " corner k\n row1 R: a b\n a=1:40.3\n b=^n1^n0\n";
    EXPECT_EQ(tableOf(table(rows, values("1"), more)), title + " caption one\n\ntwo^n0\n" + rest);
    EXPECT_EQ(
        tableOf(table(rows, values("1"), more), [](jsonPivot& pivot) { pivot.setCaption("mine"); }),
        title + " caption mine\n" + rest);
    EXPECT_EQ(tableOf(table(rows, values("1"), ",'caption':{'text':[]}")),
              kHead + " caption \n row1 R: a b\n a=1:40.3\n");
    EXPECT_EQ(tableOf(table(rows, values("1"),
                            ",'caption':{'show':false,'text':[" + textItem("c") + "]}")),
              kHead + " row1 R: a b\n a=1:40.3\n");
}

// Tables of any shape are walked without end of memory or stack.
TEST_F(TableTest, DimensionsMayBeManyOrHuge)
{
    std::string deep;
    for (int number = 0; number < 3000; ++number)
        deep += (number == 0 ? "" : ",") + dimension("D" + std::to_string(number), leaf("a"));
    buildTable(table(deep, values("1")));
    EXPECT_EQ(onlyTable().dimensions.size(), 3000U);
    EXPECT_EQ(onlyTable().cells.size(), 1U);

    std::string groups = leaf("a");
    for (int number = 0; number < 150; ++number)
        groups = group("g", groups);
    EXPECT_THAT(tableOf(table(dimension("R", groups), values("1"))),
                testing::EndsWith(" a=1:40.3\n"));

    // More cells than there are numbers for them; only one leaf of each dimension is shown.
    std::string wide = leaf("a");
    for (int number = 0; number < 99; ++number)
        wide += ",{}";
    std::string all = dimension("D", wide);
    for (int number = 1; number < 12; ++number)
        all += "," + dimension("D" + std::to_string(number), wide);
    // A pattern for all of them costs no more than the cells that are shown.
    const std::string formats =
        ",'formats':[{'index':'" + std::string(24, '*') + "','format':{'decimals':1}}]";
    EXPECT_THAT(tableOf(table(all, values("1,2"), formats)), testing::EndsWith("/a=1:40.1\n"));
}

TEST_F(TableTest, ATableOfTooManyCellsIsAWarningThatNamesIt)
{
    std::string leaves;
    for (int number = 0; number < 60; ++number)
        leaves += (number == 0 ? "" : ",") + leaf(std::to_string(number));
    std::string all;
    for (const char* name : {"A", "B", "C", "D"})
        all += (all.empty() ? "" : ",") + dimension(name, leaves);
    EXPECT_EQ(
        tableOf(table(all, values("1"))),
        "heading P\n message 2 The table \"T\" is not shown: it has more than 10000000 cells.\n");
    // The same where the walk would end without any cell.
    EXPECT_THAT(tableOf(table(all + "," + dimension("E", "{}"), values("1"))),
                testing::HasSubstr("is not shown"));
    // What a filter leaves of it is shown.
    EXPECT_THAT(tableOf(table(all, values("1")),
                        [](jsonPivot& pivot) { pivot.hideAllCategoriesExcept({"0"}, true); }),
                testing::EndsWith(" 0/0/0/0=1:40.3\n"));
}

TEST_F(TableTest, AStopEndsTheWalk)
{
    std::string leaves;
    for (int number = 0; number < 500; ++number)
        leaves += (number == 0 ? "" : ",") + leaf(std::to_string(number));
    RequestAttention();
    buildTable(table(dimension("R", leaves), values("1")));
    ClearAttention();
    EXPECT_EQ(onlyTable().cells.size(), 0U);
}

// Values with one label, a value named as the sum, and one name on both axes.
TEST_F(TableTest, EveryLeafIsShownWhateverItIsCalled)
{
    const std::string rows =
        dimension("C", leaf("Total") + "," + leaf("Total") + "," +
                           group("Total", leaf("Total") + "," + leaf("Total")));
    const std::string columns =
        dimension("C", leaf("Total") + "," + leaf("Total"), ",'role':'column'");
    EXPECT_EQ(tableOf(table(rows + "," + columns, values("null,null,null,4,5,6,7,8"))),
              kHead + " row1 C: Total Total Total(Total Total)\n column1 C: Total Total\n"
                      " Total/Total=4:40.3\n Total/Total=5:40.3\n Total/Total=6:40.3\n"
                      " Total/Total=7:40.3\n Total/Total=8:40.3\n");
    expect(table(dimension("R", leaf("a") + "," + leaf("a")), values("1,2")),
           " a=1:40.3\n a=2:40.3\n", kHead + " row1 R: a a\n");
}
