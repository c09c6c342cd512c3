#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CFField.h"
#include "components/temporal/TcmModel.h"

namespace EmbeddedHV {

/// What the documents of a model file say of the data that the model was trained on.
struct ModelFields
{
    std::vector<std::string> timeFields; ///< empty if the order of the records is the time
    std::vector<std::string> dimensions;
    std::vector<CFField::StorageType> storages; ///< of the dimensions, as data store them
    std::vector<std::string> points;            ///< a text for each point of time of the training
};

/// Reads the documents TSDPOutput.json and StatXML.xml of a model file. `owner` begins every
/// message. Throws JobError if they lack what is read.
ModelFields modelFieldsOf(const std::string& preparation, const std::string& statistics,
                          const std::string& owner);

/// The text under which equal values of a dimension are found: numbers are equal as numbers, so
/// that "07" is "7"; points of time however they are written.
std::string dimensionKey(std::string_view value, CFField::StorageType storage);

/// Finds series of a model by name.
class SeriesFinder
{
public:
    SeriesFinder(const TcmModel& model, std::vector<CFField::StorageType> storages);

    /// The place of the series with these values of the dimensions and this metric; nothing if the
    /// model has none.
    std::optional<std::size_t> byName(const std::vector<std::string>& name) const;
    std::optional<std::size_t> byId(const std::string& id) const;

private:
    std::vector<std::string> keyOf(const std::vector<std::string>& name) const;

    std::vector<CFField::StorageType> _storages;
    std::map<std::vector<std::string>, std::size_t> _byName;
    std::map<std::string, std::size_t> _byId;
};

} // namespace EmbeddedHV
