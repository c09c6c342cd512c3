#pragma once

/// The file library's names are the engine's own.
namespace datafile {
}
namespace EmbeddedHV {
using namespace datafile;
}
