#pragma once

#include <memory>
#include <string>

#include "support/HvintegExport.h"

/// A scratch file in one of the library's two directories: the host's temporary directory, or the
/// engine's default directory below the analytic root. In the engine's directory, jobs refer to a
/// file by its bare name.
///
/// Copies share one file. The last copy removes it if it was made with `deleteOnClose`.
///
/// One thread at a time for an object and its copies.
class HVINTEG_EXPORT HVSimpleFile
{
public:
    /// Chooses a free name based on `name`: a.csv may become a_1.csv, so jobs use GetFileName.
    /// Without `analytic`, creates an empty file, which reserves the name. With `analytic`, creates
    /// nothing: the engine creates the file. A file that cannot be created is not reported.
    ///
    /// With `deleteOnClose`, the last copy removes whatever has the name at that time, also a
    /// directory tree.
    HVSimpleFile(const std::string& name, bool analytic, bool deleteOnClose);
    /// Shares the file with `other`.
    HVSimpleFile(const HVSimpleFile&);
    /// Drops this object's share of its file and takes a share of the other's.
    HVSimpleFile& operator=(const HVSimpleFile&);
    /// Removes the file as the constructor describes.
    ~HVSimpleFile();

    /// File name without the directory, in the host's encoding. Jobs use this name.
    const std::string& GetFileName() const;
    /// Full path in the host's encoding.
    const std::string& GetAbsolutePath() const;
    /// Full path in UTF-8.
    const std::string& GetGenericPath() const;

    /// Root of the engine's file system, in the host's encoding, with a trailing separator. Fixed
    /// at the first use in the process.
    static const std::string& GetAnalyticRoot();
    /// Root of the engine's file system, in UTF-8, with a trailing separator.
    static const std::string& GetAnalyticRootUTF();
    /// Directory below the root where the engine resolves bare file names, in the host's encoding,
    /// with a trailing separator.
    static const std::string& GetAnalyticDefaultDir();
    /// Directory below the root where the engine resolves bare file names, in UTF-8, with a
    /// trailing separator.
    static const std::string& GetAnalyticDefaultDirUTF();

private:
    struct Impl;
    std::shared_ptr<Impl> _impl;
};
