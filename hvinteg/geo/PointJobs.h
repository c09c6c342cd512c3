#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "RowDataIterator.h"

class HVRawDataIterator;
class HVSimpleFile;
struct CoordinateSystem;
struct MapExport;

/// Jobs that map the points of a dataset. Names of fields are UTF-8.

/// An envelope is the left, upper, right and lower limit of all points.
inline constexpr std::size_t kEnvelopeSize = 4;

/// The job that computes the envelope. Its only row goes to the file `data`, its data model to
/// `model`.
std::string envelopeJob(HVRawDataIterator& iterator, const std::string& xField,
                        const std::string& yField, const HVSimpleFile& data,
                        const HVSimpleFile& model);
/// Reads the envelope from the rows of that job; a missing limit is 0.
std::vector<double> envelopeOf(EmbeddedHV::RowDataIterator& rows);

/// The job that writes the points. A null `from` means coordinates without a system; the envelope
/// is then unused. A target without a name means no reprojection.
std::string pointJob(HVRawDataIterator& iterator, const std::vector<std::string>& fields,
                     const CoordinateSystem* from, const CoordinateSystem& to,
                     const std::vector<double>& envelope, const MapExport& order);
