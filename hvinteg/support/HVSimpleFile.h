#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// A scratch file in one of the two places where this library keeps files: the host's temporary
/// directory, or the engine's default directory below the analytic root, where jobs refer to a file
/// by its bare name.
///
/// Copies stand for one file; the last of them removes it, if it is to be removed at all.
class HVINTEG_EXPORT HVSimpleFile
{
public:
    /// Takes a free name like `name`: a.csv may become a_1.csv, so jobs use GetFileName. A file
    /// outside the analytic directory is created at once, empty, which reserves the name; an
    /// analytic one is left for the engine to write. With `deleteOnClose` whatever has the name at
    /// the end goes away, be it a file or a directory tree.
    HVSimpleFile(const std::string& name, bool analytic, bool deleteOnClose);
    HVSimpleFile(const HVSimpleFile&);
    HVSimpleFile& operator=(const HVSimpleFile&);
    ~HVSimpleFile();

    /// The name without its directory, in the host's encoding.
    const std::string& GetFileName() const;
    /// The whole path in the host's encoding.
    const std::string& GetAbsolutePath() const;
    /// The whole path in UTF-8.
    const std::string& GetGenericPath() const;

    /// The engine's file system and the directory in it where it resolves bare file names, in the
    /// host's encoding and in UTF-8, with a trailing separator. Fixed at first use.
    static const std::string& GetAnalyticRoot();
    static const std::string& GetAnalyticRootUTF();
    static const std::string& GetAnalyticDefaultDir();
    static const std::string& GetAnalyticDefaultDirUTF();

private:
    struct Impl;
    std::shared_ptr<Impl> _impl;
};
