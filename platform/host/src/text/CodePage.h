#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// A code page, by ICU: conversion from and to UTF-8, and iteration by characters. Any thread.
class CodePage
{
public:
    /// Opens a stateless byte code page by any name that ICU knows. Null for an unknown name, and
    /// for a code page with NUL bytes or shift states in its texts.
    static std::shared_ptr<CodePage> open(const std::string& name);
    /// Whether ICU knows the name, also of a code page that open rejects.
    static bool isKnown(const std::string& name);

    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    /// The MIME or IANA name, or otherwise ICU's.
    const std::string& name() const;
    bool isUtf8() const;
    /// Whether printable ASCII characters are single bytes with the same codes.
    bool holdsAscii() const;
    /// Whether every character is a single byte.
    bool isSingleByte() const;

    /// Convert a text. They return false if something was substituted: by U+FFFD towards UTF-8, by
    /// "?" from UTF-8.
    bool toUtf8(std::string_view text, std::string& result) const;
    bool fromUtf8(std::string_view text, std::string& result) const;
    bool toUtf16(std::string_view text, std::u16string& result) const;

    /// Calls `visit` with offset and length of each character until it returns false.
    void eachCharacter(std::string_view text,
                       const std::function<bool(std::size_t, std::size_t)>& visit) const;

private:
    struct Impl;
    explicit CodePage(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> _impl;
};

/// The host's code page: initially VEXA_CODEPAGE or UTF-8, later the value of setHostCodePage.
std::shared_ptr<CodePage> hostCodePage();
/// Returns false, and changes nothing, if the code page cannot be opened or does not contain ASCII.
bool setHostCodePage(const std::string& name);

/// Conversions in the host's code page.
std::string hostToUtf8(std::string_view text);
std::string utf8ToHost(std::string_view text);
