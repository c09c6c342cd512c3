#include "ExtensionFinder.h"

#include "PathFactory.h"

std::string ExtensionFinder::GetCFPath()
{
    return PathFactory::getPathInstance()->getInstallationPath() + '\\';
}
