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

class Reprojection;

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
    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept override
    {
        return fill(chunk, fields, nullptr);
    }
    /// Transforms the shapes with `reprojection`, unless it is null.
    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields,
              Reprojection* reprojection) noexcept;

private:
    template <class Work>
    void guarded(Work work) noexcept;
    std::size_t pull(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields,
                     Reprojection* reprojection);
    void read(std::size_t field, maps::LayerValue& value, Reprojection* reprojection);

    std::unique_ptr<maps::Layer> _layer;
    const Cancellation& _cancellation;
    RowSources& _registry;
    std::int64_t _id = 0;
    std::vector<CFField> _fields;
    maps::Shape _shape; ///< keeps its memory from one record to the next
    bool _ended = false;
    std::optional<JobError> _failure;
};

/// The records of a layer, with their shapes in another coordinate system. The shapes are
/// transformed before they become texts, so that no text is parsed. Not during a scan of the layer
/// itself.
class MovedLayerSource : public RecordSource
{
public:
    /// Borrows the registry.
    MovedLayerSource(std::shared_ptr<LayerSource> layer, std::shared_ptr<Reprojection> reprojection,
                     RowSources& registry);
    MovedLayerSource(const MovedLayerSource&) = delete;
    MovedLayerSource& operator=(const MovedLayerSource&) = delete;
    ~MovedLayerSource() override;

    const std::vector<CFField>& fields() const override { return _layer->fields(); }
    /// The FROM item that reads the records.
    std::string table() const { return RowSources::tableOf(_id); }

    void begin(const std::vector<std::size_t>& fields) noexcept override { _layer->begin(fields); }
    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept override
    {
        return _layer->fill(chunk, fields, _reprojection.get());
    }

private:
    std::shared_ptr<LayerSource> _layer;
    std::shared_ptr<Reprojection> _reprojection;
    RowSources& _registry;
    std::int64_t _id = 0;
};

} // namespace EmbeddedHV
