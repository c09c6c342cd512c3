#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "datafile/Duck.h"

/// Connects to the host's own database instance. The first call opens the instance, which lives
/// until the process ends. Any thread. Throws ErrorText.
std::unique_ptr<datafile::duck::Connection> connectToHostDatabase();

/// A dataset with more columns needs a higher memory limit.
inline constexpr std::size_t kWideDataset = 500;

/// The same, for statements with so many columns. The memory limit of the instance rises with the
/// number of columns, up to a fixed maximum, and does not fall again.
std::unique_ptr<datafile::duck::Connection> connectToHostDatabase(std::size_t columns);

/// The present memory limit, for messages: "512MB". Larger datasets that are written use the disk;
/// reading needs less, except for many columns or very long texts. Any thread.
std::string hostMemoryLimit();
