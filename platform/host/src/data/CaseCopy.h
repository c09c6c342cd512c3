#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "VexaDataSource.h"
#include "datafile/ScratchFile.h"

/// Cases one after the other in a file without a name, as the host holds them: what they take of
/// memory does not depend on how many there are, nor on how wide. Throws ErrorText.
class CaseCopy
{
public:
    /// `widths` gives a column each: 0 for a number, above 0 for a text.
    explicit CaseCopy(const std::vector<int>& widths);

    /// Adds the present case.
    void add(const VEXA_InputCaseIterator& cases);
    /// After the last case.
    void finish();

    /// The units of a case, and where in them a column begins.
    std::size_t units() const { return _units; }
    std::size_t offset(int column) const { return _offsets[static_cast<std::size_t>(column)]; }
    /// As many cases as the buffer holds, from the given one on; 0 at the end.
    std::size_t read(long long first, std::vector<OBS>& buffer) const;
    /// A buffer that is worth a visit to the disk.
    std::vector<OBS> newBuffer() const;

private:
    void flush();

    std::vector<std::size_t> _offsets;
    std::vector<std::size_t> _widths; ///< in units
    std::size_t _units = 0;
    datafile::ScratchFile _file;
    std::vector<OBS> _pending; ///< cases that are not yet written
    std::size_t _used = 0;     ///< units of them
    long long _count = 0;
};

/// Cases as they come from a copy, which it holds.
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
    std::size_t _left = 0; ///< cases behind the present one in the buffer
    long long _count = 0;
};
