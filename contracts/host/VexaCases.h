#pragma once

#include <cstddef>
#include <vector>

#include "HostExport.h"
#include "Obs.h"

class IndependentDataStore;

/// The system-missing value of a numeric variable.
inline constexpr double kSystemMissing = -1.7976931348623157e308;

/// Reads the cases of a data source, forward and once. Values are valid until the next NextCase.
/// Columns are those of the source, from 0. A column that does not exist or has the other type is
/// the caller's error. One thread at a time.
class HOST_API VEXA_InputCaseIterator
{
public:
    virtual ~VEXA_InputCaseIterator();
    /// Moves to the next case, at first to the first one. Returns 1, or 0 at the end. Throws
    /// ErrorText if the data cannot be read.
    virtual int NextCase() = 0;
    /// The value of a numeric variable.
    virtual double GetNumericValue(int column) const = 0;
    /// The value of a string variable: as many bytes as the variable's width, padded with blanks,
    /// without terminator.
    virtual const char* GetStringValue(int column) const = 0;
    /// The value of any variable, in the units of the case.
    virtual const OBS* GetObsPointer(int column) const = 0;
    /// The number of the current case, from 1.
    virtual long long GetCaseCount() const = 0;
};

/// An optional interface of a case iterator that has several cases in memory, column by column.
/// Readers find it with dynamic_cast. It changes nothing for readers that move case by case.
class HOST_API VEXA_CaseBlock
{
public:
    virtual ~VEXA_CaseBlock();
    /// The number of cases after the current one that are in memory. If it would be 0, reads
    /// more; 0 means the end. Throws what NextCase throws.
    virtual std::size_t CasesAhead() = 0;
    /// The values of a numeric column in the cases ahead, one for each case. Valid until the next
    /// NextCase or CasesAhead.
    virtual const OBS* NumbersAhead(int column) const = 0;
    /// Makes the case current that `cases` calls of NextCase would reach; 1 to CasesAhead().
    virtual void Skip(std::size_t cases) = 0;
};

/// The cases of a procedure. A split file is read group by group: at the first case of the next
/// group SplitGroupEnd returns true, and the case remains current until StartNextGroup.
class HOST_API ProcDSIterator : public VEXA_InputCaseIterator
{
public:
    /// Whether the current case belongs to the next group.
    virtual bool SplitGroupEnd() const = 0;
    /// Makes the current case the first one of the group to read.
    virtual void StartNextGroup() = 0;
};

/// A case that is being composed in a buffer of the caller. The values are in the order of the
/// store's variables, each in as many units as its width takes.
class HOST_API VEXA_Case
{
public:
    /// Requires a committed dictionary. Store and buffer are borrowed.
    VEXA_Case(const IndependentDataStore* store, OBS* buffer);

    /// Sets the value of a numeric variable; kSystemMissing for a missing one.
    void SetNumericValue(int column, double value);
    /// Sets the value of a string variable from `width` bytes. Pads it with blanks, or cuts it
    /// after the last complete character that fits.
    void SetStringValue(int column, const char* text, int width);
    /// The value of a variable in the buffer.
    const OBS* GetObsPointer(int column) const { return _buffer + _offsets[at(column)]; }

private:
    static std::size_t at(int column) { return static_cast<std::size_t>(column); }

    OBS* _buffer;
    std::vector<std::size_t> _offsets;
    std::vector<int> _widths;
};
