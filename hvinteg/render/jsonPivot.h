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

/// One table of a result document, as a pivot table of the host's output. Set it up, build the
/// table once, and let the object go. On the thread that works with Java.
///
///     jsonPivot pivot(document, table, &source, dictionary);
///     pivot.hideCategories({"Total"}, true);
///     pivot.createPivotTable(heading, "Model Summary", false, "ModelSummary");
class HVINTEG_EXPORT jsonPivot
{
public:
    /// All are borrowed. The document reads the table, a Java object of it; `source` knows the
    /// variables that texts name, and may be null; the dictionary knows the other fields.
    jsonPivot(JNIJSONObject& document, jobject& table, const ProcedureDataSource* source,
              const dataDictionary& dictionary);
    jsonPivot(const jsonPivot&) = delete;
    jsonPivot& operator=(const jsonPivot&) = delete;
    ~jsonPivot();

    /// A caption that takes the place of the table's own; an empty one does not.
    void setCaption(const std::string& caption);
    /// Whether the table says which split group it is of; by default it does.
    void supportSplits(bool supports);
    /// Whether keys in the table's texts are looked up in the host's string table; by default not.
    void translateTableStrings(bool translates);
    /// Set which categories of rows, or of columns and layers, are left out, and which alone are
    /// shown. Once either list has an entry, those stay that the second has and the first has not.
    void hideCategories(const std::vector<std::string>& categories, bool rows);
    void hideAllCategoriesExcept(const std::vector<std::string>& categories, bool rows);

    /// Builds the table under the heading, which is borrowed; null does nothing. `translate`: the
    /// title is a key of the string table. An object that is no whole table leaves no trace.
    /// Throws JNIException.
    void createPivotTable(TnHeading* heading, const std::string& outlineTitle, bool translate,
                          const std::string& OMSSubType);
    /// The text of a text item of the document, which the caller deletes; null if it has none.
    /// Throws JNIException.
    TnCellText* getCellText(jobject item);

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
