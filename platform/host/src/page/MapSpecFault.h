#pragma once

/// Thrown where a specification asks for what the host's maps do not do.
struct MapSpecFault
{
};

/// Goes on only if something holds that maps need.
inline void requireMap(bool holds)
{
    if (!holds)
        throw MapSpecFault();
}
