#pragma once

#include <jni.h>

#include <memory>
#include <string>
#include <vector>

#include "TnCellText.h"
#include "TnHeading.h"
#include "bridge/JNIJSONObject.h"
#include "render/dataDictionary.h"
#include "support/HvintegExport.h"

class ProcedureDataSource;

/// Builds one table of a result document as a pivot table of the host's output. Create an object
/// for each table and build it once. Use the thread that works with Java.
///
///     jsonPivot pivot(document, table, &source, dictionary);
///     pivot.hideCategories({"Total"}, true);
///     pivot.createPivotTable(heading, "Model Summary", false, "ModelSummary");
class HVINTEG_EXPORT jsonPivot
{
public:
    /// All are borrowed. `table` is a Java object of the document. `source` resolves the variables
    /// in texts and may be null; `dictionary` resolves other fields.
    jsonPivot(JNIJSONObject& document, jobject& table, const ProcedureDataSource* source,
              const dataDictionary& dictionary);
    jsonPivot(const jsonPivot&) = delete;
    jsonPivot& operator=(const jsonPivot&) = delete;
    ~jsonPivot();

    /// Sets a caption that replaces the table's own, unless it is empty.
    void setCaption(const std::string& caption);
    /// Whether the table states its split group; true by default.
    void supportSplits(bool supports);
    /// Whether keys in the table's texts are looked up in the host's string table; false by
    /// default.
    void translateTableStrings(bool translates);
    /// Sets the categories that are left out of the rows, or otherwise of columns and layers.
    void hideCategories(const std::vector<std::string>& categories, bool rows);
    /// Sets the categories which are the only ones shown. hideCategories also applies to them.
    void hideAllCategoriesExcept(const std::vector<std::string>& categories, bool rows);

    /// Builds the table under `heading`, which is borrowed; does nothing for null. `translate`: the
    /// title is a key of the string table. Writes nothing if the table object is incomplete. Throws
    /// JNIException.
    void createPivotTable(TnHeading* heading, const std::string& outlineTitle, bool translate,
                          const std::string& OMSSubType);
    /// Returns the text of a text item of the document, or null if it has none. The caller deletes
    /// the result. Throws JNIException.
    TnCellText* getCellText(jobject item);
    /// Whether a text is missing, in the table or from getCellText, because there was no memory for
    /// it. Throws nothing.
    bool hasLostText() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
