#pragma once

#include "platform/os/largepage.h"

#include <QtGlobal>
#include <type_traits>
#include <vector>

namespace db {

// An array that only grows at its end. Its first large page's worth of items grows as a vector
// (a small array costs little); past that, items go to large pages that never move, so a read
// of millions of items neither copies what it has read nor faults page by page.
template<typename T>
class PagedArray
{
    static_assert(std::is_trivially_copyable_v<T>);
    static_assert((os::LargePage::Bytes / sizeof(T)) * sizeof(T) == os::LargePage::Bytes);

public:
    static constexpr qsizetype PerPage = qsizetype(os::LargePage::Bytes / sizeof(T));

    qsizetype size() const { return m_size; }

    T &operator[](qsizetype index) { return index < PerPage ? m_first[size_t(index)] : paged(index); }
    const T &operator[](qsizetype index) const
    {
        return index < PerPage ? m_first[size_t(index)] : const_cast<PagedArray *>(this)->paged(index);
    }

    void push_back(T value)
    {
        if (m_size < PerPage) {
            m_first.push_back(value);
        } else {
            const qsizetype at = (m_size - PerPage) % PerPage;
            if (at == 0)
                m_pages.emplace_back(os::LargePage::allocate());
            static_cast<T *>(m_pages.back().get())[at] = value;
        }
        ++m_size;
    }

private:
    T &paged(qsizetype index)
    {
        const qsizetype beyond = index - PerPage;
        return static_cast<T *>(m_pages[size_t(beyond / PerPage)].get())[beyond % PerPage];
    }

    std::vector<T> m_first;
    std::vector<os::LargePagePtr> m_pages;
    qsizetype m_size = 0;
};

} // namespace db
