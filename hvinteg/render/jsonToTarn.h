#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "FacSTDictionary.h"
#include "TnHeading.h"
#include "bridge/JNIJSONObject.h"
#include "render/OutputOrder.h"
#include "render/dataDictionary.h"
#include "support/HvintegExport.h"

class ProcedureDataSource;

/// Turns a result document of the engine into the host's output. The caller decides what is shown
/// and where, the document what it says.
///
///     jsonToTarn output(&procedure, &procedure.DataSource(), strings, statJson);
///     output.addObjectToOutput("Model", "summary", "Summary", "ModelSummary", OutputOrder::Pivot);
///     output.generateOutput("tcm");
///
/// On the thread that works with Java, after the job has ended, and until cleanJRef. Texts are
/// UTF-8. Operations that read the document throw JNIException unless they say otherwise.
class HVINTEG_EXPORT jsonToTarn
{
public:
    /// All pointers and references are borrowed; the data source may be null. Without a document
    /// only interactive views come of it. What Java throws while the data model is read passes.
    jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings);
    jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings,
               const std::string& json);
    jsonToTarn(const jsonToTarn&) = delete;
    jsonToTarn& operator=(const jsonToTarn&) = delete;
    ~jsonToTarn();

    /// Appends to what is shown, in this order.
    void addObjectToOutput(const OutputOrder& order);
    /// `title` and `location` are segments with dots between them.
    void addObjectToOutput(const std::string& title, const std::string& location,
                           const std::string& outlineTitle, const std::string& OMSSubType,
                           OutputOrder::Type type);
    /// Whether the messages of a result come before its output; by default they do.
    void showNotifications(bool show);
    /// GeoJSON texts by name, for maps.
    void setGeoJSONMap(const std::map<std::string, std::string>& texts);
    const std::map<std::string, std::string>& getGeoJSONMap() const;

    /// Shows the result object of that name, a key of the document's top. False if there is none,
    /// or if the document could not be read, which is told as a warning; else true, whatever came
    /// of it. Without a document: whether there was output other than interactive views. If Java
    /// throws while an object is shown, this object is left out and the next one follows; what is
    /// looked up in the document when Java throws counts as absent. getFailures() names both. What
    /// Java throws while the messages of the result are read passes, ahead of any output. A table
    /// of more than 10 million cells is replaced by a warning. When the user asks the host for a
    /// stop, this returns early and leaves what is shown until then, maybe a part of a table.
    bool generateOutput(const std::string& path);

    /// A part that is missing in the output because Java threw.
    struct Failure
    {
        std::size_t object; ///< its place in the order of addObjectToOutput, from 0; or kDocument
        std::string reason; ///< what Java says, UTF-8
        std::string trace;  ///< the Java stack trace, if it is known
    };
    /// Stands for the result object, its messages and the data model of the document.
    static constexpr std::size_t kDocument = static_cast<std::size_t>(-1);
    /// The failures of the last generateOutput and of the constructor, in the order in which they
    /// happened. Belongs to this object; valid until the next generateOutput. Throws nothing.
    const std::vector<Failure>& getFailures() const;

    /// The fields of the document, and the string table that was handed in.
    dataDictionary& getDataDictionary();
    FacSTDictionary& getDictionary();
    /// The document; an empty object without one.
    JNIJSONObject& getTop();

    /// Whether a path, keys with dots between them, leads to something that is no text.
    bool hasItem(const std::string& path);
    /// Whether it leads to an object or an array that holds something.
    bool hasItemContent(const std::string& path);
    /// Whether a GeoJSON text has features; the text of that name; or all texts, without a name.
    bool hasGeoJSONFeatures(const std::string& text);
    bool hasGeoJSONMapFeatures(const std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
