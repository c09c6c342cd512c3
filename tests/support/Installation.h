#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "PathFactory.h"

/// Sets the host's installation path during its lifetime. An empty path means no installation.
class Installation final : public PathFinder
{
public:
    explicit Installation(std::string path) : _path(std::move(path))
    {
        PathFactory::setPathInstance(this);
    }
    ~Installation() override { PathFactory::setPathInstance(nullptr); }
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;
    std::string getInstallationPath() const override
    {
        return _path.empty() ? throw std::runtime_error("there is no installation") : _path;
    }

private:
    std::string _path;
};
