#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "VexaDataSource.h"

/// A data source that shows the cases of another one in a different form. The dictionary is that of
/// the other source, except for what a derived class overrides.
class HOST_API VEXA_DataView : public VEXA_DataSource
{
public:
    ~VEXA_DataView() override;
    VEXA_DataView(const VEXA_DataView&) = delete;
    VEXA_DataView& operator=(const VEXA_DataView&) = delete;

    int ColumnCount() const override;
    const VEXA_Variable& GetVariable(int column) const override;
    int GetWeightVarIndex() const override;
    int GetNSplitVars() const override;
    int GetSplitVarIndex(int position) const override;

protected:
    /// The source is borrowed and must outlive the view.
    explicit VEXA_DataView(const VEXA_DataSource& source);
    /// The borrowed source.
    const VEXA_DataSource& source() const { return _source; }

private:
    const VEXA_DataSource& _source;
};

/// Some columns of a data source, in any order. The source is borrowed.
class HOST_API VEXA_CProjection : public VEXA_DataView
{
public:
    /// `columns` are the source's columns in the order of the view. Throws ErrorText for a column
    /// that the source does not have.
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

    std::vector<int> _columns;
};

/// Converts all texts of a data source, dictionary and cases, from a code page to UTF-8. String
/// variables become as wide as their values may need. The source is borrowed, and also the monitor,
/// which is told about each value with bytes that are invalid in the code page; they become
/// substitutes. A null monitor means no reports.
class HOST_API UTF8DataSource : public VEXA_DataView
{
public:
    /// Throws ErrorText for an unknown code page.
    UTF8DataSource(const VEXA_DataSource& source, const std::string& codePage,
                   ErrorMonitor* monitor);
    ~UTF8DataSource() override;

    const VEXA_Variable& GetVariable(int column) const override;
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// A temporary copy of the cases of a data source, for repeated reading of a source whose cases are
/// slow to read. The first iteration creates the copy, and the destructor removes it. The source is
/// borrowed.
class HOST_API TempFileDataStore : public VEXA_DataView
{
public:
    /// `sortKeys` are columns of the source, the most significant first. The copy is sorted by them
    /// in ascending order: missing numbers first, texts by their bytes. The sort is stable.
    explicit TempFileDataStore(const VEXA_DataSource& source, std::vector<int> sortKeys = {});
    ~TempFileDataStore() override;

    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
