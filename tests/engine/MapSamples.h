#pragma once

#include <string>
#include <vector>

namespace EngineTest {

/// A shape with its attributes, as well-known text; an empty one is a record without a shape.
struct SampleRecord
{
    std::string shape;
    std::string name;
    long long code = 0;
    double share = 0;
    std::string day = {}; ///< as in 2024/02/29; empty for none
};

/// Writes a shape file with the fields name, code, share and day, and its companions. `kind` is a
/// word of well-known text; `wkid` 0 leaves out the coordinate system.
void writeShapeFile(const std::string& path, const std::string& kind, int wkid,
                    const std::vector<SampleRecord>& records);

/// The feature services of map_server.py, in a process of its own, which ends with the object.
class MapServer
{
public:
    MapServer();
    MapServer(const MapServer&) = delete;
    MapServer& operator=(const MapServer&) = delete;
    ~MapServer();
    /// As in http://127.0.0.1:4711.
    const std::string& address() const { return _address; }

private:
    int _process = -1;
    std::string _address;
};

} // namespace EngineTest
