#include <algorithm>
#include <tuple>
#include <vector>

#include "data/MemorySource.h"
#include "render/Rendering.h"

namespace {

constexpr double kEpoch = 12219379200.0;
constexpr double kMissing = -1.7976931348623157e308;

/// A number and a text with labels, and a day between them.
MemorySource variables()
{
    VEXA_Variable sex = numeric("Sex");
    sex.SetFormat({8, kFormatNumber, 0});
    sex.SetLabel("The sex");
    VEXA_ValueLabelMap numbers;
    numbers.SetLabel(1.0, "female");
    sex.SetValueLabels(numbers);
    VEXA_Variable day = numeric("day");
    day.SetFormat({11, kFormatDateYearFirst, 0});
    VEXA_Variable town = text("town", 10);
    VEXA_ValueLabelMap texts(10);
    texts.SetLabel("Bern", "Capital");
    town.SetValueLabels(texts);
    VEXA_Variable month = numeric("month");
    month.SetFormat({8, kFormatMonth, 0});
    return MemorySource({sex, day, town, month});
}

class TextTest : public RenderTest
{
protected:
    void SetUp() override
    {
        RenderTest::SetUp();
        source.SetDataset(&cases);
        for (const char* storage : {"date", "time", "timestamp", "timespan", "real", "string"})
            addField(storage);
    }
    void addField(const std::string& storage)
    {
        dataField field;
        field.setName("f_" + storage);
        field.setLabel("Field " + storage);
        field.setStorage(storage);
        field.addValueLabel(7.0, "seven");
        field.addValueLabel("x", "ex");
        dictionary.addField(field);
    }

    const MemorySource cases = variables();
};

std::string show(const TnContent& content)
{
    std::string text = content.text;
    if (!content.key.empty() || !content.helpId.empty())
        text += "|" + content.key + "|" + content.helpId;
    return text;
}

} // namespace

