#pragma once

#include <cstddef>
#include <memory>

namespace os {

// Memory for large in-memory tables, in blocks of LargePage::Bytes, aligned to them and filled
// with pages when they are handed out. Touching fresh memory page by page costs a fault per 4 KB
// (on a virtual machine several microseconds each, more than reading the rows); a block is asked
// of the kernel as huge pages where it allows them and made resident in one call.
class LargePage
{
public:
    static constexpr std::size_t Bytes = std::size_t(2) << 20;

    static void *allocate();
    static void release(void *block);
};

struct LargePageDeleter
{
    void operator()(void *block) const { LargePage::release(block); }
};
using LargePagePtr = std::unique_ptr<void, LargePageDeleter>;

} // namespace os
