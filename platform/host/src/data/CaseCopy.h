#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "VexaDataSource.h"
#include "datafile/ScratchFile.h"

/// Cases in a file without a name, in the host's form. Memory use is independent of the number and
/// width of cases. Throws ErrorText.
class CaseCopy
{
public:
    /// One width per column: 0 for a number, above 0 for a text.
    explicit CaseCopy(const std::vector<int>& widths);

    /// Adds the current case.
    void add(const VEXA_InputCaseIterator& cases);
    /// Call it after the last case.
    void finish();

    /// The number of units per case.
    std::size_t units() const { return _units; }
    /// The unit where a column begins in a case.
    std::size_t offset(int column) const { return _offsets[static_cast<std::size_t>(column)]; }
    /// Reads as many cases as fit into the buffer, from `first` on. Returns their number, 0 at the
    /// end.
    std::size_t read(long long first, std::vector<OBS>& buffer) const;
    /// A buffer large enough for efficient reading.
    std::vector<OBS> newBuffer() const;

private:
    void flush();

    std::vector<std::size_t> _offsets;
    std::vector<std::size_t> _widths; ///< in units
    std::size_t _units = 0;
    datafile::ScratchFile _file;
    std::vector<OBS> _pending; ///< cases not yet written
    std::size_t _used = 0;     ///< units of them
    long long _count = 0;
};

/// Iterates over the cases of a copy, which it owns.
class CopiedCases final : public VEXA_InputCaseIterator
{
public:
    explicit CopiedCases(std::shared_ptr<const CaseCopy> copy);

    int NextCase() override;
    double GetNumericValue(int column) const override { return GetObsPointer(column)->number; }
    const char* GetStringValue(int column) const override { return GetObsPointer(column)->text; }
    const OBS* GetObsPointer(int column) const override { return _case + _copy->offset(column); }
    long long GetCaseCount() const override { return _count; }

private:
    std::shared_ptr<const CaseCopy> _copy;
    std::vector<OBS> _buffer;
    const OBS* _case = nullptr;
    std::size_t _left = 0; ///< cases behind the current one in the buffer
    long long _count = 0;
};
