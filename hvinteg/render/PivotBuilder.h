#pragma once

#include <memory>
#include <string>

#include "TnHeading.h"
#include "bridge/JsonValue.h"
#include "render/Footnotes.h"
#include "render/PivotSettings.h"
#include "render/TextItems.h"

/// Builds one table of the output from a table object.
class PivotBuilder
{
public:
    /// All are borrowed.
    PivotBuilder(const JsonValue& json, const TextItems& texts, const PivotSettings& settings)
        : _json(json), _texts(texts), _settings(settings)
    {
    }
    /// Null, and no trace in the output, for an object that is no whole table. The title is a key
    /// of the string table if `translate` is set.
    std::unique_ptr<TnPivotTable> build(TnHeading& heading, const std::string& title,
                                        bool translate, const std::string& subType);

private:
    bool isWhole() const;
    void setTitle();
    void setCaption();
    void setOwnCaption(const JsonValue& items);
    void setCornerAndWidths();
    void fill();

    JsonValue _json;
    const TextItems& _texts;
    const PivotSettings& _settings;
    Footnotes _footnotes;
    std::unique_ptr<TnPivotTable> _table;
};
