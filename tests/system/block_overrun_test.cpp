// The security helpers size system structures that are larger on the 64-bit build.
// Every fixed LocalAlloc block the library makes here gets a guard zone behind it,
// so a write past the size it asked for shows as a changed zone.
#include <gtest/gtest.h>
#include <KernelObjectNames.h>
#include <MNSystemAutorityHelper.h>
#include <algorithm>
#include <vector>
#include "ScopedImportHook.h"
#include "frame/Owners.h"

namespace {

const SIZE_T kGuardSize = 64;
const BYTE kGuardByte = 0xA5;

struct GuardedBlock {
    BYTE* data;
    SIZE_T size;
    bool Intact() const
    {
        return std::all_of(data + size, data + size + kGuardSize, [](BYTE b) { return b == kGuardByte; });
    }
};

std::vector<GuardedBlock> g_blocks;
std::vector<SIZE_T> g_overrunSizes;  // blocks found overrun when freed

HLOCAL WINAPI GuardedLocalAlloc(UINT flags, SIZE_T size)
{
    if (flags & LMEM_MOVEABLE)
        return ::LocalAlloc(flags, size);
    BYTE* data = static_cast<BYTE*>(::LocalAlloc(flags, size + kGuardSize));
    if (data != NULL) {
        memset(data + size, kGuardByte, kGuardSize);
        g_blocks.push_back({data, size});
    }
    return data;
}

HLOCAL WINAPI GuardedLocalFree(HLOCAL memory)
{
    for (auto block = g_blocks.begin(); block != g_blocks.end(); ++block) {
        if (block->data == memory) {
            if (!block->Intact())
                g_overrunSizes.push_back(block->size);
            g_blocks.erase(block);
            break;
        }
    }
    return ::LocalFree(memory);
}

TEST(SecurityBlocks, NoWritePastAnAllocatedBlock)
{
    ScopedImportHook alloc(TesvorUtilModule(), "KERNEL32.dll", "LocalAlloc", &GuardedLocalAlloc);
    ScopedImportHook release(TesvorUtilModule(), "KERNEL32.dll", "LocalFree", &GuardedLocalFree);
    ASSERT_TRUE(alloc.Hooked());
    ASSERT_TRUE(release.Hooked());
    const struct {
        const char* name;
        void (*call)();
    } cases[] = {
        {"IsAdmin", [] { EXPECT_NE(0, MNSystemAutorityHelper::IsAdmin()); }},
        {"CreateMutexAllAccess",
         [] { EXPECT_TRUE(UniqueHandle(CreateMutexAllAccess(NULL, FALSE, L"Local\\TesvorBlockOverrunTest"))); }},
    };
    for (const auto& c : cases) {
        g_blocks.clear();
        g_overrunSizes.clear();
        c.call();
        for (const GuardedBlock& block : g_blocks)  // blocks the call keeps
            if (!block.Intact())
                g_overrunSizes.push_back(block.size);
        EXPECT_TRUE(g_overrunSizes.empty()) << c.name << " wrote past a block of " << g_overrunSizes[0] << " bytes";
    }
}

}  // namespace
