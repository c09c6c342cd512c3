#include "tcm/ModelFile.h"

#include <algorithm>

#include "CFMetaData.h"
#include "support/ZipReader.h"

namespace {

constexpr const char* kBegin = "<DataModel>";
constexpr const char* kEnd = "</DataModel>";
constexpr const char* kDocumentEnd = "</StatXML>";

/// Keeps the part of a document from its data model to a mark, which may be missing.
bool cutOut(std::string& document, const char* mark)
{
    const std::size_t begin = document.find(kBegin);
    if (begin == std::string::npos)
        return false;
    document.erase(0, begin);
    document.resize(std::min(document.find(mark), document.size()));
    return true;
}

} // namespace

bool readEntry(ZipReader& archive, const char* entry, std::string& text)
{
    return archive.GotoFile(entry) && archive.ExportString(text);
}

bool readFullDataModel(ZipReader& model, std::string& xml)
{
    if (!readEntry(model, kStatisticsEntry, xml))
        return false;
    if (!cutOut(xml, kEnd)) {
        xml.clear();
        return false;
    }
    xml += kEnd;
    return true;
}

bool GetMetaData(const std::string& modelPath, CFMetaData& metadata)
{
    ZipReader model(modelPath);
    std::string xml;
    if (!readEntry(model, kStatisticsEntry, xml) || !cutOut(xml, kDocumentEnd))
        return false;
    // The reader ignores text after the element.
    if (xml.find(kEnd) == std::string::npos)
        xml += kEnd;
    try {
        metadata = CFMetaData(xml, nullptr);
        return true;
    } catch (const CFMetaDataError&) {
        return false;
    }
}
