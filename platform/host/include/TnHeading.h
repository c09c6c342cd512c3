#pragma once

#include <memory>
#include <string>

#include "HostExport.h"
#include "TnCellText.h"
#include "TnPivotTable.h"
#include "TnValues.h"

class ProcedureDataSource;
struct OutputHeading;

/// A heading of the output, under which other headings, tables, charts and views stand. The object
/// is how to speak to it: the heading stays in the output when the object goes. One thread at a
/// time.
class HOST_API TnHeading
{
public:
    virtual ~TnHeading();
    TnHeading(const TnHeading&) = delete;
    TnHeading& operator=(const TnHeading&) = delete;

    /// A heading under this one, at the end of what stands there; the caller deletes it. A heading
    /// of the same text that is the last there already is that heading.
    TnHeading* Heading(const TnCellText& text);
    /// A table under this heading; the caller deletes it. `subtype` names the kind of the table for
    /// programs that read the output; `supportsSplits`: whether it says which split group it is of.
    TnPivotTable* PivotTable(const TnCellText& title, const TnCellText& subtype,
                             bool supportsSplits);
    /// Host side: the heading in the output.
    const std::shared_ptr<OutputHeading>& node() const { return _node; }

protected:
    explicit TnHeading(std::shared_ptr<OutputHeading> node);

private:
    std::shared_ptr<OutputHeading> _node;
};

/// The procedure that output belongs to, and the root of its headings. Procedures may be made
/// inside each other; the latest one alive is the current one of the process.
class HOST_API TnProcedure : public TnHeading
{
public:
    /// The data source is borrowed and must outlive the procedure; it may be null, which stands for
    /// a source without columns.
    explicit TnProcedure(std::string name, ProcedureDataSource* dataSource = nullptr);
    ~TnProcedure() override;

    const std::string& Name() const;
    ProcedureDataSource& DataSource() const;

    /// How the host shows numbers of cases, statistics and percentages.
    static TnFormatSpec Count();
    static TnFormatSpec GeneralStat();
    static TnFormatSpec Percent();

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
