#include "cellstorage.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

namespace db::cellstorage {

namespace {

// Blocks from this size up are mapped pages; smaller ones come from the heap.
constexpr std::size_t MappedFrom = 256 * 1024;

struct Offer
{
    void *block = nullptr;
    std::size_t bytes = 0;
};
Offer offered;

} // namespace

std::size_t pageRounded(std::size_t bytes)
{
    static const std::size_t page = std::size_t(sysconf(_SC_PAGESIZE));
    return (bytes + page - 1) / page * page;
}

std::size_t mappedFrom()
{
    return MappedFrom;
}

void offer(void *block, std::size_t bytes)
{
    offered = {block, bytes};
    handingOver = true;
}

void endOffer()
{
    offered = {};
    handingOver = false;
}

void *allocateBlock(std::size_t bytes)
{
    if (bytes < MappedFrom)
        return ::operator new(bytes);
    void *block = mmap(nullptr, pageRounded(bytes), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED)
        throw std::bad_alloc();
    return block;
}

void freeBlock(void *block, std::size_t bytes)
{
    if (!block)
        return;
    if (bytes < MappedFrom)
        ::operator delete(block);
    else
        munmap(block, pageRounded(bytes));
}

void *takeOfferedBlock(std::size_t bytes)
{
    if (!offered.block || offered.bytes != bytes)
        return nullptr;
    void *block = offered.block;
    offered.block = nullptr;
    return block;
}

} // namespace db::cellstorage

namespace db {

CellBuffer::~CellBuffer()
{
    release();
}

void CellBuffer::release()
{
    for (std::size_t i = 0; i < m_count; ++i)
        m_cells[i].~QVariant();
    if (m_cells)
        munmap(m_cells, m_bytes);
    m_cells = nullptr;
    m_count = m_capacity = m_bytes = 0;
}

void CellBuffer::grow()
{
    // QVariant is relocatable (Qt moves it with memmove), so remapping the pages moves the cells.
    const std::size_t bytes = m_bytes ? m_bytes * 2 : cellstorage::mappedFrom();
    void *block = m_cells ? mremap(m_cells, m_bytes, bytes, MREMAP_MAYMOVE)
                          : mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED)
        throw std::bad_alloc();
    m_cells = static_cast<QVariant *>(block);
    m_bytes = bytes;
    m_capacity = bytes / sizeof(QVariant);
}

void CellBuffer::moveInto(CellVector &cells)
{
    cells.clear();
    const std::size_t bytes = m_count * sizeof(QVariant);
    if (bytes >= cellstorage::mappedFrom()) {
        const std::size_t exact = cellstorage::pageRounded(bytes);
        if (exact < m_bytes && mremap(m_cells, m_bytes, exact, 0) != MAP_FAILED)
            m_bytes = exact;
        if (m_bytes == exact) {
            cellstorage::offer(m_cells, bytes);
            cells.resize(m_count);
            cellstorage::endOffer();
            if (cells.data() == m_cells) { // the vector owns the block now
                m_cells = nullptr;
                m_count = m_capacity = m_bytes = 0;
                return;
            }
            // Not handed over: the vector's cells are unbuilt memory; move the values in.
            for (std::size_t i = 0; i < m_count; ++i)
                ::new (static_cast<void *>(cells.data() + i)) QVariant(std::move(m_cells[i]));
            release();
            return;
        }
    }
    cells.reserve(m_count);
    for (std::size_t i = 0; i < m_count; ++i)
        cells.push_back(std::move(m_cells[i]));
    release();
}

} // namespace db
