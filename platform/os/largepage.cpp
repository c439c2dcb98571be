#include "largepage.h"

#include <QtGlobal>
#include <cstdint>
#include <new>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#ifndef MADV_POPULATE_WRITE
#define MADV_POPULATE_WRITE 23
#endif
#endif

namespace os {

void *LargePage::allocate()
{
#ifdef Q_OS_LINUX
    // Twice the size, then the ends trimmed, for a block that starts on a huge-page boundary.
    void *raw = mmap(nullptr, 2 * Bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (raw == MAP_FAILED)
        throw std::bad_alloc();
    const auto start = reinterpret_cast<std::uintptr_t>(raw);
    const std::uintptr_t aligned = (start + Bytes - 1) & ~std::uintptr_t(Bytes - 1);
    if (aligned > start)
        munmap(raw, aligned - start);
    if (start + 2 * Bytes > aligned + Bytes)
        munmap(reinterpret_cast<void *>(aligned + Bytes), start + 2 * Bytes - aligned - Bytes);
    void *block = reinterpret_cast<void *>(aligned);
    // Both are hints: a kernel without them leaves the block to be filled page by page.
    madvise(block, Bytes, MADV_HUGEPAGE);
    madvise(block, Bytes, MADV_POPULATE_WRITE);
    return block;
#else
    return ::operator new(Bytes, std::align_val_t(Bytes));
#endif
}

void LargePage::release(void *block)
{
    if (!block)
        return;
#ifdef Q_OS_LINUX
    munmap(block, Bytes);
#else
    ::operator delete(block, std::align_val_t(Bytes));
#endif
}

} // namespace os
