#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

/// A field of an association model whose name in the data is another one than in the model.
struct AssocNameElem
{
    std::string name;         ///< in the data
    std::string originalName; ///< in the model
    std::string predicate;    ///< the value that makes it an item
};

/// Writes the execution document of one run of the scoring module on one PMML input: the module's
/// parameters, as its description "module.xml" lists them, with the values set here and else with
/// the module's defaults. One thread at a time.
///
///     HVScorExecXML scoring(true);
///     scoring.setMaxPredictions(5);
///     std::string document;
///     scoring.getXML(document);
class HVINTEG_EXPORT HVScorExecXML
{
public:
    /// The input of the document, and the folder of the module.
    static const char* const InputPMMLContainerID;
    static const char* const InputPMMLName;
    static const char* const ScoringFolderName;

    /// Whether a missing predictor is handled as the model says; if not, a record with one gets no
    /// score.
    explicit HVScorExecXML(bool asMissingPredictor);
    ~HVScorExecXML();
    /// A copy has settings of its own, and the document if it is built.
    HVScorExecXML(const HVScorExecXML& other);
    HVScorExecXML& operator=(const HVScorExecXML& other);

    /// Of an association model: how many predictions a record gets at most, 3 by default.
    void setMaxPredictions(int count);
    int getMaxPredictions() const;
    /// Whether it gives values alone; false by default.
    void setAssocOutputValueOnly(bool valueOnly);
    bool getAssocOutputValueOnly() const;
    /// Elements whose names are equal are left out of the document.
    void setAssocNameTable(const std::vector<AssocNameElem>& table);
    const std::vector<AssocNameElem>& getAssocNameTable() const;

    /// Replaces `xml` with the document. The first call builds it; what is set later does not
    /// reach it any more. Nothing is reported: without a readable module file the document has no
    /// parameters, and `xml` is empty if the file's place cannot be told.
    void getXML(std::string& xml);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
