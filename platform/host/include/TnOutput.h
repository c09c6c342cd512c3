#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class ProcedureDataSource;

/// A text for the host's output. Clones are owned by their holder.
class HOST_API TnText
{
public:
    virtual ~TnText() = default;
    /// The text as it is shown, UTF-8.
    virtual std::string text() const = 0;
    virtual std::unique_ptr<TnText> clone() const = 0;
};

/// Text that is UTF-8 already. `translate`: look it up in the host's string table first.
class HOST_API TnUTF8String : public TnText
{
public:
    explicit TnUTF8String(std::string text, bool translate = false);
    std::string text() const override;
    std::unique_ptr<TnText> clone() const override;

private:
    std::string _text;
    bool _translate;
};

/// Text in the host's encoding. `translate` as above.
class HOST_API TnString : public TnText
{
public:
    explicit TnString(std::string text, bool translate = false);
    std::string text() const override;
    std::unique_ptr<TnText> clone() const override;

private:
    std::string _text;
    bool _translate;
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
class HOST_API TnComposite : public TnText
{
public:
    explicit TnComposite(std::string format, bool translate = false);
    TnComposite(const TnComposite&);
    TnComposite& operator=(const TnComposite&) = delete;
    ~TnComposite() override;

    /// Begins a sublist; fills it with the split variables and values of the present split group of
    /// the current procedure, which is the latest TnProcedure that is alive; ends it.
    void Sublist();
    void SplitList();
    void EndSublist();
    /// Adds a part, or to an open sublist an entry of one column; a copy of the text is kept.
    void Add(const TnText& text);
    /// Ends the composition, and a sublist that is open: what comes after it is not taken.
    void Finish();

    std::string text() const override;
    std::unique_ptr<TnText> clone() const override;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// The procedure that output belongs to. Procedures may be made inside each other; the latest one
/// alive is the current one of the process.
class HOST_API TnProcedure
{
public:
    /// The data source is borrowed and must outlive the procedure; it may be null, which stands for
    /// a source without columns.
    explicit TnProcedure(std::string name, ProcedureDataSource* dataSource = nullptr);
    ~TnProcedure();
    TnProcedure(const TnProcedure&) = delete;
    TnProcedure& operator=(const TnProcedure&) = delete;

    const std::string& Name() const;
    ProcedureDataSource& DataSource() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

/// Where and how a line is shown.
inline constexpr int kShowInOutput = 2;
inline constexpr int kLevelWarning = 2;
inline constexpr int kLevelError = 3;

/// Puts a line into the host's output. `level` 2 is a warning, 3 an error. Any thread.
HOST_API void TnError(const TnText& text, int show, int level);
