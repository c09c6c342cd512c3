#pragma once

#include <memory>
#include <string>
#include <vector>

#include "HostExport.h"
#include "VexaDataSource.h"

/// Some columns of a data source, in an order of their own. The source is borrowed.
class HOST_API VEXA_CProjection : public VEXA_DataSource
{
public:
    /// Throws ErrorText for a column that the source lacks.
    VEXA_CProjection(const VEXA_DataSource& source, std::vector<int> columns);

    int ColumnCount() const override { return static_cast<int>(_columns.size()); }
    const VEXA_Variable& GetVariable(int column) const override;
    /// -1 if the weight variable is not among the columns; split variables that are not are left
    /// out.
    int GetWeightVarIndex() const override;
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

/// A data source with all its texts in UTF-8, dictionary and cases, for one whose texts are in a
/// code page. String variables get as wide as their values may become. The source is borrowed, and
/// so is the monitor, which hears of each value that is no text of the code page and got
/// substitutes; null for nobody.
class HOST_API UTF8DataSource : public VEXA_DataSource
{
public:
    /// Throws ErrorText for a code page that is not known.
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

/// A copy of the cases of a data source, made at the first iteration and gone with the object: for
/// a source whose cases take work to read, when they are read more than once. The source is
/// borrowed.
class HOST_API TempFileDataStore : public VEXA_DataSource
{
public:
    /// With sort keys, columns of the source with the coarsest first, the copy is in their
    /// ascending order: a missing number before all others, texts by their bytes, and cases that
    /// are equal in them as they were.
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
