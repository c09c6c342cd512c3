#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "RowDataIterator.h"

class HVRawDataIterator;
class HVSimpleFile;
struct CoordinateSystem;
struct MapExport;

/// The jobs that make a map of the points of a dataset. Names of fields are UTF-8.

/// An envelope is the left, upper, right and lower limit of all points.
inline constexpr std::size_t kEnvelopeSize = 4;

/// The job that finds the envelope. Its one row goes to the file `data`, its data model to `model`.
std::string envelopeJob(HVRawDataIterator& iterator, const std::string& xField,
                        const std::string& yField, const HVSimpleFile& data,
                        const HVSimpleFile& model);
/// The envelope in the rows of that job; 0 for a limit that is not there.
std::vector<double> envelopeOf(EmbeddedHV::RowDataIterator& rows);

/// The job that writes the points. `from` is null for coordinates without a system, which have no
/// envelope either; a target without a name is none.
std::string pointJob(HVRawDataIterator& iterator, const std::vector<std::string>& fields,
                     const CoordinateSystem* from, const CoordinateSystem& to,
                     const std::vector<double>& envelope, const MapExport& order);
