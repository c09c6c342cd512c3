#pragma once

#include <memory>
#include <string>

#include "HostExport.h"
#include "TnCellText.h"
#include "TnPivotTable.h"
#include "TnValues.h"

class ProcedureDataSource;
struct OutputHeading;

/// A heading of the output, which contains headings, tables, charts and views. The object writes to
/// the heading; the heading remains in the output when the object is destroyed. One thread at a
/// time.
class HOST_API TnHeading
{
public:
    virtual ~TnHeading();
    TnHeading(const TnHeading&) = delete;
    TnHeading& operator=(const TnHeading&) = delete;

    /// Appends a heading under this one, or reuses the last item if it is a heading of the same
    /// text. The caller deletes the result.
    TnHeading* Heading(const TnCellText& text);
    /// Appends a table under this heading. The caller deletes the result. `subtype` identifies the
    /// kind of table for programs that read the output. `supportsSplits`: the table states its
    /// split group.
    TnPivotTable* PivotTable(const TnCellText& title, const TnCellText& subtype,
                             bool supportsSplits);
    /// For the host: the heading in the output tree.
    const std::shared_ptr<OutputHeading>& node() const { return _node; }

protected:
    /// For the host: shows an existing heading.
    explicit TnHeading(std::shared_ptr<OutputHeading> node);

private:
    std::shared_ptr<OutputHeading> _node;
};

/// A procedure, the root of the headings of its output. Procedures may be nested; the latest one
/// that is alive is the current procedure of the process.
class HOST_API TnProcedure : public TnHeading
{
public:
    /// The data source is borrowed and must outlive the procedure. Null means a source without
    /// columns.
    explicit TnProcedure(std::string name, ProcedureDataSource* dataSource = nullptr);
    ~TnProcedure() override;

    /// The name given to the constructor.
    const std::string& Name() const;
    /// The borrowed data source, or an empty one.
    ProcedureDataSource& DataSource() const;

    /// The host's format for numbers of cases.
    static TnFormatSpec Count();
    /// The host's format for statistics.
    static TnFormatSpec GeneralStat();
    /// The host's format for percentages.
    static TnFormatSpec Percent();

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
