#include <windows.h>

#include <cstdint>
#include <vector>

#include "platform/large_blocks.h"
#include "platform/system_blocks.h"

namespace qm {

namespace {

constexpr size_t kGranule = size_t{64} << 10;  // where VirtualAlloc places blocks

// Whether the process holds the privilege to lock memory and has enabled it;
// the plug-in only looks, it never changes the host's token.
bool LockMemoryEnabled() {
  LUID lock;
  if (!LookupPrivilegeValueW(nullptr, L"SeLockMemoryPrivilege", &lock)) return false;
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) return false;
  DWORD size = 0;
  GetTokenInformation(token, TokenPrivileges, nullptr, 0, &size);
  std::vector<unsigned char> buffer(size);
  bool enabled = false;
  if (size != 0 && GetTokenInformation(token, TokenPrivileges, buffer.data(), size, &size)) {
    const auto* privileges = reinterpret_cast<const TOKEN_PRIVILEGES*>(buffer.data());
    for (DWORD i = 0; i < privileges->PrivilegeCount; ++i) {
      const LUID_AND_ATTRIBUTES& p = privileges->Privileges[i];
      if (p.Luid.LowPart == lock.LowPart && p.Luid.HighPart == lock.HighPart) {
        enabled = (p.Attributes & SE_PRIVILEGE_ENABLED) != 0;
      }
    }
  }
  CloseHandle(token);
  return enabled;
}

// The large page size when blocks may be given large pages, else 0.
size_t LargePage() {
  static const size_t size = [] {
    const size_t minimum = GetLargePageMinimum();
    try {
      return minimum != 0 && LockMemoryEnabled() ? minimum : size_t{0};
    } catch (...) {
      return size_t{0};
    }
  }();
  return size;
}

size_t RoundUp(size_t bytes, size_t unit) { return (bytes + unit - 1) / unit * unit; }

}  // namespace

size_t SystemBlockSize(size_t bytes) noexcept {
  const size_t large = LargePage();
  return large != 0 && bytes >= large ? RoundUp(bytes, large) : RoundUp(bytes, kGranule);
}

void* AllocateSystemBlock(size_t bytes) noexcept {
  // Large pages save most of the page faults (and TLB misses) of filling a
  // large table; the system may have none free, then the usual pages serve.
  const size_t large = LargePage();
  if (large != 0 && bytes >= large && bytes % large == 0) {
    if (void* block = VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT | MEM_LARGE_PAGES, PAGE_READWRITE)) {
      return block;
    }
  }
  return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreeSystemBlock(void* block, size_t) noexcept { VirtualFree(block, 0, MEM_RELEASE); }

void DiscardPages(void* begin, size_t bytes) noexcept {
  SYSTEM_INFO info;
  GetSystemInfo(&info);
  const uintptr_t page = info.dwPageSize;
  const uintptr_t first = (reinterpret_cast<uintptr_t>(begin) + page - 1) & ~(page - 1);
  const uintptr_t last = (reinterpret_cast<uintptr_t>(begin) + bytes) & ~(page - 1);
  if (last <= first) return;
  // The pages' contents need not be kept; unlocking pages that are not
  // locked takes them out of the working set. Both are advice: a failure
  // only keeps the memory.
  void* pages = reinterpret_cast<void*>(first);
  if (VirtualAlloc(pages, last - first, MEM_RESET, PAGE_READWRITE)) VirtualUnlock(pages, last - first);
}

}  // namespace qm
