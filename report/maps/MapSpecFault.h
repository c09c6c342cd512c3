#pragma once

/// Thrown if a specification requires what the host's maps do not support.
struct MapSpecFault
{
};

/// Throws MapSpecFault unless the condition is true.
inline void requireMap(bool holds)
{
    if (!holds)
        throw MapSpecFault();
}
