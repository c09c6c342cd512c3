#include "Callers.h"

#include <cstddef>
#include <cstring>

#include <link.h>
#include <unwind.h>

namespace faultlayer {
namespace {

struct NamedOwner
{
    const char* part; ///< a part of the library's file name
    Owner owner;
};
constexpr NamedOwner kOwners[] = {
    {"libhvinteg.", Owner::Ours},      {"libvexahost.", Owner::Ours},
    {"libvexametadata.", Owner::Ours}, {"libembeddedhv.", Owner::Ours},
    {"libhvgeography.", Owner::Ours},  {"libmcscoring.", Owner::Ours},
    {"libduckdb.", Owner::Database},   {"libfaultlayer.", Owner::Helper},
    {"/libc.so", Owner::Helper},       {"/libstdc++.", Owner::Helper},
    {"/libgcc_s.", Owner::Helper},     {"/ld-linux", Owner::Helper},
    {"/libpugixml.", Owner::Helper},   {"/libminizip.", Owner::Helper},
    {"/libz.", Owner::Helper},         {"/libicu", Owner::Helper},
    {"/libsodium.", Owner::Helper},
};

struct Code
{
    const char* begin;
    const char* end;
    Owner owner;
};

// Static memory, because nothing may be allocated here. Our processes load about 150 libraries.
constexpr std::size_t kMostPieces = 1024;
Code pieces[kMostPieces];
std::size_t pieceCount = 0;

Owner ownerOfLibrary(const char* name)
{
    // The program itself has an empty name.
    if (*name == '\0')
        return Owner::Ours;
    for (const NamedOwner& known : kOwners)
        if (std::strstr(name, known.part) != nullptr)
            return known.owner;
    return Owner::Other;
}

int addLibrary(dl_phdr_info* info, std::size_t, void*)
{
    const Owner owner = ownerOfLibrary(info->dlpi_name);
    for (int i = 0; i < info->dlpi_phnum && pieceCount < kMostPieces; ++i) {
        const ElfW(Phdr)& header = info->dlpi_phdr[i];
        if (header.p_type != PT_LOAD || (header.p_flags & PF_X) == 0)
            continue;
        const char* const begin = reinterpret_cast<const char*>(info->dlpi_addr + header.p_vaddr);
        pieces[pieceCount++] = {begin, begin + header.p_memsz, owner};
    }
    return 0;
}

Owner ownerOf(const void* address)
{
    const char* const place = static_cast<const char*>(address);
    for (std::size_t i = 0; i < pieceCount; ++i)
        if (place >= pieces[i].begin && place < pieces[i].end)
            return pieces[i].owner;
    return Owner::Other;
}

_Unwind_Reason_Code lookAtFrame(_Unwind_Context* context, void* target)
{
    Caller& caller = *static_cast<Caller*>(target);
    caller.address = reinterpret_cast<const void*>(_Unwind_GetIP(context));
    caller.owner = ownerOf(caller.address);
    return caller.owner == Owner::Helper ? _URC_NO_REASON : _URC_END_OF_STACK;
}

} // namespace

void learnOwners()
{
    pieceCount = 0;
    dl_iterate_phdr(addLibrary, nullptr);
}

Caller callerOf(const void* returnAddress)
{
    Caller caller{ownerOf(returnAddress), returnAddress};
    if (caller.owner == Owner::Helper)
        _Unwind_Backtrace(lookAtFrame, &caller);
    return caller;
}

} // namespace faultlayer
