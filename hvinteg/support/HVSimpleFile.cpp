#include "support/HVSimpleFile.h"

#include <cerrno>
#include <cstdio>
#include <exception>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "support/EmptyFile.h"
#include "support/Files.h"
#include "support/Paths.h"

namespace {

// Fixed at first use: the engine starts with these paths, and the host may change its temporary
// directory later.
const ExtNameStr& analyticRoot()
{
    static const ExtNameStr root(JoinFilePath(GetVexaTempPath(), "analytic-root/"));
    return root;
}

const ExtNameStr& analyticDefaultDir()
{
    static const ExtNameStr directory(JoinFilePath(analyticRoot().GetGeneric(), "zor/public/"));
    return directory;
}

} // namespace

/// The file, shared by all copies. The destructor of the last copy removes it.
struct HVINTEG_HIDDEN HVSimpleFile::Impl
{
    std::string fileName;
    ExtNameStr path;
    /// Path for the removal, which must not allocate. Empty for a name with a NUL, because its
    /// beginning would name another file.
    std::string native;
    bool deleteOnClose = false;

    Impl() = default;
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl()
    {
        if (!deleteOnClose)
            return;
        // Remove whatever has the name: the engine writes files, others may create directories.
        if (std::remove(native.c_str()) == 0 || errno == ENOENT)
            return;
        try {
            RemoveDir(path.GetGeneric());
        } catch (const std::exception&) {
            // Without memory to list a directory, it remains.
        }
    }
};

HVSimpleFile::HVSimpleFile(const std::string& name, bool analytic, bool deleteOnClose)
    : _impl(std::make_shared<Impl>())
{
    const std::string& directory = analytic ? GetAnalyticDefaultDir() : GetVexaTempPath();
    _impl->path.SetGeneric(FormUniqueFileName(directory + name));
    _impl->native = _impl->path.GetNative();
    if (_impl->native.find('\0') != std::string::npos)
        _impl->native.clear();
    std::string rest;
    _impl->fileName = SeparateFileName(_impl->path.GetGeneric(), rest);
    // In the analytic directory the engine creates the file, and reads an existing one as data.
    if (!analytic)
        createEmpty(_impl->path);
    // Set last: an object without its own name must not remove anything.
    _impl->deleteOnClose = deleteOnClose;
}

HVSimpleFile::HVSimpleFile(const HVSimpleFile&) = default;
HVSimpleFile& HVSimpleFile::operator=(const HVSimpleFile&) = default;
HVSimpleFile::~HVSimpleFile() = default;

const std::string& HVSimpleFile::GetFileName() const
{
    return _impl->fileName;
}

const std::string& HVSimpleFile::GetAbsolutePath() const
{
    return _impl->path.GetGeneric();
}

const std::string& HVSimpleFile::GetGenericPath() const
{
    return _impl->path.GetU8();
}

const std::string& HVSimpleFile::GetAnalyticRoot()
{
    return analyticRoot().GetGeneric();
}

const std::string& HVSimpleFile::GetAnalyticRootUTF()
{
    return analyticRoot().GetU8();
}

const std::string& HVSimpleFile::GetAnalyticDefaultDir()
{
    return analyticDefaultDir().GetGeneric();
}

const std::string& HVSimpleFile::GetAnalyticDefaultDirUTF()
{
    return analyticDefaultDir().GetU8();
}
