#pragma once

#include <utility>

#include "HostExport.h"

class TnCellText;

/// Owns a text that TnCellText::Replicate has left with the host, by its number; -1 stands for
/// none. The text goes with the handle.
class HOST_API TnHandle
{
public:
    explicit TnHandle(long number) : _number(number) {}
    TnHandle(TnHandle&& other) noexcept : _number(std::exchange(other._number, kNone)) {}
    TnHandle& operator=(TnHandle&& other) noexcept;
    ~TnHandle();
    /// The text; null if there is none. It lives as long as the handle.
    const TnCellText* text() const;

private:
    static constexpr long kNone = -1;
    long _number;
};

/// A footnote: its text, a marker of its own or none, and whether the marker is kept when notes are
/// numbered anew.
struct TnAnnotation
{
    TnHandle text;
    TnHandle marker;
    bool keepsMarker = false;
};