TEST_F(TextTest, ItemsBecomeTexts)
{
    // Shown as text|key|help; null for no text.
    const std::tuple<const char*, bool, const char*> rows[] = {
        {"'stringText':{'key':'no_such_key','value':'B','helpId':'H'}", true,
         "no_such_key|no_such_key|"},
        {"'stringText':{}", true, " "},
        {"'stringText':{'helpId':'H'}", true, " "},
        {"'stringText':{'value':'B','helpId':'H'}", true, "B|B|H"},
        {"'stringText':{'value':'B'}", true, "B"},
        {"'stringText':{'helpId':'H'}", false, " "},
        {"'stringText':{'key':'A','helpId':'H'}", false, "A|A|H"},
        {"'stringText':{'key':'A'}", false, "A|A|"},
        {"'stringText':{'value':'B','helpId':'H'}", false, "B|B|H"},
        {"'stringText':{'value':'B'}", false, "B"},
        {"'stringText':{'key':'A','value':'B','helpId':'H'}", false, "B|A|H"},
        {"'stringText':{'key':'A','value':'B'}", false, "B|A|"},
        {"'stringText':{'value':'\u00e9\\ud83d\\ude00'}", false, "\u00e9\U0001F600"},
        // The first kind in a fixed order wins, whatever comes first.
        {"'numericText':{'value':1},'stringText':{'value':'B'}", false, "B"},
        {"'numericText':{}", false, nullptr},
        {"'nothing':{}", false, nullptr},
        {"'variableText':{'variable':'SEX'}", false, "The sex|Sex|"},
        {"'variableText':{'variable':'@#$randsubj@#$_sex'}", false, "The sex|Sex|"},
        {"'variableText':{'variable':'@#$randsubj@#$sex'}", false, "@#$randsubj@#$sex"},
        {"'variableText':{'variable':'f_real'}", false, "Field real"},
        {"'variableText':{'variable':'nobody'}", false, "nobody"},
        {"'variableText':{}", false, nullptr},
        {"'numericDataText':{'variable':'sex','value':1}", false, "female"},
        {"'numericDataText':{'variable':'sex'}", false, nullptr},
        {"'numericDataText':{'variable':'day','value':1}", false, "1970/01/02"},
        {"'numericDataText':{'variable':'month','value':12}", false, "DECEMBER"},
        {"'numericDataText':{'variable':'month','value':0}", false, "JANUARY"}, // a day since 1970
        {"'numericDataText':{'variable':'town','value':1}", false, "1"},
        {"'numericDataText':{'variable':'f_date','value':1}", false, "1970/01/02"},
        {"'numericDataText':{'variable':'f_time','value':3600}", false, "01:00:00"},
        {"'numericDataText':{'variable':'f_timestamp','value':3600}", false,
         "01-JAN-1970 01:00:00"},
        {"'numericDataText':{'variable':'f_timespan','value':3600}", false, "01-JAN-1970 01:00:00"},
        {"'stringDataText':{'variable':'town','value':'Bern'}", false, "Capital"},
        {"'stringDataText':{'variable':'town','value':'Basel'}", false, "Basel"},
        {"'stringDataText':{'variable':'town','value':'Bern and more'}", false, "Bern and more"},
        {"'stringDataText':{'variable':'sex','value':'1'}", false, "1"},
        {"'stringDataText':{'variable':'f_string','value':'x'}", false, "x"},
        {"'stringDataText':{'variable':'town','value':''}", false, nullptr},
        {"'stringDataText':{'value':'v'}", false, "v"},
        {"'stringDataText':{'value':''}", false, nullptr},
        {"'compositeText':{}", false, nullptr},
        {"'compositeText':{'children':[]}", false, ""},
        {"'compositeText':{'children':[{'text':{}},{'text':{'stringText':{'value':'one'}}},null]}",
         false, "one"},
        {"'compositeText':{'children':[{'text':{'stringText':{'value':'a^2'}}},"
         "{'text':{'stringText':{'key':'k','value':'b'}}}]}",
         true, "a^2k"},
    };
    for (const auto& [body, translate, shown] : rows) {
        const auto text = textOf(std::string("{'text':{") + body + "}}", translate);
        ASSERT_EQ(text != nullptr, shown != nullptr) << body;
        if (text) {
            EXPECT_EQ(show(text->content()), shown) << body << translate;
        }
    }
    source.SetDataset(nullptr);
    EXPECT_EQ(textOf("{'text':{'variableText':{'variable':'sex'}}}")->text(), "sex");
}

TEST_F(TextTest, FormatsDecideTypeAndScale)
{
    const std::tuple<const char*, double, int, int, double> rows[] = {
        {"", 5, 40, 0, 5},
        {"{}", 5, 40, 3, 5},
        {"{'string':true,'decimals':2}", 5, 1, 0, 5},
        {"{'string':false,'decimals':2}", 5, 40, 2, 5},
        {"{'decimals':-3}", 5, 40, 0, 5},
        {"{'decimals':300}", 5, 40, 255, 5},
        {"{'decimalSeparator':'.'}", 5, 3, 3, 5},
        {"{'thousandsSeparator':','}", 5, 3, 3, 5},
        {"{'decimals':0,'thousandsSeparator':'.'}", 5, 32, 0, 5},
        {"{'decimalSeparator':'.','thousandsSeparator':'.'}", 5, 32, 3, 5},
        {"{'decimalSeparator':',','prefix':'$'}", 5, 4, 3, 5},
        {"{'prefix':'$','suffix':'%'}", 5, 31, 3, 5},
        {"{'prefix':'US$','suffix':' %'}", 5, 40, 3, 5},
        {"{'dateTimePattern':'yyyy-MM-dd'}", 0, 39, 3, kEpoch},
        {"{'dateTimePattern':'yyyy.MM.dd'}", 0, 39, 3, kEpoch},
        {"{'dateTimePattern':'yyyy-MM-dd HH'}", 0, 86, 3, kEpoch},
        {"{'dateTimePattern':'hh:mm'}", 60, 21, 3, 60},
        {"{'dateTimePattern':'MM/dd HH'}", 0, 23, 3, kEpoch},
        {"{'dateTimePattern':'mm:ss'}", 60, 85, 3, 60},
        {"{'dateTimePattern':'dd.MM.yy'}", 0, 38, 3, kEpoch},
        {"{'dateTimePattern':'dd MMM'}", 0, 20, 3, kEpoch},
        {"{'dateTimePattern':'dd.MM HH'}", 0, 22, 3, kEpoch},
        {"{'dateTimePattern':'dd HH','suffix':'%'}", 0, 22, 3, kEpoch},
        {"{'positiveInfinity':true}", 5, 40, 3, kMissing},
        {"{'negativeInfinity':true,'positiveInfinity':false}", 5, 40, 3, kMissing},
        {"{'negativeInfinity':'true'}", 5, 40, 3, 5},
    };
    for (const auto& [format, value, type, decimals, shown] : rows) {
        const std::string member = *format == '\0' ? "" : std::string(",'format':") + format;
        const auto made =
            textOf("{'text':{'numericText':{'value':" + std::to_string(value) + member + "}}}");
        ASSERT_NE(made, nullptr) << format;
        const TnContent content = made->content();
        EXPECT_EQ(int{content.format.type}, type) << format;
        EXPECT_EQ(int{content.format.decimals}, decimals) << format;
        EXPECT_EQ(content.format.width, 40) << format;
        EXPECT_EQ(content.number, shown) << format;
    }
}

