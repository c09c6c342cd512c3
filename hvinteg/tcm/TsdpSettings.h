#pragma once

#include <set>
#include <string>
#include <vector>

#include "VexaDataSource.h"
#include "bridge/JsonImage.h"

/// The settings of a model's data preparation, from the model file. The engine gets them unchanged
/// for a replay; the dataset must have the fields that they name. All operations run on the thread
/// of the JNIObjectManager.
class TsdpSettings
{
public:
    /// Reads the settings from a model file; its path is in the host's encoding. Returns false if
    /// they are missing or damaged.
    bool read(const std::string& modelPath);
    /// Finds the columns of all fields in a dataset. Returns false if one is missing, if the
    /// dimensions are not the caller's (UTF-8) in number, order and name, or if no field gives the
    /// time.
    bool findVariables(const VEXA_DataSource& source, const std::vector<std::string>& dimFields);
    /// Counts the points of time of the training. Leaves `count` unchanged if the model does not
    /// list them. Returns false if the list is invalid.
    bool countTimePoints(int& count) const;

    /// The settings as JSON.
    const std::string& text() const { return _text; }
    /// The field of the time; empty if there is no such field.
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
