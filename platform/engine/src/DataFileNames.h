#pragma once

/// The engine uses the names of the file library as its own.
namespace datafile {
}
namespace EmbeddedHV {
using namespace datafile;
}
