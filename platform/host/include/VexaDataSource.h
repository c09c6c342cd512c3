#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"

/// Columns of cases, as the host's data library shows them.
class HOST_API VEXA_DataSource
{
public:
    virtual ~VEXA_DataSource() = default;
    virtual int ColumnCount() const = 0;
    /// 0-based column of the weight variable; -1 for none.
    virtual int GetWeightVarIndex() const = 0;
    /// The split variables: how many, and the 0-based column of the i-th.
    virtual int GetNSplitVars() const = 0;
    virtual int GetSplitVarIndex(int position) const = 0;
};

/// The data source of a procedure.
class HOST_API ProcedureDataSource : public VEXA_DataSource
{
public:
    ProcedureDataSource();
    ~ProcedureDataSource() override;
    ProcedureDataSource(const ProcedureDataSource&) = delete;
    ProcedureDataSource& operator=(const ProcedureDataSource&) = delete;

    int ColumnCount() const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;

    /// Whether reading stops at the end of each split group.
    void SetSplitEndCheck(bool check);
    bool SplitEndCheck() const;

    /// Host side: describes the source.
    void SetColumns(std::vector<std::string> names);
    void SetWeightVarIndex(int column);
    void SetSplitVars(std::vector<int> columns);
    /// Host side: values of the split variables in the present group, for labels of output lines.
    void SetSplitValues(std::vector<std::string> values);
    const std::vector<std::string>& ColumnNames() const;
    const std::vector<std::string>& SplitValues() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Gives variables of unknown measurement level a level from their values.
HOST_API void AdjustMeasurementLevels(ProcedureDataSource& source);
