#pragma once

#include <string>

#include "runner/HVStatContainer.h"
#include "support/HvintegExport.h"

/// A file that a job reads or writes: the caller's file, or a temporary file that the object owns.
/// The object must outlive the job's execution. One thread at a time.
class HVINTEG_EXPORT HVSimpleContainer : public HVStatContainer
{
public:
    /// `path` is in the host's encoding. An empty path creates an empty temporary file. The
    /// caller's file is not accessed. If the temporary file cannot be created, the job fails when
    /// it writes the file.
    HVSimpleContainer(const std::string& name, std::string path);
    HVSimpleContainer(const HVSimpleContainer&) = delete;
    HVSimpleContainer& operator=(const HVSimpleContainer&) = delete;

    /// The name by which the job refers to the container.
    std::string getName() const override { return _name; }
    /// The path in UTF-8.
    std::string getAbsolutePath() const override { return _absolutePath; }
    /// Removes a temporary file that is not preserved.
    ~HVSimpleContainer() override;

    /// The path in the host's encoding, for the host's file functions.
    std::string getGenericPath() const { return _genericPath; }
    /// Whether the destructor removes the file.
    bool isTempFile() const { return _isTemp; }
    /// Keeps a temporary file: the destructor does not remove it.
    void preserveTempFile() { _isTemp = false; }

private:
    std::string _name;
    std::string _genericPath;
    std::string _absolutePath;
    std::string _nativePath; ///< for the destructor, which must not allocate
    bool _isTemp = false;
};
