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

/// How the values of a variable may be read. Numbers outside the enumeration may stand in for "as
/// the variable has it".
enum class MeasurementLevel : int
{
    Unknown = 0,
    Nominal = 1,
    Ordinal = 2,
    Scale = 3
};

/// The data source of a procedure. One thread at a time.
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

    /// Level and type of a column: Unknown and 0 outside the columns. A type is 0 for a numeric
    /// variable and the width in bytes for a string variable.
    MeasurementLevel GetMeasurementLevel(int column) const;
    int GetColumnType(int column) const;
    void SetMeasurementLevel(int column, MeasurementLevel level);

    /// Whether reading stops at the end of each split group.
    void SetSplitEndCheck(bool check);
    bool SplitEndCheck() const;

    /// Host side: describes the source. Names are in the host's encoding. SetColumns makes all
    /// columns numeric and of unknown level; SetColumnTypes gives their types, in order.
    void SetColumns(std::vector<std::string> names);
    void SetColumnTypes(std::vector<int> types);
    void SetWeightVarIndex(int column);
    void SetSplitVars(std::vector<int> columns);
    /// Host side: values of the split variables in the present group, in their order and in the
    /// host's encoding, for labels of output lines.
    void SetSplitValues(std::vector<std::string> values);
    const std::vector<std::string>& ColumnNames() const;
    const std::vector<std::string>& SplitValues() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Gives variables of unknown measurement level a level from what is known of them: a string
/// variable becomes nominal, a numeric one scale.
HOST_API void AdjustMeasurementLevels(ProcedureDataSource& source);
