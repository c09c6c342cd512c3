#include "render/Rendering.h"
#include "render/jsonToTarn.h"

class DictionaryTest : public RenderTest
{
protected:
    dataDictionary read(const std::string& model)
    {
        FacSTDictionary strings;
        jsonToTarn output(procedure.get(), &source, strings, json("{'dataModel':" + model + "}"));
        return output.getDataDictionary();
    }
    dataField readField(const std::string& members)
    {
        return read("{'fields':[{'id':'f'," + members + "}]}").getField("f");
    }
};

TEST_F(DictionaryTest, FieldsAreReadFromTheDataModel)
{
    const dataDictionary model =
        read("{'name':'M','defaultFormat':7,'fields':[null,3,{'id':'a','label':'A','role':'input',"
             "'storage':'real','measurementLevel':'scale'},{'id':'b','label':''},"
             "{'id':'a','label':'later'}]}");
    EXPECT_EQ(model.getName(), "M");
    EXPECT_EQ(model.getField("a").getLabel(), "later");
    EXPECT_EQ(model.getField("a").getStorage(), "");
    EXPECT_EQ(model.getField("b").getLabel(), "b");
    EXPECT_EQ(model.getField("c").getName(), "");
    const dataField field =
        readField("'label':'L','role':'input','storage':'real','measurementLevel':'scale'");
    EXPECT_EQ(field.getLabel() + field.getRole() + field.getStorage() + field.getMeasurementLevel(),
              "Linputrealscale");
}

TEST_F(DictionaryTest, TheLastFormatGivesTheDecimals)
{
    const std::pair<const char*, int> rows[] = {
        {"{}", 0},
        {"7", 0},
        {"{'numberFormat':{'decimalPlaces':2}}", 2},
        {"{'dateFormat':{'decimalPlaces':0},'numberFormat':{'decimalPlaces':2}}", 0},
        {"{'dateFormat':{'decimalPlaces':1},'decoratedFormat':{'decimalPlaces':2}}", 1},
        {"{'numberFormat':{'decimalPlaces':2},'decoratedFormat':{'decimalPlaces':'3'}}", 2},
        {"{'timeFormat':{'decimalPlaces':2},'dateFormat':{'timeFormat':{'decimalPlaces':2}}}", 0},
        {"{'numberFormat':{'decimalPlaces':-1}}", 0},
    };
    for (const auto& [format, decimals] : rows)
        EXPECT_EQ(readField(std::string("'format':") + format).getDecimalPlaces(), decimals)
            << format;
}

TEST_F(DictionaryTest, ValueLabelsGoByNumberOrText)
{
    const dataField number =
        readField("'storage':'real','valueLabels':{'values':[1,'2.5','x',null,4,5.9,true,7,8],"
                  "'labels':['one','half','zero','gone','',6,'gone',[1.5],null,'beyond']}");
    EXPECT_EQ(number.getValueLabel(1.0), "one");
    EXPECT_EQ(number.getValueLabel(2.5), "half");
    EXPECT_EQ(number.getValueLabel(0.0), "zero");
    EXPECT_EQ(number.getValueLabel(4.0), "");
    EXPECT_EQ(number.getValueLabel(5.0), "6");
    EXPECT_EQ(number.getValueLabel(7.0), "[1.5]");
    EXPECT_EQ(number.getValueLabel(8.0), "");
    EXPECT_EQ(number.getValueLabel("2.5"), "");

    const dataField text = readField(
        "'storage':'string','valueLabels':{'values':['x','',3],'labels':['ex','empty','three']}");
    EXPECT_EQ(text.getValueLabel("x"), "ex");
    EXPECT_EQ(text.getValueLabel(""), "");
    EXPECT_EQ(text.getValueLabel("3"), "");
    EXPECT_EQ(text.getValueLabel(3.0), "three");
}
