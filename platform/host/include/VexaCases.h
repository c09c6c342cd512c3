#pragma once

#include <vector>

#include "HostExport.h"
#include "Obs.h"

class IndependentDataStore;

/// The number that stands for a missing value of a numeric variable.
inline constexpr double kSystemMissing = -1.7976931348623157e308;

/// Walks over the cases of a data source, forward and once. Values last until the next NextCase.
/// Columns are those of the source, from 0; a column that is not there, or of the other kind, is
/// the caller's fault. One thread at a time.
class HOST_API VEXA_InputCaseIterator
{
public:
    virtual ~VEXA_InputCaseIterator();
    /// Moves on, at first to the first case; 0 at the end, else 1. Throws ErrorText if the data
    /// cannot be read.
    virtual int NextCase() = 0;
    /// The value of a numeric variable.
    virtual double GetNumericValue(int column) const = 0;
    /// The value of a string variable: as many bytes as the variable is wide, filled up with
    /// blanks, no terminator.
    virtual const char* GetStringValue(int column) const = 0;
    /// The value of any variable, as it stands in the case.
    virtual const OBS* GetObsPointer(int column) const = 0;
    /// The number of the present case, from 1.
    virtual long long GetCaseCount() const = 0;
};

/// The cases of a procedure, which reads a split file group by group: at the first case of another
/// group SplitGroupEnd says so, and the case stays until StartNextGroup.
class HOST_API ProcDSIterator : public VEXA_InputCaseIterator
{
public:
    /// Whether the present case is the first one of the group after the one that is being read.
    virtual bool SplitGroupEnd() const = 0;
    /// Takes the present case as the first one of the group that is read from here on.
    virtual void StartNextGroup() = 0;
};

/// A case under composition, in a buffer that the caller owns and keeps alive. The values stand in
/// the order of the store's variables, each in as many units as its width takes.
class HOST_API VEXA_Case
{
public:
    /// The dictionary of the store must be committed. Both are borrowed.
    VEXA_Case(const IndependentDataStore* store, OBS* buffer);

    /// Of a numeric variable; kSystemMissing stands for none.
    void SetNumericValue(int column, double value);
    /// `width` bytes; filled up with blanks, or cut to whole characters that fit the variable.
    void SetStringValue(int column, const char* text, int width);
    const OBS* GetObsPointer(int column) const { return _buffer + _offsets[at(column)]; }

private:
    static std::size_t at(int column) { return static_cast<std::size_t>(column); }

    OBS* _buffer;
    std::vector<std::size_t> _offsets;
    std::vector<int> _widths;
};
