#include "bridge/JNIObjectManager.h"
#include "render/Rendering.h"
#include "render/jsonToTarn.h"

namespace {

/// A document in which every key that is read has a value of its type.
const char* const kDocument = R"({
 'dataModel':{'name':'M','fields':[{'id':'f','measurementLevel':'scale','storage':'real',
  'role':'input','label':'F','format':{'numberFormat':{'decimalPlaces':1}},
  'valueLabels':{'values':[1,'2'],'labels':['one','two']}}]},
 'r':{'notifications':[{'text':{'stringText':{'key':'k','value':'v','helpId':'h'}},
   'severity':'Error'}],
  'chart':{'parameters':[{'externalSource':'m'}]},
  'table':{'tableId':'t','title':{'show':true,'text':{'footnotes':[0]}},
   'footnotes':[{'text':{'stringText':{'value':'n'}}}],
   'caption':{'show':true,'text':[{'text':{'compositeText':{'children':[
     {'text':{'numericDataText':{'variable':'f','value':1}}},
     {'text':{'stringDataText':{'variable':'f','value':'x'}}},
     {'text':{'variableText':{'variable':'f'}}}]},'footnotes':[0]}}]},
   'cornerText':{'text':{'text':{'numericText':{'value':1,'format':{'string':false,'decimals':1,
     'decimalSeparator':',','thousandsSeparator':'.','prefix':'$','suffix':'%',
     'dateTimePattern':'yyyy','positiveInfinity':false,'negativeInfinity':false}}}}},
   'maxDataColumnWidth':9,'minDataColumnWidth':3,
   'dimensions':[{'text':{'text':{'stringText':{'value':'R'}},'footnotes':[0]},'sort':'ascending',
     'role':'row','position':1,'hideName':false,'hideChildren':false,'children':[
      {'text':{'text':{'stringText':{'value':'g'},'footnotes':[0]}},'show':true,
       'sort':{'order':'descending'},'children':[
        {'text':{'text':{'stringText':{'value':'a'}},'footnotes':[0]},'show':true,
         'subscript':'0'}]}]}],
   'cellLabels':{'keys':[1],'values':['l',{'text':{'stringText':{'value':'m'}}}]},
   'formats':[{'index':'*','format':{'decimals':1},'footnotes':[0]},
     {'index':'0','format':{'string':true},'footnotes':[0]}],
   'cells':[{'cells':{'compactCells':{'index':'0','value':[1]},
     'sparse':{'index':['0'],'value':[2]},'external':{}}}]}}})";

/// Where values of a text begin and end: of members, and of elements of arrays.
std::vector<std::pair<std::size_t, std::size_t>> valuesIn(const std::string& text)
{
    std::vector<std::pair<std::size_t, std::size_t>> values;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (text[place] != ':' && text[place] != '[')
            continue;
        std::size_t end = place + 1;
        bool isQuoted = false;
        for (int depth = 0; end < text.size(); ++end) {
            const char letter = text[end];
            if (letter == '"')
                isQuoted = !isQuoted;
            if (isQuoted)
                continue;
            if (depth == 0 && std::string_view(",}]").find(letter) != std::string_view::npos)
                break;
            depth += letter == '{' || letter == '[' ? 1 : letter == '}' || letter == ']' ? -1 : 0;
        }
        values.emplace_back(place + 1, end);
    }
    return values;
}

} // namespace

class WrongTypesTest : public RenderTest
{
protected:
    std::string shown(const std::string& document)
    {
        OutputTree::instance().clear();
        {
            jsonToTarn output(procedure.get(), &source, strings, document);
            for (const auto type :
                 {OutputOrder::Pivot, OutputOrder::MapChart, OutputOrder::Interactive})
                output.addObjectToOutput("H", type == OutputOrder::Pivot ? "table" : "chart", "t",
                                         "s", type);
            output.setGeoJSONMap({{"m", "{}"}});
            output.generateOutput("r");
        }
        EXPECT_FALSE(env()->ExceptionCheck());
        // Thousands of documents must not wait for the end of the test.
        JNIObjectManager::getManager()->cleanJRef();
        return outputText();
    }

    FacSTDictionary strings;
};

// Whatever value a key has, the result is shown as far as the rest goes.
TEST_F(WrongTypesTest, AnyKeyMayHoldAnyType)
{
    const std::string document = json(kDocument);
    EXPECT_THAT(shown(document), testing::HasSubstr("=2:1.0^n"));
    for (const auto& [begin, end] : valuesIn(document))
        for (const char* value :
             {"null", "true", "7", "1.5e300", "\"w\"", "[]", "[[null]]", "{}", "{\"text\":{}}"}) {
            std::string changed = document;
            changed.replace(begin, end - begin, value);
            const std::string text = shown(changed);
            // The heading is shown however little is left, unless there is no result.
            if (changed.find("\"r\":{") != changed.npos) {
                EXPECT_THAT(text, testing::HasSubstr("heading H")) << changed;
            }
        }
}
