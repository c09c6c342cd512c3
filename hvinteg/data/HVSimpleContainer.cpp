#include "data/HVSimpleContainer.h"

#include <cstdio>
#include <utility>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "support/EmptyFile.h"

HVSimpleContainer::HVSimpleContainer(const std::string& name, std::string path)
    : _name(name), _genericPath(std::move(path)), _isTemp(_genericPath.empty())
{
    if (_isTemp)
        _genericPath = FormTempName("hvcontfile_");
    const ExtNameStr file(_genericPath);
    _absolutePath = file.GetU8();
    _nativePath = file.GetNative();
    // Last: an unfinished object has no destructor to remove the file.
    if (_isTemp)
        createEmpty(file);
}

HVSimpleContainer::~HVSimpleContainer()
{
    if (_isTemp)
        std::remove(_nativePath.c_str());
}
