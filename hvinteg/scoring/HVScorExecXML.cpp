#include "scoring/HVScorExecXML.h"

#include <exception>
#include <map>

#include "ExtensionFinder.h"
#include "scoring/ExecutionDocument.h"
#include "support/Conversions.h"

const char* const HVScorExecXML::InputPMMLContainerID = "InputPMMLContainer";
const char* const HVScorExecXML::InputPMMLName = "InputPMML";
const char* const HVScorExecXML::ScoringFolderName = "vexa.scoring.9";

struct HVINTEG_HIDDEN HVScorExecXML::Impl
{
    /// Not changed after it is built, so copies share it.
    std::shared_ptr<const SDOMXMLWrapper> document;
    bool asMissingPredictor = false;
    int maxPredictions = 3;
    bool assocOutputValueOnly = false;
    std::vector<AssocNameElem> assocNameTable;
    std::map<std::string, std::string> parameters{
        {"isOutputInputData", "false"},         {"isOutputAll", "true"},
        {"assocCheckBasket", "notCheckBasket"}, {"assocIsOutputOrigInterval", "true"},
        {"assocIsOnlyOutputValue", "false"},
    };

    void writeParameters();
    void build();
};

void HVScorExecXML::Impl::writeParameters()
{
    parameters["assocIsOnlyOutputValue"] = assocOutputValueOnly ? "true" : "false";
    parameters["maxPredictions"] = Integer2String(maxPredictions);
    parameters["missingValuePolicy"] = asMissingPredictor ? "asMissingPredictor" : "scoreAsMissing";
}

void HVScorExecXML::Impl::build()
{
    if (document)
        return;
    std::string path;
    try {
        path = ExtensionFinder::GetCFPath() + "lib\\" + ScoringFolderName + "\\module.xml";
    } catch (const std::exception&) {
        return; // without a place there is no module, and no document
    }
    document = executionDocument(ScoringModule(path), {parameters, assocNameTable});
}

HVScorExecXML::HVScorExecXML(bool asMissingPredictor) : _impl(std::make_unique<Impl>())
{
    _impl->asMissingPredictor = asMissingPredictor;
}

HVScorExecXML::~HVScorExecXML() = default;

HVScorExecXML::HVScorExecXML(const HVScorExecXML& other)
    : _impl(std::make_unique<Impl>(*other._impl))
{
}

HVScorExecXML& HVScorExecXML::operator=(const HVScorExecXML& other)
{
    *_impl = *other._impl;
    return *this;
}

void HVScorExecXML::setMaxPredictions(int count)
{
    _impl->maxPredictions = count;
}

int HVScorExecXML::getMaxPredictions() const
{
    return _impl->maxPredictions;
}

void HVScorExecXML::setAssocOutputValueOnly(bool valueOnly)
{
    _impl->assocOutputValueOnly = valueOnly;
}

bool HVScorExecXML::getAssocOutputValueOnly() const
{
    return _impl->assocOutputValueOnly;
}

void HVScorExecXML::setAssocNameTable(const std::vector<AssocNameElem>& table)
{
    _impl->assocNameTable = table;
}

const std::vector<AssocNameElem>& HVScorExecXML::getAssocNameTable() const
{
    return _impl->assocNameTable;
}

void HVScorExecXML::getXML(std::string& xml)
{
    _impl->writeParameters();
    _impl->build();
    xml.clear();
    if (_impl->document)
        _impl->document->Xml2String(xml);
}
