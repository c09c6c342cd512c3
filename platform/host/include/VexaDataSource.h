#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ErrorMonitor.h"
#include "HostExport.h"
#include "VexaCases.h"
#include "VexaVariable.h"

/// Columns of cases, as the host's data library shows them: a dictionary and the cases. One thread
/// at a time; several iterators may be open at once.
class HOST_API VEXA_DataSource
{
public:
    virtual ~VEXA_DataSource();
    /// Columns are numbered from 0.
    virtual int ColumnCount() const = 0;
    /// Throws ErrorText for a column that is not there.
    virtual const VEXA_Variable& GetVariable(int column) const = 0;
    /// 0-based column of the weight variable; -1 for none.
    virtual int GetWeightVarIndex() const = 0;
    /// The split variables: how many, and the 0-based column of the i-th; -1 past the end.
    virtual int GetNSplitVars() const = 0;
    virtual int GetSplitVarIndex(int position) const = 0;
    /// The column of a name in the host's encoding, letter case apart, from `firstColumn` on; -1 if
    /// there is none.
    int FindVarIndex(const std::string& name, int firstColumn) const;
    /// An iterator before the first case; the caller deletes it. What goes wrong with single values
    /// is told to the monitor; null stands for the source's own, or nobody. The source must outlive
    /// the iterator. Throws ErrorText.
    virtual VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const = 0;
    /// The same over some columns, which are numbered by their place in the list. Sources that can
    /// read less than all override it.
    virtual VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                          ErrorMonitor* monitor) const;
};

/// The data source of a procedure: the dataset that it is called for, or columns that are told one
/// by one. One thread at a time.
class HOST_API ProcedureDataSource : public VEXA_DataSource
{
public:
    ProcedureDataSource();
    ~ProcedureDataSource() override;
    ProcedureDataSource(const ProcedureDataSource&) = delete;
    ProcedureDataSource& operator=(const ProcedureDataSource&) = delete;

    int ColumnCount() const override;
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;
    /// A ProcDSIterator. Without a dataset there are no cases.
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    /// Not a ProcDSIterator: who chooses columns reads all cases in one piece.
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

    /// Level and type of a column: Unknown and 0 outside the columns. A type is 0 for a numeric
    /// variable and the width in bytes for a string variable.
    MeasurementLevel GetMeasurementLevel(int column) const;
    int GetColumnType(int column) const;
    void SetMeasurementLevel(int column, MeasurementLevel level);

    /// Whether reading stops at the end of each split group.
    void SetSplitEndCheck(bool check);
    bool SplitEndCheck() const;

    /// Host side: the dataset, which is borrowed and must outlive the procedure. It gives columns,
    /// weight, split and cases; null takes them away.
    void SetDataset(const VEXA_DataSource* dataset);
    /// Host side: describes the source. Names are in the host's encoding. SetColumns makes all
    /// columns numeric and of unknown level; SetColumnTypes gives their types, in order.
    void SetColumns(std::vector<std::string> names);
    void SetColumnTypes(const std::vector<int>& types);
    void SetWeightVarIndex(int column);
    void SetSplitVars(std::vector<int> columns);
    /// Host side: values of the split variables in the present group, in their order and in the
    /// host's encoding, for labels of output lines.
    void SetSplitValues(std::vector<std::string> values);
    std::vector<std::string> ColumnNames() const;
    const std::vector<std::string>& SplitValues() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Gives variables of unknown measurement level a level from what is known of them: a string
/// variable becomes nominal, a numeric one scale.
HOST_API void AdjustMeasurementLevels(ProcedureDataSource& source);
