#pragma once

#include <QVariant>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

namespace db {

// Memory for the flat cell vector of a recordset. Large blocks are mapped pages: a block filled
// while a query is read grows by remapping (never by copying) and is then handed to the vector
// as it is, so a large read costs one pass and exactly the memory its cells take.
// Internal to platform/db.
namespace cellstorage {
std::size_t mappedFrom();                  // blocks from this size up are mapped pages
std::size_t pageRounded(std::size_t bytes);
void *allocateBlock(std::size_t bytes);
void freeBlock(void *block, std::size_t bytes);
void *takeOfferedBlock(std::size_t bytes); // the block being handed over, when it is that size
// True while a filled block is handed over: its cells are already built. Recordsets live on the
// user-interface thread only, so a plain flag is enough (and costs nothing per cell).
inline bool handingOver = false;
void offer(void *block, std::size_t bytes);
void endOffer();
} // namespace cellstorage

template<typename T>
struct CellAllocator
{
    using value_type = T;

    CellAllocator() = default;
    template<typename U>
    CellAllocator(const CellAllocator<U> &) {}

    T *allocate(std::size_t n)
    {
        if (void *offered = cellstorage::takeOfferedBlock(n * sizeof(T)))
            return static_cast<T *>(offered);
        return static_cast<T *>(cellstorage::allocateBlock(n * sizeof(T)));
    }
    void deallocate(T *p, std::size_t n) { cellstorage::freeBlock(p, n * sizeof(T)); }

    template<typename U, typename... Args>
    void construct(U *p, Args &&...args)
    {
        ::new (static_cast<void *>(p)) U(std::forward<Args>(args)...);
    }
    template<typename U>
    void construct(U *p)
    {
        if (!cellstorage::handingOver)
            ::new (static_cast<void *>(p)) U();
    }

    template<typename U>
    bool operator==(const CellAllocator<U> &) const { return true; }
};

using CellVector = std::vector<QVariant, CellAllocator<QVariant>>;

// Cells read from a query, built in place in a growing mapped block.
class CellBuffer
{
public:
    CellBuffer() = default;
    ~CellBuffer();
    CellBuffer(const CellBuffer &) = delete;
    CellBuffer &operator=(const CellBuffer &) = delete;

    // Room for the next cell; the caller constructs a QVariant there and calls added().
    void *nextSlot()
    {
        if (m_count == m_capacity)
            grow();
        return m_cells + m_count;
    }
    void added() { ++m_count; }
    std::size_t count() const { return m_count; }

    // Moves the cells into an empty vector, handing the block over when it is large.
    void moveInto(CellVector &cells);

private:
    void grow();
    void release();

    QVariant *m_cells = nullptr;
    std::size_t m_count = 0;
    std::size_t m_capacity = 0;
    std::size_t m_bytes = 0;
};

} // namespace db
