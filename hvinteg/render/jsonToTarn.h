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

/// Converts a result document of the engine to the host's output. The caller selects what is shown
/// and where.
///
///     jsonToTarn output(&procedure, &procedure.DataSource(), strings, statJson);
///     output.addObjectToOutput("Model", "summary", "Summary", "ModelSummary", OutputOrder::Pivot);
///     output.generateOutput("tcm");
///
/// Use it on the thread that works with Java, after the end of the job and before cleanJRef. Texts
/// are UTF-8. Operations that read the document throw JNIException unless they say otherwise.
class HVINTEG_EXPORT jsonToTarn
{
public:
    /// Works without a document: only interactive views are shown. All pointers and references are
    /// borrowed; `source` may be null.
    jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings);
    /// Reads a document (JSON) and its data model. An invalid document is reported by
    /// generateOutput. What Java throws while the data model is read is passed on.
    jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings,
               const std::string& json);
    jsonToTarn(const jsonToTarn&) = delete;
    jsonToTarn& operator=(const jsonToTarn&) = delete;
    ~jsonToTarn();

    /// Appends an order. Orders are shown in the sequence of the calls.
    void addObjectToOutput(const OutputOrder& order);
    /// Appends an order from its parts. `title` and `location` are separated by dots.
    void addObjectToOutput(const std::string& title, const std::string& location,
                           const std::string& outlineTitle, const std::string& OMSSubType,
                           OutputOrder::Type type);
    /// Whether the messages of a result are shown before its output; true by default.
    void showNotifications(bool show);
    /// Sets the GeoJSON texts of maps, by name.
    void setGeoJSONMap(const std::map<std::string, std::string>& texts);
    /// The texts of setGeoJSONMap.
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
    /// The borrowed string table.
    FacSTDictionary& getDictionary();
    /// The reader of the document; an empty object if there is no document. Owned by this object.
    JNIJSONObject& getTop();

    /// Whether a path, separated by dots, leads to a value that is not a text.
    bool hasItem(const std::string& path);
    /// Whether it leads to an object or array that is not empty.
    bool hasItemContent(const std::string& path);
    /// Whether a GeoJSON text has features.
    bool hasGeoJSONFeatures(const std::string& text);
    /// Whether the GeoJSON text of that name has features. For an empty name, whether there are
    /// texts and all have features.
    bool hasGeoJSONMapFeatures(const std::string& name);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
