#pragma once

#include <map>
#include <string>

#include "FacSTDictionary.h"
#include "TnHeading.h"
#include "bridge/JNIJSONObject.h"
#include "render/DocumentPath.h"
#include "render/dataDictionary.h"

class ProcedureDataSource;

/// What is needed to show a result. Pointers and references are borrowed.
struct ResultContext
{
    TnProcedure* procedure;
    const ProcedureDataSource* source; ///< may be null
    FacSTDictionary& strings;
    bool hasDocument;
    JNIJSONObject document;
    dataDictionary dictionary{};
    std::map<std::string, std::string> geoJSON{}; ///< GeoJSON texts by name
    std::string path{};                           ///< of the result object that is shown
    DocumentPath reader{};
    bool hasLostText = false; ///< whether there was no memory for a text of the output

    /// Whether there is a document and it could be parsed.
    bool isReadable() const { return hasDocument && document.getTop() != nullptr; }
    /// The data model as JSON text; empty if the document has none or it is only a text.
    std::string dataModelJson();
};
