#include "scoring/HVScorExecXML.h"

#include <gmock/gmock.h>

#include "support/Installation.h"
#include "support/ScratchFolder.h"

namespace {

using testing::HasSubstr;

std::string documentOf(HVScorExecXML& scoring)
{
    std::string xml = "what was there before";
    scoring.getXML(xml);
    std::string flat;
    // The layout says nothing.
    for (std::size_t i = 0; i < xml.size(); ++i)
        if (xml[i] == '\n')
            i = xml.find_first_not_of(" \n", i) - 1;
        else
            flat += xml[i];
    return flat;
}

constexpr const char* kModule =
    "<M><ModuleDetails id='score' providerTag='tag' version='9.1'/><CommonObjects><PropertyTypes>"
    "<Structure id='pair'><Attribute name='a' defaultValue='&lt;1'/><Attribute name='b' "
    "isList='true' defaultValue='2'/><Attribute name='c'/></Structure><Structure id='none'/>"
    "</PropertyTypes></CommonObjects><Component><Properties>"
    "<Property name='isOutputAll' defaultValue='false'/><Property name='maxPredictions'/>"
    "<Property name='assocNameTable' isList='true'/><Property name='p' type='pair' isList='true'/>"
    "<Property name='n' type='none' defaultValue='5'/><Property name='list' isList='true' "
    "defaultValue='5'/><Property name='plain' type='x' defaultValue='5'/><Property name='bare'/>"
    "</Properties></Component></M>";

constexpr const char* kDocument =
    "<?xml version=\"1.0\"?><Execution><ContainerInputs><ContainerInput id=\"InputPMMLContainer\" "
    "/>"
    "</ContainerInputs><Operation componentId=\"score\" dependencyIds=\"\" id=\"1\" inputIds=\"\" "
    "moduleId=\"tag.score\" version=\"9.1\"><Parameters>"
    "<Parameter name=\"isOutputAll\" value=\"true\" /><Parameter name=\"maxPredictions\" "
    "value=\"5\" "
    "/><Parameter name=\"assocNameTable\"><ListValue><StructuredValue><Attribute name=\"name\" "
    "value=\"new\" /><Attribute name=\"originalName\" value=\"old\" /><Attribute "
    "name=\"predicate\" "
    "value=\"&quot;T&quot;\" /></StructuredValue></ListValue></Parameter><Parameter name=\"p\">"
    "<StructuredValue><Attribute name=\"a\" value=\"&lt;1\" /><Attribute name=\"b\"><ListValue />"
    "</Attribute><Attribute name=\"c\" /></StructuredValue></Parameter><Parameter name=\"n\" />"
    "<Parameter name=\"list\"><ListValue /></Parameter><Parameter name=\"plain\" value=\"5\" />"
    "<Parameter name=\"bare\" /></Parameters><InputContainers><Container "
    "id=\"InputPMMLContainer\" name=\"InputPMML\" /></InputContainers></Operation></Execution>";

TEST(ScorExecXml, FillsTheParametersOfTheModule)
{
    const ScratchFolder folder;
    folder.put("lib/vexa.scoring.9/module.xml", kModule);
    const Installation installation(folder.folder);
    HVScorExecXML scoring(false);
    scoring.setMaxPredictions(5);
    scoring.setAssocNameTable({{"same", "same", "T"}, {"new", "old", "\"T\""}});
    EXPECT_EQ(documentOf(scoring), kDocument);

    // The document is built once; a copy made before has one of its own.
    HVScorExecXML copy(true);
    const HVScorExecXML fresh(copy);
    scoring.setMaxPredictions(6);
    EXPECT_EQ(documentOf(scoring), kDocument);
    copy = scoring;
    EXPECT_EQ(copy.getMaxPredictions(), 6);
    EXPECT_EQ(documentOf(copy), kDocument);
    copy = fresh;
    EXPECT_THAT(documentOf(copy), HasSubstr("name=\"maxPredictions\" value=\"3\""));
    EXPECT_THAT(documentOf(copy), HasSubstr("name=\"assocNameTable\"><ListValue /></Parameter>"));
}

TEST(ScorExecXml, OfTheModuleThatIsInstalled)
{
    for (const bool asMissingPredictor : {true, false}) {
        HVScorExecXML scoring(asMissingPredictor);
        scoring.setAssocOutputValueOnly(asMissingPredictor);
        const std::string xml = documentOf(scoring);
        EXPECT_THAT(xml, HasSubstr("moduleId=\"vexa.scoring\""));
        for (const char* parameter :
             {"\"isOutputInputData\" value=\"false\"", "\"isOutputAll\" value=\"true\"",
              "\"assocCheckBasket\" value=\"notCheckBasket\"",
              "\"assocIsOutputOrigInterval\" value=\"true\"", "\"maxPredictions\" value=\"3\"",
              asMissingPredictor ? "\"assocIsOnlyOutputValue\" value=\"true\""
                                 : "\"assocIsOnlyOutputValue\" value=\"false\"",
              asMissingPredictor ? "\"missingValuePolicy\" value=\"asMissingPredictor\""
                                 : "\"missingValuePolicy\" value=\"scoreAsMissing\""})
            EXPECT_THAT(xml, HasSubstr(std::string("<Parameter name=") + parameter));
    }
}

TEST(ScorExecXml, WithoutAModule)
{
    const ScratchFolder folder;
    for (const char* content : {"", "<M>", "<M/>"}) {
        folder.put("lib/vexa.scoring.9/module.xml", content);
        const Installation installation(folder.folder);
        HVScorExecXML scoring(true);
        const std::string xml = documentOf(scoring);
        EXPECT_THAT(xml, HasSubstr("componentId=\"\""));
        EXPECT_THAT(xml, HasSubstr("moduleId=\".\""));
        EXPECT_THAT(xml, HasSubstr("<Parameters />"));
        EXPECT_THAT(xml, HasSubstr("<Container "));
    }
    const Installation nowhere("");
    HVScorExecXML scoring(true);
    EXPECT_EQ(documentOf(scoring), "");
}

} // namespace
