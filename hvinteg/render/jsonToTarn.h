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
    /// Reads a document (JSON) and its data model. generateOutput reports an invalid document, and
    /// getFailures a failed look-up of the data model. What Java throws while the data model is
    /// read is passed on.
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
    /// Removes all orders, so that one document can be shown in several parts.
    void removeObjects();
    /// Whether the messages of a result are shown before its output; true by default.
    void showNotifications(bool show);
    /// Sets the GeoJSON texts of maps, by name.
    void setGeoJSONMap(const std::map<std::string, std::string>& texts);
    /// The texts of setGeoJSONMap.
    const std::map<std::string, std::string>& getGeoJSONMap() const;

    /// Shows the result object of that name, a key of the document's top level, by all orders.
    /// Returns false if the object does not exist or the document is invalid; the latter is shown
    /// as a warning. Otherwise returns true, even if nothing could be shown. Without a document,
    /// returns whether anything except interactive views was shown.
    ///
    /// If Java throws while an order is shown, that order is left out and the next one follows. If
    /// Java throws in a look-up, the value counts as missing. getFailures() returns both. An
    /// exception while the messages of the result are read is passed on before any output. A table
    /// of more than 10 million cells is replaced by a warning. If the user requests a stop, the
    /// function returns early; the output so far remains, possibly with a part of a table.
    bool generateOutput(const std::string& path);

    /// A part that is missing in the output, because Java threw an exception or there was no memory
    /// for a text.
    struct Failure
    {
        std::size_t object; ///< index in the order of addObjectToOutput, from 0; or kDocument
        std::string reason; ///< Java's message, or that memory is short; UTF-8
        std::string trace;  ///< the Java stack trace, if known
    };
    /// The value of `object` for the result object, its messages and the data model of the
    /// document.
    static constexpr std::size_t kDocument = static_cast<std::size_t>(-1);
    /// The failures of the last generateOutput and of the constructor, in order. Owned by this
    /// object; valid until the next generateOutput. Throws nothing.
    const std::vector<Failure>& getFailures() const;

    /// The fields of the document. Owned by this object.
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
