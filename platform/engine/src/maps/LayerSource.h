#pragma once

#include <memory>
#include <optional>
#include <string>

#include "JobError.h"
#include "maps/Geography.h"
#include "runtime/Cancellation.h"
#include "runtime/RecordSource.h"
#include "runtime/RowSources.h"

namespace EmbeddedHV {

/// A shape file or a layer of a map service as a table. It can be read repeatedly.
class LayerSource : public RecordSource
{
public:
    /// Borrows the cancellation and the registry.
    LayerSource(std::unique_ptr<maps::Layer> layer, const Cancellation& cancellation,
                RowSources& registry);
    LayerSource(const LayerSource&) = delete;
    LayerSource& operator=(const LayerSource&) = delete;
    ~LayerSource() override;

    /// The fields of the layer, with unique names.
    const std::vector<CFField>& fields() const override { return _fields; }
    /// The FROM item that reads the records.
    std::string table() const { return RowSources::tableOf(_id); }
    /// Reads one record to check that the layer can be read. Throws JobError.
    void probe();
    /// The error that occurred while records were read. The statement that read them has failed.
    const std::optional<JobError>& failure() const { return _failure; }

    void begin(const std::vector<std::size_t>& fields) noexcept override;
    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept override;

private:
    template <class Work>
    void guarded(Work work) noexcept;
    std::size_t pull(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields);

    std::unique_ptr<maps::Layer> _layer;
    const Cancellation& _cancellation;
    RowSources& _registry;
    std::int64_t _id = 0;
    std::vector<CFField> _fields;
    bool _ended = false;
    std::optional<JobError> _failure;
};

} // namespace EmbeddedHV
