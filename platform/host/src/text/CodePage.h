#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// Whether all bytes are ASCII's: such a text is the same in nearly every code page.
bool isAscii(std::string_view text);

/// One code page, by ICU: conversion from and to UTF-8, and stepping through a text character by
/// character. All operations may be called from any thread.
class CodePage
{
public:
    /// A stateless code page of bytes, by any name that ICU knows. Null for a name that it does
    /// not know, or for a code page whose texts may hold NUL bytes or shift states.
    static std::shared_ptr<CodePage> open(const std::string& name);

    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    /// The MIME or IANA name where there is one, else ICU's own.
    const std::string& name() const;
    bool isUtf8() const;
    /// Whether the printable ASCII characters are single bytes of the same codes.
    bool holdsAscii() const;
    /// Whether every character is one byte.
    bool isSingleByte() const;

    /// Convert; false if something was substituted, U+FFFD on the way to UTF-8 and "?" on the way
    /// back.
    bool toUtf8(std::string_view text, std::string& result) const;
    bool fromUtf8(std::string_view text, std::string& result) const;
    bool toUtf16(std::string_view text, std::u16string& result) const;

    /// Calls `visit` with offset and length of each character, until it returns false.
    void eachCharacter(std::string_view text,
                       const std::function<bool(std::size_t, std::size_t)>& visit) const;

private:
    struct Impl;
    explicit CodePage(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> _impl;
};

/// The host's own code page: VEXA_CODEPAGE or UTF-8 at first, then what setHostCodePage took.
std::shared_ptr<CodePage> hostCodePage();
/// False, and no change, for a name that cannot be opened or does not hold ASCII.
bool setHostCodePage(const std::string& name);

/// Conversions in the host's code page.
std::string hostToUtf8(std::string_view text);
std::string utf8ToHost(std::string_view text);
