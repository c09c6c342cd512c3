#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "VexaDataSource.h"

/// Some columns of a data source, in any order. The source is borrowed.
class HOST_API VEXA_CProjection : public VEXA_DataSource
{
public:
    /// Throws ErrorText for a column that the source does not have.
    VEXA_CProjection(const VEXA_DataSource& source, std::vector<int> columns);

    int ColumnCount() const override { return static_cast<int>(_columns.size()); }
    const VEXA_Variable& GetVariable(int column) const override;
    /// -1 if the weight variable is not among the columns.
    int GetWeightVarIndex() const override;
    /// Counts only split variables that are among the columns.
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;
    VEXA_InputCaseIterator* MakeProjectedIterator(const std::vector<int>& columns,
                                                  ErrorMonitor* monitor) const override;

private:
    int placeOf(int sourceColumn) const;

    const VEXA_DataSource& _source;
    std::vector<int> _columns;
};

/// Converts all texts of a data source, dictionary and cases, from a code page to UTF-8. String
/// variables become as wide as their values may need. The source is borrowed, and also the monitor,
/// which is told about each value with bytes that are invalid in the code page; they become
/// substitutes. A null monitor means no reports.
class HOST_API UTF8DataSource : public VEXA_DataSource
{
public:
    /// Throws ErrorText for an unknown code page.
    UTF8DataSource(const VEXA_DataSource& source, const std::string& codePage,
                   ErrorMonitor* monitor);
    ~UTF8DataSource() override;
    UTF8DataSource(const UTF8DataSource&) = delete;
    UTF8DataSource& operator=(const UTF8DataSource&) = delete;

    int ColumnCount() const override;
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// A temporary copy of the cases of a data source, for repeated reading of a source whose cases are
/// slow to read. The first iteration creates the copy, and the destructor removes it. The source is
/// borrowed.
class HOST_API TempFileDataStore : public VEXA_DataSource
{
public:
    /// `sortKeys` are columns of the source, the most significant first. The copy is sorted by them
    /// in ascending order: missing numbers first, texts by their bytes. The sort is stable.
    explicit TempFileDataStore(const VEXA_DataSource& source, std::vector<int> sortKeys = {});
    ~TempFileDataStore() override;
    TempFileDataStore(const TempFileDataStore&) = delete;
    TempFileDataStore& operator=(const TempFileDataStore&) = delete;

    int ColumnCount() const override;
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
