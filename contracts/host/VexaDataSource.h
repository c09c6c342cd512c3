#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ErrorMonitor.h"
#include "HostExport.h"
#include "VexaCases.h"
#include "VexaVariable.h"

/// A data source of the host's data library: a dictionary and cases. One thread at a time; several
/// iterators may be open at once.
class HOST_API VEXA_DataSource
{
public:
    virtual ~VEXA_DataSource();
    /// The number of columns. Columns are numbered from 0.
    virtual int ColumnCount() const = 0;
    /// The variable of a column. Valid as long as the source. Throws ErrorText for a column that
    /// does not exist.
    virtual const VEXA_Variable& GetVariable(int column) const = 0;
    /// 0-based column of the weight variable; -1 for none.
    virtual int GetWeightVarIndex() const = 0;
    /// The number of split variables.
    virtual int GetNSplitVars() const = 0;
    /// The 0-based column of the split variable at `position`; -1 past the end.
    virtual int GetSplitVarIndex(int position) const = 0;
    /// The first column from `firstColumn` on with this name, ignoring letter case; -1 if there is
    /// no such column. The name is in the host's encoding.
    int FindVarIndex(const std::string& name, int firstColumn) const;
    /// Creates an iterator before the first case. The caller deletes it; the source must outlive
    /// it. `monitor` is told about problems with single values; null means the source's own
    /// monitor, if it has one. Throws ErrorText.
    virtual VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const = 0;
    /// Creates an iterator over some columns. The iterator numbers them by their index in
    /// `columns`. Ownership and monitor are those of MakeIterator. Throws ErrorText, also for a
    /// column that does not exist. The default reads all columns. Sources that can read a part of
    /// their columns override it.
    virtual VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                          ErrorMonitor* monitor) const;
};

/// The data source of a procedure: a dataset, or columns that the host describes. One thread at a
/// time.
class HOST_API ProcedureDataSource : public VEXA_DataSource
{
public:
    /// A source without columns.
    ProcedureDataSource();
    ~ProcedureDataSource() override;
    ProcedureDataSource(const ProcedureDataSource&) = delete;
    ProcedureDataSource& operator=(const ProcedureDataSource&) = delete;

    int ColumnCount() const override;
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;
    /// Returns a ProcDSIterator. Without a dataset there are no cases.
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    /// Does not return a ProcDSIterator: all cases are read without groups.
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

    /// The measurement level of a column; Unknown for a column that does not exist.
    MeasurementLevel GetMeasurementLevel(int column) const;
    /// The type of a column: 0 for a numeric variable, the width in bytes for a string variable. 0
    /// for a column that does not exist.
    int GetColumnType(int column) const;
    /// Sets the measurement level. Ignores a column that does not exist.
    void SetMeasurementLevel(int column, MeasurementLevel level);

    /// Sets whether reading stops at the end of each split group; true by default.
    void SetSplitEndCheck(bool check);
    /// Whether reading stops at the end of each split group.
    bool SplitEndCheck() const;

    /// For the host: sets the dataset, which provides columns, weight, split and cases. Borrowed;
    /// must outlive the procedure. Null removes it.
    void SetDataset(const VEXA_DataSource* dataset);
    /// For the host: removes the dataset and describes numeric columns of unknown level. Names are
    /// in the host's encoding.
    void SetColumns(std::vector<std::string> names);
    /// For the host: sets the types of the described columns, in order.
    void SetColumnTypes(const std::vector<int>& types);
    /// For the host: sets the 0-based column of the weight variable; -1 for none.
    void SetWeightVarIndex(int column);
    /// For the host: sets the 0-based columns of the split variables.
    void SetSplitVars(std::vector<int> columns);
    /// For the host: sets the values of the split variables in the present group, in order and in
    /// the host's encoding. Labels of output lines use them.
    void SetSplitValues(std::vector<std::string> values);
    /// The names of all columns, in the host's encoding.
    std::vector<std::string> ColumnNames() const;
    /// The values of SetSplitValues, or of the group that is read.
    const std::vector<std::string>& SplitValues() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Sets the level of all variables of unknown measurement level: nominal for a string variable,
/// scale for a numeric one.
HOST_API void AdjustMeasurementLevels(ProcedureDataSource& source);
