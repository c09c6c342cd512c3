#pragma once

#include <utility>

#include "HostExport.h"

class TnCellText;

/// Owns a text that TnCellText::Replicate has stored in the host, by its number; -1 means none. The
/// destructor deletes the text.
class HOST_API TnHandle
{
public:
    /// Takes over the text of this number.
    explicit TnHandle(long number) : _number(number) {}
    /// Leaves `other` without a text.
    TnHandle(TnHandle&& other) noexcept : _number(std::exchange(other._number, kNone)) {}
    /// Exchanges the texts of both handles.
    TnHandle& operator=(TnHandle&& other) noexcept;
    ~TnHandle();
    /// The text, valid as long as the handle; null for none.
    const TnCellText* text() const;

private:
    static constexpr long kNone = -1;
    long _number;
};

/// A footnote: its text, an optional marker, and whether the marker is kept when notes are
/// renumbered.
struct TnAnnotation
{
    TnHandle text;            ///< of the footnote
    TnHandle marker;          ///< null for one that is counted
    bool keepsMarker = false; ///< whether the marker is never replaced by a counted one
};