// A caption joins the strings of its items.
TEST_F(TextTest, ItemsBecomeStrings)
{
    const std::pair<const char*, const char*> rows[] = {
        {"'stringText':{'key':'A','value':'B'}", "B"},
        {"'stringText':{'key':'A'}", "A"},
        {"'numericText':{'value':2.5}", "2.5"},
        {"'numericText':{'value':0,'format':{'dateTimePattern':'yyyy-MM-dd'}}", "1970/01/01"},
        {"'numericText':{'value':2.5,'format':{'decimals':1,'positiveInfinity':true}}", "."},
        {"'variableText':{'variable':'sex'}", "The sex"},
        {"'variableText':{'variable':'day'}", "day"},
        {"'variableText':{'variable':'f_date'}", "Field date"},
        {"'variableText':{'variable':'nobody'}", "nobody"},
        {"'numericDataText':{'value':2}", ""},
        {"'numericDataText':{'variable':'sex','value':1}", "female"},
        {"'numericDataText':{'variable':'sex','value':2}", "2"},
        {"'numericDataText':{'variable':'day','value':1}", "1970/01/02"},
        {"'numericDataText':{'variable':'f_date','value':7}", "seven"},
        {"'numericDataText':{'variable':'f_date','value':1}", "1970/01/02"},
        {"'numericDataText':{'variable':'f_time','value':60}", "00:01:00.000"},
        {"'numericDataText':{'variable':'f_timestamp','value':60}", "01-JAN-1970 00:01:00.000"},
        {"'numericDataText':{'variable':'f_timespan','value':60}", "60"},
        {"'numericDataText':{'variable':'nobody','value':60}", "60"},
        {"'stringDataText':{'variable':'town','value':'Bern'}", "Capital"},
        {"'stringDataText':{'variable':'town','value':'Basel, on the Rhine'}",
         "Basel, on the Rhine"},
        {"'stringDataText':{'variable':'f_real','value':'x'}", "ex"},
        {"'stringDataText':{'value':'x'}", "x"},
        {"'compositeText':{'children':[{'text':{'stringText':{'key':'A'}}},null,"
         "{'text':{'numericText':{'value':1,'format':{'decimals':0}}}}]}",
         "A1"},
    };
    for (const auto& [body, shown] : rows) {
        buildTable(std::string("{'footnotes':[],'caption':{'text':[{'text':{") + body +
                   "}}]},'cells':[{'cells':{'compactCells':{'value':[1]}}}]}");
        ASSERT_TRUE(onlyTable().caption.has_value());
        EXPECT_EQ(onlyTable().caption->text, shown) << body;
    }
}
