#pragma once

namespace faultlayer {

/// Whose code an address is.
enum class Owner
{
    Ours,
    Helper, ///< works for whoever calls it: its own caller counts
    Database,
    Other
};

/// Looks at the libraries that are loaded now. Allocates nothing.
void learnOwners();

struct Caller
{
    Owner owner = Owner::Other;
    const void* address = nullptr;
};
/// Who made the present call, seen through helpers. `returnAddress` is that of the function of this
/// library.
Caller callerOf(const void* returnAddress);

} // namespace faultlayer
