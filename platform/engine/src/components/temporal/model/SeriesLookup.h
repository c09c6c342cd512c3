#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/TcmModel.h"
#include "runtime/DataModel.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Finds series by names in clear text: a value for each dimension field, then the metric. Values
/// are compared by dimensionKey.
class SeriesLookup
{
public:
    /// `fields` are the dimension fields and, last, the field of the metrics, with coded values as
    /// in the data model of a model. `series` is borrowed. `owner` names it in messages: "the
    /// input".
    SeriesLookup(Fields fields, const std::vector<ModelSeries>& series, std::string owner);
    /// Takes the fields from the documents of an archive. `component` begins every message. Throws
    /// JobError if the documents do not have the fields.
    SeriesLookup(const ModelArchive& archive, const TcmModel& model, const std::string& component);

    std::size_t size() const { return _places.size(); }
    /// The place of the series that element `index` of a list, the value of the setting `key`,
    /// names. Throws JobError, with the nearest name, if the element is not the name of a series.
    std::size_t placeAt(const Settings& settings, const Json& list, const std::string& key,
                        std::size_t index) const;
    /// The same for the setting `key` itself.
    std::size_t placeOf(const Settings& settings, const std::string& key) const;
    /// The same for a list of texts, the value of the setting `key`.
    std::size_t placeOf(const Settings& settings, const Json& name, const std::string& key) const;
    /// The places of all series of the metric that the setting `key` names. Throws likewise.
    std::vector<std::size_t> placesOfMetric(const Settings& settings, const std::string& metric,
                                            const std::string& key) const;

private:
    /// A part of a name: its field, and the codes of the field's values by their keys.
    struct Part
    {
        explicit Part(CFField codedField);

        CFField field;
        CFField::StorageType storage = CFField::String;
        std::unordered_map<std::string, std::string> codes;
    };

    const std::string& codeOf(const Settings& settings, const std::string& key, const Part& part,
                              const std::string& text) const;
    std::string neededParts() const;

    std::string _owner;
    std::vector<Part> _parts;
    std::unordered_map<std::string, std::size_t> _places; ///< by id
};

} // namespace EmbeddedHV
