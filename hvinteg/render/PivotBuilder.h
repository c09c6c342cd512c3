#pragma once

#include <memory>
#include <string>
#include <vector>

#include "TnHeading.h"
#include "bridge/JsonValue.h"
#include "render/DimensionReader.h"
#include "render/Footnotes.h"
#include "render/PivotDimension.h"
#include "render/PivotSettings.h"
#include "render/TextItems.h"

/// Builds one table of the output from a table object of a result.
class PivotBuilder
{
public:
    /// All are borrowed.
    PivotBuilder(const JsonValue& json, const TextItems& texts, const PivotSettings& settings)
        : _json(json), _texts(texts), _settings(settings),
          _layout(DimensionReader::leafCounts(json["dimensions"]))
    {
    }
    /// Returns null, and writes nothing, if the table object is incomplete. Returns null and shows
    /// a warning if the table has too many cells. `translate`: the title is a key of the string
    /// table. If the user requests a stop, the table ends with the cells placed so far.
    std::unique_ptr<TnPivotTable> build(TnHeading& heading, const std::string& title,
                                        bool translate, const std::string& subType);

private:
    bool isWhole() const;
    void setTitle();
    void setCaption();
    void setOwnCaption(const JsonValue& items);
    void setCornerAndWidths();
    void readDimensions();
    void refuse(const std::string& title, bool translate) const;
    void fill();

    JsonValue _json;
    const TextItems& _texts;
    const PivotSettings& _settings;
    Footnotes _footnotes;
    KeyLayout _layout;
    std::vector<PivotDimension> _dimensions;
    std::unique_ptr<TnPivotTable> _table;
};
