#pragma once

namespace faultlayer {

/// The owner of the code at an address.
enum class Owner
{
    Ours,
    Helper, ///< works for its caller, so the caller counts
    Database,
    Other
};

/// Reads the list of loaded libraries. Does not allocate.
void learnOwners();

struct Caller
{
    Owner owner = Owner::Other;
    const void* address = nullptr;
};
/// The caller of the current call. Skips helpers. `returnAddress` is that of the function in this
/// library.
Caller callerOf(const void* returnAddress);

} // namespace faultlayer
