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

// Kept from the first use on: the engine is started with these, and a later change of the host's
// temporary directory does not reach it.
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

/// The file itself, shared by all copies; the last one takes it away.
struct HVINTEG_HIDDEN HVSimpleFile::Impl
{
    std::string fileName;
    ExtNameStr path;
    /// For the removal, which must not depend on memory; empty for a name with a NUL, which would
    /// be another file's.
    std::string native;
    bool deleteOnClose = false;

    Impl() = default;
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    ~Impl()
    {
        if (!deleteOnClose)
            return;
        // Whatever has the name by now: the engine writes files, others make directories of it.
        if (std::remove(native.c_str()) == 0 || errno == ENOENT)
            return;
        try {
            RemoveDir(path.GetGeneric());
        } catch (const std::exception&) {
            // A directory stays that there is no memory to look into.
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
    // In the analytic directory the engine makes the file, and takes one that is there for data.
    if (!analytic)
        createEmpty(_impl->path);
    // Only from here on: without a name of its own, nothing is to be removed.
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
