#pragma once

/// The engine uses the names of the file library, and of what both share, as its own.
namespace base {
}
namespace datafile {
}
namespace EmbeddedHV {
using namespace base;
using namespace datafile;
} // namespace EmbeddedHV
