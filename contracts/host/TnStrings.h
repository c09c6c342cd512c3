#pragma once

#include <memory>
#include <string>

#include "TnCellText.h"

/// A UTF-8 text.
class HOST_API TnUTF8String : public TnCellText
{
public:
    /// `stringTableKey`: `text` is a key of the host's string table.
    explicit TnUTF8String(std::string text, bool stringTableKey = false);
    /// A text with a key, which identifies it for programs that read the output, and a help topic.
    /// A host may show a text that is its own key in the user's language.
    TnUTF8String(std::string key, std::string text, std::string helpId = {});
    /// A text with a key and without a help topic. `text` ends in a zero byte and is not null.
    TnUTF8String(std::string key, const char* text);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    std::string _key;
    std::string _text;
    std::string _helpId;
    bool _isTableKey = false;
};

/// A text in the host's encoding.
class HOST_API TnString : public TnCellText
{
public:
    /// `stringTableKey`: `text` is a key of the host's string table.
    explicit TnString(std::string text, bool stringTableKey = false);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    std::string _text;
    bool _isTableKey;
};

/// A text composed of a format and parts. Parts are numbered from 1 in the order of their addition;
/// a sublist is one part. The format has two kinds of placeholders:
///
///     ^n                   the n-th part
///     [first:further:]n    the n-th part as a list: "first" for its first entry, "further" for
///                          each later entry. %m in "first" and ^m in "further" are the m-th
///                          column of the entry
///
/// Numbers are decimal. "first" ends at its first colon, "further" at the first ":]" that is
/// followed by a number. Invalid placeholders and placeholders inside parts are not replaced. A
/// missing part or column is empty. A text used as a list is one entry with one column. A list
/// outside brackets shows its columns separated by ", ".
///
/// Example: the format is "Split file [%1 = %2:,^1 = ^2:]1. ^2" and the message is "done". A split
/// list with one entry (sex, f) gives "Split file sex = f. done". With a second entry (region, 1)
/// it gives "Split file sex = f,region = 1. done".
class HOST_API TnComposite : public TnCellText
{
public:
    /// `stringTableKey`: `format` is a key of the host's string table.
    explicit TnComposite(std::string format, bool stringTableKey = false);
    /// An independent copy.
    TnComposite(const TnComposite&);
    TnComposite& operator=(const TnComposite&) = delete;
    ~TnComposite() override;

    /// Starts a sublist.
    void Sublist();
    /// Fills the open sublist with the split variables and values of the current procedure's
    /// present split group.
    void SplitList();
    /// Ends the sublist.
    void EndSublist();
    /// Adds a part or, in an open sublist, an entry with one column. Keeps a copy of the text.
    void Add(const TnCellText& text);
    /// Ends the composition and an open sublist; later additions are ignored.
    void Finish();

    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
