#pragma once

#include <string>

#include "runner/HVStatContainer.h"
#include "support/HvintegExport.h"

/// A file that a job reads or writes: the caller's, or a temporary one that lives and dies with the
/// object. The object must outlive the job's execution.
class HVINTEG_EXPORT HVSimpleContainer : public HVStatContainer
{
public:
    /// An empty path, in the host's encoding, stands for a temporary file, which is there at once,
    /// empty. The caller's file is neither created nor touched. A file that cannot be created shows
    /// when the job writes it.
    HVSimpleContainer(const std::string& name, std::string path);
    HVSimpleContainer(const HVSimpleContainer&) = delete;
    HVSimpleContainer& operator=(const HVSimpleContainer&) = delete;

    std::string getName() const override { return _name; }
    std::string getAbsolutePath() const override { return _absolutePath; }
    /// Removes a temporary file.
    ~HVSimpleContainer() override;

    /// The path for the host's file calls, in the host's encoding.
    std::string getGenericPath() const { return _genericPath; }
    bool isTempFile() const { return _isTemp; }
    /// Lets a temporary file outlive the object.
    void preserveTempFile() { _isTemp = false; }

private:
    std::string _name;
    std::string _genericPath;
    std::string _absolutePath;
    bool _isTemp = false;
};
