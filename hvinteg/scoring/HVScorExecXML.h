#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

/// A field of an association model that has different names in data and model.
struct AssocNameElem
{
    std::string name;         ///< in the data
    std::string originalName; ///< in the model
    std::string predicate;    ///< the value that makes it an item
};

/// Writes the execution document for one run of the scoring module on a PMML model. The document
/// has the parameters of the module's description "module.xml", with the values set here or the
/// module's defaults. One thread at a time.
///
///     HVScorExecXML scoring(true);
///     scoring.setMaxPredictions(5);
///     std::string document;
///     scoring.getXML(document);
class HVINTEG_EXPORT HVScorExecXML
{
public:
    /// Id of the container with the PMML model.
    static const char* const InputPMMLContainerID;
    /// Name of the container with the PMML model.
    static const char* const InputPMMLName;
    /// Name of the module's folder in the directory "lib" of the host's components.
    static const char* const ScoringFolderName;

    /// `asMissingPredictor`: missing predictors are handled as the model specifies. Otherwise a
    /// record with one gets no score.
    explicit HVScorExecXML(bool asMissingPredictor);
    ~HVScorExecXML();
    /// Copies the settings and the document if it is built.
    HVScorExecXML(const HVScorExecXML& other);
    /// Replaces the settings and the document.
    HVScorExecXML& operator=(const HVScorExecXML& other);

    /// Sets the highest number of predictions per record of an association model; 3 by default.
    void setMaxPredictions(int count);
    /// The highest number of predictions per record.
    int getMaxPredictions() const;
    /// Whether an association model outputs only values; false by default.
    void setAssocOutputValueOnly(bool valueOnly);
    /// The value of setAssocOutputValueOnly.
    bool getAssocOutputValueOnly() const;
    /// Sets the fields with different names. Elements with equal names are left out of the
    /// document.
    void setAssocNameTable(const std::vector<AssocNameElem>& table);
    /// The value of setAssocNameTable.
    const std::vector<AssocNameElem>& getAssocNameTable() const;

    /// Replaces `xml` by the document. The first call builds it; later settings have no effect.
    /// Errors are not reported: without a readable module file the document has no parameters, and
    /// `xml` is empty if the path of the file cannot be determined.
    void getXML(std::string& xml);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
