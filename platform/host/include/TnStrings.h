#pragma once

#include <memory>
#include <string>

#include "TnCellText.h"

/// Text that is UTF-8 already.
class HOST_API TnUTF8String : public TnCellText
{
public:
    /// `stringTableKey`: the text is a key, and the host's string table has the words.
    explicit TnUTF8String(std::string text, bool stringTableKey = false);
    /// A text with a key, which names it for programs that read the output, and a help topic.
    TnUTF8String(std::string key, std::string text, std::string helpId = {});
    TnUTF8String(std::string key, const char* text);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    std::string _key;
    std::string _text;
    std::string _helpId;
    bool _isTableKey = false;
};

/// Text in the host's encoding. `stringTableKey` as above.
class HOST_API TnString : public TnCellText
{
public:
    explicit TnString(std::string text, bool stringTableKey = false);
    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    std::string _text;
    bool _isTableKey;
};

/// A text made of a format and parts, which are numbered from 1 in the order in which they were
/// added; a sublist is one part. The format has two kinds of places:
///
///     ^n                   the n-th part
///     [first:further:]n    the n-th part as a list: "first" for its first entry, "further" for
///                          each entry after that; inside, %m in "first" and ^m in "further" stand
///                          for the m-th column of the entry
///
/// Numbers are decimal. "first" ends at its first colon, "further" at the first ":]" with a number
/// after it. What looks like a place and is none stands for itself, and so do the characters of
/// parts. A part or column that is not there shows as nothing; a text as a list is one entry of one
/// column; a list outside of brackets shows its columns with ", " between them.
///
/// So with a split list of one entry (sex, f), "Split file [%1 = %2:,^1 = ^2:]1. ^2" and the
/// message "done" give "Split file sex = f. done", and with a second entry (region, 1) "Split file
/// sex = f,region = 1. done".
class HOST_API TnComposite : public TnCellText
{
public:
    /// `stringTableKey` as above, for the format.
    explicit TnComposite(std::string format, bool stringTableKey = false);
    TnComposite(const TnComposite&);
    TnComposite& operator=(const TnComposite&) = delete;
    ~TnComposite() override;

    /// Begins a sublist; fills it with the split variables and values of the present split group of
    /// the current procedure, which is the latest TnProcedure that is alive; ends it.
    void Sublist();
    void SplitList();
    void EndSublist();
    /// Adds a part, or to an open sublist an entry of one column; a copy of the text is kept.
    void Add(const TnCellText& text);
    /// Ends the composition, and a sublist that is open: what comes after it is not taken.
    void Finish();

    TnContent content() const override;
    std::unique_ptr<TnCellText> clone() const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
