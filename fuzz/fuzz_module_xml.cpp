#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "ScratchFolder.h"
#include "scoring/ExecutionDocument.h"

/// Any text as the description of the scoring module: an execution document is made of it, and that
/// can be read again.
namespace {

const std::map<std::string, std::string> kValues{{"isOutputAll", "true"},
                                                 {"maxPredictions", "3"},
                                                 {"missingValuePolicy", "asMissingPredictor"}};
const std::vector<AssocNameElem> kNames{{"in data", "in model", "T"}, {"same", "same", ""}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    folder.put("module.xml", textOf(data, size));
    const ScoringModule module(folder.host("module.xml"));
    const XmlElement document = executionDocument(module, {kValues, kNames});
    require(document != nullptr);
    std::string text;
    document->Xml2String(text);
    folder.put("document.xml", text);
    SDOMXMLWrapper again;
    require(again.LoadFromFile(folder.host("document.xml")));
    std::string second;
    again.Xml2String(second);
    require(second == text);
    return 0;
}
