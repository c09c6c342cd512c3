#pragma once

#include <map>
#include <string>
#include <vector>

#include "scoring/HVScorExecXML.h"
#include "scoring/ScoringModule.h"

/// The values for the parameters of an execution document. Both are borrowed.
struct ScoringParameters
{
    const std::map<std::string, std::string>& values; ///< by name; override the module's defaults
    const std::vector<AssocNameElem>& assocNames;
};

/// The root element of the document.
XmlElement executionDocument(const ScoringModule& module, const ScoringParameters& parameters);
