#pragma once

#include <set>
#include <string>
#include <vector>

#include "VexaDataSource.h"
#include "bridge/JsonImage.h"

/// How a model's data were prepared, as the model file keeps it: the settings, which are handed to
/// the engine again as they are, and the fields in them, which must be there in a dataset to
/// prepare that in the same way. A copy of its own, read on the thread of the JNIObjectManager.
class TsdpSettings
{
public:
    /// Takes the settings out of a model file; its path is in the host's encoding. False if there
    /// are none, or they are damaged.
    bool read(const std::string& modelPath);
    /// Finds the columns of all fields in a dataset. False for one that is not there, for
    /// dimensions other than those of the caller, UTF-8, in number, order or name, and without a
    /// field for the time.
    bool findVariables(const VEXA_DataSource& source, const std::vector<std::string>& dimFields);
    /// How many points of time the model was trained on; without a word on that, `count` stays as
    /// it was. False if what is said is no list.
    bool countTimePoints(int& count) const;

    /// JSON.
    const std::string& text() const { return _text; }
    /// Empty if other fields tell the time.
    const std::string& dateTimeField() const { return _dateTimeField; }
    const std::set<int>& variables() const { return _variables; }

private:
    bool takeFrom(const std::string& json);
    bool findDimensions(const VEXA_DataSource& source, const std::vector<std::string>& dimFields);
    bool findTime(const VEXA_DataSource& source);
    bool findAll(const VEXA_DataSource& source, const JsonValue& names);
    bool find(const VEXA_DataSource& source, const JsonValue& name);
    JsonValue settings() const { return _document.root()["settings"]; }

    JsonImage _document;
    std::string _text;
    std::string _dateTimeField;
    std::set<int> _variables;
};
