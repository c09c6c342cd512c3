#pragma once

#include <memory>
#include <vector>

#include "SvrDMDataset.h"
#include "VexaDataViews.h"

/// The data sources through which an iterator reads the host's cases. The requested columns become
/// a projection. If the host's encoding is not UTF-8, a converted copy lies over it. Copies of this
/// object share the sources.
class CaseViews
{
public:
    /// Creates the views over a borrowed source. `variables` are its columns in the order of the
    /// view; negative entries are ignored, and an empty list means all columns. `monitor` is told
    /// about bytes that are invalid in the host's encoding. It is borrowed; null prints them to the
    /// output. Throws ErrorText.
    void open(const VEXA_DataSource& source, const std::vector<int>& variables,
              ErrorMonitor* monitor);
    /// Keeps a dataset open as long as the views.
    void keep(std::shared_ptr<SvrDMInputDataSource> dataset) { _dataset = std::move(dataset); }
    /// The view to read from, which has texts in UTF-8. Call open before.
    const VEXA_DataSource& top() const { return *_top; }

private:
    void convert(const VEXA_DataSource& current, ErrorMonitor* monitor);

    // Each reads from the previous one; destruction is in reverse order.
    std::shared_ptr<SvrDMInputDataSource> _dataset;
    std::shared_ptr<VEXA_CProjection> _projection;
    std::shared_ptr<ErrorMonitor> _ownMonitor;
    std::shared_ptr<UTF8DataSource> _utf8View;
    std::shared_ptr<TempFileDataStore> _temporaryStore;
    const VEXA_DataSource* _top = nullptr;
};
