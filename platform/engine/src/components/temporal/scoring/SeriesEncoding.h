#pragma once

#include <string>
#include <vector>

#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/TcmModel.h"
#include "runtime/DataModel.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Finds the series of a model by names in clear text: a value for each dimension field, then the
/// metric. Texts are compared byte by byte, numbers by value: "07" is 7 and "1" is 1.0.
class SeriesEncoding
{
public:
    /// The model is borrowed. `component` begins every message. Throws JobError if the archive's
    /// documents do not name the fields.
    SeriesEncoding(const ModelArchive& archive, const TcmModel& model,
                   const std::string& component);

    /// The place of the series in TcmModel::series that element `index` of a list, the value of the
    /// setting `key`, names by a list of texts. Throws JobError with the nearest name if there is
    /// none.
    std::size_t placeAt(const Settings& settings, const Json& list, const std::string& key,
                        std::size_t index) const;
    /// The same for the setting `key` itself.
    std::size_t placeOf(const Settings& settings, const std::string& key) const;

private:
    std::size_t placeOf(const Settings& settings, const Json& name, const std::string& key) const;
    std::string codeOf(const Settings& settings, const std::string& key, const CFField& field,
                       const std::string& text) const;

    const TcmModel& _model;
    Fields _fields; ///< the dimension fields and the field of the metrics, with coded values
};

} // namespace EmbeddedHV
